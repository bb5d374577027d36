// SPDX-License-Identifier: MIT
#include <velaforge/application/Application.h>

#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Require.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/Version.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/vfAppModule.h>

#include <osg/Notify>

#include <memory>
#include <string>

namespace vfApplication {

namespace {

const vfBase::Call running{"Application::run"};

bool isBlank(const char* text)
{
    return !text || !*text;
}

/// Fills in the usage text, except for what the program has set before.
void declareUsage(vfBase::ArgumentParser& parser)
{
    const std::string name = vfBase::ApplicationInfo::instance().getApplicationName();
    if (isBlank(parser.getApplicationName()))
        parser.setApplicationName(name.c_str());
    if (isBlank(parser.getDescription()))
        parser.setDescription((name + " loads and visualises 3d models.").c_str());
    if (isBlank(parser.getCommandLineUsage()))
        parser.setCommandLineUsage((name + " [options] filename ...").c_str());
    parser.addCommandLineOption("--image <filename>", "Load an image and render it on a quad", nullptr);
    parser.addCommandLineOption("--defaultCameraView <standard view kind [0,9]>", "Set default camera view",
                                nullptr);
}

void saveSettings()
{
    const bool saved = vfBase::Settings::global().save(nullptr);
    if (!vfBase::NotifyHandler::instance().isNotifyEnabled())
        return;
    if (saved)
        osg::notify(osg::NOTICE) << "User settings saved" << std::endl;
    else
        osg::notify(osg::WARN) << "Failed to save user settings!" << std::endl;
}

} // namespace

Application::Application(int& argc, char** argv, const ApplicationSetup& setup) : d(nullptr)
{
    vfBase::adoptApplicationThread();
    // Destroyed if a step below throws.
    auto body = std::make_unique<ApplicationPrivate>(argc, argv);
    d = body.get();
    ApplicationPrivate::_s_Application = this;
    FileHistorySettings::instance(false);
    auto module = std::make_unique<vfAppModule>(setup.getUiSetup());
    setup.onRegisterDocumentType();
    ModuleRegistry::instance(false)->addModule(module.release());
    static_cast<void>(body.release());
}

Application::~Application()
{
    VF_REQUIRE(!vfBase::RunningCall<Application>::isRunning(this, running), "Application::~Application",
               "called before run() has returned");
    vfBase::LifeWatch<Application>::end(this);
    delete d;
}

Application* Application::instance(bool erase)
{
    if (erase)
        delete ApplicationPrivate::_s_Application;
    return ApplicationPrivate::_s_Application;
}

int Application::run()
{
    vfBase::adoptApplicationThread();
    const vfBase::RunningCall<Application> isRunning(this, running);
    vfBase::ArgumentParser& parser = *d->argumentParser;

    vfBase::Settings::loadGlobal();
    declareUsage(parser);

    const vfBase::ArgumentParser::HelpType help = parser.getHelpTypeRequested();
    if (help != vfBase::ArgumentParser::NoHelp) {
        parser.printUsage(help);
        d->lastError = "argument help type scenario!";
        return 1;
    }
    if (parser.hasErrors()) {
        d->lastError = parser.getErrorMessage().str();
        return 2;
    }
    if (parser.readOptionParameter("--verbose"))
        vfBase::setVerbose(true);

    ApplicationInterface* shell = d->uif();
    d->onApplicationInterfaceCreated();

    if (const int result = shell->onBeforeRun()) {
        d->lastError = "onBeforeRun failed with result: " + std::to_string(result);
        return result;
    }
    if (const int result = d->onApplicationInitialized()) {
        d->lastError = "onApplicationInitialized failed with result: " + std::to_string(result);
        return result;
    }

    // After the documents: shell, callback and modules have consumed their options by now, so every option
    // left is unknown.
    openDocuments(&parser);
    parser.reportRemainingOptionsAsUnrecognized();
    if (parser.hasErrors()) {
        parser.printErrorMessages();
        d->lastError = parser.getErrorMessage().str();
        return 3;
    }

    const int loopResult = shell->runEventLoop();
    saveSettings();
    const int afterResult = shell->onAfterRun();
    return loopResult != 0 ? loopResult : afterResult;
}

void Application::exit(int code)
{
    d->exitRequested = true;
    d->exitCode = code;
    if (ApplicationInterface* shell = d->uif())
        shell->exit(code);
}

const char* Application::getLastError() const
{
    return d->lastError.c_str();
}

ApplicationInterface* Application::getApplicationInterface()
{
    return d->uif();
}

StatusBar& Application::getStatusBar()
{
    ApplicationInterface* shell = d->uif();
    VF_REQUIRE(shell, "Application::getStatusBar", "called while the shell is made");
    return shell->getStatusBar();
}

const StatusBar& Application::getStatusBar() const
{
    return const_cast<Application*>(this)->getStatusBar();
}

DockWindowManager& Application::getDockWindowManager()
{
    return *d->dockWindowManager;
}

const DockWindowManager& Application::getDockWindowManager() const
{
    return *d->dockWindowManager;
}

DocManager& Application::getDocManager() const
{
    return d->getDocManager();
}

void Application::setDocManager(DocManager* manager)
{
    d->setDocManager(manager);
}

void Application::registerCallback(ApplicationCallback* callback)
{
    d->registerCallback(callback);
}

void Application::removeCallback()
{
    d->removeCallback();
}

void Application::onClosingDocument(Document* document)
{
    if (d->callback)
        d->callback->onClosingDocument(document);
}

vfBase::ArgumentParser& Application::getArgumentParser() const
{
    return *d->argumentParser;
}

int& Application::getArgumentCount() const
{
    return d->argumentParser->getArgumentCount();
}

char** Application::getArgumentVector() const
{
    return d->argumentParser->getArgumentVector();
}

const char* Application::getApplicationFilePath() const
{
    return d->applicationFilePath.c_str();
}

const char* Application::getApplicationPath() const
{
    return d->applicationPath.c_str();
}

} // namespace vfApplication
