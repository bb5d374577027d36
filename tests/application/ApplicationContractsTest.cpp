// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"

#include <velaforge/modules/MinimalUiSetup.h>

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::Application;
using vfApplication::ApplicationCallback;
using vfApplication::ApplicationInterface;
using vfApplication::ApplicationProducer;
using vfApplication::ApplicationSetup;
using vfTest::recorder;
using vfTest::slotOf;

TEST(ApplicationProducer, DestroyWithoutARealizerDoesNothing)
{
    ASSERT_EQ(nullptr, ApplicationProducer::Realizer);
    struct Lonely : ApplicationProducer
    {
        ApplicationInterface* create(Application*, int&, char**, bool) override
        {
            vfTest::record("create");
            return nullptr;
        }
        ~Lonely() override = default;
    };
    Lonely producer;
    producer.destroy();
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(ApplicationProducer, DestroyAsksTheRealizerToReleaseTheShell)
{
    struct Watching : ApplicationProducer
    {
        ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override
        {
            vfTest::record("create");
            EXPECT_EQ(nullptr, application);
            EXPECT_EQ(0, argc);
            EXPECT_EQ(nullptr, argv);
            EXPECT_TRUE(destroy);
            return nullptr;
        }
        ~Watching() override = default;
    };
    Watching realizer;
    Watching other;
    ApplicationProducer::Realizer = &realizer;
    other.destroy(); // reads the realizer, not this
    EXPECT_THAT(recorder().take(), ElementsAre("create"));
    ApplicationProducer::Realizer = nullptr;
}

TEST(ApplicationProducer, AnOverriddenDestroyWins)
{
    struct Overriding : ApplicationProducer
    {
        ApplicationInterface* create(Application*, int&, char**, bool) override
        {
            vfTest::record("create");
            return nullptr;
        }
        void destroy() override { vfTest::record("destroyed"); }
        ~Overriding() override = default;
    };
    Overriding realizer;
    ApplicationProducer::Realizer = &realizer;
    vfTest::CommandLine line({"program"});
    delete new Application(line.argc(), line.argv(), ApplicationSetup());
    EXPECT_THAT(recorder().take(), ElementsAre("destroyed"));
    ApplicationProducer::Realizer = nullptr;
}

TEST(ApplicationProducer, GetsTheApplicationAndItsCommandLine)
{
    struct Watching : ApplicationProducer
    {
        ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override
        {
            if (!destroy) {
                EXPECT_EQ(Application::instance(false), application);
                EXPECT_EQ(&Application::instance(false)->getArgumentCount(), &argc);
                EXPECT_EQ(Application::instance(false)->getArgumentVector(), argv);
            }
            return &shell;
        }
        ~Watching() override = default;
        vfTest::RecordingShell shell;
    };
    Watching realizer;
    ApplicationProducer::Realizer = &realizer;
    {
        vfTest::CommandLine line({"program", "file"});
        Application application(line.argc(), line.argv(), ApplicationSetup());
        EXPECT_EQ(&realizer.shell, application.getApplicationInterface());
    }
    ApplicationProducer::Realizer = nullptr;
}

TEST(ApplicationCallback, OneWithThePureOperationsOnlyIsToldNothingOfTheShell)
{
    struct Plain : ApplicationCallback
    {
        int onApplicationInitialized(Application*) override { return 0; }
        void onClosingDocument(vfApplication::Document*) override {}
        void onDocumentCreated(vfApplication::Document*) override {}
        void callbackExtension() override {}
    };
    vfTest::RecordingApplication bench;
    Plain plain;
    bench.application.registerCallback(&plain);
    EXPECT_EQ(0, bench.application.run());
    Plain copy(plain);
    copy = std::move(plain);
    copy.onApplicationInterfaceCreated(nullptr);
    EXPECT_THAT(recorder().take(), ElementsAre("create shell", "onBeforeRun", "runEventLoop", "onAfterRun"));
}

TEST(ApplicationSetup, APlainOneGivesTheOneMinimalUserInterfaceEachTime)
{
    const ApplicationSetup plain;
    const ApplicationSetup another;
    EXPECT_NE(nullptr, dynamic_cast<const vfApplication::MinimalUiSetup*>(&plain.getUiSetup()));
    EXPECT_EQ(&plain.getUiSetup(), &plain.getUiSetup());
    EXPECT_EQ(&plain.getUiSetup(), &another.getUiSetup());
}

TEST(ApplicationSetup, IsAskedForItsUserInterfaceByTwoThreadsAtOnce)
{
    const ApplicationSetup plain;
    const vfApplication::UiSetup* seen[2] = {};
    std::thread first([&] { seen[0] = &plain.getUiSetup(); });
    std::thread second([&] { seen[1] = &plain.getUiSetup(); });
    first.join();
    second.join();
    EXPECT_EQ(seen[0], seen[1]);
}

TEST(ApplicationSetup, APlainOneDeclaresNoKindsOfDocument)
{
    vfTest::RecordingProducer producer;
    vfTest::CommandLine line({"program"});
    const ApplicationSetup plain;
    const ApplicationSetup copy(plain);
    const Application application(line.argc(), line.argv(), copy);
    EXPECT_EQ(0u, application.getDocManager().getTemplates().size());
}

TEST(ApplicationInterface, RemovingAFileFromTheWatcherIsHarmlessWithoutAWatcher)
{
    struct Plain : ApplicationInterface
    {
        int onBeforeRun() override { return 0; }
        int onAfterRun() override { return 0; }
        int runEventLoop() override { return 0; }
        void exit(int) override {}
        void shellExtensionA() override {}
        vfApplication::StatusBar& getStatusBar() override { return bar; }
        void shellExtensionB() override {}
        void shellExtensionC() override {}
        void addFileToFileSystemWatcher(vfBase::VfString) override {}
        vfApplication::StatusBar bar;
    };
    Plain shell;
    EXPECT_NO_THROW(shell.removeFileFromFileSystemWatcher("a.obj"));
}

TEST(ApplicationContracts, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&ApplicationInterface::onBeforeRun));
    EXPECT_EQ(3, slotOf(&ApplicationInterface::onAfterRun));
    EXPECT_EQ(4, slotOf(&ApplicationInterface::runEventLoop));
    EXPECT_EQ(5, slotOf(&ApplicationInterface::exit));
    EXPECT_EQ(6, slotOf(&ApplicationInterface::shellExtensionA));
    EXPECT_EQ(7, slotOf(&ApplicationInterface::getStatusBar));
    EXPECT_EQ(8, slotOf(&ApplicationInterface::shellExtensionB));
    EXPECT_EQ(9, slotOf(&ApplicationInterface::shellExtensionC));
    EXPECT_EQ(10, slotOf(&ApplicationInterface::addFileToFileSystemWatcher));
    EXPECT_EQ(11, slotOf(&ApplicationInterface::removeFileFromFileSystemWatcher));

    EXPECT_EQ(0, slotOf(&ApplicationProducer::create));
    EXPECT_EQ(1, slotOf(&ApplicationProducer::destroy));

    EXPECT_EQ(0, slotOf(&ApplicationCallback::onApplicationInterfaceCreated));
    EXPECT_EQ(1, slotOf(&ApplicationCallback::onApplicationInitialized));
    EXPECT_EQ(2, slotOf(&ApplicationCallback::onClosingDocument));
    EXPECT_EQ(3, slotOf(&ApplicationCallback::onDocumentCreated));
    EXPECT_EQ(4, slotOf(&ApplicationCallback::callbackExtension));
    EXPECT_FALSE(std::has_virtual_destructor_v<ApplicationCallback>);

    // One more comes between the destructor and this one when there is a user interface to declare.
    EXPECT_EQ(2, slotOf(&ApplicationSetup::getUiSetup));
    EXPECT_EQ(3, slotOf(&ApplicationSetup::onRegisterDocumentType));
}
