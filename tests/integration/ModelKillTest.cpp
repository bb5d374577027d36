// SPDX-License-Identifier: MIT
// Kills the program while it saves a model.
#include "support/Models.h"
#include "support/Process.h"
#include "support/Search.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
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

TEST(ModelKill, KilledAtAnyMomentAModelHasItsOwnMaterials)
{
    using Clock = std::chrono::steady_clock;
    using Microseconds = std::chrono::microseconds;
    const TemporaryDirectory directory;
    const std::string file = directory.file("boat.obj");
    const auto save = [&file](const char* color) {
        return std::vector<std::string>{VELAFORGE_PROGRAM_DIR "/vfviewer",
                                        "--headless",
                                        VELAFORGE_SOURCE_DIR "/models/sailboat.obj",
                                        "--invoke",
                                        std::string("vfViewer::SetColor=") + color,
                                        "--invoke",
                                        "vfViewer::SaveAs=" + file};
    };
    const char* const colors[] = {"1,0,0", "0,1,0"};
    const auto begin = Clock::now();
    const Outcome outcome = vfTest::runProgram(save(colors[0]));
    ASSERT_EQ(0, outcome.status) << outcome.err;
    const auto took = std::chrono::duration_cast<Microseconds>(Clock::now() - begin);
    // The model is the same but for the name of its materials, and these are the same but for the colour.
    const auto materialsOf = [&directory](const std::string& model) {
        const std::string word = "mtllib ";
        const std::size_t at = model.find(word);
        const std::string name = model.substr(at + word.size(), model.find('\n', at) - at - word.size());
        return readFile(directory.file(name));
    };
    const std::string first = materialsOf(readFile(file));
    ASSERT_EQ(0, vfTest::runProgram(save(colors[1])).status);
    const std::string second = materialsOf(readFile(file));
    ASSERT_NE(first, second);
    vfTest::Search search("killed saves of models with materials", 8);
    while (search.next()) {
        const std::string before = readFile(file);
        vfTest::RunningProgram program(save(colors[search.seed() % 2]));
        usleep(std::mt19937(search.seed())() % static_cast<unsigned>(took.count() + 1));
        kill(program.process(), SIGKILL);
        program.wait();
        const std::string after = readFile(file);
        const std::string materials = materialsOf(after);
        EXPECT_TRUE(materials == first || materials == second) << materials.size() << " bytes";
        EXPECT_TRUE(after != before || materials == materialsOf(before));
    }
    EXPECT_EQ(0, vfTest::runProgram(save(colors[0])).status);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
        EXPECT_EQ(std::string::npos, entry.path().string().find("-save-")) << entry.path();
        files += entry.path().extension() == ".mtl";
    }
    EXPECT_EQ(1u, files) << "materials of models that are gone";
}

TEST(ModelLimits, ALimitOfTheSizeOfFilesIsAReasonAndNoEndOfTheProgram)
{
    const TemporaryDirectory directory;
    for (const char* blocks : {"0", "1", "20", "200"}) {
        for (const char* format : {"obj", "osgt", "stl"}) {
            const std::string command =
                std::string("ulimit -f ") + blocks + "; exec " VELAFORGE_PROGRAM_DIR "/vfviewer --headless " +
                vfTest::signpost("obj") +
                " --invoke vfViewer::SaveAs=" + directory.file(std::string("a.") + format);
            const Outcome outcome = vfTest::runProgram({"/bin/sh", "-c", command});
            EXPECT_TRUE(outcome.status == 0 || outcome.status == 4)
                << blocks << " " << format << ": " << outcome.status;
        }
    }
}
