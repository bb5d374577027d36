// SPDX-License-Identifier: MIT
#include "support/RecordingShell.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/ReadError.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/HeadlessDocManager.h>

#include <gmock/gmock.h>

#include <fstream>
#include <new>
#include <sstream>

#include <unistd.h>

using testing::HasSubstr;
using vfApplication::Application;
using vfApplication::HeadlessDocManager;
using vfBase::VfString;

namespace {

/// A text file whose first line says how reading it fails, if it does.
struct Sheet : vfApplication::Document
{
    void concreteDocumentOperation() override {}
    bool doOpenDocument(const VfString& path, const vfBase::Options&) override
    {
        std::ifstream file(path.str());
        if (!std::getline(file, text))
            return false;
        if (text == "reason")
            return vfApplication::setReadError("line 1: a word is missing");
        if (text == "read error")
            throw vfApplication::ReadError("line 2: a number is missing");
        if (text == "exception")
            throw std::runtime_error("the parser gave up");
        if (text == "memory")
            throw std::bad_alloc();
        if (text == "number")
            throw 42;
        if (text == "opened all the same")
            vfApplication::setReadError("line 3: a word too many");
        return text != "false";
    }
    vfBase::WriteResult doSaveDocument(const VfString& path, const vfBase::Options&) override
    {
        std::ofstream(path.str()) << text << '\n';
        return vfBase::WriteResult::Written;
    }
    bool deleteContents() override
    {
        if (text == "thorn")
            throw std::runtime_error("it does not let go");
        return true;
    }
    std::string text;
};

struct SheetView : vfApplication::View
{
    bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
    ~SheetView() override { ++gone; }
    static int gone;
};
int SheetView::gone = 0;

Sheet& sheet()
{
    return dynamic_cast<Sheet&>(*Application::instance(false)->getActiveDocument());
}

struct Change : vfApplication::CommandPrivate
{
    void invoke(const vfBase::VfVariant&) override
    {
        sheet().text = "changed";
        sheet().modify(true);
    }
};

/// A change that can be undone.
struct Edit : vfApplication::CommandPrivate
{
    bool canUndo() const override { return true; }
    bool Do(const vfBase::VfVariant&) override
    {
        sheet().text += '+';
        sheet().modify(true);
        return true;
    }
    bool undo(const vfBase::VfVariant&) override
    {
        sheet().text.pop_back();
        sheet().modify(true);
        return true;
    }
};

struct Undo : vfApplication::CommandPrivate
{
    void invoke(const vfBase::VfVariant&) override { sheet().getCommandProcessor()->undo(); }
};

/// Notes whether the document counts as modified.
struct Look : vfApplication::CommandPrivate
{
    void invoke(const vfBase::VfVariant&) override { seen += sheet().isModified() ? 'M' : '-'; }
    static std::string seen;
};
std::string Look::seen;

struct Save : vfApplication::CommandPrivate
{
    void invoke(const vfBase::VfVariant&) override { sheet().save(); }
};

struct New : vfApplication::CommandPrivate
{
    New() { getProperties()["standalone"] = vfBase::VfVariant(true); }
    void invoke(const vfBase::VfVariant&) override { Application::instance(false)->newDocument(); }
};

template <class Class>
vfBase::ClassInfo record(const char* name, const char* id, const vfBase::ClassInfo& parent)
{
    return {
        "test", name, id, &parent, nullptr, sizeof(Class), []() -> vfBase::VfObject* { return new Class; }};
}

const vfBase::ClassInfo sheetRecord =
    record<Sheet>("Sheet", "test::Sheet", vfApplication::Document::s_classInfo);
const vfBase::ClassInfo viewRecord =
    record<SheetView>("SheetView", "test::SheetView", vfApplication::View::s_classInfo);
const vfBase::ClassInfo change =
    record<Change>("Change", "test::Change", vfApplication::CommandPrivate::s_classInfo);
const vfBase::ClassInfo edit = record<Edit>("Edit", "test::Edit", vfApplication::CommandPrivate::s_classInfo);
const vfBase::ClassInfo undo = record<Undo>("Undo", "test::Undo", vfApplication::CommandPrivate::s_classInfo);
const vfBase::ClassInfo look = record<Look>("Look", "test::Look", vfApplication::CommandPrivate::s_classInfo);
const vfBase::ClassInfo save = record<Save>("Save", "test::Save", vfApplication::CommandPrivate::s_classInfo);
const vfBase::ClassInfo makeNew = record<New>("New", "test::New", vfApplication::CommandPrivate::s_classInfo);

struct Setup : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        new vfApplication::DocTemplate(&Application::instance(false)->getDocManager(), "Sheets", "txt", "",
                                       "txt", "", "", &sheetRecord, &viewRecord, 1, 0, vfBase::Options());
    }
};

/// A program that says nothing of managers. It runs in a directory of its own.
struct Program
{
    explicit Program(const std::vector<std::string>& arguments = {}) : line(withName(arguments))
    {
        vfBase::ApplicationInfo::instance().setApplicationName("program");
        vfApplication::HeadlessApplicationProducer::install();
        application = std::make_unique<Application>(line.argc(), line.argv(), Setup());
    }

    static std::vector<std::string> withName(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "program");
        return arguments;
    }

    /// Runs to the end of the application. What it says on standard error is in said.
    int run()
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int result = application->run();
        opened = static_cast<int>(application->getNumDocuments());
        application.reset();
        // What the libraries notify of stands there as well.
        std::istringstream lines(testing::internal::GetCapturedStderr());
        for (std::string text; std::getline(lines, text);)
            said += text.compare(0, 9, "program: ") == 0 ? text + '\n' : "";
        testing::internal::GetCapturedStdout();
        return result;
    }

    HeadlessDocManager& manager() const
    {
        return dynamic_cast<HeadlessDocManager&>(application->getDocManager());
    }

    vfTest::CommandLine line;
    std::unique_ptr<Application> application;
    int opened = 0;
    std::string said;
};

} // namespace

TEST(HeadlessDocManager, IsThereWithoutAWordOfTheProgram)
{
    const Program program;
    EXPECT_EQ(2, program.manager().askForUserConfirmation());
}

TEST(HeadlessDocManager, WhatNobodySavedIsNotWrittenAtTheEnd)
{
    const vfTest::TemporaryDirectory directory;
    const std::string file = directory.write("a.txt", "first\n");
    Program looking({file, "--invoke", "test::Change"});
    EXPECT_EQ(0, looking.run()) << looking.said;
    EXPECT_EQ("first\n", vfTest::readFile(file));
    Program saving({file, "--invoke", "test::Change", "--invoke", "test::Save"});
    EXPECT_EQ(0, saving.run()) << saving.said;
    EXPECT_EQ("changed\n", vfTest::readFile(file));
}

TEST(HeadlessDocManager, WhatIsUndoneBackToTheFileIsNotModified)
{
    const vfTest::TemporaryDirectory directory;
    std::vector<std::string> arguments{directory.write("a.txt", "first\n")};
    for (const char* command :
         {"Look", "Edit", "Look", "Undo", "Look", "Edit", "Save", "Look", "Undo", "Look"}) {
        arguments.emplace_back("--invoke");
        arguments.push_back(std::string("test::") + command);
    }
    Program program(arguments);
    EXPECT_EQ(0, program.run()) << program.said;
    EXPECT_EQ("-M--M", Look::seen);
}

TEST(HeadlessDocManager, EachFileThatCannotBeReadIsOneLineWithItsReasonAndTheOthersOpen)
{
    const std::vector<std::pair<std::string, std::string>> faults = {
        {"reason", "line 1: a word is missing"}, {"read error", "line 2: a number is missing"},
        {"exception", "the parser gave up"},     {"memory", "not enough memory"},
        {"number", "an unknown error"},          {"false", "could not be opened"}};
    const vfTest::TemporaryDirectory directory;
    std::vector<std::string> files;
    std::string lines;
    for (const auto& [text, reason] : faults) {
        files.push_back(directory.write(text + ".txt", text + "\n"));
        lines += "program: " + files.back() + ": " + reason + "\n";
    }
    files.push_back(directory.file("missing.txt"));
    lines += "program: " + files.back() + ": No such file or directory\n";
    files.push_back(directory.write("a.xyz", "first\n"));
    lines += "program: " + files.back() + ": not a kind of file that can be opened\n";
    files.push_back(directory.write("good.txt", "first\n"));
    Program program(files);
    EXPECT_EQ(4, program.run());
    EXPECT_EQ(1, program.opened);
    EXPECT_EQ(lines, program.said);
}

TEST(HeadlessDocManager, TheReasonOfOneFileIsNotThatOfTheNext)
{
    const vfTest::TemporaryDirectory directory;
    const std::string first = directory.write("1.txt", "reason\n");
    const std::string second = directory.write("2.txt", "false\n");
    const std::string third = directory.write("3.txt", "opened all the same\n");
    Program program({first, second, third, second});
    EXPECT_EQ(4, program.run());
    const std::string line = "program: " + second + ": could not be opened\n";
    EXPECT_EQ("program: " + first + ": line 1: a word is missing\n" + line + line, program.said);
}

TEST(HeadlessDocManager, OneFileUnderTwoPathsIsOneDocument)
{
    const vfTest::TemporaryDirectory directory;
    const std::string file = directory.write("a.txt", "first\n");
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    const Program program;
    testing::internal::CaptureStdout();
    vfApplication::Document* document = program.application->openDocument("a.txt", vfBase::Options());
    ASSERT_NE(nullptr, document);
    EXPECT_EQ(file, document->getFilename().str());
    EXPECT_EQ(document, program.application->openDocument("./a.txt", vfBase::Options()));
    EXPECT_EQ(document, program.application->openDocument("b/../a.txt", vfBase::Options()));
    EXPECT_EQ(1u, program.application->getNumDocuments());
    EXPECT_EQ(1, program.manager().getFileHistory()->getCount());
    EXPECT_EQ(file, program.manager().getFileHistory()->getHistoryFile(0).str());
    testing::internal::GetCapturedStdout();
}

TEST(HeadlessDocManager, AFailureNamesTheFileAsItWasTyped)
{
    const vfTest::TemporaryDirectory directory;
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    Program program({"./none.txt"});
    EXPECT_EQ(4, program.run());
    EXPECT_EQ("program: ./none.txt: No such file or directory\n", program.said);
}

TEST(HeadlessDocManager, SavingWhatHasNoFileIsToldAndStatus4)
{
    Program program({"--invoke", "test::New", "--invoke", "test::Change", "--invoke", "test::Save"});
    EXPECT_EQ(4, program.run());
    EXPECT_THAT(program.said, HasSubstr("program: unnamed1: not saved: it has no file yet"));
}

TEST(HeadlessDocManager, AFileThatCannotTakeThePlaceOfAnotherLeavesThatName)
{
    const vfTest::TemporaryDirectory directory;
    const std::string file = directory.write("a.txt", "first\n");
    const std::string bad = directory.write("b.txt", "exception\n");
    const Program program;
    testing::internal::CaptureStdout();
    vfApplication::Document* document = program.application->openDocument(file.c_str(), vfBase::Options());
    testing::internal::CaptureStderr();
    EXPECT_FALSE(program.manager().updateDocument(document, bad, vfBase::Options()));
    EXPECT_EQ("program: " + bad + ": the parser gave up\n", testing::internal::GetCapturedStderr());
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(file, document->getFilename().str());
    EXPECT_EQ(1u, program.manager().getFailureCount());
}

TEST(HeadlessDocManager, ADocumentThatThrowsWhenItClosesKeepsTheOthersFromNothing)
{
    const vfTest::TemporaryDirectory directory;
    Program program({directory.write("a.txt", "first\n"), directory.write("b.txt", "thorn\n"),
                     directory.write("c.txt", "last\n")});
    EXPECT_EQ(0, program.run());
    EXPECT_EQ("program: b.txt: could not be closed: it does not let go\n", program.said);
    EXPECT_EQ(3, SheetView::gone);
}
