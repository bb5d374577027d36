// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/ToolbarInterface.h>

namespace vfApplication {

/// A toolbar without a screen: it keeps its declaration and whether it is shown.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessToolbar final : public ToolbarInterface
{
public:
    /// @param declaration  what a UiSetup declared below the root of its toolbars; shared
    HeadlessToolbar(const CommandItem& declaration) : m_declaration(declaration) {}

    /// Shows the toolbar.
    void toolbarOperationA() override { m_isShown = true; }

    /// Hides the toolbar.
    void toolbarOperationB() override { m_isShown = false; }

    /// Do nothing.
    void toolbarOperationC() override {}
    void toolbarOperationD() override {}

    /// @return the declaration, shared with the UiSetup
    const CommandItem& getDeclaration() const { return m_declaration; }
    bool isShown() const { return m_isShown; }

private:
    CommandItem m_declaration;
    bool m_isShown = true;
};

} // namespace vfApplication
