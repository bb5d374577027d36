// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>

#include <QMenu>
#include <QString>

#include <functional>
#include <map>
#include <string>
#include <vector>

class QMenuBar;
class QToolBar;

namespace vfApplication {

class ActionTable;

/// Makes menus and toolbars of what was declared.
///
/// A child with children becomes a menu, one without the command of that name, one without a name a separator. Menus of
/// one name in one place are one menu. A command that stands for a list, such as the recent files, becomes a menu that is
/// filled when it opens.
class MenuBuilder
{
public:
    using Fill = std::function<void(QMenu&)>;

    explicit MenuBuilder(ActionTable& actions) : m_actions(actions) {}

    /// Has that command stand for a menu, which @p fill fills anew each time it opens.
    void setList(const std::string& command, Fill fill) { m_lists[command] = std::move(fill); }

    /// Adds what stands below @p root to what the menu bar has. Of a command that a menu has already nothing is added.
    void addMenus(QMenuBar& bar, const CommandItem& root);

    /// Fills a menu with what a command stands for; nothing where it stands for no list.
    void fillList(QMenu& menu, const std::string& command) const;

    void fillToolbar(QToolBar& bar, const CommandItem& item);

    /// @return the title that a container's declaration stands for, in the language of the user
    static QString title(const CommandItem& item);

private:
    void fillMenu(QMenu& menu, const CommandItem& item);
    void addTo(QMenu& menu, const CommandItem& item);
    QMenu& menuIn(QWidget& parent, const CommandItem& item);
    bool isList(const CommandItem& item) const { return m_lists.count(item.getCommand()) > 0; }
    QMenu* makeList(QWidget& parent, const CommandItem& item);

    ActionTable& m_actions;
    std::map<std::string, Fill> m_lists;
    std::vector<const CommandItemPrivate*> m_above; ///< nothing keeps a declaration from containing itself
};

} // namespace vfApplication
