// SPDX-License-Identifier: MIT
#include "CasesApart.h"
#include "TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfTest {

namespace {

enum class Result
{
    Passed,
    Failed,
    Skipped
};

std::vector<std::string> casesOf(const std::vector<std::string>& chosen)
{
    const auto isChosen = [&](const std::string& name) {
        return std::find(chosen.begin(), chosen.end(), name) != chosen.end();
    };
    std::vector<std::string> cases;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int k = 0; k < suite.total_test_count(); ++k) {
            const std::string name = std::string(suite.name()) + "." + suite.GetTestInfo(k)->name();
            if (chosen.empty() || isChosen(suite.name()) || isChosen(name))
                cases.push_back(name);
        }
    }
    return cases;
}

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "cannot run a test case: %s: %s\n", what, std::strerror(errno));
    std::exit(2);
}

/// What a case prints, through a pipe. It is read until the case ends, not until its writing end is closed everywhere: processes
/// that the case leaves behind hold it open.
class Output
{
public:
    Output()
    {
        if (pipe2(m_ends, O_CLOEXEC) != 0 || fcntl(m_ends[0], F_SETFL, O_NONBLOCK) != 0)
            fail("pipe2");
    }
    ~Output()
    {
        close(m_ends[0]);
        close(m_ends[1]);
    }

    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// The descriptor that is readable when there is something to read.
    int descriptor() const { return m_ends[0]; }

    void becomeStandardOutput() const
    {
        dup2(m_ends[1], STDOUT_FILENO);
        dup2(m_ends[1], STDERR_FILENO);
    }

    /// Takes what is there, without waiting for more, and not for ever from a case that never stops to print. Keeps the
    /// first 16 MiB.
    void read()
    {
        char buffer[65536];
        for (int times = 0; times < 16; ++times) {
            const ssize_t length = ::read(m_ends[0], buffer, sizeof(buffer));
            if (length <= 0)
                break;
            if (m_text.size() < std::size_t(16) * 1024 * 1024)
                m_text.append(buffer, static_cast<std::size_t>(length));
        }
    }

    const std::string& text() const { return m_text; }

private:
    int m_ends[2] = {-1, -1};
    std::string m_text;
};

/// Runs in the forked process, and ends it as main() would.
[[noreturn]] void becomeCase(const std::string& name, const std::string& home, const Output& output)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setpgid(0, 0);
    output.becomeStandardOutput();
    isolate(home);
    testing::GTEST_FLAG(filter) = name;
    std::exit(RUN_ALL_TESTS());
}

/// Reads what the process prints until it ends or its time is over.
/// @return its wait status; that of a process killed by SIGKILL when it took too long
int waitFor(pid_t process, int secondsAllowed, Output& output, std::string& remark)
{
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (handle < 0)
        fail("pidfd_open");
    const Clock::time_point end = Clock::now() + std::chrono::seconds(secondsAllowed);
    pollfd watched[] = {{handle, POLLIN, 0}, {output.descriptor(), POLLIN, 0}};
    do {
        const auto left = std::chrono::duration_cast<Milliseconds>(end - Clock::now());
        if (left <= Milliseconds::zero()) {
            remark = "killed after " + std::to_string(secondsAllowed) + " seconds";
            break;
        }
        poll(watched, 2, static_cast<int>(left.count()));
        output.read();
    } while (watched[0].revents == 0);
    close(handle);
    kill(-process, SIGKILL); // what it started and left behind, too
    kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    output.read();
    return status;
}

Result judge(const std::string& text, int status, std::string& remark)
{
    const auto says = [&](const char* line) { return text.find(line) != std::string::npos; };
    if (WIFSIGNALED(status)) {
        if (remark.empty())
            remark = std::string("killed by a signal: ") + strsignal(WTERMSIG(status));
        return Result::Failed;
    }
    if (WEXITSTATUS(status) != 0) {
        if (!says("\n[  FAILED  ] "))
            remark = "exit status " + std::to_string(WEXITSTATUS(status));
        return Result::Failed;
    }
    if (says("\n[  SKIPPED ] 1 test"))
        return Result::Skipped;
    if (says("\n[  PASSED  ] 1 test."))
        return Result::Passed;
    remark = "ended before its end";
    return Result::Failed;
}

Result runCase(const std::string& name, int secondsAllowed)
{
    const TemporaryDirectory home;
    Output output;
    const auto begin = std::chrono::steady_clock::now();
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process < 0)
        fail("fork");
    if (process == 0)
        becomeCase(name, home.path(), output);
    std::string remark;
    const int status = waitFor(process, secondsAllowed, output, remark);
    const std::string& text = output.text();
    const Result result = judge(text, status, remark);
    const auto took = std::chrono::steady_clock::now() - begin;
    if (result != Result::Passed)
        std::fwrite(text.data(), 1, text.size(), stdout);
    if (!remark.empty())
        std::printf("%s: %s\n", name.c_str(), remark.c_str());
    static constexpr const char* marks[] = {"passed", "FAILED", "skipped"};
    std::printf("case %s: %s (%d ms)\n", marks[static_cast<int>(result)], name.c_str(),
                static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(took).count()));
    std::fflush(stdout);
    return result;
}

} // namespace

void isolate(const std::string& home)
{
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home + "/.config").c_str(), 1);
    setenv("XDG_DATA_HOME", (home + "/.local/share").c_str(), 1);
    setenv("XDG_CACHE_HOME", (home + "/.cache").c_str(), 1);
    setenv("XDG_STATE_HOME", (home + "/.local/state").c_str(), 1);
    setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
    unsetenv("XDG_CONFIG_DIRS");
    unsetenv("XDG_DATA_DIRS");
    for (const char* name : {"OSG_NOTIFY_LEVEL", "OSGNOTIFYLEVEL", "OSG_LIBRARY_PATH", "OSG_FILE_PATH"})
        unsetenv(name);
    // Windows open only where a test asks for them, never on the screen of the person who runs the tests.
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DISPLAY"})
        unsetenv(name);
}

int runCasesApart(const std::vector<std::string>& chosen, int secondsAllowed)
{
    const std::vector<std::string> cases = casesOf(chosen);
    std::size_t failed = 0;
    for (const std::string& name : cases)
        failed += runCase(name, secondsAllowed) == Result::Failed;
    if (cases.empty())
        std::printf("no such test suite or case\n");
    return cases.empty() || failed > 0 ? 1 : 0;
}

} // namespace vfTest
