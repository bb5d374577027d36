// SPDX-License-Identifier: MIT
#include "support/RefusedCalls.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/Printable.h>
#include <velaforge/base/ReplaceFile.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using vfBase::replaceFile;
using vfBase::VfString;
using vfTest::readFile;
using vfTest::TemporaryDirectory;

namespace {

constexpr mode_t allBits = 07777;

struct stat statusOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(0, lstat(path.c_str(), &status)) << path;
    return status;
}

std::vector<std::string> namesIn(const std::string& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

/// Does some work in a further process, as the user nobody where this one is root. @return whether it
/// returned true
template <class Work>
bool succeedsAsOrdinaryUser(gid_t group, const Work& work)
{
    const pid_t child = fork();
    if (child == 0) {
        const bool isOther =
            geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(group) == 0 && setuid(65534) == 0);
        _exit(isOther && work() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
}

struct AccessEntry
{
    std::uint16_t tag;
    std::uint16_t permissions;
    std::uint32_t id;
};

/// An access list in the form of the extended attribute: read for user 1234 and no access for user 1235.
std::string accessList()
{
    constexpr std::uint32_t none = 0xFFFFFFFF;
    const std::uint32_t version = 2;
    const std::array<AccessEntry, 6> entries{{{0x01, 6, none},
                                              {0x02, 4, 1234},
                                              {0x02, 0, 1235},
                                              {0x04, 4, none},
                                              {0x10, 6, none},
                                              {0x20, 4, none}}};
    return std::string(reinterpret_cast<const char*>(&version), sizeof(version)) +
           std::string(reinterpret_cast<const char*>(entries.data()), sizeof(entries));
}

const char* const accessName = "system.posix_acl_access";
const char* const defaultName = "system.posix_acl_default";

std::string attribute(const std::string& path, const char* name)
{
    std::array<char, 256> value;
    const ssize_t length = getxattr(path.c_str(), name, value.data(), value.size());
    return length < 0 ? std::string() : std::string(value.data(), static_cast<std::size_t>(length));
}

bool setAttribute(const std::string& path, const char* name, const std::string& value)
{
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

} // namespace

TEST(ReplaceFile, WritesTheWholeFileAndLeavesNothingElse)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    VfString reason;
    ASSERT_TRUE(replaceFile(path, std::string(200000, 'x'), reason)) << reason.str();
    EXPECT_EQ(std::string(200000, 'x'), readFile(path));
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
}

TEST(ReplaceFile, LeavesNoDescriptorBehind)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    const std::size_t before = namesIn("/proc/self/fd").size();
    for (int i = 0; i < 3; ++i) {
        VfString reason;
        EXPECT_TRUE(replaceFile(path, "after", reason)) << reason.str();
        EXPECT_FALSE(replaceFile(directory.path(), "x", reason));
    }
    EXPECT_EQ(before, namesIn("/proc/self/fd").size());
}

TEST(ReplaceFile, KeepsALinkAndThePermissions)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("real/file", "before");
    chmod(path.c_str(), 0640);
    ASSERT_EQ(0, symlink("real/file", directory.file("link").c_str()));
    VfString reason;
    ASSERT_TRUE(replaceFile(directory.file("link"), "after", reason));
    EXPECT_EQ("after", readFile(path));
    struct stat status;
    ASSERT_EQ(0, lstat(directory.file("link").c_str(), &status));
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 0777u);
}

TEST(ReplaceFile, TellsWhyAndLeavesWhatWasThere)
{
    const TemporaryDirectory directory;
    VfString reason;
    EXPECT_FALSE(replaceFile(directory.file("missing/file"), "x", reason));
    EXPECT_EQ("No such file or directory", reason);
    EXPECT_FALSE(replaceFile(directory.path(), "x", reason));
    EXPECT_EQ("Is a directory", reason);
    EXPECT_FALSE(replaceFile("", "x", reason));
    const std::string readOnly = directory.write("read-only", "before");
    chmod(readOnly.c_str(), 0400);
    EXPECT_FALSE(replaceFile(readOnly, "x", reason));
    EXPECT_EQ("Permission denied", reason);
    EXPECT_EQ("before", readFile(readOnly));
}

TEST(ReplaceFile, AFileSizeLimitLeavesTheFileAsItWasAndTheProcessAlive)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    rlimit limit{100000, RLIM_INFINITY};
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    VfString reason;
    EXPECT_FALSE(replaceFile(path, std::string(200000, 'x'), reason));
    EXPECT_EQ("File too large", reason);
    EXPECT_EQ("before", readFile(path));
    EXPECT_TRUE(replaceFile(path, "small", reason));
    limit.rlim_cur = RLIM_INFINITY;
    setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(ReplaceFile, WritesToADeviceDirectly)
{
    VfString reason;
    EXPECT_TRUE(replaceFile("/dev/null", "x", reason));
    EXPECT_FALSE(replaceFile("/dev/full", "x", reason));
    EXPECT_EQ("No space left on device", reason);
    struct stat status;
    ASSERT_EQ(0, stat("/dev/full", &status));
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST(ReplaceFile, AFileOfAGroupStaysWritableForItWhateverTheUmask)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    for (const mode_t mask : {022u, 077u, 0u}) {
        for (const mode_t mode : {0664u, 0666u, 0777u, 0600u, 01640u}) {
            umask(mask);
            ASSERT_EQ(0, chmod(path.c_str(), mode));
            VfString reason;
            EXPECT_TRUE(replaceFile(path, "after", reason)) << reason.str();
            EXPECT_EQ(mode, statusOf(path).st_mode & allBits);
        }
    }
}

TEST(ReplaceFile, ANewFileGetsItsPermissionsByTheUmask)
{
    const TemporaryDirectory directory;
    VfString reason;
    umask(027);
    ASSERT_TRUE(replaceFile(directory.file("new"), "x", reason));
    EXPECT_EQ(0640u, statusOf(directory.file("new")).st_mode & allBits);
}

TEST(ReplaceFile, AFileThatRunsAsItsOwnerNoLongerDoesWithOtherContents)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    ASSERT_EQ(0, chmod(path.c_str(), 06755));
    VfString reason;
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ(0755u, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, KeepsOwnerAndGroupWhereTheSystemAllowsIt)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    ASSERT_EQ(0, chown(path.c_str(), 1234, 2345));
    ASSERT_EQ(0, chmod(path.c_str(), 0664));
    VfString reason;
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ(1234u, statusOf(path).st_uid);
    EXPECT_EQ(2345u, statusOf(path).st_gid);
    EXPECT_EQ(0664u, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, AFileOfAColleagueStaysWithTheCommonGroup)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may become two users";
    const TemporaryDirectory directory;
    chmod(directory.path().c_str(), 0777);
    const std::string path = directory.write("file", "before");
    ASSERT_EQ(0, chown(path.c_str(), 1234, 2345));
    ASSERT_EQ(0, chmod(path.c_str(), 0660));
    VfString reason;
    EXPECT_TRUE(succeedsAsOrdinaryUser(2345, [&] { return replaceFile(path, "after", reason); }));
    EXPECT_EQ("after", readFile(path));
    EXPECT_EQ(65534u, statusOf(path).st_uid);
    EXPECT_EQ(2345u, statusOf(path).st_gid);
    EXPECT_EQ(0660u, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, AFileWhoseGroupIsLostIsNotOpenedToAnotherOne)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may become two users";
    const TemporaryDirectory directory;
    chmod(directory.path().c_str(), 0777);
    // The mode before, and the one after for a group that had no part in the file.
    const std::vector<std::pair<mode_t, mode_t>> modes{
        {0666, 0666}, {0662, 0622}, {0642, 0600}, {0626, 0622}};
    for (const auto& [before, after] : modes) {
        const std::string path = directory.write("file", "before");
        ASSERT_EQ(0, chown(path.c_str(), 1234, 2345));
        ASSERT_EQ(0, chmod(path.c_str(), before));
        VfString reason;
        EXPECT_TRUE(succeedsAsOrdinaryUser(65534, [&] { return replaceFile(path, "after", reason); }));
        EXPECT_EQ(65534u, statusOf(path).st_gid);
        EXPECT_EQ(after, statusOf(path).st_mode & allBits);
        unlink(path.c_str());
    }
}

TEST(ReplaceFile, KeepsExtendedAttributes)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    const std::string large(3000, 'v');
    if (!setAttribute(path, "user.author", "ada") || !setAttribute(path, "user.large", large))
        GTEST_SKIP() << "no extended attributes here";
    ASSERT_TRUE(setAttribute(path, "user.empty", ""));
    chmod(path.c_str(), 0640);
    VfString reason;
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ("ada", attribute(path, "user.author"));
    EXPECT_EQ(3000, getxattr(path.c_str(), "user.large", nullptr, 0));
    EXPECT_EQ(0, getxattr(path.c_str(), "user.empty", nullptr, 0));
    EXPECT_EQ(0640u, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, KeepsALargeAttributeAndManyOfThem)
{
    const TemporaryDirectory directory;
    const std::string disk = directory.file("disk");
    mkdir(disk.c_str(), 0700);
    if (mount("none", disk.c_str(), "tmpfs", 0, nullptr) != 0)
        GTEST_SKIP() << "no file system of its own can be mounted here";
    const std::string path = disk + "/file";
    VfString reason;
    EXPECT_TRUE(replaceFile(path, "before", reason));
    bool isPossible = setAttribute(path, "user.large", std::string(50000, 'v'));
    for (int i = 0; i < 40; ++i) // their names need more than 4096 bytes
        isPossible = isPossible &&
                     setAttribute(path, ("user." + std::string(200, 'n') + std::to_string(i)).c_str(), "x");
    if (isPossible) {
        EXPECT_TRUE(replaceFile(path, "after", reason));
        EXPECT_EQ(50000, getxattr(path.c_str(), "user.large", nullptr, 0));
        EXPECT_EQ("x", attribute(path, ("user." + std::string(200, 'n') + "39").c_str()));
    }
    umount(disk.c_str());
    if (!isPossible)
        GTEST_SKIP() << "no large attributes here";
}

TEST(ReplaceFile, KeepsTheAccessListOfAFile)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    if (!setAttribute(path, accessName, accessList()))
        GTEST_SKIP() << "no access lists here";
    const std::string list = attribute(path, accessName);
    const mode_t mode = statusOf(path).st_mode & allBits;
    VfString reason;
    umask(077);
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ(list, attribute(path, accessName));
    EXPECT_EQ(mode, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, AFileWithoutAnAccessListGetsNoneFromItsDirectory)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    chmod(path.c_str(), 0664);
    if (!setAttribute(directory.path(), defaultName, accessList()))
        GTEST_SKIP() << "no access lists here";
    VfString reason;
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ("", attribute(path, accessName));
    EXPECT_EQ(0664u, statusOf(path).st_mode & allBits);
}

TEST(ReplaceFile, AnotherHardLinkKeepsTheFormerContents)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    ASSERT_EQ(0, link(path.c_str(), directory.file("other").c_str()));
    VfString reason;
    ASSERT_TRUE(replaceFile(path, "after", reason));
    EXPECT_EQ("after", readFile(path));
    EXPECT_EQ("before", readFile(directory.file("other")));
}

TEST(ReplaceFile, ThreadsAndProcessesThatReplaceOneFileDoNotDisturbEachOther)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    const auto replaceOften = [&path](char letter) {
        int failures = 0;
        for (int i = 0; i < 60; ++i) {
            VfString reason;
            failures += !replaceFile(path, std::string(30000, letter), reason);
            const std::string contents = readFile(path);
            failures += contents.size() != 30000 || contents != std::string(30000, contents[0]);
        }
        return failures;
    };
    std::vector<pid_t> children;
    for (const char letter : {'a', 'b'}) {
        children.push_back(fork());
        if (children.back() == 0)
            _exit(replaceFile(path, std::string(30000, letter), *new VfString) ? replaceOften(letter) : 99);
    }
    VfString reason;
    EXPECT_TRUE(replaceFile(path, std::string(30000, 'z'), reason));
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (const char letter : {'c', 'd', 'e'})
        threads.emplace_back([&, letter] { failures += replaceOften(letter); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(0, failures);
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status);
    }
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
}

TEST(ReplaceFile, TheDraftOfAKilledProgramIsClearedAwayAndTheFileIsWhole)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", std::string(300000, 'a'));
    bool hasLeftDraft = false;
    for (int tries = 0; tries < 200 && !hasLeftDraft; ++tries) {
        const pid_t child = fork();
        if (child == 0) {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
                VfString reason;
                replaceFile(path, std::string(300000, letter), reason);
            }
        }
        while (namesIn(directory.path()).size() < 2) {
        }
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        hasLeftDraft = namesIn(directory.path()).size() == 2;
        const std::string contents = readFile(path);
        ASSERT_EQ(300000u, contents.size());
        EXPECT_EQ(std::string(300000, contents[0]), contents);
    }
    ASSERT_TRUE(hasLeftDraft);
    VfString reason;
    EXPECT_TRUE(replaceFile(path, "after", reason));
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
}

TEST(ReplaceFile, ClearsAwayNoDraftInUseAndNoOtherFile)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    directory.write(".file.draft-0123456789abcdef", "abandoned");
    const std::string used = directory.write(".file.draft-0123456789abcde0", "in use");
    const std::vector<std::string> others{".file.draft-", ".file.draft-0123456789abcdeg",
                                          ".file.draft-0123456789abcdef0", ".other.draft-0123456789abcdef",
                                          "file.draft-0123456789abcdef"};
    for (const std::string& name : others)
        directory.write(name, "x");
    ASSERT_EQ(0, mkfifo(directory.file(".file.draft-0123456789abcde1").c_str(), 0600));
    const int descriptor = open(used.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(0, flock(descriptor, LOCK_EX));
    VfString reason;
    EXPECT_TRUE(replaceFile(path, "after", reason));
    std::vector<std::string> expected = others;
    expected.insert(expected.end(), {".file.draft-0123456789abcde0", ".file.draft-0123456789abcde1", "file"});
    EXPECT_THAT(namesIn(directory.path()), testing::UnorderedElementsAreArray(expected));
    close(descriptor);
}

TEST(ReplaceFile, NamesOfAnyLengthWorkAlsoWhereOnlyUtf8IsAllowed)
{
    const TemporaryDirectory directory;
    const int watch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watch, directory.path().c_str(), IN_CREATE), 0);
    std::string umlauts;
    while (umlauts.size() < 254)
        umlauts += "\xC3\xBC";
    for (const std::string& name : {std::string(255, 'x'), umlauts, "a" + umlauts.substr(0, 254)}) {
        VfString reason;
        EXPECT_TRUE(replaceFile(directory.file(name), "x", reason)) << reason.str();
        EXPECT_TRUE(replaceFile(directory.file(name), "y", reason)) << reason.str();
        EXPECT_EQ("y", readFile(directory.file(name)));
    }
    VfString reason;
    EXPECT_FALSE(replaceFile(directory.file(std::string(256, 'x')), "x", reason));
    EXPECT_EQ("File name too long", reason);
    alignas(inotify_event) char events[16384];
    const ssize_t length = read(watch, events, sizeof(events));
    int drafts = 0;
    for (ssize_t at = 0; at < length;) {
        const auto* event = reinterpret_cast<const inotify_event*>(events + at);
        drafts += event->name[0] == '.';
        EXPECT_EQ(event->name, vfBase::printable(event->name));
        at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    EXPECT_EQ(6, drafts);
    close(watch);
}

TEST(ReplaceFile, AFullDiskLeavesTheFileAsItWasAndNoDraft)
{
    const TemporaryDirectory directory;
    const std::string disk = directory.file("disk");
    mkdir(disk.c_str(), 0700);
    if (mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no file system of its own can be mounted here";
    VfString reason;
    EXPECT_TRUE(replaceFile(disk + "/file", "before", reason));
    EXPECT_FALSE(replaceFile(disk + "/file", std::string(200000, 'x'), reason));
    EXPECT_EQ("No space left on device", reason);
    EXPECT_EQ("before", readFile(disk + "/file"));
    EXPECT_THAT(namesIn(disk), testing::ElementsAre("file"));
    umount(disk.c_str());
}

TEST(ReplaceFile, AReadOnlyDirectoryLeavesTheFileAsItWas)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    chmod(path.c_str(), 0666);
    chmod(directory.path().c_str(), 0555);
    EXPECT_TRUE(succeedsAsOrdinaryUser(65534, [&] {
        VfString reason;
        return !replaceFile(path, "after", reason) && reason == "Permission denied";
    }));
    chmod(directory.path().c_str(), 0755);
    EXPECT_EQ("before", readFile(path));
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
}

TEST(ReplaceFile, WritesIntoAFifoAndOutlivesItsReader)
{
    const TemporaryDirectory directory;
    const std::string path = directory.file("fifo");
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    std::string read;
    std::thread reader([&] { read = readFile(path); });
    VfString reason;
    EXPECT_TRUE(replaceFile(path, "to the reader", reason)) << reason.str();
    reader.join();
    EXPECT_EQ("to the reader", read);
    EXPECT_TRUE(S_ISFIFO(statusOf(path).st_mode));

    // A reader that goes after the first byte.
    std::thread leaver([&] {
        const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        char byte = 0;
        EXPECT_EQ(1, ::read(descriptor, &byte, 1));
        close(descriptor);
    });
    EXPECT_FALSE(replaceFile(path, std::string(2000000, 'x'), reason));
    EXPECT_EQ("Broken pipe", reason);
    leaver.join();
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST(ReplaceFile, StandardOutputMayBeAPipeOrAFile)
{
    const TemporaryDirectory directory;
    int ends[2];
    ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
    VfString reason;
    EXPECT_TRUE(replaceFile("/dev/fd/" + std::to_string(ends[1]), "through a pipe", reason)) << reason.str();
    char buffer[64];
    const ssize_t length = read(ends[0], buffer, sizeof(buffer));
    EXPECT_EQ("through a pipe", std::string(buffer, length < 0 ? 0 : static_cast<std::size_t>(length)));

    const std::string path = directory.file("redirected");
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(6, write(file, "first\n", 6));
    EXPECT_TRUE(replaceFile("/dev/fd/" + std::to_string(file), "second\n", reason)) << reason.str();
    EXPECT_EQ("first\nsecond\n", readFile(path));
    for (const int descriptor : {ends[0], ends[1], file})
        close(descriptor);
}

TEST(ReplaceFile, ARingOfLinksIsToldAndLeft)
{
    const TemporaryDirectory directory;
    ASSERT_EQ(0, symlink("b", directory.file("a").c_str()));
    ASSERT_EQ(0, symlink("a", directory.file("b").c_str()));
    VfString reason;
    EXPECT_FALSE(replaceFile(directory.file("a"), "x", reason));
    EXPECT_EQ("Too many levels of symbolic links", reason);
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("a", "b"));
}

TEST(ReplaceFile, AnErrorOfTheDiskLeavesTheFileAsItWasAndNoDraft)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    for (const std::vector<long>& calls : {std::vector<long>{SYS_fsync}, vfTest::renameCalls}) {
        EXPECT_TRUE(vfTest::passesWhereRefused(calls, EIO, [&] {
            VfString reason;
            EXPECT_FALSE(replaceFile(path, "after", reason));
            EXPECT_EQ("Input/output error", reason);
        }));
        EXPECT_EQ("before", readFile(path));
        EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
    }
}

TEST(ReplaceFile, AFileSystemThatCannotFlushOrLockIsNoHindrance)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    EXPECT_TRUE(vfTest::passesWhereRefused({SYS_fsync, SYS_flock}, ENOTSUP, [&] {
        VfString reason;
        EXPECT_TRUE(replaceFile(path, "after", reason)) << reason.str();
    }));
    EXPECT_EQ("after", readFile(path));
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file"));
}

TEST(ReplaceFile, AFileWhoseAccessListCannotBeReadIsForItsOwnerOnly)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    // Without extended attributes there is no access list to lose.
    for (const auto& [error, mode] : {std::pair<int, mode_t>{ENOTSUP, 0664}, {EACCES, 0600}}) {
        ASSERT_EQ(0, chmod(path.c_str(), 0664));
        EXPECT_TRUE(vfTest::passesWhereRefused({SYS_flistxattr}, error, [&] {
            VfString reason;
            EXPECT_TRUE(replaceFile(path, "after", reason)) << reason.str();
        }));
        EXPECT_EQ(mode, statusOf(path).st_mode & allBits);
    }
}

TEST(ReplaceFileBy, AnotherFileTakesItsPlaceWithItsPermissionsAndLinks)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "before");
    ASSERT_EQ(0, chmod(path.c_str(), 0664));
    ASSERT_EQ(0, symlink("file", directory.file("link").c_str()));
    const std::string draft = directory.write("draft", "after");
    ASSERT_EQ(0, chmod(draft.c_str(), 0600));
    VfString reason;
    ASSERT_TRUE(vfBase::replaceFileBy(directory.file("link"), draft, reason)) << reason.str();
    EXPECT_EQ("after", readFile(path));
    EXPECT_EQ(0664u, statusOf(path).st_mode & allBits);
    EXPECT_TRUE(S_ISLNK(statusOf(directory.file("link")).st_mode));
    EXPECT_THAT(namesIn(directory.path()), testing::ElementsAre("file", "link"));
    ASSERT_TRUE(vfBase::replaceFileBy(directory.file("new"), directory.write("draft", "new"), reason));
    EXPECT_EQ("new", readFile(directory.file("new")));
}

TEST(ReplaceFileBy, TellsWhyAndLeavesBothFiles)
{
    const TemporaryDirectory directory;
    const std::string draft = directory.write("draft", "after");
    const std::string kept = directory.write("kept", "before");
    ASSERT_EQ(0, chmod(kept.c_str(), 0400));
    std::filesystem::create_directory(directory.file("directory"));
    ASSERT_EQ(0, mkfifo(directory.file("pipe").c_str(), 0600));
    for (const char* name : {"kept", "directory", "pipe", "missing/file"}) {
        VfString reason;
        EXPECT_FALSE(vfBase::replaceFileBy(directory.file(name), draft, reason)) << name;
        EXPECT_NE("", reason.str()) << name;
    }
    VfString reason;
    EXPECT_FALSE(vfBase::replaceFileBy("", draft, reason));
    EXPECT_FALSE(vfBase::replaceFileBy(directory.file("other"), directory.file("no draft"), reason));
    EXPECT_FALSE(vfBase::replaceFileBy(directory.file("other"), directory.file("pipe"), reason));
    EXPECT_EQ("before", readFile(kept));
    EXPECT_EQ("after", readFile(draft));
}
