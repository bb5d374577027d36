// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/MenuBuilder.h>

#include <velaforge/base/VfVariant.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/Text.h>

#include <QCoreApplication>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

namespace vfApplication {

namespace {

/// @return the menu of that name among the actions of a menu or a menu bar
QMenu* findMenu(const QWidget& parent, const QString& name)
{
    for (const QAction* action : parent.actions()) {
        if (action->menu() && action->menu()->objectName() == name)
            return action->menu();
    }
    return nullptr;
}

Qt::ToolButtonStyle buttonStyle(CommandItem::ToolbarHint hint, Qt::ToolButtonStyle otherwise)
{
    switch (hint) {
    case CommandItem::IconOnly:
        return Qt::ToolButtonIconOnly;
    case CommandItem::TextOnly:
        return Qt::ToolButtonTextOnly;
    case CommandItem::TextBesideIcon:
        return Qt::ToolButtonTextBesideIcon;
    case CommandItem::TextUnderIcon:
        return Qt::ToolButtonTextUnderIcon;
    default:
        return otherwise;
    }
}

} // namespace

QString MenuBuilder::title(const CommandItem& item)
{
    const vfBase::VfString text = item.getProperty("text").toString();
    const char* context = item.getContext();
    return QCoreApplication::translate(*context ? context : "CommandItem",
                                       text.empty() ? item.getCommand() : text.c_str());
}

QMenu& MenuBuilder::menuIn(QWidget& parent, const CommandItem& item)
{
    const QString name = toQt(vfBase::VfString(item.getCommand()));
    QMenu* menu = findMenu(parent, name);
    if (menu)
        return *menu;
    menu = new QMenu(title(item), &parent);
    menu->setObjectName(name);
    menu->setToolTipsVisible(true);
    // States of commands may have changed without a notification.
    QObject::connect(menu, &QMenu::aboutToShow, &m_actions, [actions = &m_actions] { actions->refresh(); });
    parent.addAction(menu->menuAction());
    return *menu;
}

QMenu* MenuBuilder::makeList(QWidget& parent, const CommandItem& item)
{
    const QAction* action = m_actions.action(item);
    auto* menu = new QMenu(action->text(), &parent);
    menu->setObjectName(toQt(vfBase::VfString(item.getCommand())));
    menu->setIcon(action->icon());
    menu->setToolTipsVisible(true);
    const Fill& fill = m_lists.at(item.getCommand());
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, fill] {
        menu->clear();
        fill(*menu);
    });
    return menu;
}

void MenuBuilder::addTo(QMenu& menu, const CommandItem& item)
{
    const std::string name = item.getCommand();
    if (!item.isEmpty()) {
        fillMenu(menuIn(menu, item), item);
    } else if (name.empty()) {
        menu.addSeparator();
    } else if (isList(item)) {
        if (!findMenu(menu, toQt(name)))
            menu.addMenu(makeList(menu, item));
    } else {
        QAction* action = m_actions.action(item);
        if (!menu.actions().contains(action))
            menu.addAction(action);
    }
}

void MenuBuilder::fillMenu(QMenu& menu, const CommandItem& item)
{
    if (std::find(m_above.begin(), m_above.end(), item.getImp()) != m_above.end())
        return;
    m_above.push_back(item.getImp());
    for (const CommandItem& child : item.getList())
        addTo(menu, child);
    m_above.pop_back();
}

void MenuBuilder::addMenus(QMenuBar& bar, const CommandItem& root)
{
    for (const CommandItem& item : root.getList()) {
        if (!item.isEmpty())
            fillMenu(menuIn(bar, item), item);
        else if (isList(item))
            bar.addMenu(makeList(bar, item));
        else if (*item.getCommand())
            bar.addAction(m_actions.action(item));
    }
}

void MenuBuilder::fillList(QMenu& menu, const std::string& command) const
{
    const auto found = m_lists.find(command);
    if (found != m_lists.end())
        found->second(menu);
}

void MenuBuilder::fillToolbar(QToolBar& bar, const CommandItem& item)
{
    if (std::find(m_above.begin(), m_above.end(), item.getImp()) != m_above.end())
        return;
    m_above.push_back(item.getImp());
    for (const CommandItem& child : item.getList()) {
        const std::string name = child.getCommand();
        const bool isMenu = !child.isEmpty() || isList(child);
        QAction* action = nullptr;
        if (!isMenu && name.empty()) {
            bar.addSeparator();
            continue;
        }
        if (!isMenu) {
            action = m_actions.action(child);
        } else {
            QMenu* menu = child.isEmpty() ? makeList(bar, child) : new QMenu(title(child), &bar);
            if (!child.isEmpty()) {
                QObject::connect(menu, &QMenu::aboutToShow, &m_actions,
                                 [actions = &m_actions] { actions->refresh(); });
                fillMenu(*menu, child);
            }
            action = menu->menuAction();
        }
        bar.addAction(action);
        if (auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action))) {
            button->setToolButtonStyle(buttonStyle(child.getToolbarHint(), bar.toolButtonStyle()));
            if (isMenu)
                button->setPopupMode(QToolButton::InstantPopup);
        }
    }
    m_above.pop_back();
}

} // namespace vfApplication
