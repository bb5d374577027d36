// SPDX-License-Identifier: MIT
// A helper whose tasks do what a reader does that a file has taken over: each tries one thing, and tells what came of it.
#include <velaforge/isolation/Helper.h>
#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/internal/Protocol.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using vfIsolation::TaskContext;

/// @return why it was refused; empty when it was done
std::string told(long result)
{
    return result < 0 ? std::string("refused: ") + std::strerror(errno) : std::string();
}

std::string opens(const std::string& path, int flags)
{
    return told(open(path.c_str(), flags | O_CLOEXEC, 0600));
}

int program(const std::string& argument)
{
    return std::atoi(argument.c_str());
}

std::string connectsAbstract()
{
    const int made = socket(AF_UNIX, SOCK_STREAM, 0);
    if (made < 0)
        return told(made);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path + 1, "velaforge-test");
    return told(connect(made, reinterpret_cast<sockaddr*>(&address), sizeof(sa_family_t) + 15));
}

std::string remoteMemory(long call, const std::string& argument)
{
    char byte = 0;
    const iovec here = {&byte, 1};
    const iovec there = {&byte, 1};
    return told(syscall(call, program(argument), &here, 1ul, &there, 1ul, 0ul));
}

std::string manyThreads()
{
    static std::vector<std::thread> threads;
    try {
        for (int i = 0; i < 100000; ++i)
            threads.emplace_back([] { std::this_thread::sleep_for(std::chrono::hours(1)); });
    } catch (const std::exception& problem) {
        return std::string("refused: ") + problem.what() + " after " + std::to_string(threads.size());
    }
    return std::string();
}

std::string manyDescriptors()
{
    for (int i = 0; i < 100000; ++i) {
        if (dup(0) < 0)
            return told(-1);
    }
    return std::string();
}

std::string fillsDisk(TaskContext& context)
{
    const std::vector<char> block(1 << 20);
    for (int i = 0; i < 1 << 20; ++i) {
        if (!context.append(block.data(), block.size()))
            return told(-1);
    }
    return std::string();
}

std::string memory()
{
    try {
        for (std::size_t size = std::size_t(1) << 26;; size *= 2) {
            auto* block = new char[size];
            std::memset(block, 1, size);
        }
    } catch (const std::bad_alloc&) {
        return "refused: no more memory";
    }
}

std::string executable()
{
    void* page = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED)
        return "refused: no page";
    return told(mprotect(page, 4096, PROT_READ | PROT_EXEC));
}

std::string executableMapping()
{
    const void* page = mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return told(page == MAP_FAILED ? -1 : 0);
}

std::string raisesLimit()
{
    const rlimit limit = {RLIM_INFINITY, RLIM_INFINITY};
    return told(setrlimit(RLIMIT_CPU, &limit));
}

/// Answers in place of the library, with something else.
void answerInstead(const void* packet, std::size_t size, const std::vector<int>& files)
{
    for (int descriptor = 3; descriptor < 64; ++descriptor)
        vfIsolation::sendPacket(descriptor, packet, size, files);
    _exit(0);
}

vfIsolation::TaskDone lie(std::uint64_t size, int outcome)
{
    vfIsolation::TaskDone done;
    done.size = size;
    done.outcome = static_cast<vfIsolation::TaskOutcome>(outcome);
    std::memset(done.reason, '\n', sizeof(done.reason));
    return done;
}

std::string attempt(const std::string& what, const std::string& argument, TaskContext& context)
{
    if (what == "read")
        return opens(argument, O_RDONLY);
    if (what == "write")
        return opens(argument, O_WRONLY);
    if (what == "create")
        return opens(argument, O_WRONLY | O_CREAT | O_EXCL);
    if (what == "append")
        return opens(argument, O_RDWR | O_APPEND);
    if (what == "list")
        return opens(argument, O_RDONLY | O_DIRECTORY);
    if (what == "remove")
        return told(unlink(argument.c_str()));
    if (what == "rename")
        return told(rename(argument.c_str(), (argument + "2").c_str()));
    if (what == "link")
        return told(symlink("/", (argument + "3").c_str()));
    if (what == "directory")
        return told(mkdir((argument + "4").c_str(), 0700));
    if (what == "cut")
        return told(truncate(argument.c_str(), 0));
    if (what == "mode")
        return told(chmod(argument.c_str(), 0777));
    if (what == "times")
        return told(utimensat(AT_FDCWD, argument.c_str(), nullptr, 0));
    if (what == "internet")
        return told(socket(AF_INET, SOCK_STREAM, 0));
    if (what == "datagram")
        return told(socket(AF_INET, SOCK_DGRAM, 0));
    if (what == "unix")
        return told(socket(AF_UNIX, SOCK_STREAM, 0));
    if (what == "abstract")
        return connectsAbstract();
    if (what == "netlink")
        return told(socket(AF_NETLINK, SOCK_RAW, 0));
    if (what == "exec") {
        char name[] = "/bin/true";
        char* arguments[] = {name, nullptr};
        return told(execve(name, arguments, environ));
    }
    if (what == "fork") {
        const pid_t child = fork();
        if (child == 0)
            _exit(0);
        return told(child);
    }
    if (what == "leave child") {
        const pid_t child = fork();
        if (child == 0) {
            setsid();
            std::this_thread::sleep_for(std::chrono::hours(1));
        }
        context.append(&child, sizeof(child));
        return std::string();
    }
    if (what == "threads")
        return manyThreads();
    if (what == "descriptors")
        return manyDescriptors();
    if (what == "trace")
        return told(ptrace(PTRACE_ATTACH, program(argument), nullptr, nullptr));
    if (what == "write memory")
        return remoteMemory(SYS_process_vm_writev, argument);
    if (what == "read memory")
        return remoteMemory(SYS_process_vm_readv, argument);
    if (what == "signal")
        return told(kill(program(argument), 0));
    if (what == "pidfd")
        return told(syscall(SYS_pidfd_open, program(argument), 0));
    if (what == "disk")
        return fillsDisk(context);
    if (what == "memory")
        return memory();
    if (what == "executable")
        return executable();
    if (what == "executable mapping")
        return executableMapping();
    if (what == "limit")
        return raisesLimit();
    if (what == "outlive")
        return told(prctl(PR_SET_PDEATHSIG, 0));
    if (what == "namespace")
        return told(unshare(CLONE_NEWUSER));
    if (what == "ring")
        return told(syscall(SYS_io_uring_setup, 1, nullptr));
    if (what == "unknown call")
        return told(syscall(999));
    if (what == "shared memory")
        return told(memfd_create("x", 0));
    if (what == "device")
        return told(ioctl(0, 0x5401, nullptr));
    throw std::invalid_argument("no such attempt: " + what);
}

std::string attack(TaskContext& context)
{
    const std::string all(context.argument());
    const std::size_t colon = all.find(':');
    return attempt(all.substr(0, colon), colon == std::string::npos ? std::string() : all.substr(colon + 1),
                   context);
}

std::size_t threadsAtStart = 0;

std::string facts(TaskContext& context)
{
    std::string text = "threads " + std::to_string(threadsAtStart) + "\nenvironment";
    for (char** one = environ; one && *one; ++one)
        text += std::string(" ") + *one;
    text += "\ndescriptors";
    for (int i = 0; i < 64; ++i) {
        if (fcntl(i, F_GETFD) >= 0)
            text += " " + std::to_string(i);
    }
    context.append(text.data(), text.size());
    return std::string();
}

std::string copies(TaskContext& context)
{
    std::ifstream file(std::string(context.argument()), std::ios::binary);
    const std::string contents((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    context.append(contents.data(), contents.size());
    return file.is_open() ? std::string() : "cannot be opened";
}

} // namespace

int main(int argc, char** argv)
{
    vfIsolation::Helper helper;
    helper.add("attack", attack);
    helper.add("facts", facts, [](std::string_view) {
        threadsAtStart = static_cast<std::size_t>(std::distance(
            std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator()));
    });
    helper.add("copy", copies);
    helper.add("echo", [](TaskContext& context) {
        context.append(context.argument().data(), context.argument().size());
        return std::string();
    });
    helper.add("write", [](TaskContext& context) -> std::string {
        const std::string text(std::stoul(std::string(context.argument())), 'x');
        return context.append(text.data(), text.size()) ? "" : "there is no room for the result";
    });
    helper.add("copy descriptor", [](TaskContext& context) {
        char text[100];
        const ssize_t size = read(context.files().at(0), text, sizeof(text));
        context.append(text, static_cast<std::size_t>(size));
        return std::string();
    });
    helper.add("parallel", [](TaskContext& context) {
        auto one = std::async(std::launch::async, [] { return 20; });
        auto other = std::async(std::launch::async, [] { return 22; });
        const std::string text = std::to_string(one.get() + other.get());
        context.append(text.data(), text.size());
        return std::string();
    });
    helper.add("progress", [](TaskContext& context) {
        context.tell(1, 4);
        context.tellStage(7);
        std::this_thread::sleep_for(std::chrono::hours(1));
        return std::string();
    });
    helper.add("fail", [](TaskContext&) -> std::string { return "line\nbreak\x1b[31m"; });
    helper.add("throw", [](TaskContext&) -> std::string { throw std::runtime_error("thrown"); });
    helper.add("throw number", [](TaskContext&) -> std::string { throw 7; });
    helper.add("crash", [](TaskContext&) -> std::string { std::abort(); });
    helper.add("exit", [](TaskContext&) -> std::string { _exit(0); });
    helper.add("loop", [](TaskContext&) -> std::string {
        for (volatile int i = 0;;)
            i = i + 1;
    });
    helper.add("deaf loop", [](TaskContext&) -> std::string {
        signal(SIGXCPU, SIG_IGN);
        for (volatile int i = 0;; i = i + 1) {
        }
    });
    helper.add("lend", [](TaskContext& context) -> std::string {
        static const std::string kept(context.argument());
        const std::uint64_t lent[] = {reinterpret_cast<std::uintptr_t>(kept.data()), kept.size()};
        if (!context.lendMemory())
            return "the program takes no memory";
        context.append(lent, sizeof(lent));
        return std::string();
    });
    helper.add("sleep", [](TaskContext&) -> std::string {
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    });
    helper.add("stop", [](TaskContext&) -> std::string {
        syscall(SYS_tgkill, getpid(), syscall(SYS_gettid), SIGSTOP);
        return "went on";
    });
    helper.add("keep", [](TaskContext& context) { // a writable mapping, so that the result cannot be sealed
        context.append("text", 4);
        void* page = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED, context.result(), 0);
        return page == MAP_FAILED ? std::string("no mapping") : std::string();
    });
    helper.add("lie about size", [](TaskContext& context) -> std::string {
        context.append("text", 4);
        const auto done = lie(std::uint64_t(1) << 60, 0);
        answerInstead(&done, sizeof(done), {});
        return {};
    });
    helper.add("lie about seals", [](TaskContext& context) -> std::string {
        context.append("text", 4);
        const auto done = lie(4, 0);
        answerInstead(&done, sizeof(done), {});
        return {};
    });
    helper.add("lie about outcome", [](TaskContext&) -> std::string {
        const auto done = lie(0, 77);
        answerInstead(&done, sizeof(done), {});
        return {};
    });
    helper.add("send less", [](TaskContext&) -> std::string {
        answerInstead("x", 1, {});
        return {};
    });
    helper.add("send descriptors", [](TaskContext&) -> std::string {
        const auto done = lie(0, 1);
        answerInstead(&done, sizeof(done), {0, 1, 2, 0, 1, 2});
        return {};
    });
    return helper.run(argc, argv);
}
