// SPDX-License-Identifier: MIT
// A process that was taken over by the file that it reads tries what would harm, and is refused each time.
#include <velaforge/isolation/IsolatedJob.h>

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;
using vfIsolation::IsolatedResult;
using vfIsolation::IsolatedTask;
using vfIsolation::IsolationError;
using vfIsolation::SandboxLayers;
using vfTest::TemporaryDirectory;

namespace {

constexpr unsigned int byLandlock = 1;
constexpr unsigned int byCallFilter = 2;

struct Attempt
{
    const char* what;
    unsigned int layers; ///< each of which stops it alone; 0 where a limit does
};

void PrintTo(const Attempt& attempt, std::ostream* stream)
{
    *stream << attempt.what;
}

const std::vector<Attempt> attempts = {{"read", byLandlock},
                                       {"write", byLandlock | byCallFilter},
                                       {"create", byLandlock | byCallFilter},
                                       {"append", byLandlock | byCallFilter},
                                       {"list", byLandlock},
                                       {"remove", byLandlock | byCallFilter},
                                       {"rename", byLandlock | byCallFilter},
                                       {"link", byLandlock | byCallFilter},
                                       {"directory", byLandlock | byCallFilter},
                                       {"cut", byLandlock | byCallFilter},
                                       {"mode", byCallFilter},
                                       {"times", byCallFilter},
                                       {"internet", byCallFilter},
                                       {"datagram", byCallFilter},
                                       {"unix", byCallFilter},
                                       {"abstract", byCallFilter},
                                       {"netlink", byCallFilter},
                                       {"exec", byLandlock | byCallFilter},
                                       {"fork", byCallFilter},
                                       {"threads", 0},
                                       {"descriptors", 0},
                                       {"trace", byLandlock | byCallFilter},
                                       {"write memory", byLandlock | byCallFilter},
                                       {"read memory", byLandlock | byCallFilter},
                                       {"signal", byCallFilter},
                                       {"pidfd", byCallFilter},
                                       {"disk", 0},
                                       {"memory", 0},
                                       {"executable", byCallFilter},
                                       {"executable mapping", byCallFilter},
                                       {"limit", byCallFilter},
                                       {"outlive", byCallFilter},
                                       {"namespace", byCallFilter},
                                       {"ring", byCallFilter},
                                       {"unknown call", byCallFilter},
                                       {"shared memory", byCallFilter},
                                       {"device", byCallFilter}};

/// Where the attempt aims: a file beside nothing that the task was given, or this process.
std::string targetOf(const std::string& what, const TemporaryDirectory& directory)
{
    if (what == "create")
        return directory.file("new");
    if (what == "list")
        return directory.path();
    for (const char* ofProcess : {"trace", "write memory", "read memory", "signal", "pidfd"}) {
        if (what == ofProcess)
            return std::to_string(getpid());
    }
    return directory.file("private");
}

/// @return why it was refused; empty when it was done
std::string tryIt(const std::string& what, const std::string& target, SandboxLayers layers)
{
    IsolatedTask task;
    task.helper = VELAFORGE_ATTACK_HELPER;
    task.name = "attack";
    task.argument = what + ":" + target;
    task.layers = layers;
    task.limits.resultSize = 1 << 20;
    task.limits.memory = std::uint64_t(1) << 30;
    task.limits.clockSeconds = 60;
    vfIsolation::JobControl control;
    const IsolatedResult result = runIsolated(control, task);
    return result.error == IsolationError::None ? std::string() : "refused: " + result.reason;
}

class Sandbox : public testing::TestWithParam<Attempt>
{
protected:
    void SetUp() override
    {
        directory.write("private", "private");
        chmod(directory.path().c_str(), 0777);
        chmod(directory.file("private").c_str(), 0666);
    }

    /// Checks that nothing happened to the files.
    void expectFilesAsTheyWere() const
    {
        EXPECT_EQ("private", vfTest::readFile(directory.file("private")));
        for (const char* name : {"new", "private2", "private3", "private4"})
            EXPECT_NE(0, access(directory.file(name).c_str(), F_OK)) << name;
    }

    const TemporaryDirectory directory;
};

} // namespace

TEST_P(Sandbox, RefusesIt)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    if (!std::strcmp(GetParam().what, "memory") || !std::strcmp(GetParam().what, "threads"))
        GTEST_SKIP() << "a sanitizer needs the memory";
#endif
    const std::string target = targetOf(GetParam().what, directory);
    EXPECT_THAT(tryIt(GetParam().what, target, SandboxLayers::All), StartsWith("refused: "));
    expectFilesAsTheyWere();
    if (GetParam().layers & byLandlock) {
        EXPECT_THAT(tryIt(GetParam().what, target, SandboxLayers::Landlock), StartsWith("refused: "))
            << "Landlock alone";
    }
    if (GetParam().layers & byCallFilter) {
        EXPECT_THAT(tryIt(GetParam().what, target, SandboxLayers::CallFilter), StartsWith("refused: "))
            << "seccomp alone";
    }
    expectFilesAsTheyWere();
}

TEST_P(Sandbox, RefusesItToAUserWithoutRights)
{
    const std::string target = targetOf(GetParam().what, directory);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer reports at the end of each process";
#endif
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(2);
        const std::string refused = tryIt(GetParam().what, target, SandboxLayers::All);
        if (refused.empty())
            std::fprintf(stderr, "it was done\n");
        _exit(refused.rfind("refused: ", 0) == 0 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    expectFilesAsTheyWere();
}

INSTANTIATE_TEST_SUITE_P(Attempts, Sandbox, testing::ValuesIn(attempts), [](const auto& tested) {
    std::string name = tested.param.what;
    for (char& letter : name) {
        if (letter == ' ')
            letter = '_';
    }
    return name;
});

TEST(SandboxReport, TheGuideHasARowForEachAttempt)
{
    const std::string guide = vfTest::readFile(VELAFORGE_SOURCE_DIR "/docs/isolation.md");
    std::size_t rows = 0;
    for (std::size_t at = 0; (at = guide.find(" | refused |\n", at)) != std::string::npos; ++at)
        ++rows;
    for (std::size_t at = 0; (at = guide.find(" | limit |\n", at)) != std::string::npos; ++at)
        ++rows;
    EXPECT_EQ(attempts.size(), rows);
    const auto count = [&](const std::string& row) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = guide.find(row, at)) != std::string::npos; ++at)
            ++found;
        return found;
    };
    std::size_t onlyLandlock = 0;
    std::size_t onlyCallFilter = 0;
    for (const Attempt& attempt : attempts) {
        onlyLandlock += attempt.layers == byLandlock ? 1 : 0;
        onlyCallFilter += attempt.layers == byCallFilter ? 1 : 0;
    }
    EXPECT_EQ(onlyLandlock, count(" | refused | done | refused |\n"));
    EXPECT_EQ(onlyCallFilter, count(" | done | refused | refused |\n"));
}

TEST(SandboxReport, TellsWhatIsMissing)
{
    vfIsolation::SandboxState state;
    EXPECT_FALSE(state.isComplete());
    EXPECT_EQ("Landlock is not there, seccomp is not there, any file can be opened, sockets can be made",
              state.describe());
    state.landlockVersion = 1;
    state.hasCallFilter = state.refusesFiles = state.refusesSockets = true;
    EXPECT_TRUE(state.isComplete());
    EXPECT_EQ("", state.describe());
}

TEST(SandboxReport, ATaskThatRequiresTheSandboxFailsWithoutOneLayer)
{
    IsolatedTask task;
    task.helper = VELAFORGE_ATTACK_HELPER;
    task.name = "echo";
    task.requiresSandbox = true;
    vfIsolation::JobControl control;
    EXPECT_EQ(IsolationError::None, runIsolated(control, task).error);
    task.layers = SandboxLayers::Landlock;
    EXPECT_THAT(runIsolated(control, task).reason,
                HasSubstr("the sandbox is not complete: seccomp is not there"));
    task.layers = SandboxLayers::CallFilter;
    EXPECT_THAT(runIsolated(control, task).reason, HasSubstr("any file can be opened"));
    EXPECT_EQ(IsolationError::NotStarted, runIsolated(control, task).error);
}

TEST(SandboxReport, AProcessThatOneLeavesBehindIsEnded)
{
    IsolatedTask task;
    task.helper = VELAFORGE_ATTACK_HELPER;
    task.name = "attack";
    task.argument = "leave child";
    task.layers = SandboxLayers::Landlock; // with seccomp there would be none
    vfIsolation::JobControl control;
    const IsolatedResult result = runIsolated(control, task);
    ASSERT_EQ(sizeof(pid_t), result.bytes.size()) << result.reason;
    pid_t left = 0;
    std::memcpy(&left, result.bytes.data(), sizeof(left));
    for (int i = 0; i < 6000 && kill(left, 0) == 0; ++i)
        usleep(10000);
    EXPECT_NE(0, kill(left, 0));
}
