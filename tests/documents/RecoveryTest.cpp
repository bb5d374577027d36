// SPDX-License-Identifier: MIT
#include <velaforge/documents/Recovery.h>

#include "support/RecordingDocument.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfApplication::Recovery;
using vfBase::FileIdentity;
using vfTest::readFile;
using vfTest::RecordingDocument;

namespace {

/// What is kept of a document whose contents are a text.
Recovery::Snapshot snapshot(const std::string& text, unsigned long long state,
                            const FileIdentity& identity = {})
{
    return {state, identity, [text] {
                return [text](const std::string& path) {
                    std::ofstream file(path);
                    file << text;
                    return file.flush().good();
                };
            }};
}

void killThisProgram()
{
    kill(getpid(), SIGKILL);
}

class Recoveries : public testing::Test
{
protected:
    std::string place() const { return directory.file("recovery"); }

    std::size_t countFiles() const
    {
        std::error_code problem;
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(place(), problem), fs::directory_iterator()));
    }

    /// Runs work in another program, which it ends by killThisProgram(), so that no destructor runs.
    template <class Work>
    static void inKilledProgram(Work work)
    {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }

    /// Another program keeps two documents and is killed.
    void crash() const
    {
        inKilledProgram([this] {
            Recovery recovery(place(), ".txt");
            RecordingDocument one;
            RecordingDocument other;
            one.setFilename("/somewhere/one.txt", false);
            other.setFilename("/somewhere/other.txt", false);
            recovery.keepNow(one, snapshot("one", 1));
            recovery.keepNow(other, snapshot("other", 1));
            killThisProgram();
        });
    }

    /// Returns the contents of the only copy.
    std::string copied() const
    {
        std::string text = "nothing";
        for (const auto& entry : fs::directory_iterator(place())) {
            if (entry.path().extension() == ".txt")
                text = readFile(entry.path());
        }
        return text;
    }

    vfTest::TemporaryDirectory directory;
};

} // namespace

TEST_F(Recoveries, WhatAProgramLeftBehindIsFoundByTheNext)
{
    crash();
    Recovery next(place(), ".txt");
    const auto found = next.findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("/somewhere/one.txt", found[0].original);
    EXPECT_EQ("/somewhere/other.txt", found[1].original);
    EXPECT_NEAR(static_cast<double>(time(nullptr)), static_cast<double>(found[0].time), 60);
    EXPECT_EQ("one", readFile(found[0].copy));
    Recovery::discard(found[0]);
    ASSERT_EQ(1u, next.findLeftBehind().size());
    Recovery::discard(found[1]);
    EXPECT_TRUE(next.findLeftBehind().empty());
    EXPECT_EQ(0u, countFiles());
}

TEST_F(Recoveries, WhatIsLeftOfAWriterThatWasKilledIsNoCopyAndGoesWithIt)
{
    inKilledProgram([this] {
        Recovery recovery(place(), ".txt");
        RecordingDocument document;
        document.setFilename("/somewhere/one.txt", false);
        recovery.keepNow(document, snapshot("one", 1));
        recovery.keepNow(document, {2, {}, [] {
                                        return [](const std::string& path) {
                                            std::ofstream(path) << "half";
                                            killThisProgram();
                                            return true;
                                        };
                                    }});
    });
    Recovery next(place(), ".txt");
    const auto found = next.findLeftBehind();
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ("one", readFile(found[0].copy));
    Recovery::discard(found[0]);
    EXPECT_TRUE(next.findLeftBehind().empty());
    EXPECT_EQ(0u, countFiles());
}

TEST_F(Recoveries, TheFileOfADocumentIsFoundFromAnotherDirectory)
{
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    inKilledProgram([this] {
        Recovery recovery(place(), ".txt");
        RecordingDocument document;
        document.setFilename("one.txt", false);
        document.setDocumentSaved(true);
        RecordingDocument unnamed;
        unnamed.setFilename("unnamed1", false);
        recovery.keepNow(document, snapshot("one", 1));
        recovery.keepNow(unnamed, snapshot("other", 1));
        killThisProgram();
    });
    ASSERT_EQ(0, chdir("/"));
    const auto found = Recovery(place(), ".txt").findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ(directory.file("one.txt"), found[0].original);
    EXPECT_TRUE(found[0].hasFile());
    EXPECT_EQ("unnamed1", found[1].original);
    EXPECT_FALSE(found[1].hasFile());
}

TEST_F(Recoveries, AFileThatAnotherProgramChangedMeanwhileIsNoticed)
{
    const std::string path = directory.write("one.txt", "before");
    inKilledProgram([&] {
        Recovery recovery(place(), ".txt");
        RecordingDocument document;
        document.setFilename(path, false);
        document.setDocumentSaved(true);
        recovery.keepNow(document, snapshot("one", 1, FileIdentity::of(path)));
        killThisProgram();
    });
    const auto found = Recovery(place(), ".txt").findLeftBehind();
    ASSERT_EQ(1u, found.size());
    EXPECT_FALSE(found[0].isOriginalChanged());
    // As long as before, and moved into its place.
    const std::string other = directory.write("other.txt", "after!");
    ASSERT_EQ(0, rename(other.c_str(), path.c_str()));
    EXPECT_TRUE(found[0].isOriginalChanged());
    ASSERT_EQ(0, unlink(path.c_str()));
    EXPECT_TRUE(found[0].isOriginalChanged());
}

TEST_F(Recoveries, ACopyWithoutTheIdentityOfItsFileIsFoundToo)
{
    crash();
    for (const auto& entry : fs::directory_iterator(place())) {
        if (entry.path().extension() == ".path")
            std::ofstream(entry.path()) << "one.txt";
    }
    const auto found = Recovery(place(), ".txt").findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("one.txt", found[0].original);
    EXPECT_FALSE(found[0].hasFile());
    EXPECT_FALSE(found[0].isOriginalChanged());
}

TEST_F(Recoveries, WhatARunningProgramKeepsIsItsOwn)
{
    Recovery recovery(place(), ".txt");
    const RecordingDocument document;
    EXPECT_TRUE(recovery.keep(document, snapshot("text", 1)));
    recovery.finishWriting();
    EXPECT_EQ(std::vector<const vfApplication::Document*>{&document}, recovery.getKept());
    EXPECT_TRUE(recovery.findLeftBehind().empty());
    EXPECT_TRUE(Recovery(place(), ".txt").findLeftBehind().empty());
    EXPECT_EQ(3u, countFiles()); // the lock, the copy, and the path of its file
    struct stat status;
    ASSERT_EQ(0, stat(place().c_str(), &status));
    EXPECT_EQ(0700u, status.st_mode & 0777u);
    recovery.drop(&document);
    EXPECT_EQ(1u, countFiles());
    EXPECT_TRUE(recovery.getKept().empty());
    recovery.drop(&document);
}

TEST_F(Recoveries, AProgramThatEndsLeavesNothingBehind)
{
    {
        Recovery recovery(place(), ".txt");
        const RecordingDocument document;
        EXPECT_TRUE(recovery.keep(document, snapshot("text", 1)));
    }
    EXPECT_EQ(0u, countFiles());
    const Recovery idle(directory.file("never"), ".txt");
    EXPECT_TRUE(idle.findLeftBehind().empty());
    EXPECT_FALSE(fs::exists(directory.file("never")));
}

TEST_F(Recoveries, OnlyANewStateIsWritten)
{
    Recovery recovery(place(), ".txt");
    const RecordingDocument document;
    ASSERT_TRUE(recovery.keepNow(document, snapshot("first", 1)));
    ASSERT_TRUE(recovery.keepNow(document, snapshot("the same", 1)));
    EXPECT_EQ("first", copied());
    ASSERT_TRUE(recovery.keepNow(document, snapshot("second", 2)));
    EXPECT_EQ("second", copied());
}

TEST_F(Recoveries, ACopyThatCannotBeWrittenLeavesTheOneBefore)
{
    directory.write("file", "");
    Recovery blocked(directory.file("file/recovery"), ".txt");
    const RecordingDocument document;
    EXPECT_FALSE(blocked.keep(document, snapshot("text", 1)));
    EXPECT_TRUE(blocked.getKept().empty());

    Recovery recovery(place(), ".txt");
    ASSERT_TRUE(recovery.keepNow(document, snapshot("first", 1)));
    const std::size_t files = countFiles();
    const auto failing = [](bool throws) {
        return [throws](const std::string& path) {
            std::ofstream(path) << "half";
            if (throws)
                throw std::bad_alloc();
            return false;
        };
    };
    recovery.keepNow(document, {2, {}, [&] { return failing(false); }});
    EXPECT_EQ("first", copied());
    recovery.keepNow(document, {3, {}, [&] { return failing(true); }});
    EXPECT_EQ("first", copied());
    EXPECT_EQ(files, countFiles()) << "nothing half-written stays";
    EXPECT_FALSE(recovery.keep(document, {4, {}, []() -> Recovery::Writer { throw std::bad_alloc(); }}));
    EXPECT_FALSE(recovery.isWriting());
    EXPECT_TRUE(recovery.keepNow(document, snapshot("second", 4))) << "after all this";
    EXPECT_EQ("second", copied());
}

TEST_F(Recoveries, WhatAWriterHoldsIsReleasedOnTheThreadOfTheProgram)
{
    struct Held
    {
        ~Held() { EXPECT_EQ(thread, std::this_thread::get_id()); }
        std::thread::id thread = std::this_thread::get_id();
    };
    Recovery recovery(place(), ".txt");
    const RecordingDocument document;
    for (unsigned long long state = 1; state < 20; ++state) {
        recovery.keepNow(document, {state, {}, [] {
                                        return [held = std::make_shared<Held>()](const std::string& path) {
                                            return std::ofstream(path).good();
                                        };
                                    }});
    }
}
