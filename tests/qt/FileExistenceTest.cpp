// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/qt/internal/FileExistence.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

using vfApplication::FileExistence;
using vfTest::TemporaryDirectory;

namespace {

class FileExistenceTest : public testing::Test
{
protected:
    /// Lets the program work until that much was told, for some seconds at most.
    void waitForTold(int count) const
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (told < count && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    void countTold(const FileExistence& files)
    {
        QObject::connect(&files, &FileExistence::found, &application, [this] {
            ++told;
            EXPECT_EQ(application.thread(), QThread::currentThread());
        });
    }

    int argc = 1;
    char name[8] = "program";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    int told = 0;
};

} // namespace

TEST_F(FileExistenceTest, TellsWhatIsThereAndWhatIsMissing)
{
    const TemporaryDirectory directory;
    const std::string there = directory.write("there", "");
    const std::string missing = directory.file("missing");
    FileExistence files;
    countTold(files);
    EXPECT_EQ(FileExistence::Unknown, files.state(there));
    files.check(there);
    files.check(missing);
    waitForTold(2);
    EXPECT_EQ(FileExistence::There, files.state(there));
    EXPECT_EQ(FileExistence::Missing, files.state(missing));
    EXPECT_EQ(2, told);
}

TEST_F(FileExistenceTest, LooksAgainWhenItIsAskedTo)
{
    const TemporaryDirectory directory;
    const std::string path = directory.file("late");
    FileExistence files;
    countTold(files);
    files.check(path);
    waitForTold(1);
    directory.write("late", "");
    EXPECT_EQ(FileExistence::Missing, files.state(path)) << "the known state stays until the next check";
    files.check(path);
    waitForTold(2);
    EXPECT_EQ(FileExistence::There, files.state(path));
}

TEST_F(FileExistenceTest, OneThreadAtMostLooksAtAFileThatDoesNotAnswer)
{
    std::mutex mount;
    std::atomic<int> looks{0};
    FileExistence files([&](const std::string&) {
        ++looks;
        const std::lock_guard<std::mutex> wait(mount);
        return true;
    });
    countTold(files);
    {
        const std::lock_guard<std::mutex> dead(mount);
        for (int i = 0; i < 10; ++i)
            files.check("/dead/file");
        EXPECT_EQ(FileExistence::Unknown, files.state("/dead/file")) << "and the caller does not wait";
    }
    waitForTold(1);
    EXPECT_EQ(1, looks);
    EXPECT_EQ(FileExistence::There, files.state("/dead/file"));
}

TEST_F(FileExistenceTest, ALookThatThrowsCountsAsMissing)
{
    FileExistence files([](const std::string&) -> bool { throw std::bad_alloc(); });
    countTold(files);
    files.check("/file");
    waitForTold(1);
    EXPECT_EQ(FileExistence::Missing, files.state("/file"));
}

TEST_F(FileExistenceTest, AThreadThatComesBackToNobodyIsHarmless)
{
    struct Mount
    {
        std::mutex mutex;
        std::atomic<bool> isDone{false};
    };
    const auto mount = std::make_shared<Mount>();
    {
        const std::lock_guard<std::mutex> dead(mount->mutex);
        auto files = std::make_unique<FileExistence>([mount](const std::string&) {
            const std::lock_guard<std::mutex> wait(mount->mutex);
            mount->isDone = true;
            return true;
        });
        countTold(*files);
        files->check("/dead/file");
        files.reset();
    }
    while (!mount->isDone)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    QCoreApplication::processEvents();
    EXPECT_EQ(0, told);
}

TEST_F(FileExistenceTest, ManyThreadsFindWhatThereIs)
{
    FileExistence files([](const std::string& path) { return path.back() != '7'; });
    countTold(files);
    for (int i = 0; i < 100; ++i)
        files.check("/file" + std::to_string(i));
    waitForTold(100);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(i % 10 == 7 ? FileExistence::Missing : FileExistence::There,
                  files.state("/file" + std::to_string(i)));
    }
}
