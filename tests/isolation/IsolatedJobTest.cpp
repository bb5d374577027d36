// SPDX-License-Identifier: MIT
#include <velaforge/isolation/IsolatedJob.h>
#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/SharedMemory.h>
#include <velaforge/isolation/internal/Protocol.h>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vfIsolation::IsolatedJob;
using vfIsolation::IsolatedResult;
using vfIsolation::IsolatedTask;
using vfIsolation::IsolationError;
using vfTest::TemporaryDirectory;

namespace {

IsolatedTask task(const std::string& name, const std::string& argument = std::string())
{
    IsolatedTask made;
    made.helper = VELAFORGE_ATTACK_HELPER;
    made.name = name;
    made.argument = argument;
    return made;
}

IsolatedResult run(const IsolatedTask& wanted)
{
    vfIsolation::JobControl control;
    return runIsolated(control, wanted);
}

std::string textOf(const IsolatedResult& result)
{
    return std::string(reinterpret_cast<const char*>(result.bytes.data()), result.bytes.size());
}

/// @return the processes that descend from one, by their ids
std::set<int> descendantsOf(int ancestor)
{
    std::set<int> all;
    std::ifstream children("/proc/" + std::to_string(ancestor) + "/task/" + std::to_string(ancestor) +
                           "/children");
    for (int child = 0; children >> child;) {
        all.insert(child);
        for (const int below : descendantsOf(child))
            all.insert(below);
    }
    return all;
}

/// @return the children of all threads of this process
std::set<int> children()
{
    std::set<int> all;
    DIR* threads = opendir("/proc/self/task");
    while (const dirent* entry = readdir(threads)) {
        std::ifstream ofThread(std::string("/proc/self/task/") + entry->d_name + "/children");
        for (int child = 0; ofThread >> child;)
            all.insert(child);
    }
    closedir(threads);
    return all;
}

/// @return the children and all that descends from them
std::set<int> descendants()
{
    std::set<int> all = children();
    for (const int child : children()) {
        const std::set<int> below = descendantsOf(child);
        all.insert(below.begin(), below.end());
    }
    return all;
}

std::string nameOf(int process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

bool isThere(int process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/stat");
    std::string id, name, state;
    return (status >> id >> name >> state) && state != "Z";
}

bool waitUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::size_t countDescriptors()
{
    std::size_t count = 0;
    DIR* files = opendir("/proc/self/fd");
    while (readdir(files))
        ++count;
    closedir(files);
    return count;
}

} // namespace

TEST(IsolatedJobs, ATaskGetsItsArgumentAndGivesItsResult)
{
    const std::string argument = std::string("all\0bytes", 9) + std::string(100000, 'x');
    IsolatedJob job(task("echo", argument));
    while (!job.wait(1000)) {
    }
    const IsolatedResult result = job.take();
    EXPECT_EQ(IsolationError::None, result.error) << result.reason;
    EXPECT_EQ("", result.reason);
    EXPECT_EQ(argument, textOf(result));
    EXPECT_EQ("", textOf(run(task("echo")))) << "of no argument";
}

TEST(IsolatedJobs, EachTaskHasAProcessOfItsOwnWithNothingOfTheProgram)
{
    setenv("VELAFORGE_SECRET", "1", 1);
    const int open = ::open("/dev/null", O_RDONLY); // which a program forgot to keep to itself
    const std::string facts = textOf(run(task("facts")));
    close(open);
    EXPECT_THAT(facts, HasSubstr("threads 1\n"));
    EXPECT_THAT(facts, Not(HasSubstr("VELAFORGE_SECRET")));
    EXPECT_THAT(facts, testing::MatchesRegex("(.|\n)*descriptors 0 1 2( [0-9]+)?( [0-9]+)?")) << facts;
}

TEST(IsolatedJobs, AFileCanBeReadThatTheTaskWasGivenByPathOrByDescriptor)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("a.txt", "contents");
    IsolatedTask wanted = task("copy", path);
    EXPECT_EQ("cannot be opened", run(wanted).reason);
    wanted.readableFiles = {directory.file("missing"), directory.path()};
    EXPECT_EQ("cannot be opened", run(wanted).reason) << "a directory is not granted";
    wanted.readableFiles.push_back(path);
    EXPECT_EQ("contents", textOf(run(wanted)));

    IsolatedTask byDescriptor = task("copy descriptor");
    byDescriptor.files = {::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
    EXPECT_EQ("contents", textOf(run(byDescriptor)));
    close(byDescriptor.files[0]);
}

TEST(IsolatedJobs, ATaskMayUseThreads)
{
    EXPECT_EQ("42", textOf(run(task("parallel"))));
}

TEST(IsolatedJobs, WhatATaskTellsIsOneLineWithoutControlCharacters)
{
    const IsolatedResult result = run(task("fail"));
    EXPECT_EQ(IsolationError::Failed, result.error);
    EXPECT_THAT(result.reason, HasSubstr("line"));
    EXPECT_THAT(result.reason, Not(testing::AnyOf(HasSubstr("\n"), HasSubstr("\x1b"))));
}

TEST(IsolatedJobs, WhatATaskThrowsIsItsReason)
{
    EXPECT_EQ("thrown", run(task("throw")).reason);
    EXPECT_EQ(IsolationError::Failed, run(task("throw number")).error);
    EXPECT_NE("", run(task("throw number")).reason);
}

TEST(IsolatedJobs, AProcessThatEndsWithoutAnAnswerIsAnError)
{
    for (const char* name : {"crash", "exit", "send less"}) {
        const IsolatedResult result = run(task(name));
        EXPECT_EQ(IsolationError::Ended, result.error) << name;
        EXPECT_EQ("its process ended unexpectedly", result.reason) << name;
    }
}

TEST(IsolatedJobs, AnAnswerThatIsNoneIsAnError)
{
    for (const char* name : {"lie about size", "lie about seals", "lie about outcome"})
        EXPECT_EQ(IsolationError::Ended, run(task(name)).error) << name;
    EXPECT_EQ(IsolationError::Failed, run(task("keep")).error) << "a result that is still mapped for writing";
}

TEST(IsolatedJobs, DescriptorsThatComeWithAnAnswerAreClosed)
{
    run(task("echo"));
    const std::size_t before = countDescriptors();
    for (int i = 0; i < 5; ++i)
        run(task("send descriptors"));
    EXPECT_EQ(before, countDescriptors());
}

TEST(IsolatedJobs, LeaveNoDescriptorAndNoProcess)
{
    run(task("echo"));
    const std::size_t before = countDescriptors();
    for (const char* name : {"echo", "crash", "throw", "keep", "no such task"})
        run(task(name));
    EXPECT_EQ(before, countDescriptors());
    EXPECT_TRUE(waitUntil([] { return descendants().size() == 2; })) << "the launcher and its next process";
}

TEST(IsolatedJobs, ATaskOrAHelperThatIsNotThereIsAReason)
{
    EXPECT_EQ("the helper program does not know this task", run(task("no such task")).reason);
    EXPECT_EQ("the helper program does not know this task", run(task(std::string(1000, 'x'))).reason);
    IsolatedTask elsewhere = task("echo");
    elsewhere.helper = "/nowhere/helper";
    EXPECT_EQ("the helper program /nowhere/helper cannot be started", run(elsewhere).reason);
    elsewhere.helper = "/bin/true";
    EXPECT_EQ(IsolationError::NotStarted, run(elsewhere).error) << "a program that is no helper";
}

TEST(IsolatedJobs, AHelperOfAnotherBuildRefusesTheTask)
{
    int channel[2];
    int job[2];
    ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, channel));
    ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, job));
    const pid_t helper = fork();
    if (helper == 0) {
        fcntl(channel[1], F_SETFD, 0);
        dup2(channel[1], vfIsolation::helperSocket);
        execl(VELAFORGE_ATTACK_HELPER, "helper", vfIsolation::serveArgument, nullptr);
        _exit(2);
    }
    const vfIsolation::LaunchRequest launch;
    ASSERT_TRUE(vfIsolation::sendPacket(channel[0], &launch, sizeof(launch), {job[1]}));
    const int file = vfIsolation::makeSharedMemory("empty");
    vfIsolation::TaskRequest request;
    vfIsolation::putText(request.build, "another");
    vfIsolation::putText(request.task, "echo");
    ASSERT_TRUE(vfIsolation::sendPacket(job[0], &request, sizeof(request), {file, file, file, file}));
    vfIsolation::TaskDone done;
    ASSERT_TRUE(vfIsolation::receivePacket(job[0], &done, sizeof(done)));
    EXPECT_EQ(vfIsolation::TaskOutcome::OtherBuild, done.outcome);
    int status = -1;
    waitpid(helper, &status, 0);
    EXPECT_EQ(0, status);
    for (const int one : {channel[0], channel[1], job[0], job[1], file})
        close(one);
}

TEST(IsolatedJobs, ALauncherThatCannotStartAProcessIsAReasonAndStays)
{
    run(task("echo"));
    IsolatedJob other(task("progress"));
    ASSERT_TRUE(waitUntil([&] { return other.progress() > 0 && descendants().size() == 3; }));
    const std::set<int> launchers = children();
    ASSERT_EQ(1u, launchers.size());
    const std::string launcher = "/proc/" + std::to_string(*launchers.begin());
    // The process that waits for a task is gone, and there are no descriptors for the sockets of another.
    for (const int process : descendantsOf(*launchers.begin())) {
        std::ifstream name("/proc/" + std::to_string(process) + "/comm");
        std::string word;
        name >> word;
        if (word != "progress")
            kill(process, SIGKILL);
    }
    ASSERT_TRUE(waitUntil([] { return descendants().size() == 2; }));
    int last = 0;
    DIR* files = opendir((launcher + "/fd").c_str());
    ASSERT_NE(nullptr, files);
    while (const dirent* entry = readdir(files))
        last = std::max(last, std::atoi(entry->d_name));
    closedir(files);
    const rlimit limit = {rlim_t(last) + 2, rlim_t(last) + 2};
    ASSERT_EQ(0, prlimit(*launchers.begin(), RLIMIT_NOFILE, &limit, nullptr));
    const IsolatedResult result = run(task("echo"));
    EXPECT_EQ(IsolationError::OutOfMemory, result.error) << result.reason;
    EXPECT_FALSE(other.isDone()) << "another task goes on";
    EXPECT_EQ(launchers, children());
}

TEST(IsolatedJobs, AHelperThatIsStartedByHandEnds)
{
    EXPECT_EQ(1, vfTest::runProgram({VELAFORGE_ATTACK_HELPER}).status);
    EXPECT_EQ(1, vfTest::runProgram({VELAFORGE_ATTACK_HELPER, "--serve"}).status);
}

TEST(IsolatedJobs, TellTheirProgressAndStage)
{
    vfIsolation::JobControl control;
    std::atomic<std::uint32_t> stage{0};
    std::thread thread([&] { runIsolated(control, task("progress"), &stage); });
    EXPECT_TRUE(waitUntil([&] { return control.progress == 0.25f && stage == 7; }));
    control.cancel();
    thread.join();
}

TEST(IsolatedJobs, ADescriptorTellsAnEventLoopThatTheJobIsDone)
{
    run(task("echo")); // has the launcher started
    const std::size_t before = countDescriptors();
    {
        IsolatedJob job(task("echo", "text"));
        pollfd done = {job.doneDescriptor(), POLLIN, 0};
        ASSERT_GE(done.fd, 0);
        EXPECT_EQ(done.fd, job.doneDescriptor());
        ASSERT_EQ(1, poll(&done, 1, 60000));
        EXPECT_TRUE(job.isDone());
        EXPECT_EQ("text", textOf(job.take()));
        EXPECT_EQ(1, poll(&done, 1, 0)) << "it stays readable";
    }
    {
        IsolatedJob late(task("echo"));
        ASSERT_TRUE(late.wait(60000));
        pollfd done = {late.doneDescriptor(), POLLIN, 0};
        EXPECT_EQ(1, poll(&done, 1, 0)) << "asked for when the job was done";
        IsolatedJob cancelled(task("sleep"));
        done = {cancelled.doneDescriptor(), POLLIN, 0};
        EXPECT_EQ(0, poll(&done, 1, 0));
        cancelled.cancel();
        EXPECT_EQ(1, poll(&done, 1, 0));
    }
    vfIsolation::Job::waitForThreads();
    EXPECT_EQ(before, countDescriptors());
}

TEST(IsolatedJobs, CancelReturnsAtOnceAndEndsTheProcess)
{
    for (const char* name : {"loop", "sleep", "stop"}) {
        auto job = std::make_unique<IsolatedJob>(task(name));
        waitUntil([] { return descendants().size() >= 2; });
        job->cancel();
        EXPECT_TRUE(job->isDone());
        EXPECT_EQ(IsolationError::Cancelled, job->take().error);
    }
    EXPECT_TRUE(waitUntil([] { return descendants().size() == 2; }));
}

#ifndef __SANITIZE_THREAD__ // which hands signals on where the process calls the system
TEST(IsolatedJobs, AProcessThatLoopsIsEndedByItsLimit)
{
    IsolatedTask wanted = task("loop");
    wanted.limits.seconds = 1;
    const IsolatedResult result = run(wanted);
    EXPECT_EQ(IsolationError::TooLong, result.error);
    EXPECT_EQ("it takes too long", result.reason);
}
#endif

TEST(IsolatedJobs, ALimitOfTheProgramHoldsForItsTasksToo)
{
    rlimit limit = {};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &limit));
    limit.rlim_cur = 10000; // which a privileged process could raise
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    EXPECT_EQ(8000u, run(task("write", "8000")).bytes.size());
    EXPECT_EQ("there is no room for the result", run(task("write", "12000")).reason);
}

TEST(IsolatedJobs, AProcessThatLoopsAndHearsNoSignalIsKilled)
{
    IsolatedTask wanted = task("deaf loop");
    wanted.limits.seconds = 1;
    EXPECT_EQ(IsolationError::Ended, run(wanted).error);
}

TEST(IsolatedJobs, MemoryThatATaskLendsCanBeCopiedWhileTheResultIsKept)
{
    const std::string sent(5000000, 'm');
    IsolatedTask wanted = task("lend", sent);
    EXPECT_EQ("the program takes no memory", run(wanted).reason) << "takesMemory is false";
    wanted.takesMemory = true;
    IsolatedResult result = run(wanted);
    ASSERT_EQ(IsolationError::None, result.error) << result.reason;
    ASSERT_TRUE(result.memory);
    std::uint64_t lent[2] = {};
    ASSERT_EQ(sizeof(lent), result.bytes.size());
    std::memcpy(lent, result.bytes.data(), sizeof(lent));
    EXPECT_GT(result.memory->size(), sent.size());
    std::string copied(sent.size(), ' ');
    EXPECT_TRUE(result.memory->copy(lent[0], copied.data(), copied.size()));
    EXPECT_TRUE(sent == copied);
    EXPECT_FALSE(result.memory->copy(0, copied.data(), copied.size())) << "where nothing is";
    EXPECT_FALSE(result.memory->copy(~std::uint64_t(0) - 10, copied.data(), copied.size()));
    EXPECT_TRUE(waitUntil([] { return descendants().size() == 3; })) << "the launcher, this one and the next";
    const std::shared_ptr<const vfIsolation::LentMemory> kept = result.memory;
    result = IsolatedResult();
    EXPECT_TRUE(kept->copy(lent[0], copied.data(), copied.size()));
    for (const int process : descendants())
        kill(process, SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return !kept->copy(lent[0], copied.data(), 1); }));
    EXPECT_EQ(0u, kept->size());
}

TEST(IsolatedJobs, AProcessThatLendsItsMemoryEndsWithTheResult)
{
    IsolatedTask wanted = task("lend", "a");
    wanted.takesMemory = true;
    EXPECT_TRUE(run(wanted).memory);
    EXPECT_TRUE(waitUntil([] { return descendants().size() == 2; }));
}

TEST(IsolatedJobs, AProcessThatSleepsOrStopsIsEndedByTheClock)
{
    for (const char* name : {"sleep", "stop"}) {
        IsolatedTask wanted = task(name);
        wanted.limits.clockSeconds = 1;
        const IsolatedResult result = run(wanted);
        EXPECT_EQ(IsolationError::TooLong, result.error) << name;
        EXPECT_EQ("it takes too long", result.reason);
    }
    EXPECT_TRUE(waitUntil([] { return descendants().size() == 2; }));
}

TEST(IsolatedJobs, ALauncherThatIsKilledIsReplacedAndItsTaskIsAnError)
{
    IsolatedJob job(task("progress"));
    ASSERT_TRUE(waitUntil([&] { return job.progress() > 0; }));
    const std::set<int> before = descendants();
    for (const int launcher : children())
        kill(launcher, SIGKILL);
    EXPECT_TRUE(job.wait(60000));
    EXPECT_EQ(IsolationError::Ended, job.take().error);
    EXPECT_TRUE(waitUntil([&] {
        for (const int process : before) {
            if (isThere(process))
                return false;
        }
        return true;
    })) << "its processes end with it";
    EXPECT_EQ("again", textOf(run(task("echo", "again"))));
}

TEST(IsolatedJobs, ALauncherThatIsKilledBetweenTasksCostsNothing)
{
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ("text", textOf(run(task("echo", "text"))));
        for (const int launcher : children())
            kill(launcher, SIGKILL);
    }
}

TEST(IsolatedJobs, AProcessThatIsKilledBeforeItHasTheTaskCostsNothing)
{
    run(task("echo"));
    int waiting = 0;
    ASSERT_TRUE(waitUntil([&waiting] {
        const std::set<int> all = descendants();
        const auto found =
            std::find_if(all.begin(), all.end(), [](int process) { return nameOf(process) == "vf-helper"; });
        waiting = found == all.end() ? 0 : *found;
        return waiting != 0 && all.size() == 2;
    }));
    kill(waiting, SIGSTOP);
    IsolatedJob job(task("echo", "still"));
    ASSERT_TRUE(waitUntil([] { return descendants().size() == 3; })) << "the task is for that process";
    EXPECT_FALSE(job.isDone());
    kill(waiting, SIGKILL);
    ASSERT_TRUE(job.wait(60000));
    EXPECT_EQ("still", textOf(job.take()));
}

TEST(IsolatedJobs, AProcessThatEndsBetweenTasksIsNotStartedAgainUntilTheNextTask)
{
    run(task("echo"));
    const auto waiting = [] {
        const std::set<int> all = descendants();
        const auto found =
            std::find_if(all.begin(), all.end(), [](int process) { return nameOf(process) == "vf-helper"; });
        return found == all.end() ? 0 : *found;
    };
    ASSERT_TRUE(waitUntil([&waiting] { return waiting() != 0; }));
    kill(waiting(), SIGKILL);
    ASSERT_TRUE(waitUntil([] { return descendants().size() == 1; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(1u, descendants().size()) << "a helper that cannot start would be executed without end";
    EXPECT_EQ("text", textOf(run(task("echo", "text"))));
    EXPECT_TRUE(waitUntil([&waiting] { return waiting() != 0; })) << "after a task there is one again";
}

TEST(IsolatedJobs, NothingIsLeftOfAProgramThatIsKilled)
{
    vfTest::RunningProgram program({VELAFORGE_ISOLATION_PROGRAM, VELAFORGE_ATTACK_HELPER});
    ASSERT_TRUE(waitUntil([&] { return descendantsOf(program.process()).size() >= 3; }));
    const std::set<int> before = descendantsOf(program.process());
    kill(program.process(), SIGKILL);
    EXPECT_TRUE(waitUntil([&] {
        for (const int process : before) {
            if (isThere(process))
                return false;
        }
        return true;
    }));
}

TEST(IsolatedJobs, ManyAtOnceDoNotDisturbOneAnother)
{
    std::vector<std::unique_ptr<IsolatedJob>> jobs;
    for (int i = 0; i < 40; ++i)
        jobs.push_back(
            std::make_unique<IsolatedJob>(i % 4 == 3 ? task("crash") : task("echo", std::to_string(i))));
    for (int i = 0; i < 40; ++i) {
        IsolatedJob& job = *jobs[static_cast<std::size_t>(i)];
        ASSERT_TRUE(job.wait(60000));
        const IsolatedResult result = job.take();
        if (i % 4 == 3)
            EXPECT_EQ(IsolationError::Ended, result.error);
        else
            EXPECT_EQ(std::to_string(i), textOf(result)) << result.reason;
    }
}
