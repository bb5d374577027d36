// SPDX-License-Identifier: MIT
// Ten programs at once, each of which keeps places and recent files of its own in one settings file.
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>

#include <unistd.h>

using vfTest::Outcome;
using vfTest::RunningProgram;
using vfTest::runProgram;
using vfTest::TemporaryDirectory;

namespace {

const std::string writer = VELAFORGE_PROGRAM_DIR "/settings_writer";
constexpr int programs = 10;
constexpr int rounds = 20;

/// Starts ten programs that all load the file before the first of them saves.
void visitAtOnce(const TemporaryDirectory& place, const std::string& prefix, int roundsEach)
{
    const std::string gate = place.file("gate " + prefix);
    std::vector<std::unique_ptr<RunningProgram>> running;
    for (int program = 0; program < programs; ++program)
        running.push_back(std::make_unique<RunningProgram>(
            std::vector<std::string>{writer, "visit", place.file("store.json"),
                                     prefix + std::to_string(program), std::to_string(roundsEach), gate}));
    for (int program = 0; program < programs; ++program) {
        while (access((gate + " " + prefix + std::to_string(program)).c_str(), F_OK) != 0)
            ASSERT_FALSE(running[static_cast<std::size_t>(program)]->isOverWithin(1));
    }
    vfTest::overwriteFile(gate, "open");
    for (const auto& program : running) {
        const Outcome outcome = program->wait();
        EXPECT_EQ(0, outcome.status);
        EXPECT_EQ("", outcome.err);
    }
}

/// @return the lines of the places and of the files, each without its first word
std::pair<std::vector<std::string>, std::vector<std::string>> visits(const TemporaryDirectory& place)
{
    std::pair<std::vector<std::string>, std::vector<std::string>> found;
    std::istringstream lines(runProgram({writer, "visits", place.file("store.json")}).out);
    for (std::string kind, name; lines >> kind >> name;)
        (kind == "place" ? found.first : found.second).push_back(name);
    return found;
}

/// Expects each name as a place and as a recent file, and none twice.
void expectAll(const TemporaryDirectory& place, const std::set<std::string>& names)
{
    const auto [places, files] = visits(place);
    EXPECT_EQ(names, std::set<std::string>(places.begin(), places.end()));
    EXPECT_EQ(names, std::set<std::string>(files.begin(), files.end()));
    EXPECT_EQ(names.size(), places.size());
    EXPECT_EQ(names.size(), files.size());
}

} // namespace

TEST(SettingsOfTenPrograms, NothingIsMissingWhenEachStartsAnewInEachRound)
{
    const TemporaryDirectory place;
    std::set<std::string> names;
    for (int round = 0; round < rounds; ++round) {
        const std::string prefix = "round-" + std::to_string(round) + "-by-";
        visitAtOnce(place, prefix, 1);
        for (int program = 0; program < programs; ++program)
            names.insert(prefix + std::to_string(program) + "-0");
        // What was opened last is in front.
        const auto files = visits(place).second;
        ASSERT_GE(files.size(), static_cast<std::size_t>(programs));
        EXPECT_TRUE(std::all_of(files.begin(), files.begin() + programs, [&prefix](const std::string& name) {
            return name.compare(0, prefix.size(), prefix) == 0;
        }));
    }
    expectAll(place, names);
}

TEST(SettingsOfTenPrograms, NothingIsMissingWhenEachSavesManyTimes)
{
    const TemporaryDirectory place;
    visitAtOnce(place, "by-", rounds);
    std::set<std::string> names;
    for (int program = 0; program < programs; ++program) {
        for (int round = 0; round < rounds; ++round)
            names.insert("by-" + std::to_string(program) + "-" + std::to_string(round));
    }
    expectAll(place, names);
    // Of each program, the later file is before the earlier one.
    const auto files = visits(place).second;
    for (int program = 0; program < programs; ++program) {
        const std::string prefix = "by-" + std::to_string(program) + "-";
        auto last = files.begin();
        for (int round = rounds - 1; round >= 0; --round) {
            const auto found = std::find(last, files.end(), prefix + std::to_string(round));
            ASSERT_NE(files.end(), found) << prefix << round;
            last = found;
        }
    }
}
