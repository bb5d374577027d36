// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/ToolbarInterface.h>

namespace vfApplication {

/// A toolbar that nobody sees: it keeps what was declared, and whether it is shown.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessToolbar final : public ToolbarInterface
{
public:
    /// @param declaration  what a UiSetup declared below the root of its toolbars; shared
    HeadlessToolbar(const CommandItem& declaration) : m_declaration(declaration) {}

    /// Shows the toolbar, and hides it.
    void toolbarOperationA() override { m_isShown = true; }
    void toolbarOperationB() override { m_isShown = false; }

    /// Nothing here.
    void toolbarOperationC() override {}
    void toolbarOperationD() override {}

    const CommandItem& getDeclaration() const { return m_declaration; }
    bool isShown() const { return m_isShown; }

private:
    CommandItem m_declaration;
    bool m_isShown = true;
};

} // namespace vfApplication
