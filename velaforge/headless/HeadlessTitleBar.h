// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/TitleBarInterface.h>

namespace vfApplication {

/// A title bar for programs without a screen: stores the title and shows nothing.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessTitleBar final : public TitleBarInterface
{
public:
    /// Updates the title: title of the active document, "*" if the document is modified, and the name of the
    /// application.
    void titleBarOperationA() override;

    /// Does nothing.
    void titleBarOperationB() override {}

    /// Returns the title of the last titleBarOperationA(); empty before the first.
    const vfBase::VfString& getTitle() const { return m_title; }

private:
    vfBase::VfString m_title;
};

} // namespace vfApplication
