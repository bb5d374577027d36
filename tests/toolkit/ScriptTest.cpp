// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/toolkit/Script.h>

#include <gmock/gmock.h>

#include <fstream>
#include <thread>

#include <sys/stat.h>

using testing::ElementsAre;
using vfApplication::readScript;

namespace {

struct Read
{
    explicit Read(const std::string& path)
    {
        std::vector<vfApplication::ScriptLine> all;
        isRead = readScript(path, all, reason);
        for (const vfApplication::ScriptLine& line : all)
            lines.push_back(line.where + line.text);
    }
    bool isRead;
    vfBase::VfString reason;
    std::vector<std::string> lines;
};

} // namespace

TEST(Script, HoldsOneCommandALineAndRemarks)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("a.script", "# a remark\n\n  a::B=c d \n\ta::C");
    EXPECT_THAT(Read(path).lines, ElementsAre(path + ":3: a::B=c d", path + ":4: a::C"));
}

TEST(Script, OfAnotherSystemHasAByteOrderMarkAndCarriageReturns)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("a.script", "\xEF\xBB\xBF"
                                                         "a::B\r\n\r\n# x\r\na::C\r\n");
    EXPECT_THAT(Read(path).lines, ElementsAre(path + ":1: a::B", path + ":4: a::C"));
}

TEST(Script, WithoutAnEndIsRefused)
{
    const Read read("/dev/zero");
    EXPECT_FALSE(read.isRead);
    EXPECT_EQ("line 1 has a zero byte; a script is text", read.reason);
}

TEST(Script, WithALineWithoutAnEndIsRefused)
{
    const vfTest::TemporaryDirectory directory;
    const std::string longest(vfApplication::scriptLineLimit, 'a');
    EXPECT_TRUE(Read(directory.write("a.script", longest)).isRead);
    EXPECT_EQ("line 2 has more than 65536 bytes",
              Read(directory.write("b.script", "x\n" + longest + "a")).reason);
}

TEST(Script, OfTooManyBytesIsRefused)
{
    const vfTest::TemporaryDirectory directory;
    std::string text;
    while (text.size() < vfApplication::scriptLimit)
        text += "#23456789012345\n";
    EXPECT_TRUE(Read(directory.write("a.script", text)).isRead);
    EXPECT_EQ("a script has at most 16777216 bytes", Read(directory.write("b.script", text + "\n")).reason);
}

TEST(Script, ThatIsNoFileOrADirectoryIsToldAsTheSystemTellsIt)
{
    const vfTest::TemporaryDirectory directory;
    EXPECT_EQ("No such file or directory", Read(directory.file("none")).reason);
    EXPECT_EQ("Is a directory", Read(directory.path()).reason);
}

TEST(Script, MayComeThroughAPipe)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("pipe");
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    std::thread writer([&path] { std::ofstream(path) << "a::B\n"; });
    EXPECT_THAT(Read(path).lines, ElementsAre(path + ":1: a::B"));
    writer.join();
}
