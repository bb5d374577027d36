// SPDX-License-Identifier: MIT
// A whole program with a shell, a module, dock windows and a document, that writes what happens to standard output until
// the process is gone. With "throw <hook>" that hook throws, with "fail <hook>" it returns failure.
#include "support/Recorder.h"
#include "support/RecordingDockWindows.h"
#include "support/RecordingDocument.h"
#include "support/RecordingShell.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>

#include <osgDB/Registry>

#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using vfApplication::Application;
using vfTest::record;
using vfTest::recorder;

std::string throwing;
std::string failing;

/// Throws in the hook that was asked to.
void reach(const std::string& hook)
{
    if (throwing == hook)
        throw std::runtime_error(hook);
}

/// Records it when the settings are loaded and saved.
class WatchedSettings : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(lifecycle, WatchedSettings) WatchedSettings() = default;
    WatchedSettings(const WatchedSettings& other, const osg::CopyOp& copyop)
        : SettingsObjectPrivate(other, copyop)
    {}
    int getValue() const { return m_value; }
    void setValue(int value)
    {
        record("settings are loaded");
        m_value = value;
    }

private:
    int m_value = 0;
};

const vfBase::SettingsProperties properties(
    "lifecycle::WatchedSettings",
    {vfBase::SettingsProperties::property("value", &WatchedSettings::getValue, &WatchedSettings::setValue)});

/// Records each search for the directory of modules.
class WatchedPath : public osgDB::FindFileCallback
{
public:
    std::string findLibraryFile(const std::string& name, const osgDB::Options*,
                                osgDB::CaseSensitivity) override
    {
        if (name.compare(0, 10, "vfModules-") == 0)
            record("modules are looked for");
        return "";
    }
};

class WatchedNotify : public osg::NotifyHandler
{
public:
    void notify(osg::NotifySeverity severity, const char* message) override
    {
        std::string text = message;
        while (!text.empty() && text.back() == '\n')
            text.pop_back();
        if (severity > osg::ALWAYS && !text.empty())
            record("told: " + text);
    }
};

struct WatchedModule : vfApplication::Module
{
    ~WatchedModule() override { record("~module"); }
    const char* getId() const override { return "lifecycle::Module"; }
    const char* getModuleName() const override { return "Module"; }
};

const char* const windowKey = "lifecycle::Window";

struct WindowProducer : vfApplication::DockWindowRegistryPrivate::Producer
{
    const char* getKey() override { return windowKey; }
    vfApplication::DockWindow* create() override { return new vfTest::RecordedWindow(windowKey); }
};
const vfApplication::DockWindowRegistryPrivate::Proxy windowProxy(new WindowProducer);

struct Setup : vfApplication::ApplicationSetup
{
    const vfApplication::UiSetup& getUiSetup() const override
    {
        record("getUiSetup");
        reach("getUiSetup");
        return ApplicationSetup::getUiSetup();
    }
    void onRegisterDocumentType() const override
    {
        record("onRegisterDocumentType");
        reach("onRegisterDocumentType");
        auto* manager = new vfTest::RecordingManager;
        Application::instance(false)->setDocManager(manager);
        vfTest::makeTemplate(*manager);
    }
};

/// What the toolkit side and the program bring along.
struct Sides
{
    Sides()
    {
        screens.inCreate = [] { reach("create screen"); };
        shells.inCreate = [] { reach("create shell"); };
        callback.inInterfaceCreated = [] { reach("onApplicationInterfaceCreated"); };
        callback.inInitialized = [] { reach("onApplicationInitialized"); };
        callback.initializedResult = failing == "onApplicationInitialized" ? -1 : 0;
        vfTest::RecordingDocument::inOpen = [] { reach("doOpenDocument"); };
        vfTest::RecordingDocument::openResult = failing != "doOpenDocument";
        vfTest::RecordingShell& shell = shells.shell();
        shell.inBeforeRun = [] {
            vfApplication::ModuleRegistry::instance(false)->addModule(new WatchedModule);
            Application::instance(false)->getDockWindowManager().addNewOrGetExistingDockWindow(
                windowKey, vfApplication::DockWindow::LeftDockArea, true, false, 0, nullptr);
            reach("onBeforeRun");
        };
        shell.inEventLoop = [] { reach("runEventLoop"); };
        shell.inAfterRun = [] { reach("onAfterRun"); };
        shell.beforeRunResult = failing == "onBeforeRun" ? 7 : 0;
        shell.eventLoopResult = failing == "runEventLoop" ? 5 : 0;
        shell.afterRunResult = failing == "onAfterRun" ? 9 : 0;
    }

    vfTest::RecordingDockWindowManagerProducer screens;
    vfTest::RecordingDockWindowProducer windows;
    vfTest::RecordingProducer shells;
    vfTest::RecordingCallback callback;
};

/// A settings file that holds something, so that it is seen when it is loaded.
void prepareSettings()
{
    vfBase::ApplicationInfo::instance().setApplicationName("lifecycle");
    auto* settings = new WatchedSettings;
    vfBase::RegisterSettingsObjectProxy(vfBase::SettingsObject(settings), vfBase::Settings::global());
    vfBase::Settings::global().save(nullptr);
}

void run()
{
    Sides sides;
    using vfTest::CommandLine;
    CommandLine line = failing == "command line" ? CommandLine({"program", "--nonsense", "a.obj"})
                                                 : CommandLine({"program", "a.obj"});
    Application application(line.argc(), line.argv(), Setup());
    record("-- constructed");
    application.registerCallback(&sides.callback);
    const int result = application.run();
    record("-- run() returned " + std::to_string(result));
}

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; i += 2)
        (std::strcmp(argv[i], "throw") == 0 ? throwing : failing) = argv[i + 1];
    prepareSettings();
    recorder().take();
    recorder().echo();
    osgDB::Registry::instance()->setFindFileCallback(new WatchedPath);
    osg::setNotifyHandler(new WatchedNotify);
    osg::setNotifyLevel(osg::NOTICE);
    try {
        run();
    } catch (const std::exception& problem) {
        record("-- thrown: " + std::string(problem.what()));
    }
    record("-- main() ends");
    return 0;
}
