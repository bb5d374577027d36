// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/TitleBarInterface.h>

namespace vfApplication {

/// A title bar that nobody sees: it keeps the title.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessTitleBar final : public TitleBarInterface
{
public:
    /// Makes the title anew: the name of the active document, marked when it is modified, and that of the program.
    void titleBarOperationA() override;

    /// Nothing here.
    void titleBarOperationB() override {}

    const vfBase::VfString& getTitle() const { return m_title; }

private:
    vfBase::VfString m_title;
};

} // namespace vfApplication
