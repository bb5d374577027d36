// SPDX-License-Identifier: MIT
#include "support/ChildNames.h"
#include "support/RecordingApplication.h"

#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/HeadlessStatusBar.h>
#include <velaforge/headless/HeadlessTitleBar.h>
#include <velaforge/headless/HeadlessToolbar.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::HeadlessStatusBar;

TEST(HeadlessStatusBar, KeepsWhatItWouldShow)
{
    HeadlessStatusBar bar;
    EXPECT_EQ("", bar.getField(vfApplication::StatusBarMessage).text);
    EXPECT_EQ(0, bar.getProgressPercent());
    bar.updateStatus(vfApplication::StatusBarMessage, "loading", 3);
    bar.updateStatus(vfApplication::StatusBarSelection, "mast", 0);
    bar.updateProgressPercent(40);
    bar.updateProgressText("half way");
    EXPECT_EQ("loading", bar.getField(vfApplication::StatusBarMessage).text);
    EXPECT_EQ(3, bar.getField(vfApplication::StatusBarMessage).value);
    EXPECT_EQ("mast", bar.getField(vfApplication::StatusBarSelection).text);
    EXPECT_EQ(40, bar.getProgressPercent());
    EXPECT_EQ("half way", bar.getProgressText());
    bar.updateStatus(vfApplication::StatusBarMessage, nullptr, 0);
    bar.updateProgressText(nullptr);
    bar.updateProgressPercent(1000);
    EXPECT_EQ("", bar.getField(vfApplication::StatusBarMessage).text);
    EXPECT_EQ("", bar.getProgressText());
    EXPECT_EQ(100, bar.getProgressPercent());
    bar.updateProgressPercent(-1);
    EXPECT_EQ(0, bar.getProgressPercent());
}

TEST(HeadlessStatusBar, IsWhatTheApplicationHandsOut)
{
    vfApplication::HeadlessApplicationProducer::install();
    vfTest::CommandLine line({"program"});
    vfApplication::Application application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    application.getStatusBar().updateStatus(vfApplication::StatusBarPosition, "1, 2, 3", 0);
    const auto* bar = dynamic_cast<HeadlessStatusBar*>(&application.getStatusBar());
    ASSERT_NE(nullptr, bar);
    EXPECT_EQ("1, 2, 3", bar->getField(vfApplication::StatusBarPosition).text);
}

TEST(HeadlessToolbar, IsMadeOfWhatWasDeclared)
{
    vfApplication::HeadlessApplicationProducer::install();
    vfTest::CommandLine line({"program"});
    vfApplication::Application application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    auto& shell = dynamic_cast<vfApplication::HeadlessApplication&>(*application.getApplicationInterface());
    EXPECT_THAT(shell.getToolbars(), IsEmpty());
    EXPECT_EQ(0, application.run());
    ASSERT_EQ(1u, shell.getToolbars().size());
    vfApplication::HeadlessToolbar toolbar = shell.getToolbars().front();
    EXPECT_STREQ("Standard", toolbar.getDeclaration().getCommand());
    EXPECT_THAT(vfTest::childNames(toolbar.getDeclaration()), ElementsAre("vfApplicationQt::CommandAbout"));
    EXPECT_EQ(&application, toolbar.getApplication());
    EXPECT_TRUE(toolbar.isShown());
    toolbar.toolbarOperationB();
    EXPECT_FALSE(toolbar.isShown());
    toolbar.toolbarOperationA();
    EXPECT_TRUE(toolbar.isShown());
}

TEST(HeadlessTitleBar, NamesTheActiveDocumentAndMarksItWhenItIsModified)
{
    vfApplication::HeadlessTitleBar bar;
    bar.titleBarOperationA();
    EXPECT_EQ("", bar.getTitle());
    vfTest::RecordingApplication bench;
    const std::string program = bench.application.getApplicationName();
    bar.titleBarOperationA();
    EXPECT_EQ(program, bar.getTitle().str());
    makeTemplate(bench.manager);
    vfTest::RecordingDocument* document = bench.open("a.obj");
    bar.titleBarOperationA();
    EXPECT_EQ("a.obj - " + program, bar.getTitle().str());
    document->modify(true);
    bar.titleBarOperationA();
    EXPECT_EQ("a.obj* - " + program, bar.getTitle().str());
}
