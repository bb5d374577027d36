// SPDX-License-Identifier: MIT
#include <velaforge/isolation/SharedBytes.h>

#include <velaforge/isolation/SharedMemory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

using vfIsolation::SharedBytes;

namespace {

class File
{
public:
    explicit File(const std::string& contents) : file(vfIsolation::makeSharedMemory("test"))
    {
        EXPECT_EQ(ssize_t(contents.size()), write(file, contents.data(), contents.size()));
    }
    ~File() { close(file); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const int file;
};

} // namespace

TEST(SharedBytes, AreThoseOfASealedFileAlsoAfterItIsClosed)
{
    SharedBytes bytes;
    EXPECT_TRUE(bytes.isEmpty());
    {
        const File file("some bytes");
        ASSERT_TRUE(vfIsolation::sealContents(file.file));
        bytes = SharedBytes(file.file, 4);
    }
    const SharedBytes copy = bytes;
    bytes = SharedBytes();
    EXPECT_EQ("some", std::string(reinterpret_cast<const char*>(copy.data()), copy.size()));
}

TEST(SharedBytes, AreNoneWhileTheFileCanChange)
{
    const File file("some bytes");
    EXPECT_TRUE(SharedBytes(file.file, 10).isEmpty());
    ASSERT_TRUE(vfIsolation::sealSize(file.file));
    EXPECT_TRUE(SharedBytes(file.file, 10).isEmpty()) << "its contents can change";
    ASSERT_TRUE(vfIsolation::sealContents(file.file));
    EXPECT_EQ(10u, SharedBytes(file.file, 10).size());
}

TEST(SharedBytes, AreNoneWhereTheFileIsShorterOrNone)
{
    const File file("some bytes");
    ASSERT_TRUE(vfIsolation::sealContents(file.file));
    EXPECT_TRUE(SharedBytes(file.file, 11).isEmpty());
    EXPECT_TRUE(SharedBytes(file.file, std::numeric_limits<std::uint64_t>::max()).isEmpty());
    EXPECT_TRUE(SharedBytes(file.file, 0).isEmpty());
    EXPECT_TRUE(SharedBytes(-1, 1).isEmpty());
    int pipes[2];
    ASSERT_EQ(0, pipe(pipes));
    EXPECT_TRUE(SharedBytes(pipes[0], 1).isEmpty());
    close(pipes[0]);
    close(pipes[1]);
}
