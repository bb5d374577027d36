// SPDX-License-Identifier: MIT
// Files that change, are missing, or do not answer.
#include "Program.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/documents/FileHistory.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/FileExistence.h>
#include <velaforge/qt/internal/FileWatcher.h>
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
using vfApplication::FileWatcher;
using vfApplication::RecentFilesMenu;
using vfTest::Program;
using vfTest::readFile;
using vfTest::TemporaryDirectory;

namespace {

void write(const std::string& path, const std::string& contents)
{
    std::ofstream(path) << contents;
}

/// As careful programs save.
void replace(const std::string& path, const std::string& contents)
{
    write(path + ".new", contents);
    fs::rename(path + ".new", path);
}

/// A watcher and what it told, without a program.
struct Watched
{
    Watched()
    {
        QObject::connect(&watcher, &FileWatcher::changed,
                         [this](const QByteArray& path) { tell("changed ", path); });
        QObject::connect(&watcher, &FileWatcher::removed,
                         [this](const QByteArray& path) { tell("removed ", path); });
        QObject::connect(&watcher, &FileWatcher::restored,
                         [this](const QByteArray& path) { tell("restored ", path); });
    }

    void tell(const char* what, const QByteArray& path)
    {
        told.push_back(what + fs::path(path.toStdString()).filename().string());
    }

    /// Waits for that many messages, and then for more that should not come.
    std::vector<std::string> wait(std::size_t count)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (told.size() < count && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        rest();
        return std::exchange(told, {});
    }

    /// Long enough for anything to be told.
    void rest() const
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(250);
        while (std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    int argc = 1;
    char name[8] = "program";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    TemporaryDirectory directory;
    FileWatcher watcher{20};
    std::vector<std::string> told;
};

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

TEST(FileWatcher, TellsOnceHoweverManyWritesMakeOneChange)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    for (int i = 0; i < 20; ++i)
        write(path, "part " + std::to_string(i));
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
    write(path, "another");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, AFileThatIsOnlyTouchedHasNotChanged)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::last_write_time(path, fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_THAT(watched.wait(0), ElementsAre());
    write(path, "one"); // the same once more
    EXPECT_THAT(watched.wait(0), ElementsAre());
    write(path, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, SurvivesReplacementByRename)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    for (const char* contents : {"two", "three", "four"}) {
        replace(path, contents);
        EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt")) << contents;
    }
    write(path, "five"); // in place, after it was replaced
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, AFileThatIsRemovedAndMadeAnewAtOnceHasChanged)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::remove(path);
    write(path, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, TellsThatAFileIsGoneAndThatItIsBack)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    fs::rename(path, path + ".away");
    EXPECT_THAT(watched.wait(1), ElementsAre("removed a.txt"));
    fs::rename(path + ".away", path);
    EXPECT_THAT(watched.wait(1), ElementsAre("restored a.txt"));
    fs::remove(path);
    EXPECT_THAT(watched.wait(1), ElementsAre("removed a.txt"));
    write(path, "another");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, WhatIsAcknowledgedIsNotTold)
{
    Watched watched;
    const std::string path = watched.directory.write("a.txt", "one");
    watched.watcher.add(path);
    watched.rest();
    replace(path, "our own");
    watched.watcher.acknowledge(path);
    EXPECT_THAT(watched.wait(0), ElementsAre());
    replace(path, "theirs");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed a.txt"));
}

TEST(FileWatcher, FollowsALinkToTheFileItself)
{
    Watched watched;
    watched.directory.write("real/a.txt", "one");
    const std::string link = watched.directory.file("link.txt");
    fs::create_symlink(watched.directory.file("real/a.txt"), link);
    watched.watcher.add(link);
    watched.rest();
    replace(watched.directory.file("real/a.txt"), "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed link.txt"));
}

TEST(FileWatcher, WhatIsNoLongerWatchedIsNotTold)
{
    Watched watched;
    const std::string a = watched.directory.write("a.txt", "one");
    const std::string b = watched.directory.write("b.txt", "one");
    watched.watcher.add(a);
    watched.watcher.add(b);
    watched.watcher.add(b);
    EXPECT_TRUE(watched.watcher.contains(a));
    watched.watcher.remove(a);
    EXPECT_FALSE(watched.watcher.contains(a));
    watched.rest();
    write(a, "two");
    replace(b, "two");
    EXPECT_THAT(watched.wait(1), ElementsAre("changed b.txt"));
}

TEST(FileWatcher, ALargeFileIsToldApartByItsSizeAndTime)
{
    Watched watched;
    const std::string path = watched.directory.write("large", "x");
    fs::resize_file(path, 65ull * 1024 * 1024); // without blocks on the disk
    watched.watcher.add(path);
    watched.rest();
    fs::resize_file(path, 66ull * 1024 * 1024);
    EXPECT_THAT(watched.wait(1), ElementsAre("changed large"));
}

TEST(Reloading, ReadsAFileAgainThatChangedIfThatIsWanted)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("one.sheet", "one\n");
    Program program({path});
    program.run([&] {
        program.pause(100);
        replace(path, "from outside\n");
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
            replace(path, contents);
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
        replace(path, "two\n");
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        replace(path, "three\n");
        program.pause(600);
        EXPECT_TRUE(program.answer("reloadQuestion", "Keep as it is"));
        program.pause(50);
        ASSERT_TRUE(program.waitForDialog("reloadQuestion"));
        replace(path, "four\n");
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
        replace(path, "from outside\n");
        program.pause(500);
        EXPECT_EQ(nullptr, program.ui([] { return Program::dialog(); }));
        replace(other, "from outside\n");
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
        replace(path, "theirs\n");
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
            replace(path, contents);
            EXPECT_TRUE(program.answer("reloadQuestion", "Read again")) << contents;
            EXPECT_TRUE(program.waitFor(
                [&] { return program.window().findChild<vfApplication::ProblemsDialog*>() != nullptr; }));
            EXPECT_TRUE(program.waitForNoDialog());
            EXPECT_EQ("one\n", program.ui([&] { return program.sheet()->text(); }));
        }
        replace(path, "good again\n");
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
        replace(path, "from outside\n");
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
            const auto before = std::chrono::steady_clock::now();
            for (int i = 0; i < 20; ++i) {
                recent.menu->clear();
                menu->fill(*recent.menu);
            }
            EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
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
