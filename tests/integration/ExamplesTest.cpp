// SPDX-License-Identifier: MIT
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

using testing::HasSubstr;

namespace {

const char* const notebook = VELAFORGE_PROGRAM_DIR "/example_02_notebook";

} // namespace

TEST(Examples, HelloShowsTheFirstLineOfEachFile)
{
    const vfTest::TemporaryDirectory directory;
    const std::string first = directory.write("a.txt", "good morning\nsecond\n");
    const std::string second = directory.write("b.txt", "good night");
    const vfTest::Outcome outcome =
        vfTest::runProgram({VELAFORGE_PROGRAM_DIR "/example_01_hello", first, second});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("good morning\n"));
    EXPECT_THAT(outcome.out, HasSubstr("good night\n"));
}

TEST(Examples, HelloTellsWhichFileItCannotReadAndShowsTheOthers)
{
    const vfTest::TemporaryDirectory directory;
    const std::string good = directory.write("a.txt", "good morning\n");
    const vfTest::Outcome outcome =
        vfTest::runProgram({VELAFORGE_PROGRAM_DIR "/example_01_hello", "none.txt", good}, directory.path());
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("good morning\n"));
    EXPECT_THAT(outcome.err, HasSubstr(": none.txt: No such file or directory\n"));
}

TEST(Examples, NotebookAddsLinesTakesThemBackAndSaves)
{
    const vfTest::TemporaryDirectory directory;
    const std::string note = directory.write("shopping.note", "milk\n");
    const vfTest::Outcome outcome = vfTest::runProgram(
        {notebook, note, "--invoke", "notebook::AddLine=butter", "--invoke", "notebook::Undo", "--invoke",
         "notebook::AddLine=eggs", "--invoke", "notebook::Save"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("milk\nbutter\n--\nmilk\n--\nmilk\neggs\n--\n"));
    EXPECT_EQ("milk\neggs\n", vfTest::readFile(note));
}

TEST(Examples, NotebookListsWhatItDeclares)
{
    const vfTest::Outcome outcome = vfTest::runProgram({notebook, "--list-ui"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, testing::StartsWith("menus\n"
                                                 "  File\n"
                                                 "    vfApplicationQt::ActionOpen (not registered here)\n"
                                                 "    vfApplicationQt::ActionExit (not registered here)\n"
                                                 "    notebook::Save\n"
                                                 "  Edit\n"
                                                 "    notebook::AddLine\n"
                                                 "    notebook::Undo\n"
                                                 "toolbars\n"
                                                 "  Standard\n"
                                                 "    vfApplicationQt::CommandAbout (not registered here)\n"
                                                 "dock windows\n"
                                                 "  notebook::OutlineWindow \"Outline\", left\n"
                                                 "options pages\n"
                                                 "  Notes\n"
                                                 "    notebook::NotebookPage\n"));
}

TEST(Examples, NotebookKeepsItsSettingsWhereTheGuideSays)
{
    const vfTest::TemporaryDirectory directory;
    const std::string note = directory.write("shopping.note", "milk\neggs\n");
    EXPECT_EQ(0, vfTest::runProgram({notebook, note}).status);
    const std::string path = std::string(getenv("XDG_CONFIG_HOME")) + "/notebook.json";
    std::string settings = vfTest::readFile(path);
    const std::string off = "\"showsNumbers\": false";
    ASSERT_NE(std::string::npos, settings.find(off)) << settings;
    settings.replace(settings.find(off), off.size(), "\"showsNumbers\": true");
    std::ofstream(path) << settings;
    EXPECT_THAT(vfTest::runProgram({notebook, note}).out, HasSubstr("1: milk\n2: eggs\n--\n"));
}

TEST(Examples, NotebookSaysWhatItCannotDo)
{
    const vfTest::TemporaryDirectory directory;
    EXPECT_THAT(vfTest::runProgram({notebook, "--invoke", "notebook::AddLine=x"}).err,
                HasSubstr("there is no document for the command"));
    const std::string note = directory.write("gone/shopping.note", "milk\n");
    const vfTest::Outcome outcome =
        vfTest::runProgram({"sh", "-c",
                            "chmod a-w '" + directory.file("gone") + "/shopping.note' && '" + notebook +
                                "' '" + note + "' --invoke notebook::AddLine=x --invoke notebook::Save"});
    EXPECT_THAT(outcome.err, HasSubstr("notebook: notebook::Save: shopping.note: not saved: "));
    EXPECT_EQ(4, outcome.status);
    EXPECT_EQ("milk\n", vfTest::readFile(note));
}

TEST(Examples, NotebookWritesNothingThatNobodySaved)
{
    const vfTest::TemporaryDirectory directory;
    const std::string note = directory.write("shopping.note", "milk\n");
    const vfTest::Outcome outcome =
        vfTest::runProgram({notebook, note, "--invoke", "notebook::AddLine=butter"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ("milk\n", vfTest::readFile(note));
}

TEST(Examples, NotebookTellsWhichNotesItCannotReadAndShowsTheOthers)
{
    const vfTest::TemporaryDirectory directory;
    const std::string good = directory.write("good.note", "milk\n");
    const std::string bad = directory.write("bad.note", std::string("a\n\0\n", 4));
    const vfTest::Outcome outcome = vfTest::runProgram({notebook, bad, "none.note", good}, directory.path());
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("milk\n--\n"));
    EXPECT_THAT(outcome.err, HasSubstr("notebook: " + bad + ": line 2 is not text\n"));
    EXPECT_THAT(outcome.err, HasSubstr("notebook: none.note: No such file or directory\n"));
}

TEST(Examples, AFullStandardOutputIsToldAndStatus4)
{
    for (const char* option : {"--list-commands", "--list-ui"}) {
        const vfTest::Outcome outcome =
            vfTest::runProgram({"sh", "-c", std::string("'") + notebook + "' " + option + " > /dev/full"});
        EXPECT_EQ(4, outcome.status) << option;
        EXPECT_EQ("notebook: standard output: No space left on device\n", outcome.err) << option;
    }
}

TEST(Examples, IsolatedCountsTheWordsOfFilesAndTellsWhichItCannotRead)
{
    const vfTest::TemporaryDirectory directory;
    const std::string one = directory.write("one.txt", "three words here\n");
    const vfTest::Outcome outcome =
        vfTest::runProgram({VELAFORGE_PROGRAM_DIR "/example_04_isolated", one, directory.file("none"), one});
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ(one + ": 3\n" + one + ": 3\n", outcome.out);
    EXPECT_THAT(outcome.err, HasSubstr(directory.file("none") + ": cannot be opened\n"));
}

TEST(Examples, ConverterWritesEachModelBesideItAndTellsWhichItCannotRead)
{
    const vfTest::TemporaryDirectory directory;
    const std::string one = directory.write("one.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const std::string cut = directory.write("cut.obj", "v 0 0");
    const std::string program = VELAFORGE_PROGRAM_DIR "/example_05_converter";
    vfTest::Outcome outcome = vfTest::runProgram({program, "ply.osgt", one, cut, directory.file("none.obj")});
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ(directory.file("one.ply.osgt") + "\n", outcome.out);
    EXPECT_THAT(outcome.err, HasSubstr(cut + ": the file is cut off\n"));
    EXPECT_THAT(outcome.err, HasSubstr(directory.file("none.obj") + ": No such file or directory\n"));
    EXPECT_THAT(vfTest::readFile(directory.file("one.ply.osgt")), HasSubstr("osg::Geometry"));
    outcome = vfTest::runProgram({program, "png", one});
    EXPECT_EQ(1, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr(one + ": models are not written as .png\n"));
    EXPECT_EQ(1, vfTest::runProgram({program}).status);
}

#ifdef VELAFORGE_WITH_QT
TEST(Examples, WindowOpensItsFilesAndStays)
{
    const vfTest::TemporaryDirectory directory;
    const std::string note = directory.write("a.txt", "good morning\nsecond\n");
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // It runs until "timeout" ends it, which is told by this status.
    const vfTest::Outcome outcome =
        vfTest::runProgram({"timeout", "3", VELAFORGE_PROGRAM_DIR "/example_03_window", note});
    EXPECT_EQ(124, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(note)); // the line that tells of each file
}
#endif
