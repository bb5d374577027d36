// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/qt/internal/FileWatcher.h>

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using testing::ElementsAre;
using vfApplication::FileWatcher;
using vfTest::overwriteFile;
using vfTest::replaceFile;
using vfTest::TemporaryDirectory;

namespace {

/// A watcher and what it told, without a program.
struct Watched
{
    Watched()
    {
        QObject::connect(&watcher, &FileWatcher::changed,
                         [this](const QByteArray& path) { tell("changed ", path); });
        QObject::connect(&watcher, &FileWatcher::removed,
                         [this](const QByteArray& path) { tell("removed ", path); });
        QObject::connect(&watcher, &FileWatcher::restored,
                         [this](const QByteArray& path) { tell("restored ", path); });
    }

    void tell(const char* what, const QByteArray& path)
    {
        told.push_back(what + fs::path(path.toStdString()).filename().string());
    }

    /// Waits for that many messages, and then for more that should not come.
    std::vector<std::string> wait(std::size_t count)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (told.size() < count && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        rest();
        return std::exchange(told, {});
    }

    /// Long enough for anything to be told.
    void rest() const
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(250);
        while (std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    int argc = 1;
    char name[8] = "program";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    TemporaryDirectory directory;
    FileWatcher watcher{20};
    std::vector<std::string> told;
};

} // namespace

TEST(FileWatcher, TellsOnceHoweverManyWritesMakeOneChange)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    for (int i = 0; i < 20; ++i)
        overwriteFile(path, "part " + std::to_string(i));
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
    overwriteFile(path, "another");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, LooksAtManyFilesWithOneThread)
{
    const auto threads = [] {
        return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
    };
    Watched watched;
    // The first thread may bring others with it, of a sanitizer for example.
    watched.watcher.add(watched.directory.write("first.txt", "one"));
    watched.rest();
    const auto before = threads();
    constexpr int count = 100;
    const std::string contents(1000000, 'x');
    std::ptrdiff_t most = 0;
    for (int i = 0; i < count; ++i) {
        watched.watcher.add(watched.directory.write(std::to_string(i) + ".txt", contents));
        most = std::max(most, threads());
    }
    EXPECT_LE(most, before + 1);
    watched.rest();
    // Something else beside them has all of them looked at.
    for (int round = 0; round < 20; ++round) {
        watched.directory.write("beside.txt", std::to_string(round));
        for (int i = 0; i < 20; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
            most = std::max(most, threads());
        }
    }
    EXPECT_LE(most, before + 1);
    overwriteFile(watched.directory.file("42.txt"), "other");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed 42.txt"));
}

TEST(FileWatcher, AFileThatIsOnlyTouchedHasNotChanged)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::last_write_time(path, fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_THAT(watched.wait(0), ElementsAre());
    overwriteFile(path, "one"); // the same once more
    EXPECT_THAT(watched.wait(0), ElementsAre());
    overwriteFile(path, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, SurvivesReplacementByRename)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    for (const char* contents : {"two", "three", "four"}) {
        replaceFile(path, contents);
        EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt")) << contents;
    }
    overwriteFile(path, "five"); // in place, after it was replaced
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, AFileThatIsRemovedAndMadeAnewAtOnceHasChanged)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::remove(path);
    overwriteFile(path, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, TellsThatAFileIsGoneAndThatItIsBack)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::rename(path, path + ".away");
    EXPECT_THAT(watched.wait(1), ElementsAre("removed a.txt"));
    fs::rename(path + ".away", path);
    EXPECT_THAT(watched.wait(1), ElementsAre("restored a.txt"));
    fs::remove(path);
    EXPECT_THAT(watched.wait(1), ElementsAre("removed a.txt"));
    overwriteFile(path, "another");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, WhatIsAcknowledgedIsNotTold)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    replaceFile(path, "our own");
    watched.watcher.acknowledge(path);
    EXPECT_THAT(watched.wait(0), ElementsAre());
    replaceFile(path, "theirs");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, FollowsALinkToTheFileItself)
{
    Watched watched;
    watched.directory.write("real/a.txt", "one");
    const std::string link = watched.directory.file("link.txt");
    fs::create_symlink(watched.directory.file("real/a.txt"), link);
    watched.watcher.add(link);
    watched.rest();
    replaceFile(watched.directory.file("real/a.txt"), "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed link.txt"));
}

TEST(FileWatcher, WhatIsNoLongerWatchedIsNotTold)
{
    Watched watched;
    const std::string a = watched.directory.write("a.txt", "one");
    const std::string b = watched.directory.write("b.txt", "one");
    watched.watcher.add(a);
    watched.watcher.add(b);
    watched.watcher.add(b);
    EXPECT_TRUE(watched.watcher.contains(a));
    watched.watcher.remove(a);
    EXPECT_FALSE(watched.watcher.contains(a));
    watched.rest();
    overwriteFile(a, "two");
    replaceFile(b, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed b.txt"));
}

TEST(FileWatcher, ALargeFileIsToldApartByItsSizeAndTime)
{
    Watched watched;
    const std::string path = watched.directory.write("large", "x");
    fs::resize_file(path, 65ull * 1024 * 1024); // without blocks on the disk
    watched.watcher.add(path);
    watched.rest();
    fs::resize_file(path, 66ull * 1024 * 1024);
    EXPECT_THAT(watched.wait(1), ElementsAre("changed large"));
}
