// SPDX-License-Identifier: MIT
#include "WindowScenario.h"

#include "Answers.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ViewFrame.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

#include <osg/Notify>

#include <QApplication>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QThreadPool>
#include <QTimer>
#include <QToolBar>

#include <filesystem>
#include <memory>

#include <unistd.h>

namespace vfLife {

using vfApplication::Application;
using vfApplication::ModuleRegistry;
using vfApplication::QtApplication;

namespace {

Application& application()
{
    return *Application::instance(false);
}

/// What came of a play.
struct Result
{
    bool hasPassed = false; ///< the exception arrived at the step
    bool isTold = false;
    std::string fault;

    void note(const std::string& text)
    {
        if (fault.empty())
            fault = "fault: " + text;
    }
};

Result& result()
{
    static Result& one = *new Result;
    return one;
}

void look(const QString& text)
{
    if (text.contains(QLatin1String(Thrown().what())))
        result().isTold = true;
}

/// Sees what is told on standard error.
struct Ear : osg::NotifyHandler
{
    void notify(osg::NotifySeverity, const char* message) override { look(QString::fromUtf8(message)); }
};

/// @return what a menu bar or a menu shows twice; empty if nothing
QString shownTwice(const QWidget& bar)
{
    QStringList names;
    for (const QAction* action : bar.actions()) {
        const QString name = action->menu() ? action->menu()->objectName() : action->objectName();
        if (!name.isEmpty() && names.contains(name) && name != QLatin1String("life::Command"))
            return name;
        names << name;
        if (action->menu()) {
            const QString below = shownTwice(*action->menu());
            if (!below.isEmpty())
                return below;
        }
    }
    return QString();
}

/// @return whether each tab names the document of its page
bool areTabsRight()
{
    const auto* tabs = qobject_cast<QTabWidget*>(window().findChild<QWidget*>(QStringLiteral("documents")));
    for (int i = 0; tabs && i < tabs->count(); ++i) {
        const auto* frame = static_cast<const vfApplication::ViewFrame*>(tabs->widget(i));
        const std::string name = frame->view().getDocument()->getUserReadableName().str();
        if (tabs->tabText(i).toStdString().compare(0, name.size(), name) != 0)
            return false;
    }
    return true;
}

void checkWindow()
{
    if (!areTabsRight())
        result().note("a tab has the name of another document");
    if (QGuiApplication::overrideCursor())
        result().note("the wait cursor is left");
    const QString twice = shownTwice(*window().menuBar());
    if (!twice.isEmpty())
        result().note("a menu shows twice: " + twice.toStdString());
    for (const char* name : {"File", "Edit"}) {
        if (!window().menuBar()->findChild<QMenu*>(QLatin1String(name)))
            result().note(std::string("there is no menu ") + name);
    }
    int bars = 0;
    for (const auto* bar : window().findChildren<QToolBar*>())
        bars += bar->objectName() == QLatin1String("toolbar:Standard") ? 1 : 0;
    if (bars != 1 || window().toolbars().size() != 1)
        result().note(std::to_string(bars) + " toolbars");
}

/// Does what programs do, after the hook has acted.
void goOn(const Answers& answers, bool isEnding)
{
    isEnding = isEnding || !window().isVisible();
    checkWindow();
    for (const char* path : {"b.obj", "f.obj"}) {
        Document* document = activate(path);
        if (!document) {
            result().note(std::string(path) + " cannot be opened any more");
            return;
        }
        attempt([&] { document->getCommandProcessor()->submit(makeCommand(), true); });
        attempt([&] { document->updateAllViews(nullptr); });
        settle();
    }
    attempt([] { QtApplication::instance()->rebuildMenus(); });
    settle();
    checkWindow();
    if (isEnding)
        return; // dialogs do not wait any more
    activate("b.obj")->modify(true);
    const int before = answers.count("revertQuestion");
    attempt([] { QtApplication::instance()->invokeCommand("vfApplicationQt::ActionRevert"); });
    if (answers.count("revertQuestion") == before)
        result().note("a document is reverted without a question");
}

std::unique_ptr<Answers>& answers()
{
    static auto& one = *new std::unique_ptr<Answers>;
    return one;
}

struct Starter : Callback
{
    explicit Starter(std::function<void()> toDo) : inEventLoop(std::move(toDo)) {}

    int onApplicationInitialized(Application* program) override
    {
        window().resize(200, 150); // quickly drawn
        startWhenShown();
        return Callback::onApplicationInitialized(program);
    }

    void startWhenShown()
    {
        QTimer::singleShot(0, qApp, [this] {
            if (QtApplication::instance() && window().isVisible())
                prepare();
            else
                startWhenShown();
        });
    }

    void prepare() const
    {
        answers() = std::make_unique<Answers>();
        QObject::connect(window().statusBar(), &QStatusBar::messageChanged, look);
        QtApplication::instance()->addListener(window(), [] {
            Actor::instance().reach("QtApplication::addListener: the listener", nullptr, nullptr);
        });
        QtApplication::setPrompt("life", [](QWidget&, const auto&, VfVariant& argument) {
            Actor::instance().reach("QtApplication::setPrompt: the prompt", nullptr, nullptr);
            argument = VfVariant(1);
            return true;
        });
        vfApplication::QtDockWindowContents::setContents("tools", [](QWidget& parent) -> QWidget* {
            Actor::instance().reach("QtDockWindowContents::setContents: the function", nullptr, nullptr);
            return new Widget("the widget in a dock window", parent);
        });
        application().getDockWindowManager().addNewOrGetExistingDockWindow(
            "tools", vfApplication::DockWindow::LeftDockArea, true, false, 0, nullptr);
        vfApplication::Registry::instance().getOptionsPageManager().addOptionsPageId("life::Page");
        activate("a.obj");
        Document* document = activate("b.obj");
        for (int i = 0; i < 3; ++i)
            document->getCommandProcessor()->submit(makeCommand(), true);
        document->getCommandProcessor()->undo();
        document->modify(true);
        settle();
        waitForOneThread();
        inEventLoop();
    }

    /// What looks at files does so on other threads, which a fork would not have.
    static void waitForOneThread()
    {
        const auto threads = [] {
            const std::filesystem::directory_iterator all("/proc/self/task");
            return std::distance(begin(all), end(all));
        };
        while (threads() > 1)
            QTest::qWait(1);
    }

    std::function<void()> inEventLoop;
};

std::string actOnWindow(Action action)
{
    if (!QtApplication::instance())
        return "-";
    if (action == Action::CloseWindow)
        return Actor::said(window().close());
    QtApplication::instance()->rebuildMenus();
    return "done";
}

} // namespace

WindowManager& manager()
{
    return dynamic_cast<WindowManager&>(application().getDocManager());
}

vfApplication::MainWindow& window()
{
    return QtApplication::instance()->getImp();
}

void attempt(const std::function<void()>& step)
{
    try {
        step();
    } catch (const std::exception& problem) {
        result().hasPassed = true;
        if (std::string(problem.what()).find(Thrown().what()) == std::string::npos)
            result().note(std::string("a step got another exception: ") + problem.what());
    }
}

void settle()
{
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window().refreshGuarded(); // as when the event loop has nothing left to do
    }
    for (const auto* lines : window().findChildren<QPlainTextEdit*>())
        look(lines->toPlainText());
}

Document* activate(const char* path)
{
    const std::string whole = std::filesystem::absolute(path).string();
    vfApplication::Document* found = manager().findDocumentByPath(whole.c_str());
    if (!found)
        attempt([&] { found = manager().createDocument(path, Options()); });
    if (found && application().getActiveDocument() != found)
        attempt([&] { found->activate(); });
    return dynamic_cast<Document*>(manager().findDocumentByPath(whole.c_str()));
}

const std::vector<std::pair<Action, std::string>>& windowActions()
{
    static const auto all = [] {
        auto both = actions();
        both.insert(both.end(),
                    {{Action::CloseWindow, "close the window"}, {Action::RebuildMenus, "rebuild the menus"}});
        return both;
    }();
    return all;
}

void runWindow(Group::Mode mode, const vfTest::TemporaryDirectory& directory,
               const std::function<void()>& inEventLoop)
{
    for (const char* name : {"a.obj", "b.obj", "d.obj"})
        directory.write(name, name);
    if (chdir(directory.path().c_str()) != 0)
        return;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QThreadPool::globalInstance()->setExpiryTimeout(0); // Qt draws with several threads
    osg::setNotifyHandler(new Ear);
    Actor::instance().actOnWindow = actOnWindow;
    vfApplication::QtApplicationProducer::install();
    static auto* ui = new WindowUi; // its module outlives the application
    ui->mode = mode;
    vfBase::ApplicationInfo::instance().setApplicationName("life");
    char name[] = "life";
    char* arguments[] = {name, nullptr};
    int count = 1;
    Starter callback(inEventLoop);
    {
        Application program(count, arguments, WindowSetup(*ui));
        program.registerCallback(&callback);
        ModuleRegistry::instance(false)->addModule(new Module);
        program.run();
        attempt([] { answers().reset(); });
    }
}

void endProgram()
{
    for (vfApplication::Document* document : application().getDocManager().getDocumentList())
        document->modify(false);
    application().exit(0);
}

void play(const Row& row, Action action, int nth)
{
    Actor::instance().arm(row.hook, action, nth);
    for (int i = 0; i < nth; ++i) {
        attempt(row.step);
        settle();
    }
    if (!Actor::instance().hasActed())
        Actor::instance().arm("", Action::None, 0); // what goOn() reaches is no concern of this row
    attempt([action] { goOn(*answers(), action == Action::CloseAll || action == Action::CloseWindow); });
    endProgram();
}

std::string verdict()
{
    const Population& left = population();
    if (left.documents != 0 || left.views != 0 || left.commands != 0)
        result().note(std::to_string(left.documents) + " documents, " + std::to_string(left.views) +
                      " views and " + std::to_string(left.commands) + " commands are left");
    if (!result().fault.empty())
        return result().fault;
    if (!Actor::instance().hasActed())
        return "not reached";
    if (Actor::instance().outcome() != "thrown")
        return Actor::instance().outcome();
    return result().isTold ? "told" : result().hasPassed ? "passes" : "caught";
}

} // namespace vfLife
