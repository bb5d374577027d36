// SPDX-License-Identifier: MIT
// Kills the program while it saves a model.
#include "support/Models.h"
#include "support/Process.h"
#include "support/Search.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <random>
#include <string>
#include <vector>

#include <unistd.h>

using vfTest::Outcome;
using vfTest::readFile;
using vfTest::TemporaryDirectory;

namespace {

std::vector<std::string> saveAs(const std::string& file)
{
    return {VELAFORGE_PROGRAM_DIR "/vfviewer", "--headless", vfTest::signpost("obj"), "--invoke",
            "vfViewer::SaveAs=" + file};
}

} // namespace

TEST(ModelKill, KilledAtAnyMomentTheFileIsTheOldOneOrTheNewOne)
{
    using Clock = std::chrono::steady_clock;
    using Microseconds = std::chrono::microseconds;
    const TemporaryDirectory directory;
    const std::string healthy = directory.file("healthy.stl");
    const auto begin = Clock::now();
    const Outcome outcome = vfTest::runProgram(saveAs(healthy));
    ASSERT_EQ(0, outcome.status) << outcome.err;
    const auto took = std::chrono::duration_cast<Microseconds>(Clock::now() - begin);
    const std::string before = "solid nothing\nendsolid nothing\n";
    const std::string after = readFile(healthy);
    ASSERT_NE(before, after);

    vfTest::Search search("killed saves of models", 5);
    while (search.next()) {
        const std::string file = directory.write("model.stl", before);
        vfTest::RunningProgram save(saveAs(file));
        usleep(std::mt19937(search.seed())() % static_cast<unsigned>(took.count() + 1));
        kill(save.process(), SIGKILL);
        save.wait();
        const std::string left = readFile(file);
        EXPECT_TRUE(left == before || left == after) << left.size() << " bytes are left";
        EXPECT_EQ(0, vfTest::runProgram(saveAs(file)).status);
        EXPECT_EQ(after, readFile(file));
    }
}
