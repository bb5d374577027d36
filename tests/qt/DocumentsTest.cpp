// SPDX-License-Identifier: MIT
// Documents in the window: how they are opened, shown, named, saved and closed, and what is asked meanwhile.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/VfString.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/DocumentArea.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ProblemsDialog.h>
#include <velaforge/qt/internal/ViewFrame.h>

#include <gmock/gmock.h>

#include <QComboBox>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <cstdio>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;
using vfApplication::QtApplication;
using vfApplication::UiSetup;
using vfTest::Program;
using vfTest::readFile;
using vfTest::Sheet;
using vfTest::SheetUi;
using vfTest::TemporaryDirectory;

namespace {

/// A directory with the sheets "one.sheet", "two.sheet" and "three.sheet", each with its name in it.
struct Sheets
{
    Sheets()
    {
        for (const char* name : {"one", "two", "three"})
            paths.push_back(directory.write(std::string(name) + ".sheet", std::string(name) + "\n"));
    }

    TemporaryDirectory directory;
    std::vector<std::string> paths;
};

std::unique_ptr<SheetUi> arranged(UiSetup::DocumentInterfaceMode mode)
{
    auto ui = std::make_unique<SheetUi>();
    ui->mode = mode;
    return ui;
}

std::vector<std::string> tabs(const Program& program)
{
    const auto* widget = program.window().findChild<QTabWidget*>(QStringLiteral("documents"));
    std::vector<std::string> names;
    for (int i = 0; i < widget->count(); ++i)
        names.push_back(widget->tabText(i).toStdString());
    return names;
}

std::vector<std::string> openTitles(const Program& program)
{
    std::vector<std::string> titles;
    for (const vfApplication::Document* document : program.manager().getDocumentList())
        titles.push_back(document->getTitle().str());
    return titles;
}

/// Types a name into a file dialog and accepts it.
void chooseFile(const QString& path)
{
    auto* dialog = qobject_cast<QFileDialog*>(Program::dialog());
    ASSERT_NE(nullptr, dialog);
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
}

bool isFileDialog()
{
    return qobject_cast<QFileDialog*>(Program::dialog());
}

QString problems(const Program& program)
{
    const auto* dialog = program.window().findChild<vfApplication::ProblemsDialog*>();
    return dialog && dialog->isVisible() ? dialog->findChild<QPlainTextEdit*>()->toPlainText() : QString();
}

} // namespace

TEST(OpenDialog, OpensAllThatIsChosenAndRemembersTheDirectory)
{
    const Sheets sheets;
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOpen"); });
        ASSERT_TRUE(program.waitFor(isFileDialog));
        program.ui([&] {
            auto* dialog = qobject_cast<QFileDialog*>(Program::dialog());
            EXPECT_EQ(QFileDialog::ExistingFiles, dialog->fileMode());
            EXPECT_EQ(
                QStringList({QStringLiteral("Sheets (*.sheet *.txt)"), QStringLiteral("All files (*)")}),
                dialog->nameFilters());
            chooseFile(
                QStringLiteral("\"%1\" \"%2\"")
                    .arg(QString::fromStdString(sheets.paths[0]), QString::fromStdString(sheets.paths[1])));
        });
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 2; }));
        program.ui([&] {
            EXPECT_THAT(openTitles(program), ElementsAre("one.sheet", "two.sheet"));
            EXPECT_EQ(sheets.directory.path(), program.manager().getLastDirectory().str());
        });
    });
}

TEST(OpenDialog, GivenUpOpensNothing)
{
    Program program;
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionOpen"); });
        ASSERT_TRUE(program.waitFor(isFileDialog));
        program.ui([] { Program::dialog()->reject(); });
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ(0, program.ui([&] { return program.manager().getNumDocuments(); }));
    });
}

TEST(OpenDialog, ForOneFileSaysWhichKindOpensIt)
{
    const Sheets sheets;
    Program program;
    program.run([&] {
        vfBase::VfString path;
        vfApplication::DocTemplate* kind = nullptr;
        program.start([&] {
            const auto kinds = program.manager().getTemplates();
            vfApplication::DocTemplate* all[] = {kinds[0]};
            kind = program.manager().selectDocumentPath(all, 1, path, false);
        });
        ASSERT_TRUE(program.waitFor(isFileDialog));
        program.ui([&] { chooseFile(QString::fromStdString(sheets.paths[2])); });
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ(program.manager().getTemplates()[0], kind);
            EXPECT_EQ(sheets.paths[2], path.str());
        });
    });
}

TEST(Opening, WhatCannotBeOpenedIsToldAndTheRestIsOpened)
{
    const Sheets sheets;
    const std::string bad = sheets.directory.write("bad.sheet", "bad\n");
    const std::string burning = sheets.directory.write("burning.sheet", "throw\n");
    Program program({bad, sheets.paths[0], burning, sheets.directory.file("none.sheet")});
    EXPECT_EQ(0, program.run([&] {
        program.ui([&] {
            EXPECT_THAT(openTitles(program), ElementsAre("one.sheet"));
            EXPECT_EQ(bad + ": The file could not be opened.\n" + burning + ": a fault in the file\n" +
                          sheets.directory.file("none.sheet") + ": No such file or directory",
                      problems(program).toStdString());
            EXPECT_EQ(nullptr, QApplication::overrideCursor());
        });
    }));
}

TEST(Opening, AnEmptyDocumentGetsANameAndAView)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            EXPECT_TRUE(program.invoke("vfApplicationQt::ActionNew"));
            EXPECT_EQ("unnamed1", program.sheet()->getTitle());
            EXPECT_THAT(tabs(program), ElementsAre("unnamed1"));
        });
    });
}

TEST(Opening, ASecondKindOfDocumentIsAskedForWhenAnEmptyOneIsMade)
{
    Program program;
    program.onInitialized = [&] {
        new vfApplication::DocTemplate(&program.manager(), "Sheets", "page", "", "page", "Page", "PageView",
                                       &Sheet::s_classInfo, &vfTest::SheetView::s_classInfo,
                                       vfApplication::DocTemplate::Visible, 0, vfBase::Options());
    };
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionNew"); });
        ASSERT_TRUE(program.waitFor([] { return Program::dialog(); }));
        program.ui([] {
            // Two of one name can still be told apart.
            auto* box = Program::dialog()->findChild<QComboBox*>();
            ASSERT_EQ(2, box->count());
            EXPECT_EQ(QStringLiteral("Sheets (2)"), box->itemText(1));
            box->setCurrentIndex(1);
            Program::dialog()->accept();
        });
        ASSERT_TRUE(program.waitFor([&] { return program.sheet() != nullptr; }));
        program.ui([&] { EXPECT_EQ("page", program.sheet()->getDocumentTemplate()->getDefaultExtension()); });
        program.start([&] { program.invoke("vfApplicationQt::ActionNew"); });
        ASSERT_TRUE(program.waitFor([] { return Program::dialog(); }));
        program.ui([] { Program::dialog()->reject(); });
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ(1, program.manager().getNumDocuments());
            EXPECT_EQ(QString(), problems(program)); // to give up is no failure
        });
    });
}

TEST(Closing, AsksAboutChangesAndSavesThem)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        ASSERT_TRUE(program.waitForDialog("saveQuestion"));
        program.ui([] {
            auto* box = qobject_cast<QMessageBox*>(Program::dialog());
            EXPECT_THAT(box->text().toStdString(), HasSubstr("one.sheet"));
            EXPECT_EQ(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, box->standardButtons());
            EXPECT_EQ(box->button(QMessageBox::Save), box->defaultButton());
        });
        EXPECT_TRUE(program.answer("saveQuestion", "Save"));
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 0; }));
    });
    EXPECT_EQ("one\nmore\n", readFile(sheets.paths[0]));
}

TEST(Closing, AsksAboutChangesAndDiscardsThem)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Discard"));
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 0; }));
    });
    EXPECT_EQ("one\n", readFile(sheets.paths[0]));
}

TEST(Closing, AsksAboutChangesAndStaysWhenThatIsCancelled)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ("one\nmore\n", program.sheet()->text());
            EXPECT_TRUE(program.sheet()->isModified());
        });
    });
    EXPECT_EQ("one\n", readFile(sheets.paths[0]));
}

TEST(Closing, TheWindowAsksOfEachDocumentAndStaysAtTheFirstThatDoes)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
    program.run([&] {
        program.ui([&] {
            program.application().setActiveDocument(
                program.application().findDocument(sheets.paths[0].c_str()));
            program.invoke("sheet::AddLine", "more");
        });
        program.start([&] { program.window().close(); });
        ASSERT_TRUE(program.waitForDialog("saveQuestion"));
        EXPECT_THAT(
            program.ui([] { return qobject_cast<QMessageBox*>(Program::dialog())->text().toStdString(); }),
            HasSubstr("one.sheet"));
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_TRUE(program.window().isVisible());
            EXPECT_EQ(3, program.manager().getNumDocuments());
        });
    });
}

TEST(Closing, NothingIsClosedBeforeTheUserWasAskedAboutAChangeInAnyDocument)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
    program.run([&] {
        program.ui([&] {
            static_cast<Sheet*>(program.application().findDocument(sheets.paths[0].c_str()))->changed();
            EXPECT_EQ("three.sheet", program.sheet()->getTitle());
        });
        program.start([&] { program.window().close(); });
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ(3, program.ui([&] { return program.manager().getNumDocuments(); }));
    });
}

namespace {

/// Changes the first and the last of three sheets, and closes the window.
void closeWithTwoChanges(Program& program, const Sheets& sheets)
{
    program.ui([&] {
        program.invoke("sheet::AddLine", "more");
        auto* one = program.application().findDocument(sheets.paths[0].c_str());
        program.application().setActiveDocument(one);
        program.invoke("sheet::AddLine", "more");
    });
    program.start([&] { program.window().close(); });
    EXPECT_TRUE(program.waitForDialog("unsavedDocuments"));
}

/// Unticks the entry of the dialog with that text.
void untick(const char* name)
{
    auto* list = Program::dialog()->findChild<QListWidget*>();
    const QList<QListWidgetItem*> found = list->findItems(QString::fromUtf8(name), Qt::MatchExactly);
    ASSERT_EQ(1, found.size());
    found.front()->setCheckState(Qt::Unchecked);
}

} // namespace

TEST(ClosingAll, ListsTheDocumentsWithChangesAndKeepsAllOpenWhenThatIsCancelled)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
    program.run([&] {
        closeWithTwoChanges(program, sheets);
        program.ui([] {
            const auto* list = Program::dialog()->findChild<QListWidget*>();
            ASSERT_EQ(2, list->count());
            EXPECT_EQ(QStringLiteral("one.sheet"), list->item(0)->text()) << "the active one";
            EXPECT_EQ(QStringLiteral("three.sheet"), list->item(1)->text());
        });
        EXPECT_TRUE(program.answer("unsavedDocuments", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ(3, program.manager().getNumDocuments());
            EXPECT_TRUE(program.sheet()->isModified());
        });
    });
    EXPECT_EQ("one\n", readFile(sheets.paths[0]));
}

TEST(ClosingAll, SavesAllOrDiscardsAll)
{
    for (const auto& [button, expected] :
         {std::pair<const char*, const char*>{"Save all", "one\nmore\n"}, {"Discard all", "one\n"}})
    {
        const Sheets sheets;
        const pid_t child = fork();
        if (child == 0) {
            Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
            const int code = program.run([&, pressed = button] {
                closeWithTwoChanges(program, sheets);
                EXPECT_TRUE(program.answer("unsavedDocuments", pressed));
                EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 0; }));
            });
            std::fflush(nullptr);
            _exit(code == 0 && !HasFailure() ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(0, status) << button;
        EXPECT_EQ(expected, readFile(sheets.paths[0])) << button;
    }
}

TEST(ClosingAll, SavesThoseThatAreTickedAndDiscardsTheOthers)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
    program.run([&] {
        closeWithTwoChanges(program, sheets);
        program.ui([] { untick("one.sheet"); });
        EXPECT_TRUE(program.answer("unsavedDocuments", "Save these, discard the others"));
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 0; }));
    });
    EXPECT_EQ("one\n", readFile(sheets.paths[0]));
    EXPECT_EQ("three\nmore\n", readFile(sheets.paths[2]));
}

TEST(ClosingAll, ADocumentThatCannotBeSavedKeepsAllOpen)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "full"); });
        closeWithTwoChanges(program, sheets);
        program.ui([&] {
            auto* last = static_cast<Sheet*>(program.application().findDocument(sheets.paths[2].c_str()));
            last->lines.back() = "full";
        });
        EXPECT_TRUE(program.answer("unsavedDocuments", "Save all"));
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ(3, program.ui([&] { return program.manager().getNumDocuments(); }));
    });
    EXPECT_EQ("one\nmore\n", readFile(sheets.paths[0]));
    EXPECT_EQ("three\n", readFile(sheets.paths[2]));
}

TEST(Questions, ShowNamesThatLookLikeRichTextAsTheyAre)
{
    const vfTest::TemporaryDirectory directory;
    Program program({directory.write("<b>x<i>.sheet", "one\n")});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        ASSERT_TRUE(program.waitForDialog("saveQuestion"));
        program.ui([] {
            EXPECT_THAT(qobject_cast<QMessageBox*>(Program::dialog())->text().toStdString(),
                        HasSubstr("<b>x<i>"));
            for (const QLabel* label : Program::dialog()->findChildren<QLabel*>())
                EXPECT_TRUE(label->textFormat() == Qt::PlainText || label->text().isEmpty())
                    << label->text().toStdString();
        });
        EXPECT_TRUE(program.answer("saveQuestion", "Discard"));
    });
}

TEST(Closing, TheWindowEndsTheProgramWithStatus0)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1]});
    EXPECT_EQ(0, program.run([&] { program.ui([&] { EXPECT_TRUE(program.window().close()); }); }));
    EXPECT_EQ(0u, program.application().getNumDocuments());
}

TEST(Closing, WhatIsNotSavedWhenTheProgramEndsIsAskedAboutAndCannotBeCancelled)
{
    const Sheets sheets;
    {
        Program program({sheets.paths[0]});
        program.asksAtTheEnd = true;
        program.run([&] { program.ui([&] { program.invoke("sheet::AddLine", "more"); }); });
        // The documents close when the application is destroyed, after the loop.
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [] {
            auto* box = qobject_cast<QMessageBox*>(Program::dialog());
            if (!box)
                return;
            EXPECT_EQ(QMessageBox::Save | QMessageBox::Discard, box->standardButtons());
            box->button(QMessageBox::Save)->click();
        });
        answer.start(5);
        vfApplication::Application::instance(false)->setDocManager(new vfApplication::DocManager);
    }
    EXPECT_EQ("one\nmore\n", readFile(sheets.paths[0]));
}

TEST(Closing, SomebodyElsesCloseAsksAboutTheDocumentWithTheChanges)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1]});
    program.run([&] {
        program.start([&] {
            auto* one = static_cast<Sheet*>(program.application().findDocument(sheets.paths[0].c_str()));
            one->changed();
            program.application().closeDocument(one); // while the other is the active one
        });
        ASSERT_TRUE(program.waitForDialog("saveQuestion"));
        EXPECT_THAT(
            program.ui([] { return qobject_cast<QMessageBox*>(Program::dialog())->text().toStdString(); }),
            HasSubstr("one.sheet"));
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
    });
}

TEST(Saving, AsAsksForThePathAndEntersItAmongTheRecentFiles)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionSaveAs"); });
        ASSERT_TRUE(program.waitFor(isFileDialog));
        program.ui([&] {
            auto* dialog = qobject_cast<QFileDialog*>(Program::dialog());
            EXPECT_EQ(QFileDialog::AcceptSave, dialog->acceptMode());
            EXPECT_EQ(sheets.directory.path(), dialog->directory().path().toStdString());
            EXPECT_EQ(QStringLiteral("sheet"), dialog->defaultSuffix());
            EXPECT_EQ(
                QStringList({QStringLiteral("SHEET file (*.sheet)"), QStringLiteral("TXT file (*.txt)")}),
                dialog->nameFilters());
            dialog->selectNameFilter(QStringLiteral("TXT file (*.txt)"));
            Q_EMIT dialog->filterSelected(QStringLiteral("TXT file (*.txt)"));
            chooseFile(QStringLiteral("copy"));
        });
        EXPECT_TRUE(program.waitForNoDialog());
        program.ui([&] {
            EXPECT_EQ(sheets.directory.file("copy.txt"), program.sheet()->getFilename().str());
            EXPECT_EQ(sheets.directory.file("copy.txt"),
                      program.manager().getFileHistory()->getHistoryFile(0).str());
            EXPECT_THAT(tabs(program), ElementsAre("copy.txt"));
        });
    });
    EXPECT_EQ("one\n", readFile(sheets.directory.file("copy.txt")));
}

TEST(Saving, AsGivenUpChangesNothing)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.start([&] { program.invoke("vfApplicationQt::ActionSaveAs"); });
        ASSERT_TRUE(program.waitFor(isFileDialog));
        program.ui([] { Program::dialog()->reject(); });
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ(sheets.paths[0], program.ui([&] { return program.sheet()->getFilename().str(); }));
    });
}

TEST(Saving, IsOfferedWhenThereIsSomethingToSave)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] {
            QAction* save = program.window().actionTable().action("vfApplicationQt::ActionSave");
            QtApplication::instance()->updateActions();
            EXPECT_FALSE(save->isEnabled());
            program.invoke("sheet::AddLine", "more");
            EXPECT_TRUE(save->isEnabled());
            save->trigger();
            EXPECT_FALSE(save->isEnabled());
        });
    });
    EXPECT_EQ("one\nmore\n", readFile(sheets.paths[0]));
}

TEST(Reverting, AsksFirst)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] { program.invoke("sheet::AddLine", "more"); });
        program.start([&] { program.invoke("vfApplicationQt::ActionRevert"); });
        EXPECT_TRUE(program.answer("revertQuestion", "Cancel"));
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ("one\nmore\n", program.ui([&] { return program.sheet()->text(); }));
        program.start([&] { program.invoke("vfApplicationQt::ActionRevert"); });
        EXPECT_TRUE(program.answer("revertQuestion", "Revert"));
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "one\n"; }));
    });
}

TEST(Views, SeveralOfOneDocumentAreNumberedMarkedAndClosedOneByOne)
{
    const Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] {
            EXPECT_TRUE(program.invoke("vfApplicationQt::ActionNewView"));
            EXPECT_TRUE(program.invoke("vfApplicationQt::ActionNewView"));
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet", "one.sheet:2", "one.sheet:3"));
            program.invoke("sheet::AddLine", "more");
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet*", "one.sheet:2*", "one.sheet:3*"));
            for (const auto* edit : program.window().findChildren<QPlainTextEdit*>()) {
                EXPECT_EQ(QStringLiteral("one\nmore\n"), edit->toPlainText());
            }
            program.invoke("vfApplicationQt::ActionClose"); // without a question: two are left
            program.invoke("vfApplicationQt::ActionClose");
            EXPECT_EQ(1u, program.sheet()->getViewList().size());
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet*"));
        });
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Cancel"));
    });
}

TEST(Views, TheOneAtTheFrontIsTheCurrentOneWhoeverPutItThere)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1]});
    program.run([&] {
        program.ui([&] {
            auto* widget = program.window().findChild<QTabWidget*>(QStringLiteral("documents"));
            EXPECT_EQ(1, widget->currentIndex());
            EXPECT_EQ("two.sheet", program.sheet()->getTitle());
            widget->setCurrentIndex(0);
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
            program.application().setActiveDocument(
                program.application().findDocument(sheets.paths[1].c_str()));
            EXPECT_EQ(1, widget->currentIndex());
            program.application().closeDocument(program.sheet());
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
        });
    });
}

TEST(Views, AFileThatCannotBeReadLeavesTheCurrentOneAlone)
{
    const Sheets sheets;
    const std::string bad = sheets.directory.write("bad.sheet", "bad\n");
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] {
            EXPECT_EQ(nullptr, program.open(bad));
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet"));
        });
    });
}

TEST(Views, TheTabsButtonClosesAndIsNotThereWhenItIsDeclaredAway)
{
    const Sheets sheets;
    auto ui = std::make_unique<SheetUi>();
    ui->hasViewButtons = false;
    Program program({sheets.paths[0]}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            auto* widget = program.window().findChild<QTabWidget*>(QStringLiteral("documents"));
            EXPECT_FALSE(widget->tabsClosable());
            Q_EMIT widget->tabCloseRequested(0);
            EXPECT_EQ(0, program.manager().getNumDocuments());
        });
    });
}

TEST(Views, ShowLogoAndSliderWhenTheyAreDeclared)
{
    const Sheets sheets;
    auto ui = std::make_unique<SheetUi>();
    ui->hasViewLogo = true;
    ui->hasSlider = true;
    Program program({sheets.paths[0], sheets.paths[1], sheets.paths[2]}, std::move(ui));
    program.run([&] {
        EXPECT_TRUE(program.waitFor([&] {
            const auto* slider = program.window().findChild<QSlider*>(QStringLiteral("documentSlider"));
            return slider && slider->maximum() == 2;
        }));
        program.ui([&] {
            EXPECT_NE(nullptr, program.window().findChild<QLabel*>(QStringLiteral("viewLogo")));
            auto* front = program.window().documentArea().active();
            auto* slider = front->findChild<QSlider*>(QStringLiteral("documentSlider"));
            EXPECT_EQ(2, slider->value());
            slider->setValue(0);
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
        });
    });
}

TEST(SubWindows, AreNamedActivatedAndClosed)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1]}, arranged(UiSetup::SubWindows));
    program.run([&] {
        program.ui([&] {
            const auto* area = program.window().findChild<QMdiArea*>(QStringLiteral("documents"));
            const QList<QMdiSubWindow*> windows = area->subWindowList();
            ASSERT_EQ(2, windows.size());
            EXPECT_EQ(QStringLiteral("one.sheet[*]"), windows[0]->windowTitle());
            EXPECT_EQ("two.sheet", program.sheet()->getTitle());
            program.sheet()->changed();
            EXPECT_TRUE(windows[1]->isWindowModified());
            program.sheet()->modify(false);
            program.window().documentArea().tile();
            program.window().documentArea().cascade();
            windows[1]->close();
            EXPECT_THAT(openTitles(program), ElementsAre("one.sheet"));
        });
        EXPECT_TRUE(
            program.waitFor([&] { return program.sheet() && program.sheet()->getTitle() == "one.sheet"; }));
        program.ui([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_EQ(0, program.ui([&] { return program.manager().getNumDocuments(); }));
    });
}

TEST(SubWindows, OfFilesOfTheCommandLineAreLargeEnough)
{
    const Sheets sheets;
    Program program({sheets.paths[0], sheets.paths[1]}, arranged(UiSetup::SubWindows));
    program.run([&] {
        program.ui([&] {
            const auto* area = program.window().findChild<QMdiArea*>(QStringLiteral("documents"));
            const QMdiSubWindow* active = area->activeSubWindow();
            for (const QMdiSubWindow* sub : area->subWindowList()) {
                EXPECT_LT(area->height() / 2, sub->height());
                EXPECT_LT(area->width() / 2, sub->width());
            }
            ASSERT_NE(nullptr, active);
            EXPECT_EQ(QStringLiteral("two.sheet[*]"), active->windowTitle()) << "as before";
        });
    });
}

TEST(SeparateWindows, HaveMenusOfTheirOwnAndCloseTheirDocument)
{
    const Sheets sheets;
    auto ui = arranged(UiSetup::SeparateWindows);
    ui->viewMenus = [](const std::string&, vfApplication::CommandItem* root) {
        vfApplication::CommandItem menu(root);
        menu.setCommand("&Sheet", nullptr);
        menu << "sheet::AddLine";
    };
    Program program({sheets.paths[0], sheets.paths[1]}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            std::vector<QMainWindow*> windows;
            for (QWidget* top : QApplication::topLevelWidgets()) {
                auto* window = qobject_cast<QMainWindow*>(top);
                if (window && window != &program.window())
                    windows.push_back(window);
            }
            ASSERT_EQ(2u, windows.size());
            for (QMainWindow* window : windows) {
                EXPECT_TRUE(window->isVisible());
                ASSERT_EQ(1, window->menuBar()->actions().size());
                EXPECT_EQ(QStringLiteral("&Sheet"), window->menuBar()->actions()[0]->text());
            }
            const auto titled = [&](const char* title) {
                return *std::find_if(windows.begin(), windows.end(), [title](const QMainWindow* window) {
                    return window->windowTitle() == QLatin1String(title);
                });
            };
            QApplication::sendEvent(titled("one.sheet[*]"),
                                    std::make_unique<QEvent>(QEvent::WindowActivate).get());
            EXPECT_EQ("one.sheet", program.sheet()->getTitle());
            titled("two.sheet[*]")->close();
            EXPECT_THAT(openTitles(program), ElementsAre("one.sheet"));
            EXPECT_TRUE(program.window().isVisible());
        });
    });
}

TEST(Dropping, OpensFilesAndSaysWhatIsNone)
{
    const Sheets sheets;
    Program program;
    program.run([&] {
        program.ui([&] {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(QString::fromStdString(sheets.paths[0])),
                          QUrl(QStringLiteral("http://example.org/two.sheet")),
                          QUrl::fromLocalFile(QString::fromStdString(sheets.paths[2]))});
            QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&program.window(), &enter);
            EXPECT_TRUE(enter.isAccepted());
            QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&program.window(), &drop);
            EXPECT_EQ(0, program.manager().getNumDocuments()); // who dragged them does not wait
        });
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 2; }));
        EXPECT_THAT(program.ui([&] { return problems(program).toStdString(); }),
                    HasSubstr("http://example.org/two.sheet: Only files on this machine can be opened."));
    });
}

TEST(Dropping, TextIsNoFile)
{
    Program program;
    program.run([&] {
        program.ui([&] {
            QMimeData data;
            data.setText(QStringLiteral("one.sheet"));
            QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            enter.ignore();
            QApplication::sendEvent(&program.window(), &enter);
            EXPECT_FALSE(enter.isAccepted());
        });
    });
}

TEST(Documents, UndoneBackToTheFileADocumentIsNotModified)
{
    Sheets sheets;
    Program program({sheets.paths[0]});
    program.run([&] {
        program.ui([&] {
            program.invoke("sheet::AddLine", "two");
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet*"));
            program.invoke("vfApplicationQt::ActionUndo");
        });
        EXPECT_TRUE(program.waitFor([&] { return !program.sheet()->isModified(); }));
        program.ui([&] {
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet"));
            program.invoke("vfApplicationQt::ActionRedo");
            EXPECT_THAT(tabs(program), ElementsAre("one.sheet*"));
            program.invoke("vfApplicationQt::ActionSave");
            program.invoke("sheet::AddLine", "three");
            program.invoke("vfApplicationQt::ActionUndo");
        });
        EXPECT_TRUE(program.waitFor([&] { return !program.sheet()->isModified(); }));
        program.ui([&] { program.invoke("vfApplicationQt::ActionUndo"); });
        program.pause(50);
        EXPECT_TRUE(program.ui([&] { return program.sheet()->isModified(); }));
        // A change outside of the history stays one.
        program.ui([&] {
            program.invoke("vfApplicationQt::ActionSave");
            program.invoke("sheet::AddLine", "four");
            program.sheet()->modify(true);
            program.invoke("vfApplicationQt::ActionUndo");
        });
        program.pause(50);
        EXPECT_TRUE(program.ui([&] { return program.sheet()->isModified(); }));
    });
}

TEST(Documents, TwoHundredOpenedAndClosedLeaveNoWidgetBehind)
{
    const Sheets sheets;
    Program program;
    program.run([&] {
        const auto openAndClose = [&] {
            program.ui([&] {
                program.open(sheets.paths[0]);
                program.application().closeDocument(program.sheet());
            });
        };
        openAndClose();
        program.pause(20);
        const auto count = [&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return program.window().findChildren<QObject*>().size() + QApplication::allWidgets().size();
        };
        const auto before = program.ui(count);
        for (int i = 0; i < 200; ++i)
            openAndClose();
        program.pause(20);
        EXPECT_EQ(before, program.ui(count));
    });
}
