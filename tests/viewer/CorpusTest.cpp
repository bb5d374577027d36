// SPDX-License-Identifier: MIT
// Damaged files of every format, one after another in one program: a few in the test, any number under "./dev soak", and
// those that once did harm or bring their reader to an end.
#include "Reading.h"
#include "support/Models.h"
#include "support/Search.h"
#include "support/Spoiler.h"

#include <osg/ComputeBoundsVisitor>

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfTest::Search;
using vfViewer::ReadJob;
using vfViewer::ReadKind;
using vfViewer::ReadLimits;
using vfViewer::ReadOutcome;

namespace {

constexpr int mutants = 25;
constexpr int enoughToGrow = 1000; // until then the heap takes what it goes on using

constexpr unsigned int secondsAllowed = 1;
constexpr std::uint64_t memoryAllowed = std::uint64_t(512) * 1024 * 1024;

long residentKilobytes()
{
    malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    file >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

class Corpus : public vfTest::Reading, public testing::WithParamInterface<std::string>
{
protected:
    /// Opens a file as the program does, with little time and memory.
    void open(const std::string& path)
    {
        ReadLimits limits;
        limits.seconds = secondsAllowed;
        limits.memory = memoryAllowed;
        ReadJob job(ReadKind::Model, path, limits);
        ASSERT_TRUE(job.wait(300000)) << path;
        const ReadOutcome outcome = job.take();
        reason = outcome.reason;
        if (!outcome.scene) {
            ++refused;
            ASSERT_NE("", outcome.reason);
            ASSERT_EQ(std::string::npos, outcome.reason.find('\n')) << outcome.reason;
            crashed += outcome.reason.find("its reader fails") != std::string::npos;
            hung += outcome.reason.find("too long") != std::string::npos;
            return;
        }
        osg::ComputeBoundsVisitor bounds; // somebody looks at it
        outcome.scene->accept(bounds);
        ASSERT_TRUE(bounds.getBoundingBox().valid());
    }

    std::string reason; ///< why the last one was not opened
    int refused = 0;
    int crashed = 0;
    int hung = 0;
};

class KeptCases : public Corpus
{};

const std::string keptDirectory = VELAFORGE_SOURCE_DIR "/tests/fixtures/kept/";

std::vector<std::string> keptCases()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(keptDirectory)) {
        if (entry.path().extension() != ".md")
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST_P(Corpus, OfDamagedFilesDoesNoHarm)
{
    const std::string healthy = vfTest::readFile(vfTest::signpost(GetParam()));
    ASSERT_FALSE(healthy.empty());
    directory.write("signpost.bin", vfTest::readFile(vfTest::signpost("bin"))); // to which one format refers
    const char* keep = std::getenv("VELAFORGE_KEEP");
    [[maybe_unused]] long before = 0; // sanitizers keep what was freed
    int opened = 0;
    for (Search search("damaged files", mutants); search.next(); ++opened) {
        if (opened == enoughToGrow)
            before = residentKilobytes();
        const std::string mutant = vfTest::Spoiler(healthy, search.seed()).spoil();
        const int endedBefore = crashed + hung;
        open(directory.write("mutant." + GetParam(), mutant));
        if (keep && (HasFailure() || crashed + hung > endedBefore))
            vfTest::overwriteFile(std::string(keep) + "/" + std::to_string(search.seed()) + "." + GetParam(),
                                  mutant);
        ASSERT_FALSE(HasFatalFailure());
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    if (opened >= 2 * enoughToGrow) {
        EXPECT_LT(residentKilobytes() - before, 4096)
            << "grown by the files behind the first " << enoughToGrow;
    }
#endif
    std::cout << opened << " mutants: " << refused << " refused, of which the reader of " << crashed
              << " crashed and of " << hung << " hung" << std::endl;
    open(vfTest::signpost(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, Corpus, testing::ValuesIn(vfTest::signpostFormats()),
                         [](const auto& tested) { return "of_" + tested.param; });

TEST_P(KeptCases, DoNoHarm)
{
    open(keptDirectory + GetParam());
    // The next one is read as ever.
    EXPECT_TRUE(read(vfTest::signpost("obj")).scene);
}

INSTANTIATE_TEST_SUITE_P(All, KeptCases, testing::ValuesIn(keptCases()), [](const auto& tested) {
    std::string name = tested.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
});
