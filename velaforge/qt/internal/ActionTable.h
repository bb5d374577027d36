// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/qt/Export.h>

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vfApplication {

/// One action for each command that a menu, a toolbar or the list of commands names: wherever it is shown, it has the
/// same text, keys and state.
///
/// What an action shows comes from the properties of the item that declares it, and where that has none from the
/// properties of the command, which is made anew each time it is asked: docs/window.md lists them.
class VFAPPLICATIONQT_EXPORT ActionTable : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        std::string name;
        vfBase::VfVariant argument;
        CommandItem item; ///< the first that declared more of it than the name
        QAction* action = nullptr;
        QList<QKeySequence> defaultKeys;
        QString toolTip; ///< without the key
        bool isKnown = false;
        bool isForScripts = false; ///< the window has another command for it
        bool isMissTold = false;
    };

    /// @param window  gets the actions, so that their keys work
    explicit ActionTable(QWidget& window);

    /// Has the keys of the actions work in another window of the program, too.
    void addWindow(QWidget& window);

    /// @return the action for a leaf of a declaration, the table's
    QAction* action(const CommandItem& item);
    QAction* action(const std::string& name);

    /// Has an action for each command that is registered, whether anybody declared it or not.
    void addAllCommands();

    /// Shows what the commands say now. Cheap enough to be called after every change.
    void refresh();

    /// Runs a command as if it was chosen: asks for the argument if it wants one and @p argument is empty.
    /// @return false when it is unknown, was given up, or failed as far as that can be told
    bool run(const std::string& name, const vfBase::VfVariant& argument);

    const std::vector<std::unique_ptr<Entry>>& entries() const { return m_entries; }

    /// Gives the commands the keys that the user chose, and all others those of their declarations. Keys that two would
    /// have stay with the first.
    void applyKeys();

    /// @return a command's name as a person reads it, made from the name of its class
    static QString labelFor(const std::string& name);

    /// @return the text without the marks of shortcut letters and without "..." at its end
    static QString plainText(const QString& text);

Q_SIGNALS:
    /// After a command was run, with or without success.
    void commandRun();

    /// @param reason  for a person to read
    void failed(const QString& command, const QString& reason);

private:
    Entry& entry(const std::string& name, const CommandItem& item);
    void refresh(Entry& entry);
    void show(Entry& entry, const Command& command);
    static void showToolTip(const Entry& entry);
    void joinGroup(const Entry& entry, const std::string& group);

    /// @param problem  continues "a command, which"
    void refreshUnknown(Entry& entry, const std::string& problem);

    QWidget& m_window;
    QList<QPointer<QWidget>> m_otherWindows;
    std::vector<std::unique_ptr<Entry>> m_entries;
    std::map<std::string, QActionGroup*> m_groups; ///< of commands of which one is on
};

} // namespace vfApplication
