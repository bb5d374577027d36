// SPDX-License-Identifier: MIT
#include "Program.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <QAbstractButton>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

#include <cstdlib>
#include <memory>
#include <thread>

namespace vfTest {

using vfApplication::Application;

struct Program::Setup : vfApplication::ApplicationSetup
{
    explicit Setup(const SheetUi& declared) : ui(declared) {}

    const vfApplication::UiSetup& getUiSetup() const override { return ui; }
    void onRegisterDocumentType() const override
    {
        auto* manager = new vfApplication::QtDocManager;
        Application::instance(false)->setDocManager(manager);
        new vfApplication::DocTemplate(manager, "Sheets", "sheet,txt", "", "sheet", "", "SheetView",
                                       &Sheet::s_classInfo, &SheetView::s_classInfo,
                                       vfApplication::DocTemplate::Visible, 0, vfBase::Options());
    }

    const SheetUi& ui;
};

struct Program::Callback final : vfApplication::ApplicationCallback
{
    explicit Callback(Program& owner) : program(owner) {}

    int onApplicationInitialized(Application*) override
    {
        if (program.onInitialized)
            program.onInitialized();
        startWhenShown();
        return 0;
    }

    void startWhenShown()
    {
        // A splash screen has events handled before the loop begins.
        QTimer::singleShot(0, qApp, [this] {
            if (!vfApplication::QtApplication::instance() || !program.window().isVisible()) {
                startWhenShown();
                return;
            }
            script = std::thread([this] {
                program.m_script();
                program.m_isScriptDone = true;
                QMetaObject::invokeMethod(
                    qApp, [this] { program.finish(); }, Qt::QueuedConnection);
            });
        });
    }
    void onClosingDocument(vfApplication::Document*) override {}
    void onDocumentCreated(vfApplication::Document*) override {}
    void callbackExtension() override {}

    Program& program;
    std::thread script;
};

namespace {

std::vector<std::string> withProgram(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "program");
    return arguments;
}

} // namespace

Program::Program(std::vector<std::string> arguments, std::unique_ptr<SheetUi> ui)
    : m_line(withProgram(std::move(arguments))),
      m_ui(ui ? std::move(ui) : std::make_unique<SheetUi>()),
      m_callback(std::make_unique<Callback>(*this))
{
    if (!std::getenv("DISPLAY"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vfBase::ApplicationInfo::instance().setApplicationName("program");
    vfApplication::QtApplicationProducer::install();
    m_application = std::make_unique<Application>(m_line.argc(), m_line.argv(), Setup(*m_ui));
    m_application->registerCallback(m_callback.get());
}

Program::Program(std::vector<std::string> arguments, const vfApplication::ApplicationSetup& setup)
    : m_line(withProgram(std::move(arguments))), m_callback(std::make_unique<Callback>(*this))
{
    vfBase::ApplicationInfo::instance().setApplicationName("program");
    m_application = std::make_unique<Application>(m_line.argc(), m_line.argv(), setup);
    m_application->registerCallback(m_callback.get());
}

Program::~Program() = default;

int Program::run(const std::function<void()>& script)
{
    m_script = script;
    const int code = m_application->run();
    // A script that has not come to its end may still wait for the thread of the window.
    while (m_callback->script.joinable() && !m_isScriptDone)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    if (m_callback->script.joinable())
        m_callback->script.join();
    return code;
}

void Program::finish()
{
    if (!asksAtTheEnd) {
        for (vfApplication::Document* document : m_application->getDocManager().getDocumentList())
            document->modify(false);
    }
    m_application->exit(0);
}

bool Program::waitForDialog(const char* name)
{
    return waitFor([name] { return dialog() && dialog()->objectName() == QLatin1String(name); });
}

bool Program::waitForNoDialog()
{
    return waitFor([] { return !dialog(); });
}

bool Program::answer(const char* dialogName, const char* button)
{
    if (!waitForDialog(dialogName))
        return false;
    return ui([button] {
        for (auto* candidate : dialog()->findChildren<QAbstractButton*>()) {
            const QString text = candidate->text().remove(QLatin1Char('&'));
            if (text != QLatin1String(button) || !candidate->isEnabled())
                continue;
            // The caller of the dialog continues after this call.
            QMetaObject::invokeMethod(candidate, &QAbstractButton::click, Qt::QueuedConnection);
            return true;
        }
        return false;
    });
}

void Program::pause(int milliseconds)
{
    const bool hasOtherThread = qApp && QThread::currentThread() != qApp->thread();
    for (int waited = 0; waited < milliseconds; waited += 10) {
        QThread::msleep(10);
        if (!hasOtherThread)
            continue;
        auto reached = std::make_shared<QSemaphore>();
        QMetaObject::invokeMethod(
            qApp, [reached] { reached->release(); }, Qt::QueuedConnection);
        reached->tryAcquire(1, 5000); // a window that has ended meanwhile reaches nothing
    }
}

vfApplication::MainWindow& Program::window() const
{
    return vfApplication::QtApplication::instance()->getImp();
}

vfApplication::QtDocManager& Program::manager() const
{
    return dynamic_cast<vfApplication::QtDocManager&>(m_application->getDocManager());
}

Sheet* Program::open(const std::string& path)
{
    return dynamic_cast<Sheet*>(m_application->openDocument(path.c_str(), vfBase::Options()));
}

Sheet* Program::sheet() const
{
    return dynamic_cast<Sheet*>(m_application->getActiveDocument());
}

QDialog* Program::dialog()
{
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

QAction* Program::action(const char* command) const
{
    return window().findChild<QAction*>(QString::fromUtf8(command));
}

bool Program::invoke(const char* command, const char* argument)
{
    return vfApplication::QtApplication::instance()->invokeCommand(
        command, argument ? vfBase::VfVariant(argument) : vfBase::VfVariant());
}

} // namespace vfTest
