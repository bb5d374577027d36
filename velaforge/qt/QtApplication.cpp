// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtApplication.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/QtStatusBar.h>
#include <velaforge/qt/QtTitleBar.h>
#include <velaforge/qt/QtToolbar.h>
#include <velaforge/qt/internal/Display.h>
#include <velaforge/qt/internal/Docks.h>
#include <velaforge/qt/internal/DocumentReloader.h>
#include <velaforge/qt/internal/Languages.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Splash.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/WindowSettings.h>
#include <velaforge/toolkit/RequestedCommands.h>
#include <velaforge/toolkit/Tell.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QByteArrayList>
#include <QEvent>
#include <QTimer>

#include <cassert>
#include <cstdio>
#include <cstdlib>

namespace vfApplication {

namespace {

QtApplication* current = nullptr;

constexpr int millisecondsBetweenLooks = 50;

/// Shows what an event's handler throws: the toolkit cannot pass it on.
class GuardedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            if (current)
                current->showProblem(vfBase::VfString(), fromQt(currentReason()));
        }
        return true;
    }
};

QByteArrayList& startMessages()
{
    static QByteArrayList kept;
    return kept;
}

/// Qt ends the process by a signal when it finds no platform. A person gets one line instead: what was said before that
/// is what went wrong.
void handleStartMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    const QByteArray line = message.toLocal8Bit().simplified();
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s: %s\n", vfBase::ApplicationInfo::instance().getApplicationName(),
                     startMessages().value(0, line).constData());
        std::_Exit(EXIT_FAILURE);
    }
    if (type != QtDebugMsg && type != QtInfoMsg)
        startMessages() << line;
}

struct Toolkit
{
    Toolkit(int& argc, char** argv)
    {
        // Qt by itself would look for an X display even where there is but another.
        QByteArray platform;
        if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
            vfApplication::displayError(argc, argv, platform);
        if (!platform.isEmpty())
            qputenv("QT_QPA_PLATFORM", platform);
        const QtMessageHandler before = qInstallMessageHandler(handleStartMessage);
        QCoreApplication::setApplicationName(
            toQt(vfBase::VfString(vfBase::ApplicationInfo::instance().getApplicationName())));
        application = std::make_unique<GuardedApplication>(argc, argv);
        qInstallMessageHandler(before);
        letGoOfDisplay();
        for (const QByteArray& line : startMessages())
            qWarning("%s", line.constData());
        application->setQuitOnLastWindowClosed(false);
    }

    std::unique_ptr<GuardedApplication> application;
};

} // namespace

struct QtApplicationPrivate
{
    QtApplicationPrivate(int& argc, char** argv) : toolkit(argc, argv) {}

    /// First, so that it is destroyed last.
    Toolkit toolkit;
    Languages languages;
    Splash splash;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DocumentReloader> reloader;
    bool isExitRequested = false;
    int exitCode = 0;
    bool hasCommandFailed = false; ///< one of the command line
};

namespace {

/// Those of the command line, which is read before there is a shell.
RequestedCommands& requestedCommands()
{
    static RequestedCommands asked;
    return asked;
}

} // namespace

QtApplication::QtApplication(int& argc, char** argv)
{
    begin(argc, argv);
}

QtApplication::~QtApplication()
{
    end();
}

void QtApplication::begin(int& argc, char** argv)
{
    d = std::make_unique<QtApplicationPrivate>(argc, argv);
    current = this;
    d->languages.set(toQt(WindowSettings::instance().language));
    d->window = std::make_unique<MainWindow>();
    d->reloader = std::make_unique<DocumentReloader>(*d->window);
}

void QtApplication::end()
{
    // Also of an application that only printed its help, and so has no window.
    requestedCommands() = RequestedCommands();
    if (!d)
        return;
    // What asked to be deleted while the event loop was at its end.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    d->reloader.reset();
    current = nullptr;
    d->window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    d.reset();
}

QtApplicationPrivate& QtApplication::parts()
{
    if (!d) {
        const Application* application = Application::instance(false);
        assert(application && "without an application the shell has no window");
        begin(application->getArgumentCount(), application->getArgumentVector());
    }
    return *d;
}

QtApplication* QtApplication::instance()
{
    return current;
}

vfBase::VfString QtApplication::displayError(int argc, char** argv)
{
    QByteArray platform;
    return fromQt(vfApplication::displayError(argc, argv, platform));
}

void QtApplication::declareOptions(vfBase::ArgumentParser& parser)
{
    RequestedCommands::declareOptions(parser);
}

void QtApplication::readOptions(vfBase::ArgumentParser& parser)
{
    requestedCommands().readOptions(parser);
}

int QtApplication::onBeforeRun()
{
    readOptions(Application::instance(false)->getArgumentParser());
    parts().splash.show();
    return 0;
}

void QtApplication::prepareOpenGL()
{
    MainWindow::prepareOpenGL();
}

void QtApplication::runRequestedCommands()
{
    // A question of the start is answered first.
    if (QApplication::activeModalWidget()) {
        QTimer::singleShot(millisecondsBetweenLooks, d->window.get(), [this] { runRequestedCommands(); });
        return;
    }
    const auto fail = [this](const vfBase::VfString& subject, const vfBase::VfString& reason) {
        tell(subject, reason);
        showProblem(subject, reason);
    };
    const auto failureCount = [] {
        const auto* manager =
            dynamic_cast<const QtDocManager*>(&Application::instance(false)->getDocManager());
        return manager ? manager->getFailureCount() : 0u;
    };
    const RequestedCommands::Result result =
        requestedCommands().run({fail, failureCount, [this] { return d->isExitRequested; }});
    d->hasCommandFailed = result != RequestedCommands::Result::Done;
    d->window->refreshGuarded();
    updateActions();
}

int QtApplication::runEventLoop()
{
    if (parts().isExitRequested)
        return d->exitCode;
    d->window->build();
    d->window->present();
    d->splash.finish(*d->window);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     d->window.get(), &MainWindow::refreshGuarded);
    d->window->refreshGuarded();
    if (!requestedCommands().isEmpty())
        QMetaObject::invokeMethod(
            d->window.get(), [this] { runRequestedCommands(); }, Qt::QueuedConnection);
    int code = QApplication::exec();
    if (d->window->isVisible()) {
        d->window->docks().save();
        d->window->hide();
    }
    if (d->isExitRequested)
        code = d->exitCode;
    return code == 0 && d->hasCommandFailed ? requestFailed : code;
}

int QtApplication::onAfterRun()
{
    return 0;
}

void QtApplication::exit(int code)
{
    parts().isExitRequested = true;
    d->exitCode = code;
    QCoreApplication::exit(code);
}

void QtApplication::shellExtensionA() {}

StatusBar& QtApplication::getStatusBar()
{
    return parts().window->shellStatusBar();
}

void QtApplication::shellExtensionB() {}

void QtApplication::shellExtensionC() {}

void QtApplication::addFileToFileSystemWatcher(vfBase::VfString path)
{
    parts().reloader->add(path);
}

void QtApplication::removeFileFromFileSystemWatcher(vfBase::VfString path)
{
    if (d)
        d->reloader->remove(path);
}

QMainWindow& QtApplication::getMainWindow() const
{
    return *d->window;
}

QtTitleBar& QtApplication::getTitleBar() const
{
    return d->window->titleBar();
}

const std::vector<std::unique_ptr<QtToolbar>>& QtApplication::getToolbars() const
{
    return d->window->toolbars();
}

void QtApplication::updateActions()
{
    d->window->actionTable().refresh();
    Q_EMIT d->window->stateChanged();
}

void QtApplication::addListener(QObject& context, std::function<void()> listener)
{
    QObject::connect(d->window.get(), &MainWindow::stateChanged, &context, std::move(listener));
}

void QtApplication::rebuildMenus()
{
    d->window->rebuildMenus();
}

bool QtApplication::invokeCommand(const char* name, const vfBase::VfVariant& argument)
{
    return d->window->actionTable().run(name, argument);
}

void QtApplication::showProblem(const vfBase::VfString& subject, const vfBase::VfString& reason)
{
    d->window->showProblem(toQt(subject), toQt(reason));
}

void QtApplication::showActivity(const vfBase::VfString& text)
{
    if (!d->splash.showText(toQt(text)))
        getStatusBar().updateStatus(StatusBarMessage, text.c_str(), 0);
}

void QtApplication::addTranslations(const char* directory, const char* name)
{
    Languages::addTranslations(QString::fromUtf8(directory), QString::fromUtf8(name));
}

std::vector<vfBase::VfString> QtApplication::getLanguages() const
{
    std::vector<vfBase::VfString> languages;
    for (const QString& language : Languages::available())
        languages.push_back(fromQt(language));
    return languages;
}

vfBase::VfString QtApplication::getLanguage() const
{
    return fromQt(d->languages.current());
}

void QtApplication::setLanguage(const vfBase::VfString& language)
{
    WindowSettings::instance().language = language.str();
    d->languages.set(toQt(language));
}

MainWindow& QtApplication::getImp() const
{
    return *d->window;
}

void QtApplication::setOtherFiles(Document& document, const std::vector<vfBase::VfString>& paths)
{
    if (d && d->reloader)
        d->reloader->setOtherFiles(document, paths);
}

DocumentReloader& QtApplication::getReloader() const
{
    return *d->reloader;
}

} // namespace vfApplication
