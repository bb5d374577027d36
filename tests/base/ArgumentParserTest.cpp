// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/ClassInfo.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::HasSubstr;
using vfBase::ArgumentParser;
using vfBase::VfString;

namespace {

/// A command line with its parser.
struct Line
{
    explicit Line(std::vector<std::string> words)
        : texts(std::move(words)), count(static_cast<int>(texts.size()))
    {
        for (std::string& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        parser = std::make_unique<ArgumentParser>(&count, pointers.data());
    }

    std::vector<std::string> left() const
    {
        std::vector<std::string> rest;
        for (int i = 0; i < parser->getArgumentCount(); ++i)
            rest.emplace_back(parser->getArgumentAt(i));
        return rest;
    }

    std::vector<std::string> texts;
    std::vector<char*> pointers;
    int count;
    std::unique_ptr<ArgumentParser> parser;
};

} // namespace

TEST(ArgumentParser, TellsOptionsFromFileNames)
{
    const Line line({"viewer", "--log", "a.obj", "-x", "-", "--", "-5"});
    EXPECT_FALSE(line.parser->isOption(0));
    EXPECT_TRUE(line.parser->isOption(1));
    EXPECT_FALSE(line.parser->isOption(2));
    EXPECT_TRUE(line.parser->isOption(3));
    EXPECT_FALSE(line.parser->isOption(-1));
    EXPECT_FALSE(line.parser->isOption(99));
    EXPECT_EQ(nullptr, line.parser->getArgumentAt(99));
    EXPECT_EQ(nullptr, line.parser->getArgumentAt(-1));
}

TEST(ArgumentParser, AnOptionThatWasReadIsNotReportedAsUnrecognised)
{
    Line line({"viewer", "--verbose", "a.obj"});
    EXPECT_TRUE(line.parser->readOptionParameter("--verbose"));
    EXPECT_FALSE(line.parser->readOptionParameter("--log"));
    line.parser->reportRemainingOptionsAsUnrecognized();
    EXPECT_FALSE(line.parser->hasErrors());
    EXPECT_EQ((std::vector<std::string>{"viewer", "a.obj"}), line.left());
}

TEST(ArgumentParser, EachUnreadOptionIsReportedAlsoOneThatTheUsageTextDeclares)
{
    Line line({"viewer", "--image", "a.png", "--nonsense"});
    line.parser->addCommandLineOption("--image <filename>", "Load an image", nullptr);
    line.parser->reportRemainingOptionsAsUnrecognized();
    EXPECT_TRUE(line.parser->hasErrors());
    EXPECT_THAT(line.parser->getErrorMessage().str(), HasSubstr("--image"));
    EXPECT_THAT(line.parser->getErrorMessage().str(), HasSubstr("--nonsense"));
    const VfString once = line.parser->getErrorMessage();
    line.parser->reportRemainingOptionsAsUnrecognized();
    EXPECT_EQ(once, line.parser->getErrorMessage());
}

TEST(ArgumentParser, AFlagGivenTwiceIsReadOnce)
{
    Line line({"viewer", "--log", "a", "--log"});
    EXPECT_TRUE(line.parser->readOptionParameter("--log"));
    EXPECT_FALSE(line.parser->readOptionParameter("--log"));
    EXPECT_EQ((std::vector<std::string>{"viewer", "a"}), line.left());
}

TEST(ArgumentParser, ReadsAValueBehindAnOptionOrAnEqualsSign)
{
    Line line({"viewer", "--size", "640x480", "--n=3", "--x", "1.5", "file"});
    VfString size;
    int n = 0;
    double x = 0;
    EXPECT_TRUE(line.parser->readOptionParameter("--size", size));
    EXPECT_TRUE(line.parser->readOptionParameter("--n", n));
    EXPECT_TRUE(line.parser->readOptionParameter("--x", x));
    EXPECT_EQ("640x480", size);
    EXPECT_EQ(3, n);
    EXPECT_DOUBLE_EQ(1.5, x);
    EXPECT_EQ((std::vector<std::string>{"viewer", "file"}), line.left());
    EXPECT_FALSE(line.parser->hasErrors());
}

TEST(ArgumentParser, AMissingOrMalformedValueIsAnErrorAndLeavesTheVariable)
{
    Line line({"viewer", "--n", "three", "--size", "--x"});
    VfString size = "before";
    int n = 7;
    double x = 2;
    EXPECT_FALSE(line.parser->readOptionParameter("--n", n));
    EXPECT_FALSE(line.parser->readOptionParameter("--size", size));
    EXPECT_FALSE(line.parser->readOptionParameter("--x", x));
    EXPECT_EQ("before", size);
    EXPECT_EQ(7, n);
    EXPECT_DOUBLE_EQ(2, x);
    EXPECT_TRUE(line.parser->hasErrors());
    EXPECT_THAT(line.parser->getErrorMessage().str(), HasSubstr("\"three\""));
    EXPECT_THAT(line.parser->getErrorMessage().str(), HasSubstr("--size"));
}

TEST(ArgumentParser, NumbersOutOfRangeAreMalformed)
{
    for (const char* text : {"99999999999", "1e99999", "3x", "", " 3"}) {
        Line line({"viewer", "--n", text, "--x", text[0] == '9' ? "inf" : text});
        int n = 7;
        double x = 0.5;
        EXPECT_FALSE(line.parser->readOptionParameter("--n", n)) << text;
        EXPECT_EQ(7, n) << text;
        EXPECT_FALSE(line.parser->readOptionParameter("--x", x)) << text;
        EXPECT_EQ(0.5, x) << text;
    }
}

TEST(ArgumentParser, HelpIsAskedForByTwoNames)
{
    EXPECT_EQ(ArgumentParser::NoHelp, Line({"viewer", "a"}).parser->getHelpTypeRequested());
    EXPECT_NE(ArgumentParser::NoHelp, Line({"viewer", "--help"}).parser->getHelpTypeRequested());
    EXPECT_NE(ArgumentParser::NoHelp, Line({"viewer", "a", "-h"}).parser->getHelpTypeRequested());
    EXPECT_EQ(0, ArgumentParser::NoHelp);
}

TEST(ArgumentParser, TheUsageTextNamesTheProgramAndGoesToStandardOutput)
{
    Line line({"viewer"});
    line.parser->setApplicationName("viewer");
    line.parser->setDescription("Shows models.");
    line.parser->setCommandLineUsage("viewer [options] filename ...");
    line.parser->addCommandLineOption("--size <width>x<height>", "Size of the snapshot", "1280x800");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    line.parser->printUsage(ArgumentParser::CommandLineHelp);
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    for (const char* part : {"viewer", "Shows models.", "viewer [options] filename ...",
                             "--size <width>x<height>", "Size of the snapshot", "1280x800"})
        EXPECT_THAT(text, HasSubstr(part));
    testing::internal::CaptureStdout();
    line.parser->printUsage(ArgumentParser::NoHelp);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

TEST(ArgumentParser, ErrorsGoToStandardErrorALineEach)
{
    Line line({"viewer"});
    line.parser->setApplicationName("viewer");
    line.parser->reportError("first");
    line.parser->reportError("second");
    line.parser->reportError("first");
    EXPECT_EQ("first\nsecond", line.parser->getErrorMessage());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    line.parser->printErrorMessages();
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("viewer: first\nviewer: second\n", testing::internal::GetCapturedStderr());
}

TEST(ArgumentParser, NamesMayBeMissingUntilTheyAreSet)
{
    Line line({"viewer"});
    const char* name = line.parser->getApplicationName();
    EXPECT_TRUE(!name || !*name);
    line.parser->setApplicationName("viewer");
    EXPECT_STREQ("viewer", line.parser->getApplicationName());
    line.parser->setDescription("d");
    line.parser->setCommandLineUsage("u");
    EXPECT_STREQ("d", line.parser->getDescription());
    EXPECT_STREQ("u", line.parser->getCommandLineUsage());
}

TEST(ArgumentParser, TheCountIsTheCallersOwn)
{
    Line line({"viewer", "--log", "a"});
    EXPECT_EQ(&line.count, &line.parser->getArgumentCount());
    line.parser->readOptionParameter("--log");
    EXPECT_EQ(2, line.count);
    EXPECT_EQ(line.pointers.data(), line.parser->getArgumentVector());
    EXPECT_EQ(nullptr, line.pointers[2]);
}

TEST(ArgumentParser, TakesAllParametersOfAnOptionInTheirOrder)
{
    const Line line({"viewer", "--do", "b", "file", "--do=a", "--do", "b", "--", "--do", "c"});
    vfBase::StringList values;
    values.append("before");
    EXPECT_TRUE(line.parser->readOptionParameter("--do", values));
    ASSERT_EQ(4u, values.size());
    EXPECT_EQ("before", values.get(0));
    EXPECT_EQ("b", values.get(1));
    EXPECT_EQ("a", values.get(2));
    EXPECT_EQ("b", values.get(3));
    EXPECT_FALSE(line.parser->hasErrors());
    EXPECT_FALSE(line.parser->readOptionParameter("--do", values));
    const Line incomplete({"viewer", "--do"});
    EXPECT_FALSE(incomplete.parser->readOptionParameter("--do", values));
    EXPECT_TRUE(incomplete.parser->hasErrors());
    EXPECT_EQ(4u, values.size());
}

TEST(ArgumentParser, WorksWithoutAnyArgumentAndWithoutAVector)
{
    int count = 0;
    ArgumentParser parser(&count, nullptr);
    VfString value;
    EXPECT_FALSE(parser.readOptionParameter("--log"));
    EXPECT_FALSE(parser.readOptionParameter("--size", value));
    EXPECT_FALSE(parser.isOption(0));
    EXPECT_EQ(nullptr, parser.getArgumentAt(0));
    EXPECT_EQ(ArgumentParser::NoHelp, parser.getHelpTypeRequested());
    parser.reportRemainingOptionsAsUnrecognized();
    EXPECT_FALSE(parser.hasErrors());
    testing::internal::CaptureStdout();
    parser.printUsage(ArgumentParser::CommandLineHelp);
    EXPECT_NE("", testing::internal::GetCapturedStdout());
}

TEST(ArgumentParser, IsAnObjectWithARecordOfItsOwn)
{
    const Line line({"viewer"});
    EXPECT_EQ(&ArgumentParser::s_classInfo, line.parser->getClassInfo());
    EXPECT_STREQ("vfBase::ArgumentParser", ArgumentParser::classId());
    EXPECT_EQ(0, vfTest::slotOf(&ArgumentParser::getClassInfo));
}
