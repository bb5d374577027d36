// SPDX-License-Identifier: MIT
// The services of a process: names of files, places, identity, diagnostics.
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/FileIdentity.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/LibraryFolder.h>
#include <velaforge/base/LockFile.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/base/Version.h>

#include <osg/Notify>

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

using vfBase::ApplicationInfo;
using vfBase::StandardPaths;
using vfBase::VfString;
using vfTest::readFile;

TEST(FileNames, TakePathsApart)
{
    EXPECT_EQ("/models/boats", vfBase::getFilePath("/models/boats/hull.obj"));
    EXPECT_EQ("", vfBase::getFilePath("hull.obj"));
    EXPECT_EQ("hull.obj", vfBase::getSimpleFileName("/models/boats/hull.obj"));
    EXPECT_EQ("hull.obj", vfBase::getSimpleFileName("hull.obj"));
    EXPECT_EQ("/models/v1.2/hull", vfBase::getNameLessExtension("/models/v1.2/hull.obj"));
    EXPECT_EQ("/models/v1.2/hull", vfBase::getNameLessExtension("/models/v1.2/hull"));
}

namespace {
void ownFunction() {}
} // namespace

TEST(LibraryFolder, IsTheDirectoryOfTheFileThatDefinesAFunction)
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(program.parent_path().string(), std::string(vfBase::libraryFolder(&ownFunction)));
    const std::filesystem::path library = std::string(vfBase::libraryFolder(&vfBase::getFilePath));
    EXPECT_TRUE(library.is_absolute());
    EXPECT_TRUE(std::filesystem::exists(library / "libvfBase.so"));
    const int onTheStack = 0;
    EXPECT_EQ("", std::string(vfBase::libraryFolder(&onTheStack))) << "no file holds it";
}

TEST(LockFile, IsAbandonedWhenItsProgramIsKilledAndGoesWithItsObject)
{
    const vfTest::TemporaryDirectory directory;
    std::string path;
    {
        const vfBase::LockFile lock(directory.file("session-"), ".lock");
        ASSERT_TRUE(lock.isHeld());
        path = lock.path();
        EXPECT_EQ(directory.file("session-").size() + 6 + 5, path.size());
        EXPECT_FALSE(vfBase::LockFile::isAbandoned(path));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(vfBase::LockFile::isAbandoned(path)) << "it is not there";
    EXPECT_FALSE(vfBase::LockFile(directory.file("none/session-"), ".lock").isHeld());
    const pid_t child = fork();
    if (child == 0) {
        const vfBase::LockFile lock(directory.file("session-"), ".lock");
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    for (const auto& entry : std::filesystem::directory_iterator(directory.path()))
        EXPECT_TRUE(vfBase::LockFile::isAbandoned(entry.path()));
}

TEST(FileIdentity, DiffersAfterTheFileWasReplacedOrRemoved)
{
    using vfBase::FileIdentity;
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("a", "text");
    const FileIdentity before = FileIdentity::of(path);
    EXPECT_TRUE(before.isOfFile());
    EXPECT_EQ(before, FileIdentity::of(path));
    EXPECT_EQ(before, FileIdentity::fromText(before.text()));
    ASSERT_EQ(0, rename(directory.write("b", "more").c_str(), path.c_str()));
    EXPECT_NE(before, FileIdentity::of(path));
    EXPECT_FALSE(FileIdentity::of(directory.file("none")).isOfFile());
    EXPECT_FALSE(FileIdentity().isOfFile());
}

TEST(FileNames, AnAbsolutePathIsOneTextForOneFile)
{
    const vfTest::TemporaryDirectory directory;
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    const VfString file = directory.file("a.pts");
    EXPECT_EQ(file, vfBase::absolutePath("a.pts"));
    EXPECT_EQ(file, vfBase::absolutePath("./a.pts"));
    EXPECT_EQ(file, vfBase::absolutePath("b/..//a.pts"));
    EXPECT_EQ(file, vfBase::absolutePath(file));
    EXPECT_EQ("/a.pts", vfBase::absolutePath("//../a.pts"));
    EXPECT_EQ("/c\xFF", vfBase::absolutePath("/b/../c\xFF"));
    EXPECT_EQ("", vfBase::absolutePath(""));
}

TEST(FileNames, AnAbsolutePathLeavesALinkAndAnAddressAsTheyAre)
{
    const vfTest::TemporaryDirectory directory;
    const std::string link = directory.file("link");
    ASSERT_EQ(0, symlink("/", link.c_str()));
    EXPECT_EQ(VfString(link + "/a.pts"), vfBase::absolutePath(link + "/./a.pts"));
    EXPECT_EQ("https://host/b/../a.pts", vfBase::absolutePath("https://host/b/../a.pts"));
    EXPECT_EQ("/b/:/c", vfBase::absolutePath("/b/://c"));
}

TEST(FileNames, WithoutACurrentDirectoryAnAbsolutePathIsAsItWas)
{
    const vfTest::TemporaryDirectory directory;
    const std::string gone = directory.file("gone");
    ASSERT_EQ(0, mkdir(gone.c_str(), 0700));
    ASSERT_EQ(0, chdir(gone.c_str()));
    ASSERT_EQ(0, rmdir(gone.c_str()));
    EXPECT_EQ("a.pts", vfBase::absolutePath("a.pts"));
    ASSERT_EQ(0, chdir("/"));
}

TEST(FileNames, DirectoryExistsOnlyForDirectories)
{
    const vfTest::TemporaryDirectory directory;
    const std::string file = directory.write("file", "x");
    EXPECT_TRUE(vfBase::directoryExists(directory.path()));
    EXPECT_FALSE(vfBase::directoryExists(file));
    EXPECT_FALSE(vfBase::directoryExists(directory.file("missing")));
    EXPECT_FALSE(vfBase::directoryExists(""));
    EXPECT_FALSE(vfBase::directoryExists(VfString(directory.path() + std::string(1, '\0') + "x")));
    ASSERT_EQ(0, symlink(directory.path().c_str(), directory.file("link").c_str()));
    EXPECT_TRUE(vfBase::directoryExists(directory.file("link")));
}

TEST(FileNames, MakeOneComponentOfAnyName)
{
    EXPECT_EQ("viewer", vfBase::makePathComponent("viewer"));
    EXPECT_EQ("a_b", vfBase::makePathComponent("a/b"));
    EXPECT_EQ("_", vfBase::makePathComponent("."));
    EXPECT_EQ("__", vfBase::makePathComponent(".."));
    EXPECT_EQ(".._x", vfBase::makePathComponent("../x"));
    EXPECT_EQ("", vfBase::makePathComponent(""));
}

TEST(Printable, KeepsUtf8AndEscapesEverythingElse)
{
    EXPECT_EQ("plain", vfBase::printable("plain"));
    EXPECT_EQ("sch\xC3\xB6n \xE2\x82\xAC \xF0\x9F\x9A\x80",
              vfBase::printable("sch\xC3\xB6n \xE2\x82\xAC \xF0\x9F\x9A\x80"));
    EXPECT_EQ("a\\nb\\t\\r\\x1B[0m\\x7F", vfBase::printable("a\nb\t\r\x1B[0m\x7F"));
    EXPECT_EQ("\xC3\xB6\\x1B\xE2\x82\xAC\\x1B\xF0\x9F\x9A\x80\\x1B",
              vfBase::printable("\xC3\xB6\x1B\xE2\x82\xAC\x1B\xF0\x9F\x9A\x80\x1B"));
    EXPECT_EQ("\\xFF\\xC3", vfBase::printable("\xFF\xC3"));
    EXPECT_EQ("\\xC0\\x80", vfBase::printable("\xC0\x80"));          // overlong
    EXPECT_EQ("\\xED\\xA0\\x80", vfBase::printable("\xED\xA0\x80")); // a surrogate
    EXPECT_EQ("\\xF4\\x90\\x80\\x80", vfBase::printable("\xF4\x90\x80\x80"));
    EXPECT_EQ("\\xC2\\x85", vfBase::printable("\xC2\x85")); // a control character of two bytes
    EXPECT_EQ("a\\x00b", vfBase::printable(VfString(std::string("a\0b", 3))));
}

TEST(Version, IsTheOneOfTheBuildAndVerbosenessIsRemembered)
{
    EXPECT_THAT(vfBase::getVersion(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_FALSE(vfBase::isVerbose());
    vfBase::setVerbose(true);
    EXPECT_TRUE(vfBase::isVerbose());
    EXPECT_GE(osg::getNotifyLevel(), osg::INFO);
    vfBase::setVerbose(false);
    EXPECT_FALSE(vfBase::isVerbose());
}

TEST(Version, VerbosenessAskedForTwiceEndsOnceWithTheLevelFromBefore)
{
    osg::setNotifyLevel(osg::WARN);
    vfBase::setVerbose(false);
    EXPECT_EQ(osg::WARN, osg::getNotifyLevel());
    vfBase::setVerbose(true);
    vfBase::setVerbose(true);
    vfBase::setVerbose(false);
    EXPECT_EQ(osg::WARN, osg::getNotifyLevel());
    osg::setNotifyLevel(osg::DEBUG_FP);
    vfBase::setVerbose(true);
    EXPECT_EQ(osg::DEBUG_FP, osg::getNotifyLevel());
}

TEST(ApplicationInfo, NamesTheExecutableUntilItIsTold)
{
    ApplicationInfo& info = ApplicationInfo::instance();
    EXPECT_STREQ("vfBaseTests", info.getApplicationName());
    EXPECT_STREQ("", info.getApplicationVendorName());
    info.setApplicationName("viewer");
    info.setApplicationVersion("1");
    info.setApplicationIconName("2");
    info.setApplicationUrl("3");
    info.setApplicationOnlineHelpUrl("4");
    info.setApplicationVendorName("5");
    info.setApplicationVendorShortName("6");
    info.setApplicationVendorUrl("7");
    info.setApplicationVendorBanner("8");
    info.setSplashImageName("9");
    EXPECT_STREQ("viewer", info.getApplicationName());
    EXPECT_STREQ("1", info.getApplicationVersion());
    EXPECT_STREQ("2", info.getApplicationIconName());
    EXPECT_STREQ("3", info.getApplicationUrl());
    EXPECT_STREQ("4", info.getApplicationOnlineHelpUrl());
    EXPECT_STREQ("5", info.getApplicationVendorName());
    EXPECT_STREQ("6", info.getApplicationVendorShortName());
    EXPECT_STREQ("7", info.getApplicationVendorUrl());
    EXPECT_STREQ("8", info.getApplicationVendorBanner());
    EXPECT_STREQ("9", info.getSplashImageName());
    info.setApplicationName(nullptr);
    EXPECT_STREQ("", info.getApplicationName());
}

TEST(StandardPaths, FollowTheEnvironment)
{
    const vfTest::TemporaryDirectory home;
    setenv("HOME", home.path().c_str(), 1);
    setenv("TMPDIR", "/var/tmp/", 1);
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_CONFIG_HOME");
    ApplicationInfo::instance().setApplicationName("viewer");
    ApplicationInfo::instance().setApplicationVendorShortName("velaforge");
    EXPECT_EQ(home.path(), StandardPaths::standardLocation(StandardPaths::Home));
    EXPECT_EQ(home.file("Documents"), StandardPaths::standardLocation(StandardPaths::Documents));
    EXPECT_EQ(home.file("Desktop"), StandardPaths::standardLocation(StandardPaths::Desktop));
    EXPECT_STREQ("/var/tmp", StandardPaths::standardLocation(StandardPaths::Temp));
    EXPECT_EQ(home.file(".local/share/velaforge/viewer"),
              StandardPaths::standardLocation(StandardPaths::ApplicationData));
    EXPECT_EQ(home.file(".config"), StandardPaths::standardLocation(StandardPaths::GenericConfig));
    setenv("XDG_DATA_HOME", "relative/is/not/allowed", 1);
    EXPECT_EQ(home.file(".local/share"), StandardPaths::standardLocation(StandardPaths::GenericData));
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_STREQ("/data", StandardPaths::standardLocation(StandardPaths::GenericData));
    unsetenv("TMPDIR");
    EXPECT_STREQ("/tmp", StandardPaths::standardLocation(StandardPaths::Temp));
}

TEST(StandardPaths, WithoutAHomeInTheEnvironmentTheSystemKnowsIt)
{
    const passwd* user = getpwuid(getuid());
    ASSERT_TRUE(user);
    const std::string home = user->pw_dir;
    for (const char* value : {"", "relative"}) {
        setenv("HOME", value, 1);
        EXPECT_EQ(home, StandardPaths::standardLocation(StandardPaths::Home));
    }
    unsetenv("HOME");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(home, StandardPaths::standardLocation(StandardPaths::Home));
    EXPECT_EQ((home == "/" ? "" : home) + "/.config",
              StandardPaths::standardLocation(StandardPaths::GenericConfig));
}

TEST(StandardPaths, DocumentsAreWhereTheUserPutThem)
{
    const vfTest::TemporaryDirectory home;
    setenv("HOME", home.path().c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    home.write(".config/user-dirs.dirs",
               "# comment\nXDG_DOCUMENTS_DIR=\"$HOME/Papers\"\nXDG_MUSIC_DIR=\"/music/\"\n"
               "XDG_PICTURES_DIR=\"relative\"\nXDG_VIDEOS_DIR=\"$HOME/unterminated\n"
               "XDG_DESKTOP_DIR=\"$HOME\"\nXDG_DOWNLOAD_DIR=\"/the \\\"net\\\"\"\n");
    EXPECT_EQ(home.file("Papers"), StandardPaths::standardLocation(StandardPaths::Documents));
    EXPECT_STREQ("/music", StandardPaths::standardLocation(StandardPaths::Music));
    EXPECT_EQ(home.file("Pictures"), StandardPaths::standardLocation(StandardPaths::Pictures));
    EXPECT_EQ(home.file("Videos"), StandardPaths::standardLocation(StandardPaths::Movies));
    EXPECT_EQ(home.path(), StandardPaths::standardLocation(StandardPaths::Desktop));
    EXPECT_STREQ("/the \"net\"", StandardPaths::standardLocation(StandardPaths::Download));
}

TEST(StandardPaths, KeepTheirNumbersAndAreNeverNull)
{
    EXPECT_EQ(1, StandardPaths::Documents);
    EXPECT_EQ(7, StandardPaths::Temp);
    EXPECT_EQ(8, StandardPaths::Home);
    EXPECT_EQ(17, StandardPaths::ApplicationData);
    for (int location = 0; location <= 17; ++location) {
        const char* path =
            StandardPaths::standardLocation(static_cast<StandardPaths::StandardLocation>(location));
        ASSERT_NE(nullptr, path);
        EXPECT_EQ('/', path[0]) << location;
    }
    EXPECT_STREQ("", StandardPaths::standardLocation(static_cast<StandardPaths::StandardLocation>(99)));
}

TEST(NotifyHandler, SendsEverythingToStandardErrorAndKeepsWarnings)
{
    vfBase::NotifyHandler& handler = vfBase::NotifyHandler::instance();
    EXPECT_TRUE(handler.isNotifyEnabled());
    handler.install();
    handler.install();
    osg::setNotifyLevel(osg::NOTICE);
    vfBase::clearMonitor();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    osg::notify(osg::NOTICE) << "a notice" << std::endl;
    osg::notify(osg::WARN) << "a warning" << std::endl;
    handler.setQuiet(true);
    osg::notify(osg::WARN) << "a quiet warning" << std::endl;
    handler.setQuiet(false);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("a notice\na warning\n", testing::internal::GetCapturedStderr());
    const vfBase::StringList kept = vfBase::getMonitorMessages();
    ASSERT_EQ(2u, kept.size());
    EXPECT_EQ("a warning", kept.get(0));
    EXPECT_EQ("a quiet warning", kept.get(1));
    vfBase::clearMonitor();
    EXPECT_EQ(0u, vfBase::getMonitorMessages().size());
    EXPECT_EQ(2u, kept.size());
}

TEST(NotifyHandler, CanBeSwitchedOff)
{
    vfBase::NotifyHandler::instance().setNotifyEnabled(false);
    EXPECT_FALSE(vfBase::NotifyHandler::instance().isNotifyEnabled());
}

TEST(NotifyHandler, AWarningFromAStaticDestructorIsWrittenAndKept)
{
    const vfTest::Outcome outcome =
        vfTest::runProgram({VELAFORGE_PROGRAM_DIR "/services_program", "late-warning"});
    const std::string early = "an early warning, long enough to be allocated on the heap\n";
    const std::string late = "a late warning, long enough to be allocated on the heap\n";
    const std::string all = early + early + early + early + early + late;
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ(all, outcome.err);
    EXPECT_EQ("6 on\n" + all, outcome.out);
}

TEST(NotifyHandler, ThreadsMayWarnWhileItIsSwitchedOnAndOff)
{
    vfBase::NotifyHandler& handler = vfBase::NotifyHandler::instance();
    handler.install();
    vfBase::clearMonitor();
    testing::internal::CaptureStderr();
    std::atomic<int> timesEnabled{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int message = 0; message < 200; ++message) {
                timesEnabled += handler.isNotifyEnabled();
                for (int note = 0; note < 10; ++note)
                    osg::getNotifyHandler()->notify(osg::INFO, "a note, which the monitor does not keep\n");
                osg::getNotifyHandler()->notify(osg::WARN, "a warning\n");
            }
        });
    }
    for (int times = 0; times < 20000; ++times) {
        handler.setQuiet(!handler.isQuiet());
        handler.setNotifyEnabled(!handler.isNotifyEnabled());
        handler.install();
    }
    for (std::thread& thread : threads)
        thread.join();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(400u, vfBase::getMonitorMessages().size());
    EXPECT_LE(timesEnabled, 400);
}

namespace {

/// Starts the program with redirections of a shell. @return what it found
std::string descriptorsWith(const std::string& redirections)
{
    const vfTest::TemporaryDirectory directory;
    const std::string report = directory.file("report");
    vfTest::runProgram(
        {"sh", "-c",
         "exec " VELAFORGE_PROGRAM_DIR "/services_program descriptors '" + report + "' " + redirections});
    return readFile(report);
}

} // namespace

TEST(StandardDescriptors, ClosedOnesAreOpenedSoThatNoFileGetsTheirNumbers)
{
    EXPECT_EQ("opened nowhere nowhere nowhere next free read 0\n", descriptorsWith("<&- >&- 2>&-"));
    EXPECT_EQ("opened nowhere kept kept next free read 0\n", descriptorsWith("<&-"));
    EXPECT_EQ("opened kept nowhere kept next free read 1\n", descriptorsWith("</dev/zero >&-"));
    EXPECT_EQ("opened kept kept nowhere next free read 1\n", descriptorsWith("</dev/zero 2>&-"));
}

TEST(StandardDescriptors, OpenOnesStayAsTheyAre)
{
    EXPECT_EQ("opened kept kept kept next free read 1\n", descriptorsWith("</dev/zero"));
}
