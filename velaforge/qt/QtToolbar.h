// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>
#include <velaforge/qt/Export.h>
#include <velaforge/shell/ToolbarInterface.h>

class QToolBar;

namespace vfApplication {

/// A toolbar of the main window, as it was declared.
class VFAPPLICATIONQT_EXPORT QtToolbar final : public ToolbarInterface
{
public:
    /// @param bar  lives as long as the main window
    QtToolbar(QToolBar& bar, const CommandItem& declaration);

    /// Shows the toolbar, and hides it.
    void toolbarOperationA() override;
    void toolbarOperationB() override;

    /// Has the commands of all menus and toolbars say anew what they are called and whether they can be used.
    void toolbarOperationC() override;

    /// Takes the title anew from the declaration, in the language of the user.
    void toolbarOperationD() override;

    QToolBar& getWidget() const { return *m_bar; }
    const CommandItem& getDeclaration() const { return m_declaration; }

private:
    QToolBar* m_bar;
    CommandItem m_declaration;
};

} // namespace vfApplication
