// SPDX-License-Identifier: MIT
// Every hook times every action, each in a process of its own.
#include "Scenario.h"

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Long enough for a machine that does other work: it ends what hangs.
constexpr int millisecondsToLive = 120000;

/// Runs the scenario in a child, which ends with its exit handlers, so that leaks are found.
[[noreturn]] void playAndExit(int pipe, const std::string& home, const std::string& hook,
                              vfLife::Action action, int nth)
{
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.c_str(), 1);
    // What the program prints is of no interest; standard error stays, for the sanitizers.
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, 1);
    const std::string outcome = vfLife::play(hook, action, nth);
    if (write(pipe, outcome.data(), outcome.size()) != static_cast<ssize_t>(outcome.size()))
        _exit(99);
    std::exit(0);
}

/// @return what came of the cell, or how its process ended
std::string outcomeOf(const std::string& hook, vfLife::Action action, int nth)
{
    const vfTest::TemporaryDirectory home;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return std::string("no pipe: ") + std::strerror(errno);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        playAndExit(ends[1], home.path(), hook, action, nth);
    }
    close(ends[1]);
    std::string text;
    pollfd readable{ends[0], POLLIN, 0};
    bool isLate = false;
    for (char buffer[256];;) {
        isLate = poll(&readable, 1, millisecondsToLive) == 0;
        const ssize_t size = isLate ? 0 : read(ends[0], buffer, sizeof(buffer));
        if (size <= 0)
            break;
        text.append(buffer, static_cast<std::size_t>(size));
    }
    close(ends[0]);
    if (isLate)
        kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    if (isLate)
        return "hangs";
    if (WIFSIGNALED(status))
        return "ended by signal " + std::to_string(WTERMSIG(status)) + " after: " + text;
    if (WEXITSTATUS(status) != 0)
        return "exit status " + std::to_string(WEXITSTATUS(status)) + " after: " + text;
    return text;
}

bool isSound(const std::string& outcome)
{
    return testing::Matches(testing::AnyOf("done", "refused", "-", "passes", "wrapped", "caught"))(outcome);
}

/// @return the row of the table in the documentation that is about a hook
std::string documentedRow(const std::string& hook)
{
    std::istringstream document(vfTest::readFile(VELAFORGE_SOURCE_DIR "/docs/lifecycle.md"));
    const std::string begin = "| `" + hook + "` |";
    for (std::string line; std::getline(document, line);) {
        if (line.compare(0, begin.size(), begin) == 0)
            return line;
    }
    return "";
}

class LifetimeMatrix : public testing::TestWithParam<std::string>
{};

} // namespace

TEST_P(LifetimeMatrix, AHookMayDoWhatAProgramDoes)
{
    const std::string& hook = GetParam();
    std::string row = "| `" + hook + "` |";
    for (const auto& [action, heading] : vfLife::actions()) {
        const std::string outcome = outcomeOf(hook, action, 1);
        EXPECT_TRUE(isSound(outcome)) << hook << ", " << heading << ": " << outcome;
        row += " " + outcome + " |";
    }
    EXPECT_EQ(documentedRow(hook), row);
}

TEST_P(LifetimeMatrix, ALaterCallOfAHookMayDoSoAsWell)
{
    const std::string& hook = GetParam();
    for (const auto& [action, heading] : vfLife::actions()) {
        const std::string outcome = outcomeOf(hook, action, 2);
        EXPECT_TRUE(isSound(outcome) || outcome == "not reached")
            << hook << ", " << heading << ": " << outcome;
    }
}

namespace {

std::string testName(const testing::TestParamInfo<std::string>& hook)
{
    std::string name = hook.param;
    name.erase(
        std::remove_if(name.begin(), name.end(),
                       [](char c) { return !std::isalnum(static_cast<unsigned char>(c)) && c != '~'; }),
        name.end());
    std::replace(name.begin(), name.end(), '~', 'D');
    return name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Hooks, LifetimeMatrix, testing::ValuesIn(vfLife::hooks()), testName);
