// SPDX-License-Identifier: MIT
// Files that change, are missing, or do not answer.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/FileExistence.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/qt/internal/ProblemsDialog.h>
#include <velaforge/qt/internal/RecentFilesMenu.h>

#include <gmock/gmock.h>

#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using vfApplication::FileExistence;
using vfApplication::RecentFilesMenu;
using vfTest::Program;
using vfTest::readFile;
using vfTest::replaceFile;
using vfTest::TemporaryDirectory;

namespace {

/// A menu of recent files over files that answer when they are told to.
struct RecentFiles
{
    explicit RecentFiles(Program& owner) : program(owner) {}

    std::unique_ptr<RecentFilesMenu> make()
    {
        return std::make_unique<RecentFilesMenu>(
            std::make_unique<FileExistence>([this](const std::string& path) {
                if (path.find("dead") != std::string::npos) {
                    const std::lock_guard<std::mutex> wait(mount);
                }
                return path.find("missing") == std::string::npos;
            }),
            [this](const vfBase::VfString& path) { opened.push_back(path.str()); }, nullptr);
    }

    /// What the menu shows, a mark for what cannot be chosen.
    std::vector<std::string> shown() const
    {
        std::vector<std::string> lines;
        for (const QAction* action : menu->actions()) {
            if (!action->data().isNull())
                lines.push_back((action->isEnabled() ? "" : "(") +
                                action->data().toByteArray().toStdString());
        }
        return lines;
    }

    Program& program;
    std::mutex mount;
    std::vector<std::string> opened;
    std::unique_ptr<QMenu> menu;
};

std::vector<std::string> history(const Program& program)
{
    std::vector<std::string> paths;
    for (int i = 0; i < program.manager().getFileHistory()->getCount(); ++i)
        paths.push_back(program.manager().getFileHistory()->getHistoryFile(i).str());
    return paths;
}

} // namespace

TEST(Reloading, ReadsAFileAgainThatChangedIfThatIsWanted)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        replaceFile(path, "from outside\n");
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        EXPECT_TRUE(program.answer("reloadQuestion", "Read again"));
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "from outside\n"; }));
        program.pause(600);
        program.ui([&] {
            EXPECT_EQ(nullptr, Program::dialog());
            EXPECT_EQ(2, program.sheet()->reads);
            EXPECT_FALSE(program.sheet()->isModified());
        });
    });
}

TEST(Reloading, AsksOnceForEachChange)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        for (const char* contents : {"two\n", "three\n"}) {
            replaceFile(path, contents);
            EXPECT_TRUE(program.answer("reloadQuestion", "Keep as it is")) << contents;
            EXPECT_TRUE(program.waitForNoDialog());
        }
        program.pause(600);
        program.ui([&] {
            EXPECT_EQ(nullptr, Program::dialog());
            EXPECT_EQ("one\n", program.sheet()->text());
        });
    });
}

TEST(Reloading, AChangeWhileTheQuestionStandsIsAskedAboutAfterwardsUnlessItWasRead)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        replaceFile(path, "two\n");
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        replaceFile(path, "three\n");
        program.pause(600);
        EXPECT_TRUE(program.answer("reloadQuestion", "Keep as it is"));
        program.pause(50);
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        replaceFile(path, "four\n");
        program.pause(600);
        EXPECT_TRUE(program.answer("reloadQuestion", "Read again"));
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "four\n"; }));
        program.pause(600);
        EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
    });
}

TEST(Reloading, DoesNotAskAboutOurOwnSaves)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        for (const char* line : {"two", "three"}) {
            program.ui([&] {
                program.invoke("sheet::AddLine", line);
                program.invoke("vfApplicationQt::ActionSave");
            });
            program.pause(500);
            EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
        }
        // Under another name it is that file that is watched from then on.
        const std::string other = directory.file("other.sheet");
        program.ui([&] { program.invoke("vfApplicationQt::ActionSaveAs", other.c_str()); });
        program.pause(500);
        EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
        replaceFile(path, "from outside\n");
        program.pause(500);
        EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
        replaceFile(other, "from outside\n");
        EXPECT_TRUE(program.answer("reloadQuestion", "Read again"));
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "from outside\n"; }));
    });
}

TEST(Reloading, WarnsOfChangesThatWouldBeLost)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        program.ui([&] { program.invoke("sheet::AddLine", "mine"); });
        replaceFile(path, "theirs\n");
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        program.ui([] {
            const auto* box = qobject_cast<QMessageBox*>(Program::dialog());
            EXPECT_THAT(box->informativeText().toStdString(), HasSubstr("not saved, are lost"));
            EXPECT_EQ(QStringLiteral("&Keep as it is"), box->defaultButton()->text());
        });
        EXPECT_TRUE(program.answer("reloadQuestion", "Keep as it is"));
        EXPECT_TRUE(program.waitForNoDialog());
        EXPECT_EQ("one\nmine\n", program.ui([&] { return program.sheet()->text(); }));
    });
}

TEST(Reloading, AContentThatDoesNotLoadLeavesTheDocumentAndTheNextOneIsAskedAbout)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        for (const char* contents : {"bad\n", "throw\n"}) {
            replaceFile(path, contents);
            EXPECT_TRUE(program.answer("reloadQuestion", "Read again")) << contents;
            EXPECT_TRUE(program.waitFor(
                [&] { return program.window().findChild<vfApplication::ProblemsDialog*>() != nullptr; }));
            EXPECT_TRUE(program.waitForNoDialog());
            EXPECT_EQ("one\n", program.ui([&] { return program.sheet()->text(); }));
        }
        replaceFile(path, "good again\n");
        EXPECT_TRUE(program.answer("reloadQuestion", "Read again"));
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->text() == "good again\n"; }));
    });
}

TEST(Reloading, ADocumentWhoseFileIsGoneIsNotClosedWithoutAQuestion)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        fs::rename(path, path + ".away");
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->isModified(); }));
        EXPECT_THAT(program.ui([&] { return program.window().statusBar()->currentMessage().toStdString(); }),
                    HasSubstr("The file of “one.sheet” is gone"));
        fs::rename(path + ".away", path);
        EXPECT_TRUE(program.waitFor([&] { return !program.sheet()->isModified(); }));
        fs::remove(path);
        EXPECT_TRUE(program.waitFor([&] { return program.sheet()->isModified(); }));
        program.start([&] { program.invoke("vfApplicationQt::ActionClose"); });
        EXPECT_TRUE(program.answer("saveQuestion", "Save"));
        EXPECT_TRUE(program.waitFor([&] { return program.manager().getNumDocuments() == 0; }));
    });
    EXPECT_EQ("one\n", readFile(path));
}

TEST(Reloading, ADocumentThatWasClosedIsNotAskedAbout)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        program.ui([&] { program.application().closeDocument(program.sheet()); });
        replaceFile(path, "from outside\n");
        program.pause(600);
        EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
    });
}

TEST(RecentFiles, OpenAtOnceThoughAnEntryLiesOnAMountThatDoesNotAnswer)
{
    Program program;
    RecentFiles recent(program);
    std::unique_lock<std::mutex> dead(recent.mount);
    std::unique_ptr<RecentFilesMenu> menu;
    program.run([&] {
        program.ui([&] {
            for (const char* path : {"/here/a.sheet", "/missing/b.sheet", "/dead/c.sheet"})
                program.manager().addFileToHistory(path);
            menu = recent.make();
            recent.menu = std::make_unique<QMenu>();
            // Nothing answers while the mount is dead: a menu that asked would never be filled.
            for (int i = 0; i < 20; ++i) {
                recent.menu->clear();
                menu->fill(*recent.menu);
            }
            EXPECT_FALSE(recent.menu->actions().empty());
        });
        EXPECT_TRUE(program.waitFor([&] {
            return recent.shown() ==
                   std::vector<std::string>{"/dead/c.sheet", "(/missing/b.sheet", "/here/a.sheet"};
        }));
        EXPECT_THAT(history(program), ElementsAre("/dead/c.sheet", "/missing/b.sheet", "/here/a.sheet"));
        program.ui([&] {
            recent.menu->actions()[0]->trigger();
            EXPECT_THAT(recent.opened, ElementsAre("/dead/c.sheet"));
            auto* removes = recent.menu->findChild<QAction*>(QStringLiteral("removeMissing"));
            EXPECT_TRUE(removes->isEnabled());
            removes->trigger();
        });
        EXPECT_THAT(history(program), ElementsAre("/dead/c.sheet", "/here/a.sheet"));
        program.ui([&] {
            menu.reset(); // while a thread still waits for the mount
            recent.menu.reset();
        });
        dead.unlock();
        program.pause(50);
    });
}

TEST(RecentFiles, AreInTheMenuThatTheirCommandStandsFor)
{
    auto ui = std::make_unique<vfTest::SheetUi>();
    ui->menus = [](vfApplication::CommandItem* root) {
        vfApplication::CommandItem file(root);
        file.setCommand("File", nullptr);
        file << "vfApplicationQt::ActionOpenRecent";
    };
    const TemporaryDirectory directory;
    const std::string path = directory.write("a&b.sheet", "one\n");
    Program program({path}, std::move(ui));
    program.run([&] {
        program.ui([&] {
            program.application().closeDocument(program.sheet());
            auto* menu =
                program.window().findChild<QMenu*>(QStringLiteral("vfApplicationQt::ActionOpenRecent"));
            ASSERT_NE(nullptr, menu);
            menu->popup(QPoint(0, 0));
            menu->close();
            EXPECT_EQ(QStringLiteral("&1 a&&b.sheet — ") + QString::fromStdString(directory.path()),
                      menu->actions()[0]->text());
            menu->actions()[0]->trigger();
            EXPECT_EQ("a&b.sheet", program.sheet()->getTitle());
        });
    });
}

TEST(RecentFiles, AreClearedWhenThatIsAskedFor)
{
    Program program;
    RecentFiles recent(program);
    program.run([&] {
        program.ui([&] {
            program.manager().addFileToHistory("/here/a.sheet");
            const auto menu = recent.make();
            recent.menu = std::make_unique<QMenu>();
            menu->fill(*recent.menu);
            EXPECT_FALSE(recent.menu->findChild<QAction*>(QStringLiteral("removeMissing"))->isEnabled());
            recent.menu->actions().back()->trigger();
            recent.menu->clear();
            menu->fill(*recent.menu);
            EXPECT_EQ(QStringLiteral("No recent files"), recent.menu->actions()[0]->text());
            recent.menu.reset();
        });
        EXPECT_THAT(history(program), ElementsAre());
    });
}
