// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDialog>
#include <QHash>
#include <QKeySequence>

class QDialogButtonBox;
class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace vfApplication {

class ActionTable;

/// The keys of all commands, to be changed. Two commands that clash, be it that the keys of one begin those of the other,
/// are both marked and told, and nothing is taken over while there are any.
class VFAPPLICATIONQT_EXPORT ShortcutEditor : public QDialog
{
    Q_OBJECT

public:
    ShortcutEditor(QWidget& parent, ActionTable& actions);

    /// Gives a command other keys, here in the dialog. Empty for none.
    void setKeys(const QString& command, const QList<QKeySequence>& keys);

    /// @return the names of the commands whose keys clash with others', empty for none
    QStringList clashes() const;

    /// @return whether typing the one could mean the other
    static bool clash(const QKeySequence& one, const QKeySequence& other);

    void accept() override;

private:
    void fill();
    void filter(const QString& typed);
    void showCurrent();
    void showClashes();
    void restoreDefaults();

    ActionTable& m_actions;
    QLineEdit* m_search;
    QTreeWidget* m_list;
    QKeySequenceEdit* m_edit;
    QLabel* m_message;
    QDialogButtonBox* m_buttons;
    QHash<QString, QList<QKeySequence>> m_keys;
    QHash<QString, QList<QKeySequence>> m_before;
};

} // namespace vfApplication
