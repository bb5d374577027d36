// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/ToolbarInterface.h>

namespace vfApplication {

/// A toolbar for programs without a screen: stores its declaration and whether it is shown.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessToolbar final : public ToolbarInterface
{
public:
    /// Makes a toolbar that shares @p declaration: a child of the root that UiSetup::setupToolbars got.
    HeadlessToolbar(const CommandItem& declaration) : m_declaration(declaration) {}

    /// Shows the toolbar.
    void toolbarOperationA() override { m_isShown = true; }

    /// Hides the toolbar.
    void toolbarOperationB() override { m_isShown = false; }

    /// Does nothing.
    void toolbarOperationC() override {}

    /// Does nothing.
    void toolbarOperationD() override {}

    /// Returns the declaration passed to the constructor.
    const CommandItem& getDeclaration() const { return m_declaration; }

    /// Returns whether the toolbar is shown; true unless hidden.
    bool isShown() const { return m_isShown; }

private:
    CommandItem m_declaration;
    bool m_isShown = true;
};

} // namespace vfApplication
