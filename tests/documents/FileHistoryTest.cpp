// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/FileHistorySettings.h>

#include <gmock/gmock.h>

#include <fstream>

#include <sys/stat.h>

using testing::ElementsAre;
using vfApplication::FileHistory;
using vfApplication::FileHistorySettings;
using vfBase::Settings;
using vfTest::slotOf;

namespace {

std::vector<std::string> entries(const FileHistory& history)
{
    std::vector<std::string> paths;
    for (int i = 0; i < history.getCount(); ++i)
        paths.push_back(history.getHistoryFile(i).str());
    return paths;
}

/// Writes the settings file as a person may have edited it.
void writeSettings(const std::string& text)
{
    const std::string path = Settings::global().getSettingsFilePath();
    std::string directory;
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
        mkdir(path.substr(0, slash).c_str(), 0700);
    std::ofstream(path) << text;
}

} // namespace

TEST(FileHistory, AddingToAnEmptyOneGivesOneEntry)
{
    FileHistory history(9);
    EXPECT_EQ(0, history.getCount());
    history.addFileToHistory("a");
    EXPECT_EQ(1, history.getCount());
    EXPECT_EQ("a", history.getHistoryFile(0));
}

TEST(FileHistory, AtTheMaximumANewPathDropsTheOldest)
{
    FileHistory history(3);
    for (const char* path : {"a", "b", "c", "d"})
        history.addFileToHistory(path);
    EXPECT_THAT(entries(history), ElementsAre("d", "c", "b"));
}

TEST(FileHistory, ReopeningAFileMovesItToTheFrontAndLosesNoOther)
{
    FileHistory history(9);
    for (int i = 0; i < 9; ++i)
        history.addFileToHistory(std::to_string(i));
    history.addFileToHistory("4");
    EXPECT_EQ(9, history.getCount());
    EXPECT_THAT(entries(history), ElementsAre("4", "8", "7", "6", "5", "3", "2", "1", "0"));
}

TEST(FileHistory, TheSamePathTwiceInARowLeavesOneEntry)
{
    FileHistory history(9);
    history.addFileToHistory("a");
    history.addFileToHistory("a");
    EXPECT_EQ(1, history.getCount());
    history.addFileToHistory(history.getHistoryFile(0));
    EXPECT_EQ(1, history.getCount());
}

TEST(FileHistory, PathsThatDifferOnlyInCaseAreTwoEntries)
{
    FileHistory history(9);
    history.addFileToHistory("/models/a.obj");
    history.addFileToHistory("/Models/A.obj");
    EXPECT_EQ(2, history.getCount());
}

TEST(FileHistory, ASmallerMaximumCountsAtOnceAndTrimsWithTheNextAdd)
{
    FileHistory history(9);
    for (const char* path : {"1", "2", "3", "4", "5"})
        history.addFileToHistory(path);
    history.setMaxFiles(2);
    EXPECT_EQ(2u, history.getMaxFiles());
    EXPECT_EQ(2, history.getCount());
    EXPECT_EQ("1", history.getHistoryFile(4));
    history.addFileToHistory("6");
    EXPECT_THAT(entries(history), ElementsAre("6", "5"));
    history.setMaxFiles(9);
    EXPECT_EQ(2, history.getCount());
}

TEST(FileHistory, OfTwoEqualEntriesThatWereLoadedOneAddRemovesTheNewer)
{
    writeSettings(
        "{\"vfApplication::FileHistorySettings\":{\"files\":[\"x\",\"a\",\"y\",\"a\"],\"maxFiles\":9}}");
    Settings::loadGlobal();
    FileHistory history(9);
    history.addFileToHistory("a");
    EXPECT_THAT(entries(history), ElementsAre("a", "x", "y", "a"));
}

TEST(FileHistory, AnEditedFileCannotAskForAMaximumOfNone)
{
    writeSettings("{\"vfApplication::FileHistorySettings\":{\"files\":[\"x\"],\"maxFiles\":0}}");
    vfBase::NotifyHandler::instance().install();
    testing::internal::CaptureStderr();
    Settings::loadGlobal();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("maxFiles"));
    EXPECT_EQ(9u, FileHistorySettings::instance(false)->getMaxFiles());
}

TEST(FileHistory, AnEditedFileThatIsSoundIsNotComplainedAbout)
{
    writeSettings("{\"vfApplication::FileHistorySettings\":{\"files\":[\"x\"],\"maxFiles\":1}}");
    vfBase::NotifyHandler::instance().install();
    testing::internal::CaptureStderr();
    Settings::loadGlobal();
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ(1u, FileHistorySettings::instance(false)->getMaxFiles());
}

TEST(FileHistory, StoredSettingsWinOverTheNineOfTheManager)
{
    writeSettings("{\"vfApplication::FileHistorySettings\":{\"files\":[\"x\"],\"maxFiles\":4}}");
    vfTest::RecordingApplication bench;
    EXPECT_EQ(9u, FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ(0, bench.application.run());
    EXPECT_EQ(4u, FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ("x", bench.manager.getFileHistory()->getHistoryFile(0));
}

TEST(FileHistory, IsTheSameForAnyNumberOfObjects)
{
    FileHistory one(9);
    one.addFileToHistory("a");
    FileHistory copy(one);
    FileHistory two(9);
    two.addFileToHistory("b");
    copy = two;
    EXPECT_THAT(entries(one), ElementsAre("b", "a"));
    EXPECT_THAT(entries(copy), ElementsAre("b", "a"));
    delete new FileHistory(9);
    EXPECT_EQ(2, one.getCount());
    one.removeFileFromHistory(0);
    EXPECT_THAT(entries(two), ElementsAre("a"));
}

TEST(FileHistory, RemovesThroughItsSlot)
{
    struct Watching : FileHistory
    {
        using FileHistory::FileHistory;
        void removeFileFromHistory(int index) override
        {
            vfTest::record("remove " + std::to_string(index));
            FileHistory::removeFileFromHistory(index);
        }
    };
    Watching history(3);
    for (const char* path : {"a", "b", "c", "b", "d"})
        history.addFileToHistory(path);
    EXPECT_THAT(vfTest::recorder().take(), ElementsAre("remove 1", "remove 2"));
    EXPECT_THAT(entries(history), ElementsAre("d", "b", "c"));
}

TEST(FileHistory, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&FileHistory::addFileToHistory));
    EXPECT_EQ(3, slotOf(&FileHistory::removeFileFromHistory));
    EXPECT_EQ(4, slotOf(&FileHistory::getHistoryFile));
    EXPECT_EQ(5, slotOf(&FileHistory::getCount));
}

TEST(FileHistorySettings, FollowsThePatternOfSettingsObjects)
{
    FileHistorySettings* settings = FileHistorySettings::instance(false);
    EXPECT_STREQ("vfApplication", settings->libraryName());
    EXPECT_STREQ("FileHistorySettings", settings->className());
    FileHistory(5).addFileToHistory("a");
    const osg::ref_ptr<osg::Object> type = settings->cloneType();
    EXPECT_EQ(9u, dynamic_cast<FileHistorySettings&>(*type).getMaxFiles());
    const osg::ref_ptr<osg::Object> copy = settings->clone(osg::CopyOp::DEEP_COPY_ALL);
    EXPECT_EQ(5u, dynamic_cast<FileHistorySettings&>(*copy).getMaxFiles());
    EXPECT_TRUE(settings->isSameKindAs(copy));
    EXPECT_FALSE(settings->isSameKindAs(nullptr));
    EXPECT_EQ(nullptr, FileHistorySettings::instance(true));
    EXPECT_EQ(nullptr, FileHistorySettings::instance(false));
}

TEST(FileHistory, AMaximumOfNothingShowsNothingAndIsHarmless)
{
    FileHistory history(9);
    history.addFileToHistory("a.obj");
    history.setMaxFiles(0);
    history.addFileToHistory("b.obj");
    EXPECT_EQ(0, history.getCount());
    EXPECT_EQ("b.obj", history.getHistoryFile(0));
    EXPECT_EQ("", history.getHistoryFile(1));
    history.removeFileFromHistory(7);
    history.setMaxFiles(9);
    EXPECT_EQ(1, history.getCount());
}

TEST(FileHistory, WithoutItsSettingsItIsEmptyAndHarmless)
{
    FileHistory history(9);
    history.addFileToHistory("a.obj");
    vfApplication::FileHistorySettings::instance(true);
    history.addFileToHistory("b.obj");
    history.removeFileFromHistory(0);
    history.setMaxFiles(3);
    EXPECT_EQ(0, history.getCount());
    EXPECT_EQ(0u, history.getMaxFiles());
    EXPECT_EQ("", history.getHistoryFile(0));
}

TEST(FileHistory, AnOverrideMayEmptyTheListWhileAFileIsAdded)
{
    struct Emptying : FileHistory
    {
        Emptying() : FileHistory(2) {}
        void removeFileFromHistory(int) override
        {
            while (getCount() > 0)
                FileHistory::removeFileFromHistory(0);
        }
    };
    Emptying history;
    history.addFileToHistory("a.obj");
    history.addFileToHistory("b.obj");
    history.addFileToHistory("c.obj");
    EXPECT_EQ(1, history.getCount());
    EXPECT_EQ("c.obj", history.getHistoryFile(0));
}
