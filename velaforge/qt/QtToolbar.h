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
    /// Makes a toolbar that is shown by @p bar, which must live as long as the main window. Shares @p
    /// declaration.
    QtToolbar(QToolBar& bar, const CommandItem& declaration);

    /// Shows the toolbar, and hides it.
    void toolbarOperationA() override;
    void toolbarOperationB() override;

    /// Has the commands of all menus and toolbars say anew what they are called and whether they can be used.
    void toolbarOperationC() override;

    /// Takes the title anew from the declaration, in the language of the user.
    void toolbarOperationD() override;

    /// Returns the widget.
    QToolBar& getWidget() const { return *m_bar; }

    /// Returns the declaration passed to the constructor.

    const CommandItem& getDeclaration() const { return m_declaration; }

private:
    QToolBar* m_bar;
    CommandItem m_declaration;
};

} // namespace vfApplication
