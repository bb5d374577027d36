// SPDX-License-Identifier: MIT
#include "support/RecordingDocument.h"
#include "support/RecordingShell.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/HeadlessTitleBar.h>

#include <gmock/gmock.h>

using vfApplication::Application;
using vfApplication::HeadlessApplication;

namespace {

struct Kinds : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        vfTest::makeTemplate(Application::instance(false)->getDocManager());
    }
};

struct Outcome
{
    int result = -1;
    unsigned int documents = 0;
    vfApplication::ApplicationInterface* shell = nullptr;
    std::string title;
    std::string out;
};

/// Runs an application from its construction to its destruction.
Outcome run(std::initializer_list<const char*> arguments)
{
    vfTest::CommandLine line(arguments);
    Outcome outcome;
    testing::internal::CaptureStdout();
    {
        Application application(line.argc(), line.argv(), Kinds());
        outcome.result = application.run();
        outcome.documents = application.getNumDocuments();
        if (outcome.result == 0) {
            outcome.shell = application.getApplicationInterface();
            outcome.title = dynamic_cast<HeadlessApplication&>(*outcome.shell).getTitleBar().getTitle().str();
        }
    }
    outcome.out = testing::internal::GetCapturedStdout();
    return outcome;
}

} // namespace

TEST(SecondApplication, RunsAsTheFirstDidWithTheSameShell)
{
    vfApplication::HeadlessApplicationProducer::install();
    const Outcome first = run({"program", "a.obj"});
    EXPECT_EQ(0, first.result);
    EXPECT_EQ(1u, first.documents);
    const Outcome second = run({"program", "b.obj", "c.obj"});
    EXPECT_EQ(0, second.result);
    EXPECT_EQ(2u, second.documents);
    EXPECT_EQ(first.shell, second.shell);
    EXPECT_THAT(second.title, testing::StartsWith("c.obj"));
}

TEST(SecondApplication, DoesNotDoWhatTheFirstOnesCommandLineAskedFor)
{
    vfApplication::HeadlessApplicationProducer::install();
    EXPECT_THAT(run({"program", "--list-ui"}).out, testing::HasSubstr("menus\n"));
    EXPECT_THAT(run({"program"}).out, testing::Not(testing::HasSubstr("menus\n")));
}

TEST(SecondApplication, DoesNotEndAsTheFirstWasToldTo)
{
    vfApplication::HeadlessApplicationProducer::install();
    vfTest::CommandLine line({"program"});
    {
        Application application(line.argc(), line.argv(), Kinds());
        application.exit(7);
        EXPECT_EQ(7, application.run());
    }
    EXPECT_EQ(0, run({"program"}).result);
}

TEST(SecondApplication, RunsAfterOneThatOnlyShowedItsHelp)
{
    vfApplication::HeadlessApplicationProducer::install();
    EXPECT_EQ(1, run({"program", "--help"}).result);
    EXPECT_EQ(0, run({"program", "a.obj"}).result);
}
