// SPDX-License-Identifier: MIT
// Kills a program that saves its settings at each system call that it makes meanwhile.
#include "support/Process.h"
#include "support/Search.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

using vfTest::Outcome;
using vfTest::runProgram;
using vfTest::TemporaryDirectory;

namespace {

const std::string writer = VELAFORGE_PROGRAM_DIR "/settings_writer";
// The leak sanitizer cannot work in a program that is watched.
const std::string withoutLeaks = "ASAN_OPTIONS=detect_leaks=0";

struct Call
{
    std::string name;
    int number; ///< counted from 1 among the calls of this name in the whole run
};

/// @return the calls that the program makes from the mark on
std::vector<Call> callsOfASave(const std::string& task, const std::string& file,
                               const TemporaryDirectory& place)
{
    const std::string log = place.file("log");
    const Outcome outcome =
        runProgram({"env", withoutLeaks, "strace", "-o", log, writer, task, file, "watched"});
    std::vector<Call> calls;
    if (outcome.status != 0)
        return calls;
    std::map<std::string, int> counts;
    bool isMarked = false;
    std::istringstream lines(vfTest::readFile(log));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t end = line.find('(');
        if (end == std::string::npos || line[0] == '+' || line[0] == '-')
            continue;
        const std::string name = line.substr(0, end);
        const int number = ++counts[name];
        if (isMarked)
            calls.push_back({name, number});
        isMarked = isMarked || line.find("/the-save-begins-here") != std::string::npos;
    }
    return calls;
}

Outcome killAt(const Call& call, const std::string& task, const std::string& file)
{
    return runProgram({"env", withoutLeaks, "strace", "-o", "/dev/null", "-e", "trace=" + call.name, "-e",
                       "inject=" + call.name + ":signal=KILL:when=" + std::to_string(call.number), writer,
                       task, file, "after"});
}

/// A file with the value "before", and a generation before that.
std::string prepare(const TemporaryDirectory& place)
{
    std::string file = place.file("store.json");
    runProgram({writer, "save", file, "long before"});
    runProgram({writer, "save", file, "before"});
    return file;
}

/// @return the files beside the store's own that only a save in progress has
std::vector<std::string> leftovers(const TemporaryDirectory& place)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(place.path())) {
        std::string name = entry.path().filename();
        if (name != "store.json" && name != "store.json.previous" && name != ".store.json.lock")
            names.push_back(name);
    }
    return names;
}

} // namespace

TEST(SettingsKill, KilledAtAnySystemCallTheNextStartFindsAWholeGeneration)
{
    const TemporaryDirectory place;
    const std::vector<Call> calls = callsOfASave("save", prepare(place), place);
    if (calls.empty())
        GTEST_SKIP() << "strace cannot watch a program here";
    ASSERT_GT(calls.size(), 10u);
    int killed = 0;
    int before = 0;
    int after = 0;
    for (const Call& call : calls) {
        const TemporaryDirectory own;
        const std::string file = prepare(own);
        const Outcome save = killAt(call, "save", file);
        const std::string where = call.name + " " + std::to_string(call.number);
        killed += save.status != 0;
        const Outcome print = runProgram({writer, "print", file});
        EXPECT_EQ(0, print.status) << where;
        EXPECT_EQ("", print.err) << where;
        EXPECT_THAT(print.out, testing::AnyOf("before\n", "after\n")) << where;
        if (save.out == "saved\n") {
            EXPECT_EQ("after\n", print.out) << where;
        }
        before += print.out == "before\n";
        after += print.out == "after\n";
        EXPECT_THAT(leftovers(own), testing::IsEmpty()) << where;
        const Outcome again = runProgram({writer, "save", file, "again"});
        EXPECT_EQ("saved\n", again.out) << where;
        EXPECT_EQ("again\n", runProgram({writer, "print", file}).out) << where;
    }
    // The kills went all the way through the save.
    EXPECT_GT(killed, static_cast<int>(calls.size()) / 2);
    EXPECT_GT(before, 3);
    EXPECT_GT(after, 1);
}

TEST(SettingsKill, ACarelessWriterWouldBeCaughtByThat)
{
    const TemporaryDirectory place;
    const std::vector<Call> calls = callsOfASave("naive", prepare(place), place);
    if (calls.empty())
        GTEST_SKIP() << "strace cannot watch a program here";
    int damaged = 0;
    for (const Call& call : calls) {
        const TemporaryDirectory own;
        const std::string file = prepare(own);
        killAt(call, "naive", file);
        const Outcome print = runProgram({writer, "print", file});
        damaged += print.err.find("damaged") != std::string::npos;
    }
    EXPECT_GT(damaged, 0);
}

TEST(SettingsKill, KilledAtAnyMomentTheNextStartFindsAWholeGeneration)
{
    vfTest::Search search("killed saves of settings", 8);
    while (search.next()) {
        const TemporaryDirectory own;
        const std::string file = prepare(own);
        vfTest::RunningProgram save({writer, "save", file, "after"});
        usleep(std::mt19937(search.seed())() % 30000);
        kill(save.process(), SIGKILL);
        const Outcome saved = save.wait();
        const Outcome print = runProgram({writer, "print", file});
        EXPECT_EQ("", print.err);
        EXPECT_THAT(print.out, testing::AnyOf("before\n", "after\n"));
        if (saved.out == "saved\n") {
            EXPECT_EQ("after\n", print.out);
        }
        EXPECT_EQ("saved\n", runProgram({writer, "save", file, "again"}).out);
    }
}
