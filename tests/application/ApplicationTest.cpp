// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/RecordingDockWindows.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/base/Version.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/ModuleSettings.h>

#include <osg/Notify>

#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>
#include <utility>

#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vfApplication::Application;
using vfApplication::ApplicationPrivate;
using vfTest::Lines;
using vfTest::recorder;
using vfTest::RecordingApplication;

namespace {

struct RecordingSetup : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        vfTest::record("onRegisterDocumentType");
        EXPECT_NE(nullptr, Application::instance(false));
        EXPECT_EQ(0, Application::instance(false)->getDocManager().getNumDocuments());
    }
};

/// Sends what osg::notify gets to the recorder.
class RecordingNotify : public osg::NotifyHandler
{
public:
    void notify(osg::NotifySeverity severity, const char* message) override
    {
        std::string text = message;
        while (!text.empty() && text.back() == '\n')
            text.pop_back();
        if (!text.empty())
            vfTest::record("notify " + std::to_string(severity) + " " + text);
    }
};

void makeSettingsUnwritable()
{
    const std::string path = vfBase::Settings::global().getSettingsFilePath();
    mkdir(path.substr(0, path.rfind('/')).c_str(), 0700);
    mkdir(path.c_str(), 0700);
}

} // namespace

TEST(Application, IsMadeWithItsBodyBeforeTheDocumentKindsAreRegistered)
{
    vfTest::RecordingProducer producer;
    vfTest::CommandLine line({"/opt/bin/program", "--help"});
    const Application application(line.argc(), line.argv(), RecordingSetup());
    EXPECT_THAT(recorder().take(), ElementsAre("onRegisterDocumentType"));
    EXPECT_STREQ("/opt/bin/program", application.getApplicationFilePath());
    EXPECT_STREQ("/opt/bin", application.getApplicationPath());
    EXPECT_STREQ("", application.getLastError());
    EXPECT_EQ(2, application.getArgumentCount());
    EXPECT_EQ(&line.argc(), &application.getArgumentCount());
    EXPECT_EQ(9u, vfApplication::FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ(100, application.getDocManager().getMaxDocsOpen());
}

TEST(Application, WithoutAnyArgumentItsPathIsEmpty)
{
    vfTest::RecordingProducer producer;
    int argc = 0;
    Application application(argc, nullptr, vfApplication::ApplicationSetup());
    EXPECT_STREQ("", application.getApplicationFilePath());
    EXPECT_STREQ("", application.getApplicationPath());
    EXPECT_EQ(0, application.run());
}

TEST(ApplicationRun, GoesThroughItsStepsInOrder)
{
    RecordingApplication bench{"program", "a.obj", "b.obj"};
    makeTemplate(bench.manager);
    osg::setNotifyHandler(new RecordingNotify);
    osg::setNotifyLevel(osg::NOTICE);
    bench.producer.shell().inBeforeRun = [] {
        vfTest::record("documents " + std::to_string(Application::instance(false)->getNumDocuments()));
    };
    EXPECT_EQ(0, bench.application.run());
    Lines steps;
    for (const std::string& line : recorder().take()) {
        if (line.find("doc") != 0 && line.find("view") != 0 && line.find("notify 0") != 0)
            steps.push_back(line);
        if (line.find("documents ") == 0)
            steps.push_back(line);
    }
    EXPECT_THAT(steps, ElementsAre("create shell", "onApplicationInterfaceCreated", "onBeforeRun",
                                   "documents 0", "onApplicationInitialized", "findTemplateForPath a.obj",
                                   "watch a.obj", "history a.obj", "manager activates view1",
                                   "callback created a.obj", "findTemplateForPath b.obj", "watch b.obj",
                                   "history b.obj", "manager activates view2", "callback created b.obj",
                                   "runEventLoop", "notify 3 User settings saved", "onAfterRun"));
    EXPECT_STREQ("", bench.application.getLastError());
}

TEST(ApplicationRun, LoadsTheSettingsFirstAndSavesThemBeforeOnAfterRun)
{
    RecordingApplication bench;
    vfApplication::ApplicationSettings* settings = vfApplication::ApplicationSettings::instance(false);
    settings->setSplashHorizontalAlignmet("RIGHT");
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings->setSplashHorizontalAlignmet("before run");
    bench.producer.shell().inBeforeRun = [settings] {
        EXPECT_EQ("RIGHT", settings->getSplashHorizontalAlignmet());
    };
    bench.producer.shell().inEventLoop = [settings] { settings->setSplashHorizontalAlignmet("CENTRE"); };
    bench.producer.shell().inAfterRun = [] {
        EXPECT_THAT(vfTest::readFile(vfBase::Settings::global().getSettingsFilePath()), HasSubstr("CENTRE"));
    };
    EXPECT_EQ(0, bench.application.run());
    EXPECT_EQ(1, recorder().count("onAfterRun"));
}

TEST(ApplicationRun, WhatOneRunSavesOfAllSettingsTheNextOneLoads)
{
    using vfApplication::DockWindow;
    vfTest::RecordingDockWindowManagerProducer screens;
    vfTest::RecordingDockWindowProducer halves;
    auto* application = vfApplication::ApplicationSettings::instance(false);
    auto* modules = vfApplication::ModuleSettings::instance(false);
    auto* windows = vfApplication::DockWindowManagerSettings::instance(false);
    auto* files = vfApplication::FileHistorySettings::instance(false);
    RecordingApplication bench;
    bench.producer.shell().inEventLoop = [&] {
        application->setSplashHorizontalAlignmet("CENTER");
        application->setSplashVerticalAlignmet("TOP");
        application->setSplashTextColor({0.25f, 0.5f, 0.75f});
        application->setWorkingLocation("/models");
        modules->setModuleStateSettings("measuring", false);
        files->setMaxFiles(5);
        vfApplication::FileHistory(5).addFileToHistory("a.obj");
        vfApplication::DockWindowManager& manager = bench.application.getDockWindowManager();
        DockWindow& window = manager.addNewOrGetExistingDockWindow("layers", DockWindow::LeftDockArea, false,
                                                                   false, 0, nullptr);
        window.setArea(DockWindow::TopDockArea);
        manager.saveDockWindowsState();
    };
    EXPECT_EQ(0, bench.application.run());

    // As a process that begins has them.
    const osg::ref_ptr<osg::Object> fresh = application->cloneType();
    const auto& defaults = dynamic_cast<const vfApplication::ApplicationSettings&>(*fresh);
    application->setSplashHorizontalAlignmet(defaults.getSplashHorizontalAlignmet());
    application->setSplashVerticalAlignmet(defaults.getSplashVerticalAlignmet());
    application->setSplashTextColor(defaults.getSplashTextColor());
    application->setWorkingLocation(defaults.getWorkingLocation());
    modules->getModuleList().clear();
    files->setMaxFiles(9);
    windows->setDockWindowVisibleState("layers", true);
    windows->setDockWindowAutoHideState("layers", true);
    windows->setDockWindowAreaState("layers", DockWindow::NoDockArea);

    bench.producer.shell().inEventLoop = nullptr;
    bench.producer.shell().inBeforeRun = [&] {
        EXPECT_EQ("CENTER", application->getSplashHorizontalAlignmet());
        EXPECT_EQ("TOP", application->getSplashVerticalAlignmet());
        EXPECT_EQ(osg::Vec3f(0.25f, 0.5f, 0.75f), application->getSplashTextColor());
        EXPECT_EQ("/models", application->getWorkingLocation());
        EXPECT_TRUE(modules->isValidModule("measuring"));
        EXPECT_FALSE(modules->getModuleStateSettings("measuring"));
        EXPECT_EQ(5u, files->getMaxFiles());
        EXPECT_EQ(2, windows->getDockWindowVisibleState("layers"));
        EXPECT_EQ(2, windows->getDockWindowAutoHideState("layers"));
        EXPECT_EQ(DockWindow::TopDockArea, windows->getDockWindowAreaState("layers"));
        vfTest::record("looked at");
    };
    EXPECT_EQ(0, bench.application.run());
    EXPECT_EQ(1, recorder().count("looked at"));
}

TEST(ApplicationRun, FillsInNameDescriptionAndUsageWhereTheyAreMissing)
{
    vfBase::ApplicationInfo::instance().setApplicationName("viewer");
    RecordingApplication bench;
    vfBase::ArgumentParser& parser = bench.application.getArgumentParser();
    parser.setDescription("my own");
    bench.application.run();
    EXPECT_STREQ("viewer", parser.getApplicationName());
    EXPECT_STREQ("my own", parser.getDescription());
    EXPECT_STREQ("viewer [options] filename ...", parser.getCommandLineUsage());
}

TEST(ApplicationRun, DescribesTheProgramByItsName)
{
    vfBase::ApplicationInfo::instance().setApplicationName("viewer");
    RecordingApplication bench;
    bench.application.run();
    EXPECT_STREQ("viewer loads and visualises 3d models.",
                 bench.application.getArgumentParser().getDescription());
}

TEST(ApplicationRun, HelpReturns1AndMakesNoShell)
{
    RecordingApplication bench{"program", "--help", "a.obj"};
    testing::internal::CaptureStdout();
    EXPECT_EQ(1, bench.application.run());
    const std::string usage = testing::internal::GetCapturedStdout();
    EXPECT_THAT(usage, HasSubstr("--image <filename>"));
    EXPECT_THAT(usage, HasSubstr("Load an image and render it on a quad"));
    EXPECT_THAT(usage, HasSubstr("--defaultCameraView <standard view kind [0,9]>"));
    EXPECT_THAT(usage, HasSubstr("Set default camera view"));
    EXPECT_STREQ("argument help type scenario!", bench.application.getLastError());
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(ApplicationRun, HelpComesBeforeErrorsAndVerboseAfterBoth)
{
    RecordingApplication bench{"program", "--help", "--verbose"};
    bench.application.getArgumentParser().reportError("an error");
    testing::internal::CaptureStdout();
    EXPECT_EQ(1, bench.application.run());
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(vfBase::isVerbose());
}

TEST(ApplicationRun, ErrorsBeforeTheStartGive2AndRunPrintsNothing)
{
    RecordingApplication bench{"program", "--verbose"};
    bench.application.getArgumentParser().reportError("the size is nonsense");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(2, bench.application.run());
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_STREQ("the size is nonsense", bench.application.getLastError());
    EXPECT_THAT(recorder().take(), IsEmpty());
    EXPECT_FALSE(vfBase::isVerbose());
}

TEST(ApplicationRun, VerboseIsReadBeforeTheShellIsMade)
{
    RecordingApplication bench{"program", "--verbose"};
    bench.callback.inInitialized = [] { EXPECT_TRUE(vfBase::isVerbose()); };
    EXPECT_EQ(0, bench.application.run());
    EXPECT_EQ(1, bench.application.getArgumentCount());
}

TEST(ApplicationRun, AnUnknownOptionGives3AfterTheFileBehindItWasOpened)
{
    RecordingApplication bench{"program", "--nonsense", "a.obj"};
    makeTemplate(bench.manager);
    testing::internal::CaptureStderr();
    EXPECT_EQ(3, bench.application.run());
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("--nonsense"));
    EXPECT_THAT(bench.application.getLastError(), HasSubstr("--nonsense"));
    const Lines lines = recorder().take();
    EXPECT_THAT(lines, testing::Contains("callback created a.obj"));
    EXPECT_THAT(lines, Not(testing::Contains("runEventLoop")));
    EXPECT_THAT(lines, Not(testing::Contains("onAfterRun")));
    EXPECT_EQ(1u, bench.application.getNumDocuments());
    EXPECT_EQ("", vfTest::readFile(vfBase::Settings::global().getSettingsFilePath()));
}

TEST(ApplicationRun, TheOptionsDeclaredButReadByNobodyEndAsUnrecognised)
{
    RecordingApplication bench{"program", "--image", "a.obj"};
    makeTemplate(bench.manager);
    testing::internal::CaptureStderr();
    EXPECT_EQ(3, bench.application.run());
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(1, recorder().count("callback created a.obj"));
}

TEST(ApplicationRun, AFailingOnBeforeRunEndsItWithThatValue)
{
    RecordingApplication bench;
    bench.producer.shell().beforeRunResult = 7;
    EXPECT_EQ(7, bench.application.run());
    EXPECT_STREQ("onBeforeRun failed with result: 7", bench.application.getLastError());
    EXPECT_THAT(recorder().take(),
                ElementsAre("create shell", "onApplicationInterfaceCreated", "onBeforeRun"));
}

TEST(ApplicationRun, AFailingCallbackEndsItWithThatValue)
{
    RecordingApplication bench;
    bench.callback.initializedResult = -1;
    EXPECT_EQ(-1, bench.application.run());
    EXPECT_STREQ("onApplicationInitialized failed with result: -1", bench.application.getLastError());
    EXPECT_THAT(recorder().take(), Not(testing::Contains("onAfterRun")));
}

TEST(ApplicationRun, WithoutACallbackItsStepsArePassed)
{
    RecordingApplication bench;
    bench.application.removeCallback();
    EXPECT_EQ(0, bench.application.run());
    EXPECT_THAT(recorder().take(), ElementsAre("create shell", "onBeforeRun", "runEventLoop", "onAfterRun"));
}

TEST(ApplicationRun, TheEventLoopsResultWinsOverOnAfterRuns)
{
    RecordingApplication bench;
    bench.producer.shell().eventLoopResult = 5;
    bench.producer.shell().afterRunResult = 9;
    EXPECT_EQ(5, bench.application.run());
    EXPECT_EQ(1, recorder().count("onAfterRun"));
    EXPECT_STREQ("", bench.application.getLastError());
    EXPECT_NE("", vfTest::readFile(vfBase::Settings::global().getSettingsFilePath()));
    bench.producer.shell().eventLoopResult = 0;
    EXPECT_EQ(9, bench.application.run());
}

TEST(ApplicationRun, AFailedSettingsSaveIsToldAndChangesNoResult)
{
    RecordingApplication bench;
    makeSettingsUnwritable();
    osg::setNotifyHandler(new RecordingNotify);
    osg::setNotifyLevel(osg::NOTICE);
    bench.producer.shell().afterRunResult = 9;
    EXPECT_EQ(9, bench.application.run());
    EXPECT_EQ(1, recorder().count("notify 2 Failed to save user settings!"));
    EXPECT_EQ(0, recorder().count("notify 3 User settings saved"));
}

TEST(ApplicationRun, WithNotificationDisabledNothingIsTold)
{
    RecordingApplication bench;
    osg::setNotifyHandler(new RecordingNotify);
    osg::setNotifyLevel(osg::NOTICE);
    vfBase::NotifyHandler::instance().setNotifyEnabled(false);
    EXPECT_EQ(0, bench.application.run());
    makeSettingsUnwritable();
    EXPECT_EQ(0, bench.application.run());
    for (const std::string& line : recorder().take())
        EXPECT_THAT(line, Not(HasSubstr("notify")));
}

TEST(ApplicationRun, AnExceptionOfTheShellPassesThrough)
{
    RecordingApplication bench;
    bench.producer.shell().inEventLoop = [] { throw std::runtime_error("loop"); };
    EXPECT_THROW(bench.application.run(), std::runtime_error);
}

TEST(Application, InstanceNeverMakesOneAndErasesTheOneThatIsThere)
{
    vfTest::RecordingProducer producer;
    EXPECT_EQ(nullptr, Application::instance(false));
    EXPECT_EQ(nullptr, Application::instance(true));
    vfTest::CommandLine line({"program"});
    auto* application = new Application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    EXPECT_EQ(application, Application::instance(false));
    EXPECT_EQ(nullptr, Application::instance(true));
    EXPECT_EQ(nullptr, Application::instance(false));
}

TEST(Application, ALaterOneReplacesTheEarlierAsTheCurrentOne)
{
    vfTest::RecordingProducer producer;
    vfTest::CommandLine line({"program"});
    auto* first = new Application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    auto* second = new Application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    EXPECT_EQ(second, Application::instance(false));
    delete first;
    EXPECT_EQ(nullptr, Application::instance(false));
    delete second;
    EXPECT_EQ(nullptr, Application::instance(false));
}

TEST(Application, ExitBeforeRunMakesTheShellAndPassesTheCodeOn)
{
    RecordingApplication bench;
    bench.application.exit(3);
    EXPECT_THAT(recorder().take(), ElementsAre("create shell", "exit 3"));
    EXPECT_TRUE(bench.application.getImp()->exitRequested);
    EXPECT_EQ(3, bench.application.getImp()->exitCode);
    EXPECT_EQ(0, bench.application.run());
}

TEST(Application, TheShellIsMadeOnceHoweverOftenItIsAskedFor)
{
    RecordingApplication bench;
    vfApplication::ApplicationInterface* shell = bench.application.getApplicationInterface();
    EXPECT_EQ(&bench.producer.shell(), shell);
    EXPECT_EQ(&bench.producer.shell().statusBar, &bench.application.getStatusBar());
    const Application& constant = bench.application;
    EXPECT_EQ(&bench.producer.shell().statusBar, &constant.getStatusBar());
    bench.application.exit(0);
    bench.application.run();
    EXPECT_EQ(1, recorder().count("create shell"));
    EXPECT_EQ(2, recorder().count("getStatusBar"));
}

TEST(Application, ClosesItsDocumentsWhileTheShellIsStillReachable)
{
    auto bench = std::make_unique<RecordingApplication>();
    makeTemplate(bench->manager);
    bench->open("a.obj")->modify(true);
    bench->manager.confirmationResult = 2;
    recorder().take();
    bench.reset();
    // No question is asked: the derived manager is destroyed by then, and the base class answers that documents are saved.
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 close", "doc1 onSaveModified", "doc1 onSaveDocument a.obj",
                            "doc1 doSaveDocument a.obj", "view1 onChangeFilename", "view1 onChangeFilename",
                            "unwatch a.obj", "doc1 onCloseDocument", "view1 onClosingDocument",
                            "callback closing a.obj", "doc1 deleteContents", "doc1 deleteAllViews",
                            "view1 onClose forced", "doc1 close", "doc1 onSaveModified", "unwatch a.obj",
                            "doc1 onCloseDocument", "view1 onClosingDocument", "callback closing a.obj",
                            "doc1 deleteContents", "~view1", "doc1 onChangedViewList", "~doc1",
                            "destroy shell", "~Shell"));
    EXPECT_EQ(nullptr, Application::instance(false));
}

TEST(Application, AfterHelpItEndsWithoutTouchingTheShell)
{
    auto bench =
        std::make_unique<RecordingApplication>(std::initializer_list<const char*>{"program", "--help"});
    testing::internal::CaptureStdout();
    bench->application.run();
    testing::internal::GetCapturedStdout();
    bench.reset();
    EXPECT_THAT(recorder().take(), ElementsAre("destroy shell", "~Shell"));
}

TEST(Application, WithoutAProducerItEndsCleanly)
{
    vfTest::CommandLine line({"program"});
    delete new Application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    EXPECT_EQ(nullptr, Application::instance(false));
}

TEST(Application, ReplacingTheManagerDeletesTheFormerOneUnlessItIsTheSame)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    bench.open("a.obj");
    bench.application.setDocManager(&bench.manager);
    EXPECT_THAT(recorder().take(), IsEmpty());
    bench.application.getImp()->setDocManager(new vfApplication::DocManager(true));
    EXPECT_EQ(1, recorder().count("~doc1"));
    EXPECT_EQ(0u, bench.application.getNumDocuments());
}

TEST(Application, HandsOutTheOneDockWindowManager)
{
    vfTest::RecordingDockWindowManagerProducer screens;
    RecordingApplication bench;
    const Application& constant = bench.application;
    EXPECT_EQ(&bench.application.getDockWindowManager(), &constant.getDockWindowManager());
    EXPECT_EQ(bench.application.getImp()->dockWindowManager.get(), &bench.application.getDockWindowManager());
    EXPECT_NE(nullptr, bench.application.getDockWindowManager().getDockWindowManagerInterface());
}

TEST(Application, LetsItsDockWindowManagerGoFirstUnlessAnotherHoldsIt)
{
    vfTest::RecordingDockWindowManagerProducer screens;
    std::shared_ptr<vfApplication::DockWindowManager> held;
    {
        const RecordingApplication bench;
        held = bench.application.getImp()->dockWindowManager;
    }
    EXPECT_THAT(recorder().take(), ElementsAre("destroy shell", "~Shell"));
    held = nullptr;
    EXPECT_THAT(recorder().take(), ElementsAre("~screen"));
}

TEST(Application, GivesTheRegistryTheModuleMadeOfItsSetupAfterTheDocumentKinds)
{
    struct Setup : vfApplication::ApplicationSetup
    {
        const vfApplication::UiSetup& getUiSetup() const override
        {
            vfTest::record("getUiSetup");
            return declaration;
        }
        void onRegisterDocumentType() const override
        {
            vfApplication::ModuleRegistry* registry = vfApplication::ModuleRegistry::instance(false);
            vfTest::record(registry->getModule("vfApplication::Application") ? "too late" : "not yet there");
        }
        vfApplication::MinimalUiSetup declaration;
    };
    const Setup setup;
    vfTest::RecordingProducer producer;
    vfTest::CommandLine line({"program"});
    const Application application(line.argc(), line.argv(), setup);
    EXPECT_THAT(recorder().take(), ElementsAre("getUiSetup", "not yet there"));
    const vfApplication::Module* module =
        vfApplication::ModuleRegistry::instance(false)->getModule("vfApplication::Application");
    ASSERT_NE(nullptr, module);
    EXPECT_EQ(&setup.declaration, &module->getUiSetup());
}

TEST(Application, ASecondCallbackReplacesTheFirst)
{
    RecordingApplication bench;
    vfTest::RecordingCallback second;
    second.initializedResult = 6;
    bench.application.registerCallback(&second);
    EXPECT_EQ(6, bench.application.run());
}

TEST(Application, ForwardsItsIdentityAndPlaces)
{
    RecordingApplication bench;
    const Application& application = bench.application;
    vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
    info.setApplicationName("n");
    info.setApplicationVersion("v");
    info.setApplicationIconName("i");
    info.setApplicationUrl("u");
    info.setApplicationOnlineHelpUrl("h");
    info.setApplicationVendorName("vn");
    info.setApplicationVendorShortName("vs");
    info.setApplicationVendorUrl("vu");
    info.setApplicationVendorBanner("vb");
    info.setSplashImageName("s");
    EXPECT_STREQ("n", application.getApplicationName());
    EXPECT_STREQ("v", application.getApplicationVersion());
    EXPECT_STREQ("i", application.getApplicationIconName());
    EXPECT_STREQ("u", application.getApplicationUrl());
    EXPECT_STREQ("h", application.getApplicationOnlineHelpUrl());
    EXPECT_STREQ("vn", application.getApplicationVendorName());
    EXPECT_STREQ("vs", application.getApplicationVendorShortName());
    EXPECT_STREQ("vu", application.getApplicationVendorUrl());
    EXPECT_STREQ("vb", application.getApplicationVendorBanner());
    EXPECT_STREQ("s", application.getSplashImageName());
    using vfBase::StandardPaths;
    EXPECT_STREQ(StandardPaths::standardLocation(StandardPaths::Documents),
                 application.getDocumentsLocation());
    EXPECT_STREQ(StandardPaths::standardLocation(StandardPaths::Temp), application.getTempLocation());
    EXPECT_STREQ(StandardPaths::standardLocation(StandardPaths::Home), application.getHomeLocation());
    EXPECT_STREQ(StandardPaths::standardLocation(StandardPaths::ApplicationData),
                 application.getDataLocation());
    EXPECT_THAT(application.getUserSettingsFilePath(), testing::EndsWith("/vs/n.json"));
}

TEST(Application, TellsTheLibrarysNameAndTheFamilysVersion)
{
    EXPECT_STREQ("velaFORGE Application Library", vfApplication::getLibraryName());
    EXPECT_STREQ(vfBase::getVersion(), vfApplication::getVersion());
}

TEST(ApplicationPrivate, CopyingTakesTheParserAndSharesTheManager)
{
    int argc = 1;
    char name[] = "/bin/program";
    char* argv[] = {name, nullptr};
    ApplicationPrivate source(argc, argv);
    vfApplication::DocManager* manager = source.docManager;
    vfBase::ArgumentParser* parser = source.argumentParser.get();
    source.lastError = "error";
    source.exitRequested = true;
    source.exitCode = 4;
    {
        ApplicationPrivate copy(source);
        EXPECT_EQ(nullptr, source.argumentParser.get());
        EXPECT_EQ(parser, copy.argumentParser.get());
        EXPECT_EQ(manager, copy.docManager);
        EXPECT_EQ(source.dockWindowManager, copy.dockWindowManager);
        EXPECT_EQ(2, source.dockWindowManager.use_count());
        EXPECT_EQ("/bin/program", copy.applicationFilePath);
        EXPECT_EQ("/bin", copy.applicationPath);
        EXPECT_EQ("error", copy.lastError);
        EXPECT_TRUE(copy.exitRequested);
        EXPECT_EQ(4, copy.exitCode);
        source = copy;
        EXPECT_EQ(parser, source.argumentParser.get());
        EXPECT_EQ(nullptr, copy.argumentParser.get());
        ApplicationPrivate& alias = source;
        source = alias;
        EXPECT_EQ(parser, source.argumentParser.get());
        copy.docManager = nullptr; // one only may be destroyed with it
    }
    EXPECT_EQ(manager, source.docManager);
}

TEST(ApplicationPrivate, TheFirstOfTwoCopiesThatIsDestroyedDeletesTheManager)
{
    struct Counting : vfApplication::DocManager
    {
        explicit Counting(int& count) : deleted(count) {}
        ~Counting() override { ++deleted; }
        int& deleted;
    };
    int argc = 1;
    char name[] = "/bin/program";
    char* argv[] = {name, nullptr};
    int deleted = 0;
    {
        ApplicationPrivate source(argc, argv);
        delete std::exchange(source.docManager, new Counting(deleted));
        {
            const ApplicationPrivate copy(source);
            EXPECT_EQ(0, deleted);
        }
        EXPECT_EQ(1, deleted);
    }
    EXPECT_EQ(1, deleted);
}

TEST(ApplicationPrivate, AssignmentTakesTheOthersManagerAndLeavesTheFormerAlive)
{
    int argc = 1;
    char name[] = "/bin/program";
    char* argv[] = {name, nullptr};
    ApplicationPrivate source(argc, argv);
    ApplicationPrivate target(argc, argv);
    vfApplication::DocManager* manager = source.docManager;
    vfApplication::DocManager* former = target.docManager;
    ASSERT_NE(manager, former);
    source.exitCode = 4;
    target = source;
    EXPECT_EQ(manager, target.docManager);
    EXPECT_EQ(manager, source.docManager);
    EXPECT_EQ(4, target.exitCode);
    EXPECT_EQ("unnamed1", former->makeNewDocumentName());
}

TEST(ApplicationPrivate, CallsTheCallbackWhereThereIsOne)
{
    RecordingApplication bench;
    ApplicationPrivate& body = *bench.application.getImp();
    bench.callback.initializedResult = 8;
    body.onApplicationInterfaceCreated();
    EXPECT_EQ(8, body.onApplicationInitialized());
    EXPECT_THAT(recorder().take(), ElementsAre("onApplicationInterfaceCreated", "onApplicationInitialized"));
    body.removeCallback();
    body.onApplicationInterfaceCreated();
    EXPECT_EQ(0, body.onApplicationInitialized());
    EXPECT_THAT(recorder().take(), IsEmpty());
    const ApplicationPrivate& constant = body;
    EXPECT_EQ(body.uif(), constant.uif());
    EXPECT_EQ(&bench.manager, &body.getDocManager());
}

TEST(Application, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, vfTest::slotOf(&Application::getDocManager)); // behind the destructor
    EXPECT_EQ(-1, vfTest::slotOf(&Application::run));
    EXPECT_EQ(sizeof(void*) * 2, sizeof(Application));
}
