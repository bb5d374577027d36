// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDialog>
#include <QPointer>

class QAction;
class QLineEdit;
class QMenu;
class QTreeWidget;

namespace vfApplication {

class ActionTable;

/// All commands that a window offers, and its dock windows, with a search: what is typed must be found in a name in that order,
/// be it with gaps. Names that hold it in one piece come first, and of those the ones that begin with it. Commands for
/// scripts, whose property "scriptOnly" says so, are left out.
class VFAPPLICATIONQT_EXPORT CommandPalette : public QDialog
{
    Q_OBJECT

public:
    /// @param dockWindows  a menu with an entry for each dock window, which is listed too; it must outlive the list
    CommandPalette(QWidget& parent, ActionTable& actions, QMenu& dockWindows);

    /// @return the command chosen; null when it was given up
    QAction* chosen() const { return m_chosen; }

    /// @return how well a name goes with what was typed: the less the better, -1 not at all
    static int rank(const QString& name, const QString& typed);

    void accept() override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void search(const QString& typed);

    ActionTable& m_actions;
    QMenu& m_dockWindows;
    QLineEdit* m_input;
    QTreeWidget* m_list;
    QPointer<QAction> m_chosen;
};

} // namespace vfApplication
