// SPDX-License-Identifier: MIT
// docs/lifecycle.md against a program that does what it tells.
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text)
{
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// @return the lines of a block of the document, without what explains them
Lines documented(const std::string& name)
{
    Lines block;
    bool isInside = false;
    for (std::string line : linesOf(vfTest::readFile(VELAFORGE_SOURCE_DIR "/docs/lifecycle.md"))) {
        if (isInside && line == "```")
            break;
        if (isInside) {
            line.erase(std::min(line.find('#'), line.size()));
            line.erase(line.find_last_not_of(' ') + 1);
            block.push_back(line);
        }
        isInside = isInside || line == "```sequence " + name;
    }
    EXPECT_FALSE(block.empty()) << name;
    return block;
}

Lines operator+(Lines first, const Lines& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// @return the lines before the first one that is @p line
Lines before(const Lines& lines, const std::string& line)
{
    const auto end = std::find(lines.begin(), lines.end(), line);
    EXPECT_NE(lines.end(), end) << line;
    return Lines(lines.begin(), end);
}

/// @return the lines from the first one that is @p line
Lines from(const Lines& lines, const std::string& line)
{
    return Lines(std::find(lines.begin(), lines.end(), line), lines.end());
}

Lines without(Lines lines, const Lines& others)
{
    for (const std::string& other : others)
        lines.erase(std::remove(lines.begin(), lines.end(), other), lines.end());
    return lines;
}

/// The lines of a document, which are not there when none was opened.
Lines withoutDocument(Lines lines)
{
    const auto isDocuments = [](const std::string& line) {
        return line.find("doc1") != std::string::npos || line.find("view1") != std::string::npos ||
               line.find("a.obj") != std::string::npos;
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isDocuments), lines.end());
    return lines;
}

Lines run(const Lines& arguments = {})
{
    Lines command = {VELAFORGE_PROGRAM_DIR "/lifecycle_program"};
    const vfTest::Outcome outcome = vfTest::runProgram(command + arguments);
    EXPECT_EQ(0, outcome.status) << outcome.err;
    return linesOf(outcome.out);
}

const Lines construction = documented("construction");
const Lines running = documented("run");
const Lines destruction = documented("destruction");

} // namespace

TEST(Lifecycle, IsAsItIsDocumented)
{
    EXPECT_THAT(run(), ElementsAreArray(construction + running + destruction));
}

TEST(Lifecycle, IsTheSameInTheNextRun)
{
    run();
    EXPECT_THAT(run(), ElementsAreArray(construction + running + destruction));
}

TEST(Lifecycle, AFailingOnBeforeRunLeavesOutAllUpToTheDestruction)
{
    // The module and the window were made within it.
    EXPECT_THAT(run({"fail", "onBeforeRun"}),
                ElementsAreArray(construction + before(running, "onApplicationInitialized") +
                                 Lines{"-- run() returned 7"} + withoutDocument(destruction)));
}

TEST(Lifecycle, AFailingOnApplicationInitializedLeavesOutAllUpToTheDestruction)
{
    EXPECT_THAT(run({"fail", "onApplicationInitialized"}),
                ElementsAreArray(construction + before(running, "findTemplateForPath a.obj") +
                                 Lines{"-- run() returned -1"} + withoutDocument(destruction)));
}

TEST(Lifecycle, ADocumentThatCannotBeOpenedIsGoneAndTheRunGoesOn)
{
    const Lines lines = run({"fail", "doOpenDocument"});
    EXPECT_THAT(before(lines, "doc1 doOpenDocument a.obj"),
                ElementsAreArray(construction + before(running, "doc1 doOpenDocument a.obj")));
    EXPECT_EQ(1, std::count(lines.begin(), lines.end(), "~doc1"));
    EXPECT_THAT(from(lines, "runEventLoop"),
                ElementsAreArray(from(running, "runEventLoop") + withoutDocument(destruction)));
}

TEST(Lifecycle, AnOptionThatNobodyReadLeavesOutTheEventLoopTheSavingAndOnAfterRun)
{
    EXPECT_THAT(run({"fail", "command line"}),
                ElementsAreArray(construction + before(running, "runEventLoop") +
                                 Lines{"-- run() returned 3"} + destruction));
}

TEST(Lifecycle, AFailingEventLoopLeavesOutNothing)
{
    EXPECT_THAT(run({"fail", "runEventLoop"}),
                ElementsAreArray(construction + before(running, "-- run() returned 0") +
                                 Lines{"-- run() returned 5"} + destruction));
}

TEST(Lifecycle, AFailingOnAfterRunGivesTheResult)
{
    EXPECT_THAT(run({"fail", "onAfterRun"}),
                ElementsAreArray(construction + before(running, "-- run() returned 0") +
                                 Lines{"-- run() returned 9"} + destruction));
}

TEST(Lifecycle, AScreenThatThrowsLeavesNothingButTheShellsEnd)
{
    // There was no application, and so nothing asks for the shell to be released.
    EXPECT_THAT(run({"throw", "create screen"}),
                ElementsAre("create screen", "~Shell", "-- thrown: create screen", "-- main() ends"));
}

TEST(Lifecycle, ASetupThatThrowsTakesBackWhatWasMade)
{
    EXPECT_THAT(run({"throw", "getUiSetup"}),
                ElementsAre("create screen", "getUiSetup", "~screen", "destroy shell", "~Shell",
                            "-- thrown: getUiSetup", "-- main() ends"));
    EXPECT_THAT(run({"throw", "onRegisterDocumentType"}),
                ElementsAre("create screen", "getUiSetup", "onRegisterDocumentType", "~screen",
                            "destroy shell", "~Shell", "-- thrown: onRegisterDocumentType",
                            "-- main() ends"));
}

TEST(Lifecycle, AHookOfTheRunThatThrowsIsFollowedByTheDestruction)
{
    // What is thrown reaches main() when the application is gone.
    const auto thrown = [](Lines lines, const std::string& what) {
        lines.insert(std::find(lines.begin(), lines.end(), "-- main() ends"), "-- thrown: " + what);
        return lines;
    };
    const Lines unprepared = without(withoutDocument(destruction), {"~window", "~module"});
    EXPECT_THAT(run({"throw", "create shell"}),
                ElementsAreArray(construction + before(running, "onApplicationInterfaceCreated") +
                                 thrown(unprepared, "create shell")));
    EXPECT_THAT(run({"throw", "onApplicationInterfaceCreated"}),
                ElementsAreArray(construction + before(running, "onBeforeRun") +
                                 thrown(unprepared, "onApplicationInterfaceCreated")));
    EXPECT_THAT(run({"throw", "onBeforeRun"}),
                ElementsAreArray(construction + before(running, "onApplicationInitialized") +
                                 thrown(withoutDocument(destruction), "onBeforeRun")));
    EXPECT_THAT(run({"throw", "onApplicationInitialized"}),
                ElementsAreArray(construction + before(running, "findTemplateForPath a.obj") +
                                 thrown(withoutDocument(destruction), "onApplicationInitialized")));
    EXPECT_THAT(run({"throw", "runEventLoop"}),
                ElementsAreArray(construction + before(running, "told: User settings saved") +
                                 thrown(destruction, "runEventLoop")));
    EXPECT_THAT(run({"throw", "onAfterRun"}),
                ElementsAreArray(construction + before(running, "-- run() returned 0") +
                                 thrown(destruction, "onAfterRun")));
}

TEST(Lifecycle, ADocumentThatThrowsWhileItIsReadEndsTheRunAndIsGone)
{
    const Lines lines = run({"throw", "doOpenDocument"});
    EXPECT_THAT(before(lines, "doc1 doOpenDocument a.obj"),
                ElementsAreArray(construction + before(running, "doc1 doOpenDocument a.obj")));
    EXPECT_EQ(1, std::count(lines.begin(), lines.end(), "~doc1"));
    EXPECT_EQ(0, std::count(lines.begin(), lines.end(), "runEventLoop"));
    EXPECT_EQ(0, std::count(lines.begin(), lines.end(), "told: User settings saved"));
    const auto thrown = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("-- thrown: ", 0) == 0 && line.find("doOpenDocument") != std::string::npos;
    });
    EXPECT_NE(lines.end(), thrown);
    EXPECT_EQ("~module", lines.back());
}
