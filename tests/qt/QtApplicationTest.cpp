// SPDX-License-Identifier: MIT
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/Settings.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtTitleBar.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ProblemsDialog.h>

#include <gmock/gmock.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>

using testing::HasSubstr;
using vfApplication::QtApplication;
using vfTest::Program;
using vfTest::TemporaryDirectory;

TEST(QtApplication, RunsUntilExitIsCalledAndReturnsItsCode)
{
    Program program;
    EXPECT_EQ(7, program.run([&] { program.ui([&] { program.application().exit(7); }); }));
}

TEST(QtApplication, ExitBeforeTheLoopKeepsItFromRunning)
{
    Program program;
    program.onInitialized = [&] { program.application().exit(3); };
    bool hasRun = false;
    EXPECT_EQ(3, program.run([&] { hasRun = true; }));
    EXPECT_FALSE(hasRun);
}

TEST(QtApplication, ExitEndsTheLoopWhileADialogWaits)
{
    Program program;
    EXPECT_EQ(5, program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::CommandAbout"); });
        EXPECT_TRUE(program.waitForDialog("about"));
        program.ui([&] { program.application().exit(5); });
    }));
}

TEST(QtApplication, ASecondApplicationHasAWindowAndItsOwnDocuments)
{
    const TemporaryDirectory directory;
    const std::string one = directory.write("one.sheet", "one\n");
    const std::string two = directory.write("two.sheet", "two\n");
    const void* shell = nullptr;
    {
        Program first({one});
        EXPECT_EQ(7, first.run([&] {
            first.ui([&] {
                shell = QtApplication::instance();
                EXPECT_EQ("one\n", first.sheet()->text());
                first.application().exit(7);
            });
        }));
    }
    EXPECT_EQ(nullptr, QtApplication::instance());
    EXPECT_EQ(nullptr, qApp);
    Program second({two});
    EXPECT_EQ(0, second.run([&] {
        second.ui([&] {
            EXPECT_EQ(shell, QtApplication::instance());
            EXPECT_TRUE(second.window().isVisible());
            EXPECT_EQ(1u, second.application().getNumDocuments());
            EXPECT_EQ("two\n", second.sheet()->text());
            EXPECT_TRUE(second.invoke("sheet::AddLine", "more"));
            EXPECT_EQ("two\nmore\n", second.sheet()->text());
        });
    }));
}

TEST(QtApplication, ASecondApplicationRunsAfterOneThatOnlyShowedItsHelp)
{
    testing::internal::CaptureStdout();
    {
        Program first({"--help"});
        EXPECT_EQ(1, first.run([] {}));
    }
    testing::internal::GetCapturedStdout();
    bool hasRun = false;
    Program second;
    EXPECT_EQ(0, second.run([&] { hasRun = true; }));
    EXPECT_TRUE(hasRun);
}

TEST(QtApplication, TakesItsOwnOptionsOffTheCommandLine)
{
    Program program({"-style", "fusion", "-platform", "offscreen"});
    EXPECT_EQ(0, program.run([&] {
        EXPECT_EQ(1, program.ui([&] { return program.application().getArgumentCount(); }));
    }));
}

TEST(QtApplication, AnOptionThatNobodyKnowsIsStatus3)
{
    Program program({"--no-such-option"});
    testing::internal::CaptureStderr();
    EXPECT_EQ(3, program.run([] {}));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("--no-such-option"));
}

TEST(QtApplication, HelpNeedsNoDisplay)
{
    Program program({"--help", "-platform", "no_such_platform"});
    testing::internal::CaptureStdout();
    EXPECT_EQ(1, program.run([] {}));
    EXPECT_EQ(nullptr, QtApplication::instance());
    testing::internal::GetCapturedStdout();
}

TEST(QtApplicationDeathTest, APlatformThatIsNotThereIsOneLineAndStatus1)
{
    EXPECT_EXIT(
        {
            Program program({"-platform", "no_such_platform"});
            program.run([] {});
        },
        testing::ExitedWithCode(1), "^program: [^\n]*\n$");
}

TEST(QtApplication, OpensTheFilesOfTheCommandLineBeforeTheWindowShows)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n"), directory.write("two.sheet", "two\n")});
    EXPECT_EQ(0, program.run([&] {
        program.ui([&] {
            EXPECT_EQ(2u, program.application().getNumDocuments());
            EXPECT_EQ("two.sheet", program.sheet()->getTitle());
            EXPECT_TRUE(program.window().isVisible());
            EXPECT_EQ(QStringLiteral("two.sheet[*] — program"), program.window().windowTitle());
        });
    }));
}

TEST(QtApplication, APromptMayBeReplacedWhileItAsks)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n")});
    const std::string answer = "an answer too long to be kept in place";
    QtApplication::setPrompt("", [answer](QWidget&, const auto&, vfBase::VfVariant& argument) {
        QtApplication::setPrompt("", [](QWidget&, const auto&, vfBase::VfVariant&) { return false; });
        argument = vfBase::VfVariant(answer.c_str());
        return true;
    });
    program.run([&] {
        program.ui([&] {
            EXPECT_TRUE(program.invoke("sheet::AskFirst"));
            EXPECT_FALSE(program.invoke("sheet::AskFirst"));
            EXPECT_EQ("one\n" + answer + "\n", program.sheet()->text());
        });
    });
}

TEST(QtApplication, DisplayErrorSaysWhatIsMissing)
{
    char name[] = "program";
    char platform[] = "-platform";
    char offscreen[] = "offscreen";
    char* plain[] = {name, nullptr};
    char* asking[] = {name, platform, offscreen, nullptr};
    unsetenv("QT_QPA_PLATFORM");
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    EXPECT_EQ("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set",
              QtApplication::displayError(1, plain));
    EXPECT_EQ("", QtApplication::displayError(3, asking));
    setenv("DISPLAY", ":9876", 1);
    EXPECT_EQ("the display :9876 does not answer", QtApplication::displayError(1, plain));
    unsetenv("DISPLAY");
    setenv("WAYLAND_DISPLAY", "wayland-none", 1);
    EXPECT_EQ("the display wayland-none does not answer", QtApplication::displayError(1, plain));
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    EXPECT_EQ("", QtApplication::displayError(1, plain));
}

TEST(QtApplication, ShowsProblemsInAWindowThatWaitsForNothing)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            QtApplication::instance()->showProblem("one.sheet", "gone");
            QtApplication::instance()->showProblem("two\n.sheet", "gone too");
        });
        program.ui([&] {
            const auto* problems = program.window().findChild<vfApplication::ProblemsDialog*>();
            ASSERT_NE(nullptr, problems);
            EXPECT_TRUE(problems->isVisible());
            EXPECT_FALSE(problems->isModal());
            EXPECT_EQ(QStringLiteral("one.sheet: gone\ntwo .sheet: gone too"),
                      problems->findChild<QPlainTextEdit*>()->toPlainText());
        });
    });
}

TEST(QtApplication, ProblemsOfTheStartAreShownInFrontOfTheWindow)
{
    Program program;
    const auto shown = [&] {
        const auto* problems = program.window().findChild<vfApplication::ProblemsDialog*>();
        return problems && problems->isVisible();
    };
    program.onInitialized = [&] {
        QtApplication::instance()->showProblem("one.sheet", "gone");
        EXPECT_FALSE(shown()) << "the window would come in front of it";
    };
    program.run([&] {
        EXPECT_TRUE(program.ui(shown));
        program.ui([&] {
            auto* problems = program.window().findChild<vfApplication::ProblemsDialog*>();
            problems->reject();
            QtApplication::instance()->showProblem("two.sheet", "gone too");
            EXPECT_EQ(QStringLiteral("two.sheet: gone too"),
                      problems->findChild<QPlainTextEdit*>()->toPlainText());
        });
    });
}

TEST(QtApplication, RunsTheCommandsOfTheCommandLineAndStays)
{
    const TemporaryDirectory directory;
    const std::string script =
        directory.write("script", "# two lines\nsheet::AddLine=two\nsheet::AddLine=three\n");
    Program program(
        {directory.write("one.sheet", "one\n"), "--invoke", "sheet::AddLine=four", "--script", script});
    EXPECT_EQ(0, program.run([&] {
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->lines.size() == 4; }));
        EXPECT_EQ("one\ntwo\nthree\nfour\n", program.ui([&] { return program.sheet()->text(); }));
        EXPECT_TRUE(program.ui([&] { return program.window().isVisible(); }));
    }));
}

TEST(QtApplication, CommandsOfAnApplicationThatNeverRanAreNotThoseOfTheNext)
{
    QtApplication* shell = nullptr;
    {
        Program first;
        EXPECT_EQ(0, first.run([&] { shell = first.ui([] { return QtApplication::instance(); }); }));
    }
    vfTest::CommandLine line({"program", "--invoke", "sheet::AddLine=x"});
    vfBase::ArgumentParser parser(&line.argc(), line.argv());
    QtApplication::readOptions(parser);
    shell->end(); // as an application does that printed its help

    const TemporaryDirectory directory;
    Program second({directory.write("one.sheet", "one\n")});
    EXPECT_EQ(0, second.run([&] {
        Program::pause(50);
        EXPECT_EQ("one\n", second.ui([&] { return second.sheet()->text(); }));
    }));
}

TEST(QtApplication, ACommandOfTheCommandLineThatFailsIsShownAndIsStatus4)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n"), "--invoke", "sheet::AddLane", "--invoke",
                     "sheet::AddLine=x"});
    EXPECT_EQ(4, program.run([&] {
        EXPECT_TRUE(program.waitFor([&] {
            const auto* problems = program.window().findChild<vfApplication::ProblemsDialog*>();
            return problems && problems->findChild<QPlainTextEdit*>()->toPlainText() ==
                                   QStringLiteral("sheet::AddLane: there is no such command; did you mean "
                                                  "sheet::AddLine?");
        }));
        EXPECT_EQ("one\n", program.ui([&] { return program.sheet()->text(); })) << "none is run then";
    }));
}

TEST(QtApplication, AScriptMayEndTheProgram)
{
    const TemporaryDirectory directory;
    Program program({directory.write("one.sheet", "one\n"), "--invoke", "vfApplicationQt::ActionExit",
                     "--invoke", "sheet::AddLine=x"});
    EXPECT_EQ(0, program.run([] { Program::pause(50); }));
    EXPECT_EQ(0u, program.application().getNumDocuments()) << "and nothing was run on none";
}

TEST(QtApplication, WhatAnEventThrowsIsToldAndEndsNothing)
{
    Program program;
    EXPECT_EQ(0, program.run([&] {
        program.ui([&] { QTimer::singleShot(0, qApp, [] { throw std::runtime_error("out of the blue"); }); });
        EXPECT_TRUE(program.waitFor([&] {
            const auto* problems = program.window().findChild<vfApplication::ProblemsDialog*>();
            return problems &&
                   problems->findChild<QPlainTextEdit*>()->toPlainText() == QStringLiteral("out of the blue");
        }));
    }));
}

TEST(QtApplication, ListenersHearOfCommandsAndOfTheActiveDocument)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program;
    int calls = 0;
    program.run([&] {
        program.ui([&] { QtApplication::instance()->addListener(program.window(), [&calls] { ++calls; }); });
        program.ui([&] { program.open(path); });
        EXPECT_TRUE(program.waitFor([&] { return calls > 0; }));
        program.ui([&] {
            calls = 0;
            program.invoke("sheet::Switch");
            EXPECT_EQ(1, calls);
        });
    });
}

TEST(QtTitleBar, MarksTheActiveDocumentWhenItIsModified)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("a[*].sheet", "one\n");
    Program program;
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(QStringLiteral("program"), program.window().windowTitle());
            program.open(path);
        });
        EXPECT_TRUE(program.waitFor(
            [&] { return program.window().windowTitle() == QStringLiteral("a[*][*].sheet[*] — program"); }));
        program.ui([&] {
            EXPECT_FALSE(program.window().isWindowModified());
            program.sheet()->changed();
            EXPECT_TRUE(program.window().isWindowModified());
            EXPECT_EQ(QString::fromStdString(path), program.window().windowFilePath());
            EXPECT_TRUE(program.sheet()->save().success());
            EXPECT_FALSE(program.window().isWindowModified());
        });
    });
}

TEST(QtTitleBar, ShowsTheBannerUnlessItIsDeclaredAway)
{
    vfBase::ApplicationInfo::instance().setApplicationVendorBanner("Boats & Sons");
    Program program;
    program.run([&] {
        program.ui([&] {
            auto* bar = program.window().findChild<QWidget*>(QStringLiteral("titleBar"));
            ASSERT_NE(nullptr, bar);
            EXPECT_TRUE(bar->isVisible());
            EXPECT_EQ(QStringLiteral("Boats & Sons"),
                      bar->findChild<QLabel*>(QStringLiteral("banner"))->text());
            vfBase::ApplicationInfo::instance().setApplicationVendorBanner("Boats & Daughters");
            QtApplication::instance()->getTitleBar().titleBarOperationB();
            EXPECT_EQ(QStringLiteral("Boats & Daughters"),
                      bar->findChild<QLabel*>(QStringLiteral("banner"))->text());
        });
    });
}

TEST(QtTitleBar, IsNotThereWhenItIsDeclaredAway)
{
    auto ui = std::make_unique<vfTest::SheetUi>();
    ui->hasTitleLogo = false;
    Program program({}, std::move(ui));
    program.run([&] {
        program.ui(
            [&] { EXPECT_EQ(nullptr, program.window().findChild<QWidget*>(QStringLiteral("titleBar"))); });
    });
}
