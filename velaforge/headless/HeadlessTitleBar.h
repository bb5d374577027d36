// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/TitleBarInterface.h>

namespace vfApplication {

/// A title bar without a screen: it keeps the title.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessTitleBar final : public TitleBarInterface
{
public:
    /// Composes the title: the name of the active document, "*" when it is modified, and the name of the program.
    void titleBarOperationA() override;

    /// Does nothing.
    void titleBarOperationB() override {}

    /// @return the title as it was composed last; empty before
    const vfBase::VfString& getTitle() const { return m_title; }

private:
    vfBase::VfString m_title;
};

} // namespace vfApplication
