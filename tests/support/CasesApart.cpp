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

#include <poll.h>
#include <sys/mman.h>
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

/// What a case prints goes to a file in memory: a pipe would be held open by processes that outlive the case.
class Output
{
public:
    Output() : m_file(memfd_create("output of a test case", MFD_CLOEXEC))
    {
        if (m_file < 0)
            fail("memfd_create");
    }
    ~Output() { close(m_file); }

    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void becomeStandardOutput() const
    {
        dup2(m_file, STDOUT_FILENO);
        dup2(m_file, STDERR_FILENO);
    }

    std::string text() const
    {
        std::string text;
        char buffer[65536];
        for (ssize_t length = 0; (length = pread(m_file, buffer, sizeof(buffer), off_t(text.size()))) > 0;)
            text.append(buffer, static_cast<std::size_t>(length));
        return text;
    }

private:
    int m_file;
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

/// @return the process's wait status; that of a process killed by SIGKILL when it took too long
int waitFor(pid_t process, int secondsAllowed, std::string& remark)
{
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (handle < 0)
        fail("pidfd_open");
    pollfd ended = {handle, POLLIN, 0};
    int count = 0;
    while ((count = poll(&ended, 1, secondsAllowed * 1000)) < 0 && errno == EINTR) {
    }
    close(handle);
    if (count == 0)
        remark = "killed after " + std::to_string(secondsAllowed) + " seconds";
    kill(-process, SIGKILL); // what it started and left behind, too
    kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
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
    const Output output;
    const auto begin = std::chrono::steady_clock::now();
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process < 0)
        fail("fork");
    if (process == 0)
        becomeCase(name, home.path(), output);
    std::string remark;
    const int status = waitFor(process, secondsAllowed, remark);
    const std::string text = output.text();
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
