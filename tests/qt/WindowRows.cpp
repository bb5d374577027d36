// SPDX-License-Identifier: MIT
// What users and programs do that reaches a hook.
#include "WindowScenario.h"

#include <velaforge/application/Application.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtDockWindow.h>
#include <velaforge/qt/internal/DocumentReloader.h>
#include <velaforge/qt/internal/FileWatcher.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <filesystem>

namespace vfLife {

using vfApplication::Application;
using vfApplication::DockWindowManager;
using vfApplication::QtApplication;
using vfApplication::QtDockWindow;

namespace {

using Step = std::function<void()>;

Application& application()
{
    return *Application::instance(false);
}

DockWindowManager& dockWindows()
{
    return application().getDockWindowManager();
}

void press(QWidget* widget)
{
    if (widget)
        QTest::mouseClick(widget, Qt::LeftButton);
}

void run(const char* command)
{
    QtApplication::instance()->invokeCommand((std::string("vfApplicationQt::") + command).c_str());
}

/// Makes b.obj the active document, with changes that are not saved, which it has at first.
Document* activateChanged()
{
    Document* document = activate("b.obj");
    if (document)
        document->modify(true);
    return document;
}

/// Chooses a command of the shell for b.obj.
Step shellCommand(const char* command)
{
    return [command] {
        if (activateChanged())
            run(command);
    };
}

/// Opens a menu of the bar and presses what stands for a command in it; a menu there opens.
Step chooseInMenu(const char* name, const char* command)
{
    return [name, command] {
        activate("b.obj");
        QPointer<QMenu> menu = window().menuBar()->findChild<QMenu*>(QLatin1String(name));
        if (!menu)
            return;
        menu->popup(QPoint(10, 10));
        for (QAction* action : menu ? menu->actions() : QList<QAction*>()) {
            const QString id = action->menu() ? action->menu()->objectName() : action->objectName();
            if (id != QLatin1String(command))
                continue;
            if (action->menu())
                action->menu()->popup(QPoint(20, 20));
            else
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                  menu->actionGeometry(action).center());
            break;
        }
        if (menu)
            menu->close();
    };
}

void pressToolbar()
{
    activate("b.obj");
    for (auto* button : window().findChildren<QToolButton*>()) {
        if (button->defaultAction() &&
            button->defaultAction()->objectName() == QLatin1String("life::Command")) {
            press(button);
            return;
        }
    }
}

QTabBar* tabBar()
{
    return window().centralWidget()->findChild<QTabBar*>();
}

void closeTab()
{
    QTabBar* bar = tabBar();
    if (!bar || bar->count() == 0)
        return;
    QWidget* button = bar->tabButton(bar->currentIndex(), QTabBar::RightSide);
    press(button ? button : bar->tabButton(bar->currentIndex(), QTabBar::LeftSide));
}

void closeFirstTab()
{
    for (const char* path : {"a.obj", "b.obj", "f.obj"})
        activate(path);
    tabBar()->setCurrentIndex(0);
    closeTab();
}

void closeChangedTab()
{
    if (activateChanged())
        closeTab();
}

void closeOneOfTwoTabs()
{
    if (Document* document = activate("b.obj")) {
        document->getDocumentTemplate()->createView(document, Options());
        closeTab();
    }
}

void chooseOtherTab()
{
    QTabBar* bar = tabBar();
    if (bar && bar->count() > 1)
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier,
                          bar->tabRect(bar->currentIndex() == 0 ? 1 : 0).center());
}

/// @return the window of b.obj's view, where it has one
QWidget* viewWindow()
{
    for (auto* sub : window().findChildren<QMdiSubWindow*>()) {
        if (sub->windowTitle().startsWith(QLatin1String("b.obj")))
            return sub;
    }
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top != &window() && top->isVisible() && top->windowTitle().startsWith(QLatin1String("b.obj")))
            return top;
    }
    return nullptr;
}

void closeViewWindow()
{
    QWidget* shown = activateChanged() ? viewWindow() : nullptr;
    if (shown)
        shown->close();
}

void closeMainWindow()
{
    if (activateChanged())
        window().close();
}

QWidget* canvas()
{
    Document* document = activate("b.obj");
    auto* view = document ? dynamic_cast<vfApplication::QtView*>(document->getFirstView()) : nullptr;
    return view ? view->getWidget() : nullptr;
}

// --- dock windows

QtDockWindow* tools()
{
    vfApplication::DockWindow* found = dockWindows().findDockWindow("tools");
    return found ? dynamic_cast<QtDockWindow*>(found->getDockWindowInterface()) : nullptr;
}

/// Has a dock window anew, visible. @param id  tells of what kind
void add(const char* id)
{
    dockWindows().removeDockWindow(id);
    settle();
    dockWindows().addNewOrGetExistingDockWindow(id, vfApplication::DockWindow::LeftDockArea, true, false, 0,
                                                nullptr);
    settle();
}

/// With the panel of "tools", which hides itself or not.
Step withTools(bool hidesItself, const std::function<void(QDockWidget&)>& step)
{
    return [hidesItself, step] {
        if (!tools())
            add("tools");
        if (tools()) {
            tools()->setVisible(true);
            tools()->setAutoHide(hidesItself);
        }
        if (tools() && tools()->getWidget())
            step(*tools()->getWidget());
    };
}

void pressStrip()
{
    press(window().findChild<QToolButton*>(QStringLiteral("autoHide:tools")));
}

/// Has the watcher find that the file of an open document was changed or removed.
void seeOnDisk(const char* path, void (vfApplication::FileWatcher::*happening)(const QByteArray&))
{
    activate(path);
    auto* watcher = QtApplication::instance()->getReloader().findChild<vfApplication::FileWatcher*>();
    const QByteArray whole = QByteArray::fromStdString(std::filesystem::absolute(path).string());
    QTimer::singleShot(0, watcher, [watcher, happening, whole] { Q_EMIT(watcher->*happening)(whole); });
}

void changeOnDisk()
{
    seeOnDisk("b.obj", &vfApplication::FileWatcher::changed);
}

void removeFromDisk()
{
    seeOnDisk("a.obj", &vfApplication::FileWatcher::removed);
}

void switchLanguage()
{
    QtApplication& shell = *QtApplication::instance();
    shell.setLanguage(shell.getLanguage() == "de" ? "en" : "de");
}

void open(const char* path)
{
    QtApplication::instance()->invokeCommand("vfApplicationQt::ActionOpen", VfVariant(path));
}

int number = 0;

/// Opens a file that was not open.
void openAnother()
{
    open(("another" + std::to_string(++number) + ".obj").c_str());
}

} // namespace

const std::vector<Group>& groups()
{
    using vfApplication::UiSetup;
    static const std::vector<Group> all{
        {"ListenersAndPrompts",
         {
             {"QtApplication::addListener: the listener", "after a command",
              [] { QtApplication::instance()->invokeCommand("life::Command", VfVariant(1)); }},
             {"QtApplication::addListener: the listener", "after another document became active",
              [] { activate(application().getActiveDocument() == activate("a.obj") ? "b.obj" : "a.obj"); }},
             {"QtApplication::addListener: the listener", "after a change of the undo history",
              [] { activate("b.obj")->getCommandProcessor()->submit(makeCommand(), true); }},
             {"QtApplication::addListener: the listener", "after a change of the name",
              [] {
                  activate("b.obj")->setFilename(("e" + std::to_string(++number) + ".obj").c_str(), true);
              }},
             {"QtApplication::setPrompt: the prompt", "",
              [] { QtApplication::instance()->invokeCommand("life::Asking"); }},
         }},
        {"Commands",
         {
             {"Command::invoke", "from a menu", chooseInMenu("Edit", "life::Command")},
             {"Command::invoke", "from a toolbar", pressToolbar},
             {"Command::invoke", "from the list of commands", [] { run("ActionCommands"); }},
             {"Command::Do", "Edit > Redo",
              [] {
                  activate("b.obj")->getCommandProcessor()->undo();
                  run("ActionRedo");
              }},
             {"Command::undo", "Edit > Undo", chooseInMenu("Edit", "vfApplicationQt::ActionUndo")},
             {"Command::canUndo", "while a menu opens", chooseInMenu("Edit", "")},
             {"Command::canUndo", "when the event loop has nothing to do", [] { window().refreshGuarded(); }},
             {"ClassInfo: creator of a command", "while a menu opens", chooseInMenu("Edit", "")},
             {"ClassInfo: creator of a command", "when the list of commands opens",
              [] { run("ActionCommands"); }},
             {"~Command", "Edit > Redo", [] { run("ActionRedo"); }},
         }},
        {"Views",
         {
             {"QtView::createWidget", "File > Open", openAnother},
             {"QtView::createWidget", "View > New view",
              [] {
                  activate("b.obj");
                  run("ActionNewView");
              }},
             {"View::onActivateView", "when the user chooses a tab", chooseOtherTab},
             {"View::onActivateView", "when the user closes a tab", closeTab},
             {"the widget of a view is pressed", "", [] { press(canvas()); }, true},
             {"the widget of a view is hidden", "when the user chooses another tab", chooseOtherTab},
             {"the widget of a view is shown", "when the user closes another tab", closeTab},
             {"the widget of a view is shown", "when the user closes the first of three tabs", closeFirstTab},
             {"the widget of a view is destroyed", "when the user closes a tab", closeTab},
             {"the widget of a view is translated", "", switchLanguage},
         }},
        {"Closing",
         {
             {"Document::onSaveModified", "when the user closes a tab", closeChangedTab},
             {"Document::deleteContents", "when the user closes a tab", closeChangedTab},
             {"View::onClosingDocument", "when the user closes a tab", closeChangedTab},
             {"~View", "when the user closes a tab", closeChangedTab},
             {"~View", "when the user closes one of two tabs of a document", closeOneOfTwoTabs},
             {"Document::deleteContents", "File > Close all", shellCommand("ActionCloseAll")},
             {"Document::onSaveModified", "when the user closes the window", closeMainWindow},
             {"View::onActivateView", "when the user closes the window", closeMainWindow},
             {"QtDocManager::closeAllWithQuestions", "when the user closes the window", closeMainWindow},
         }},
        {"SavingAndReadingAgain",
         {
             {"Document::doSaveDocument", "File > Save", shellCommand("ActionSave")},
             {"View::onChangeFilename", "File > Save", shellCommand("ActionSave")},
             {"DocManager::selectDocumentSavePath", "File > Save as", shellCommand("ActionSaveAs")},
             {"Document::doOpenDocument", "File > Revert", shellCommand("ActionRevert")},
             {"DocManager::askForConfirmRevert", "File > Revert", shellCommand("ActionRevert")},
             {"the dialog revertQuestion is open", "File > Revert", shellCommand("ActionRevert")},
             {"the dialog saveQuestion is open", "when the user closes a tab", closeChangedTab},
             {"the dialog reloadQuestion is open", "after a change on disk", changeOnDisk},
             {"QtDocManager::reload", "after a change on disk", changeOnDisk},
             {"QtDocManager::beginWork", "after a change on disk", changeOnDisk},
             {"Document::doOpenDocument", "after a change on disk", changeOnDisk},
             {"QtDocManager::endWork", "after a change on disk", changeOnDisk},
             {"View::onChangeFilename", "when the file is gone", removeFromDisk},
         }},
        {"Opening",
         {
             {"QtDocManager::beginWork", "File > Open", openAnother},
             {"QtDocManager::endWork", "File > Open", openAnother},
             {"QtDocManager::reportFailure", "when a file is opened that does not exist",
              [] { open("none.xyz"); }},
             {"the dialog QFileDialog is open", "File > Open", [] { run("ActionOpen"); }},
             {"DocManager::selectDocumentTypeUser", "File > New", [] { run("ActionNew"); }},
             {"the dialog QInputDialog is open", "File > New", [] { run("ActionNew"); }},
         }},
        {"DockWindows",
         {
             {"QtDockWindowContents::createContents", "", [] { add(announceTools()); }},
             {"QtDockWindowContents::setContents: the function", "", [] { add("tools"); }},
             {"DockWindow::applyDefaultState", "", [] { add(announceTools()); }},
             {"DockWindow::getId", "when the user opens the list of dock windows",
              [] {
                  add(announcePanel());
                  chooseInMenu("Edit", "vfApplicationQt::ActionDockWindows")();
              }},
             {"DockWindow::getId", "when a dock window is added", [] { add(announcePanel()); }},
             {"~DockWindow", "when the program removes it",
              [] {
                  add(announceTools());
                  add("tools");
              }},
             {"the widget in a dock window is hidden", "when the user closes it",
              withTools(false, [](QDockWidget& panel) { panel.close(); })},
             {"the widget in a dock window is shown", "when the user tears it off",
              withTools(false, [](QDockWidget& panel) { panel.setFloating(true); })},
             {"the menu of a dock window is open", "",
              withTools(false,
                        [](QDockWidget& panel) {
                            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                                    QPoint(50, 50));
                            QApplication::sendEvent(&panel, &event);
                        })},
             {"the widget in a dock window is hidden", "when it begins to hide itself",
              withTools(true, [](auto&) {})},
             {"the widget in a dock window is shown", "when the user presses the button at the edge",
              withTools(true, [](auto&) { pressStrip(); })},
             {"the widget in a dock window is hidden", "when the user presses the button at the edge again",
              withTools(true,
                        [](auto&) {
                            pressStrip();
                            pressStrip();
                        })},
             {"the widget in a dock window is destroyed", "when the program removes it",
              [] { add("tools"); }},
         }},
        {"Options",
         {
             {"UiOptionsPage::loadOptions", "the options dialog", [] { run("ActionOptions"); }},
             {"UiOptionsPage::getGroupName", "the options dialog", [] { run("ActionOptions"); }},
             {"QtOptionsContents::createWidget", "the options dialog", [] { run("ActionOptions"); }},
             {"QtOptionsContents::getTitle", "the options dialog", [] { run("ActionOptions"); }},
             {"the dialog options is open", "the options dialog", [] { run("ActionOptions"); }},
             {"UiOptionsPage::applyOptions", "the options dialog", [] { run("ActionOptions"); }},
             {"~UiOptionsPage", "the options dialog", [] { run("ActionOptions"); }},
         }},
        {"Declarations",
         {
             {"UiSetup::setupMenus", "", [] { QtApplication::instance()->rebuildMenus(); }},
             {"UiSetup::setupViewMenus", "", [] { QtApplication::instance()->rebuildMenus(); }},
             {"UiSetup::setupToolbars", "", [] { QtApplication::instance()->rebuildMenus(); }},
             {"UiSetup::setupMenus", "when the language changes", switchLanguage},
         }},
        {"SubWindows",
         {
             {"View::onActivateView", "when the user closes a sub-window", closeViewWindow},
             {"~View", "when the user closes a sub-window", closeViewWindow},
         },
         UiSetup::SubWindows},
        {"WindowsOfTheirOwn",
         {
             {"View::onActivateView", "when the user closes a view's window", closeViewWindow},
             {"~View", "when the user closes a view's window", closeViewWindow},
         },
         UiSetup::SeparateWindows},
    };
    return all;
}

} // namespace vfLife
