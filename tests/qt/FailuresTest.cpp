// SPDX-License-Identifier: MIT
// What documents and commands throw, and what they say of their failures, in the window.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ProblemsDialog.h>

#include <gmock/gmock.h>

#include <QPlainTextEdit>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

using testing::HasSubstr;
using vfTest::Program;
using vfTest::TemporaryDirectory;

namespace {

/// @return the lines of the window that shows problems; empty while it is hidden
std::string problems(const Program& program)
{
    const auto* dialog = program.window().findChild<vfApplication::ProblemsDialog*>();
    return dialog && dialog->isVisible() ? dialog->findChild<QPlainTextEdit*>()->toPlainText().toStdString()
                                         : std::string();
}

} // namespace

TEST(Failures, AFileIsNotOpenedForTheReasonThatItsDocumentGives)
{
    const TemporaryDirectory directory;
    const std::string reason = directory.write("reason.sheet", "reason\n");
    const std::string number = directory.write("number.sheet", "number\n");
    const std::string other = directory.write("other.xyz", "other\n");
    Program program({reason, number, other, directory.write("one.sheet", "one\n")});
    EXPECT_EQ(0, program.run([&] {
        program.ui([&] {
            EXPECT_EQ(1u, program.application().getNumDocuments());
            EXPECT_EQ(reason + ": line 1: a word is missing\n" + number + ": An unknown error occurred.\n" +
                          other + ": This is not a kind of file that can be opened.",
                      problems(program));
        });
    }));
}

TEST(Failures, WhatADocumentThrowsIsTheReasonAlone)
{
    const TemporaryDirectory directory;
    const std::string thrown = directory.write("thrown.sheet", "throw\n");
    Program program({thrown});
    program.run([&] {
        program.ui([&] {
            EXPECT_THAT(problems(program), testing::StartsWith(thrown + ": "));
            EXPECT_THAT(problems(program), testing::Not(HasSubstr("Exception in")));
            EXPECT_THAT(problems(program), testing::Not(HasSubstr("::")));
        });
    });
}

TEST(Failures, OneFileUnderTwoPathsIsOneDocument)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    Program program({"one.sheet", "./one.sheet"});
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(1u, program.application().getNumDocuments());
            EXPECT_EQ(path, program.sheet()->getFilename().str());
            EXPECT_EQ(1, program.manager().getFileHistory()->getCount());
            EXPECT_EQ(path, program.manager().getFileHistory()->getHistoryFile(0).str());
        });
    });
}

TEST(Failures, ADocumentThatThrowsWhenItIsClosedIsClosedAndTold)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n"), directory.write("thorn.sheet", "thorn\n")});
    program.run([&] {
        program.ui([&] {
            program.invoke("vfApplicationQt::ActionClose");
            EXPECT_EQ(1u, program.application().getNumDocuments());
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
            EXPECT_EQ("thorn.sheet: it does not let go", problems(program));
        });
    });
}

TEST(Failures, ADocumentThatThrowsWhenItIsClosedDoesNotHoldTheWindowOpen)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n"), directory.write("thorn.sheet", "thorn\n")});
    EXPECT_EQ(0, program.run([&] { program.start([&] { program.window().close(); }); }));
    EXPECT_EQ(0u, program.application().getNumDocuments());
}

TEST(Failures, ADocumentThatThrowsWhenTheProgramEndsDoesNotEndTheProcess)
{
    const TemporaryDirectory directory;
    {
        Program program({directory.write("thorn.sheet", "thorn\n"), directory.write("one.sheet", "one\n")});
        EXPECT_EQ(0, program.run([] {}));
        EXPECT_EQ(2u, program.application().getNumDocuments());
    }
    EXPECT_EQ(nullptr, vfApplication::QtApplication::instance());
}

TEST(Failures, WhatCannotBeSavedIsToldAndStaysChanged)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.ui([&] {
            program.invoke("sheet::AddLine", "full");
            program.invoke("vfApplicationQt::ActionSave");
            EXPECT_EQ(path + ": the disk is full", problems(program));
            program.invoke("sheet::AddLine", "burns");
            program.invoke("vfApplicationQt::ActionSave");
            EXPECT_EQ(path + ": the disk is full\n" + path + ": the disk burns", problems(program));
            EXPECT_TRUE(program.sheet()->isModified());
        });
    });
    EXPECT_EQ("one\n", vfTest::readFile(path));
}

TEST(Failures, ADocumentThatCannotBeSavedWhenItIsClosedStaysOpen)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n")});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "burns"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Save"));
        EXPECT_TRUE(program.waitFor([&] { return problems(program) == "one.sheet: the disk burns"; }));
        program.ui([&] {
            ASSERT_EQ(1u, program.application().getNumDocuments());
            program.invoke("sheet::AddLine", "full");
        });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Save"));
        EXPECT_TRUE(program.waitFor([&] {
            return problems(program) ==
                   "one.sheet: the disk burns\none.sheet: The document could not be saved.";
        }));
        EXPECT_EQ(1u, program.ui([&] { return program.application().getNumDocuments(); }));
    });
}

TEST(Failures, AFileThatCannotBeReadAgainIsToldWithItsReason)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.ui([&] {
            // Before the file watcher offers it.
            std::ofstream(path) << "reason\n";
        });
        program.start([&] { program.invoke("vfApplicationQt::ActionRevert"); });
        EXPECT_TRUE(program.answer("revertQuestion", "Revert"));
        EXPECT_TRUE(
            program.waitFor([&] { return problems(program) == path + ": line 1: a word is missing"; }));
        EXPECT_EQ("one\nmore\n", program.ui([&] { return program.sheet()->text(); }));
    });
}

TEST(Failures, AFileThatIsToReplaceADocumentsContentsAndCannotBeReadIsToldOnceAndChangesNothing)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    const std::string other = directory.write("two.sheet", "two\n");
    const std::string spoilt = directory.write("spoilt.sheet", "reason\n");
    const std::string thrown = directory.write("thrown.sheet", "throw\n");
    Program program({path});
    program.run([&] {
        const auto update = [&](const std::string& file) {
            return program.ui([&] {
                vfBase::Options silent;
                silent.setPluginStringData("SILENT", "TRUE");
                return program.manager().updateDocument(program.sheet(), file, silent);
            });
        };
        EXPECT_FALSE(
            program.ui([&] { return program.manager().updateDocument(nullptr, other, vfBase::Options()); }));
        EXPECT_FALSE(update(spoilt));
        EXPECT_EQ(spoilt + ": line 1: a word is missing", program.ui([&] { return problems(program); }));
        EXPECT_FALSE(update(thrown));
        EXPECT_FALSE(update(directory.file("none.sheet")));
        const std::string told = program.ui([&] { return problems(program); });
        EXPECT_EQ(2, std::count(told.begin(), told.end(), '\n')) << told;
        EXPECT_THAT(told, HasSubstr(thrown + ": "));
        EXPECT_THAT(told, HasSubstr("none.sheet: No such file or directory"));
        program.ui([&] {
            EXPECT_EQ("one\n", program.sheet()->text());
            EXPECT_EQ(path, program.sheet()->getFilename().str());
        });
        EXPECT_TRUE(update(other));
        program.ui([&] {
            EXPECT_EQ("two\n", program.sheet()->text());
            EXPECT_EQ(other, program.sheet()->getFilename().str());
            EXPECT_EQ(1, program.manager().getNumDocuments());
        });
    });
}

TEST(Failures, ACommandThatCannotBeMadeIsDisabledAndTheMenusStand)
{
    vfTest::Sheet::isUnmade = true;
    Program program;
    program.run([&] {
        const bool isToTheEnd = program.ui([&] {
            QAction* action = program.window().actionTable().action("sheet::Unmade");
            EXPECT_FALSE(action->isEnabled());
            EXPECT_FALSE(program.invoke("sheet::Unmade"));
            vfTest::Sheet::isUnmade = false;
            vfApplication::QtApplication::instance()->updateActions();
            EXPECT_TRUE(action->isEnabled());
            return true;
        });
        EXPECT_TRUE(isToTheEnd); // the window catches what is thrown here
    });
}

TEST(Failures, AListenerThatThrowsBetweenTwoEventsIsToldAndEndsNothing)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program;
    EXPECT_EQ(0, program.run([&] {
        program.ui([&] {
            vfApplication::QtApplication::instance()->addListener(
                program.window(), [] { throw std::runtime_error("the listener burns"); });
        });
        program.ui([&] { program.open(path); });
        EXPECT_TRUE(program.waitFor([&] { return problems(program) == "the listener burns"; }));
    }));
}

TEST(Failures, AWindowThatCannotCloseItsDocumentsStays)
{
    struct Manager : vfApplication::QtDocManager
    {
        bool closeAllWithQuestions() override { throw std::runtime_error("the door is stuck"); }
    };
    struct Kinds : vfApplication::ApplicationSetup
    {
        void onRegisterDocumentType() const override
        {
            vfApplication::Application::instance(false)->setDocManager(new Manager);
        }
    };
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vfApplication::QtApplicationProducer::install();
    Program program({}, Kinds());
    program.run([&] {
        program.ui([&] { program.window().close(); });
        EXPECT_TRUE(program.waitFor([&] { return problems(program) == "the door is stuck"; }));
        EXPECT_TRUE(program.ui([&] { return program.window().isVisible(); }));
    });
}

TEST(Failures, AProgramThatSaysNothingOfManagersIsAskedInTheWindow)
{
    struct Kinds : vfApplication::ApplicationSetup
    {
        void onRegisterDocumentType() const override
        {
            new vfApplication::DocTemplate(&vfApplication::Application::instance(false)->getDocManager(),
                                           "Sheets", "sheet", "", "sheet", "", "SheetView",
                                           &vfTest::Sheet::s_classInfo, &vfTest::SheetView::s_classInfo,
                                           vfApplication::DocTemplate::Visible, 0, vfBase::Options());
        }
    };
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vfApplication::QtApplicationProducer::install();
    const TemporaryDirectory directory;
    Program program({directory.write("bad.sheet", "reason\n")}, Kinds());
    program.run([&] {
        EXPECT_THAT(program.ui([&] { return problems(program); }), HasSubstr("line 1: a word is missing"));
    });
}
