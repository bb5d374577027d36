// SPDX-License-Identifier: MIT
// The viewer's window, with a hand on mouse and keyboard.
#include "Viewer.h"

#include "model/ModelView.h"
#include "model/ViewerSettings.h"
#include "support/ModelDigest.h"
#include "support/Models.h"
#include "support/Search.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/Recovery.h>
#include <velaforge/documents/Session.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/QtDockWindow.h>
#include <velaforge/qt/internal/MainWindow.h>
#include <velaforge/toolkit/CommandNames.h>

#include <osg/observer_ptr>

#include <gmock/gmock.h>

#include <QComboBox>
#include <QDockWidget>
#include <QDrag>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QUrl>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>

#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using vfApplication::DockWindow;
using vfTest::Hand;
using vfTest::Program;
using vfTest::TemporaryDirectory;
using vfTest::Viewer;

namespace {

using vfTest::sailboat;

/// The sailboat in a directory of the test's own, to be written.
std::string copyOfSailboat(const TemporaryDirectory& directory)
{
    for (const auto& entry : fs::directory_iterator(VELAFORGE_SOURCE_DIR "/models")) {
        if (entry.is_regular_file())
            fs::copy_file(entry.path(), directory.file(entry.path().filename().string()));
    }
    return directory.file("sailboat.obj");
}

void clickButton(Viewer& viewer, const char* dialog, const char* button)
{
    ASSERT_TRUE(viewer.program().waitForDialog(dialog));
    Program::pause(100);
    const QPoint place = viewer.ui([button] {
        for (const auto* candidate : Program::dialog()->findChildren<QPushButton*>()) {
            if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(button))
                return Viewer::onScreen(*candidate);
        }
        return QPoint();
    });
    ASSERT_FALSE(place.isNull()) << button;
    viewer.hand.click(place);
    EXPECT_TRUE(viewer.program().waitForNoDialog());
}

/// Ends the program by its key, as soon as its window takes it: without a window manager the keyboard goes where the mouse
/// was clicked, once the window is ready for that.
void quit(Hand& hand, vfTest::RunningViewer& viewer)
{
    for (int i = 0; i < 50 && !viewer.isOverWithin(500); ++i) {
        hand.click(QPoint(600, 400));
        hand.key("Ctrl+Q");
    }
}

/// Runs the script in a process of its own, so that another can follow it.
void inAnotherProcess(const std::function<void()>& script)
{
    const pid_t child = fork();
    if (child == 0) {
        script();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "what failed stands above";
}

/// A window whose text can be dragged away as a file.
class Source : public QLabel
{
public:
    explicit Source(const QString& path) : QLabel(QStringLiteral("drag me")), m_path(path) {}

protected:
    void mousePressEvent(QMouseEvent*) override {}
    void mouseMoveEvent(QMouseEvent*) override
    {
        if (m_isDragged)
            return;
        m_isDragged = true;
        auto* carried = new QMimeData;
        carried->setUrls({QUrl::fromLocalFile(m_path)});
        auto* drag = new QDrag(this);
        drag->setMimeData(carried);
        drag->exec(Qt::CopyAction);
    }

private:
    QString m_path;
    bool m_isDragged = false;
};

} // namespace

class ViewerWindow : public vfTest::OnDisplay
{};

TEST_F(ViewerWindow, OpensThroughTheDialogChangesUndoesAndSavesUnderAnotherName)
{
    const TemporaryDirectory directory;
    const std::string copy = directory.file("copy.osgb");
    Viewer viewer;
    viewer.run([&] {
        viewer.hand.key("Ctrl+O");
        viewer.typeFileName(sailboat);
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model() != nullptr; }));
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.viewport()->getFrameCount() > 0; }));
        Program::pause(200);
        const std::string before =
            viewer.ui([&] { return vfTest::digestOf(viewer.model()->getModelScene()); });

        // The cabin is in front of everything from where the boat is seen first.
        viewer.hand.click(viewer.ui([&] {
            return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part("flag")).toPoint());
        }));
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getSelection() != nullptr; }));
        EXPECT_EQ("flag", viewer.ui([&] { return viewer.model()->getSelection()->getName(); }));
        viewer.hand.key("h");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("flag")->getNodeMask() == 0; }));
        EXPECT_TRUE(viewer.ui([&] { return viewer.model()->isModified(); }));
        viewer.hand.key("Ctrl+Z");
        EXPECT_TRUE(
            viewer.waitFor([&] { return vfTest::digestOf(viewer.model()->getModelScene()) == before; }));
        viewer.hand.key("Ctrl+Y");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("flag")->getNodeMask() == 0; }));

        viewer.hand.key("Ctrl+Shift+S");
        viewer.typeFileName(copy);
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getFilename() == copy; }));
        EXPECT_FALSE(viewer.ui([&] { return viewer.model()->isModified(); }));
    });
    EXPECT_LT(1000u, fs::file_size(copy));
}

TEST_F(ViewerWindow, ClosingAChangedModelAsksAndDoesWhatIsAnswered)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    Viewer viewer({path});
    viewer.run([&] {
        viewer.hand.key("Ctrl+Down");
        viewer.hand.key("h");
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->isModified(); }));
        viewer.hand.key("Ctrl+W");
        ASSERT_TRUE(viewer.program().waitForDialog("saveQuestion"));
        Program::pause(100);
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_TRUE(viewer.ui([&] { return viewer.model() != nullptr; }));
        // With the mouse, on the tab.
        viewer.hand.click(viewer.ui([&] {
            const auto* tabs = viewer.program().window().findChild<QTabWidget*>(QStringLiteral("documents"));
            return Viewer::onScreen(*tabs->tabBar()->tabButton(0, QTabBar::RightSide));
        }));
        clickButton(viewer, "saveQuestion", "Discard");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.program().application().getNumDocuments() == 0; }));
    });
    EXPECT_EQ(fs::file_size(sailboat), fs::file_size(path));
}

TEST_F(ViewerWindow, ADockWindowThatWasDraggedIsFoundAgainAfterARestart)
{
    const auto tree = [](Viewer& viewer) {
        DockWindow* window =
            viewer.program().application().getDockWindowManager().findDockWindow("vfViewer::SceneTree");
        return dynamic_cast<vfApplication::QtDockWindow*>(window->getDockWindowInterface());
    };
    inAnotherProcess([&] {
        Viewer viewer;
        viewer.run([&] {
            EXPECT_EQ(DockWindow::LeftDockArea, viewer.ui([&] { return tree(viewer)->getArea(); }));
            const auto [from, to] = viewer.ui([&] {
                const QDockWidget& dock = *tree(viewer)->getWidget();
                const QWidget& window = viewer.program().window();
                return std::make_pair(
                    Viewer::onScreen(dock, QPoint(30, 10)),
                    Viewer::onScreen(window, QPoint(window.width() - 6, window.height() / 2)));
            });
            // A busy machine may see the drag begin when it is over.
            const auto isThere = [&] {
                return viewer.ui([&] { return tree(viewer)->getArea() == DockWindow::RightDockArea; });
            };
            for (int tries = 0; tries < 3 && !isThere(); ++tries) {
                viewer.hand.drag(from, to);
                Program::pause(500);
            }
            EXPECT_TRUE(isThere());
            Program::pause(300);
            viewer.hand.key("Ctrl+Q");
        });
    });
    inAnotherProcess([&] {
        Viewer viewer;
        viewer.run([&] {
            EXPECT_EQ(DockWindow::RightDockArea, viewer.ui([&] { return tree(viewer)->getArea(); }));
            EXPECT_TRUE(viewer.ui([&] { return tree(viewer)->getWidget()->isVisible(); }));
        });
    });
}

TEST_F(ViewerWindow, OptionsThatAreCancelledLeaveEverythingAsItWas)
{
    const vfViewer::ViewerSettings& settings = vfViewer::ViewerSettings::instance();
    Viewer viewer;
    viewer.run([&] {
        const auto choose = [&] {
            viewer.focus();
            viewer.hand.key("Ctrl+,");
            ASSERT_TRUE(viewer.program().waitForDialog("options"));
            Program::pause(100);
            viewer.hand.click(viewer.ui([] {
                auto* groups = Program::dialog()->findChild<QListWidget*>(QStringLiteral("groups"));
                return Viewer::onScreen(*groups->viewport(),
                                        groups->visualItemRect(groups->item(1)).center());
            }));
            EXPECT_TRUE(viewer.waitFor([] {
                return Program::dialog()->findChild<QComboBox*>(QStringLiteral("firstView"))->isVisible();
            }));
            viewer.ui(
                [] { Program::dialog()->findChild<QComboBox*>(QStringLiteral("firstView"))->setFocus(); });
            viewer.hand.key("Home"); // the first of the list: from the front
            EXPECT_TRUE(viewer.waitFor([] {
                return Program::dialog()
                           ->findChild<QComboBox*>(QStringLiteral("firstView"))
                           ->currentIndex() == 0;
            }));
        };
        const int before = settings.getFirstView();
        choose();
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_EQ(before, settings.getFirstView());
        choose();
        viewer.hand.key("Return");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_EQ(0, settings.getFirstView());
    });
}

TEST_F(ViewerWindow, AFileThatWasReplacedIsReadAgainAndTheCameraStays)
{
    const TemporaryDirectory directory;
    const std::string path = directory.file("model.stl");
    fs::copy_file(vfTest::signpost("stl"), path);
    Viewer viewer({path});
    viewer.run([&] {
        viewer.hand.key("1");
        Program::pause(200);
        osg::Vec3d eye, centre, up;
        viewer.ui([&] { viewer.viewport()->getLookAt(eye, centre, up); });
        const auto points = viewer.ui([&] { return vfTest::digestOf(viewer.model()->getModelScene()); });
        // One triangle in the place of the signpost.
        const std::string text =
            "solid t\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 9 0 0\nvertex 0 9 0\n"
            "endloop\nendfacet\nendsolid t\n";
        std::ofstream(path + ".new") << text;
        fs::rename(path + ".new", path);
        ASSERT_TRUE(viewer.program().waitForDialog("reloadQuestion"));
        Program::pause(100);
        viewer.hand.key("Return"); // "Read again" is what is proposed
        EXPECT_TRUE(
            viewer.waitFor([&] { return vfTest::digestOf(viewer.model()->getModelScene()) != points; }));
        viewer.ui([&] {
            osg::Vec3d eyeNow, centreNow, upNow;
            viewer.viewport()->getLookAt(eyeNow, centreNow, upNow);
            EXPECT_NEAR(0, (eye - eyeNow).length(), 1e-9);
            EXPECT_FALSE(viewer.model()->getCommandProcessor()->canUndo());
        });
    });
}

TEST_F(ViewerWindow, AChangedTextureIsAskedAboutOnceAndWhatIsLookedAtStays)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    const std::string texture = directory.file("sail.png");
    Viewer viewer({path});
    viewer.run([&] {
        viewer.hand.key("1");
        Program::pause(200);
        osg::Vec3d eye, centre, up;
        viewer.ui([&] {
            viewer.viewport()->getLookAt(eye, centre, up);
            viewer.model()->setSelection(viewer.part("hull"));
            viewer.part("flag")->setNodeMask(0);
        });
        const std::string contents = vfTest::readFile(texture);
        const auto change = [&] {
            std::ofstream(texture, std::ios::binary) << contents << std::string(1, '\0');
            std::ofstream(directory.file("sailboat.mtl"), std::ios::app) << "# again\n";
            std::ofstream(path, std::ios::app) << "# again\n";
        };
        const auto node = viewer.ui([&] { return osg::observer_ptr<osg::Node>(viewer.part("hull")); });
        change();
        ASSERT_TRUE(viewer.program().waitForDialog("reloadQuestion"));
        Program::pause(600); // all three changes are known by then
        viewer.keepPicture("viewer-reload.png");
        viewer.hand.key("Return");
        EXPECT_TRUE(viewer.waitFor([&] { return !node.valid() && viewer.part("hull"); }));
        viewer.ui([&] {
            osg::Vec3d eyeNow, centreNow, upNow;
            viewer.viewport()->getLookAt(eyeNow, centreNow, upNow);
            EXPECT_NEAR(0, (eye - eyeNow).length(), 1e-9);
            EXPECT_EQ(viewer.part("hull"), viewer.model()->getSelection());
            EXPECT_EQ(0u, viewer.part("flag")->getNodeMask());
            EXPECT_FALSE(viewer.model()->isModified());
        });
        Program::pause(800);
        EXPECT_FALSE(viewer.ui([] { return Program::dialog() != nullptr; }));
        // A change of the texture alone is enough, and a user who declines is not asked again.
        std::ofstream(texture, std::ios::binary) << contents;
        ASSERT_TRUE(viewer.program().waitForDialog("reloadQuestion"));
        Program::pause(100);
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        Program::pause(800);
        EXPECT_FALSE(viewer.ui([] { return Program::dialog() != nullptr; }));
    });
}

TEST_F(ViewerWindow, AClosedModelIsNoLongerWatchedNorAreItsMaterials)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    // The system tells how many places are watched.
    const auto watched = [] {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);)
                count += line.rfind("inotify wd", 0) == 0 ? 1 : 0;
        }
        return count;
    };
    Viewer viewer;
    viewer.run([&] {
        viewer.ui([&] { viewer.program().application().openDocument(path.c_str(), vfBase::Options()); });
        Program::pause(200);
        const std::size_t open = watched();
        EXPECT_LT(3u, open); // the model, its materials, its texture, and their directory
        viewer.ui([&] { viewer.program().invoke("vfViewer::Close"); });
        EXPECT_TRUE(viewer.waitFor([&] { return watched() + 4 <= open; })) << watched() << " of " << open;
    });
}

TEST_F(ViewerWindow, WhatAFormatDoesNotKeepIsAskedAboutBeforeItIsWritten)
{
    const TemporaryDirectory directory;
    const std::string copy = directory.file("copy.stl");
    Viewer viewer({sailboat});
    viewer.run([&] {
        for (const bool isWanted : {false, true}) {
            viewer.focus();
            viewer.hand.key("Ctrl+Shift+S");
            viewer.typeFileName(copy);
            ASSERT_TRUE(viewer.program().waitForDialog("lossQuestion"));
            viewer.ui([] {
                const auto* box = qobject_cast<QMessageBox*>(Program::dialog());
                EXPECT_TRUE(box->text().contains(QLatin1String("textures"))) << box->text().toStdString();
                EXPECT_FALSE(box->text().contains(QLatin1String("names")));
            });
            if (isWanted)
                viewer.keepPicture("viewer-losses.png");
            Program::pause(100);
            viewer.hand.key(isWanted ? "Return" : "Escape");
            EXPECT_TRUE(viewer.program().waitForNoDialog());
            Program::pause(300);
            EXPECT_EQ(isWanted, fs::exists(copy));
        }
    });
}

namespace {

/// A program that shows a model is ended from one moment to the other, two seconds after a change.
void crashAfterAChange(const std::string& path)
{
    inAnotherProcess([&] {
        Viewer viewer({path});
        viewer.run([&] {
            viewer.ui([&] { viewer.model()->remove(*viewer.part("flag")); });
            const std::string place = vfApplication::Recovery::standardDirectory();
            const auto isKept = [&] {
                std::error_code problem;
                for (fs::directory_iterator entry(place, problem), end; !problem && entry != end;
                     entry.increment(problem)) {
                    if (entry->path().extension() == ".osgb" &&
                        entry->path().filename().string().find("session-") == 0)
                        return true;
                }
                return false;
            };
            EXPECT_TRUE(viewer.waitFor(isKept));
            std::fflush(nullptr);
            _exit(testing::Test::HasFailure() ? 1 : 0);
        });
    });
}

} // namespace

TEST_F(ViewerWindow, AfterACrashWhatWasNotSavedIsOfferedAgain)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    const std::string original = vfTest::readFile(path);
    crashAfterAChange(path);
    for (const char* answer : {"Later", "Recover"}) {
        inAnotherProcess([&] {
            const bool isNamed = std::string(answer) == "Recover";
            Viewer viewer(isNamed ? std::vector<std::string>{path} : std::vector<std::string>());
            viewer.program().run([&] { // the question takes the keyboard
                clickButton(viewer, "recoverQuestion", answer);
                if (std::string(answer) == "Later")
                    return;
                EXPECT_TRUE(viewer.waitFor([&] { return viewer.model() && viewer.model()->isModified(); }));
                viewer.ui([&] {
                    EXPECT_EQ(1u, viewer.program().application().getNumDocuments()) << "not the file as well";
                    EXPECT_EQ(nullptr, viewer.part("flag"));
                    EXPECT_NE(nullptr, viewer.part("hull"));
                    EXPECT_EQ(path, viewer.model()->getFilename().str());
                    EXPECT_EQ("sailboat.obj", viewer.model()->getTitle().str());
                    EXPECT_TRUE(viewer.model()->save().success());
                    EXPECT_FALSE(viewer.model()->isModified());
                });
            });
        });
        EXPECT_EQ(std::string(answer) == "Later", original == vfTest::readFile(path)) << answer;
    }
    // It is over then.
    Viewer viewer;
    viewer.run([&] {
        Program::pause(500);
        EXPECT_FALSE(viewer.ui([] { return Program::dialog() != nullptr; }));
    });
}

TEST_F(ViewerWindow, AfterACrashAFileThatAnotherProgramChangedIsNotReplacedWithoutAQuestion)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    crashAfterAChange(path);
    std::ofstream(path, std::ios::app) << "# changed\n";
    Viewer viewer;
    viewer.program().run([&] {
        ASSERT_TRUE(viewer.program().waitForDialog("recoverQuestion"));
        EXPECT_TRUE(viewer.ui([] {
            return qobject_cast<QMessageBox*>(Program::dialog())
                ->informativeText()
                .contains(QLatin1String("another program has changed its file since"));
        }));
        clickButton(viewer, "recoverQuestion", "Recover");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model() && viewer.model()->isModified(); }));
        viewer.ui([&] {
            EXPECT_EQ(path, viewer.model()->getFilename().str());
            EXPECT_FALSE(viewer.model()->alreadySaved()); // so that saving asks for a file
        });
    });
}

TEST_F(ViewerWindow, WhatWasOpenComesBackAsItWasLookedAtWhenThatIsWanted)
{
    const auto view = [](const Viewer& viewer) {
        return dynamic_cast<vfViewer::ModelView*>(
            const_cast<Viewer&>(viewer).program().application().getDocManager().getCurrentView());
    };
    const osg::Vec3d eye(7, -8, 9);
    for (const bool isWanted : {true, false}) {
        inAnotherProcess([&] {
            Viewer viewer({vfTest::signpost("stl"), sailboat});
            viewer.run([&] {
                viewer.ui([&] {
                    vfApplication::Session::instance().setRestored(isWanted);
                    vfScene::ViewStyle style = view(viewer)->getStyle();
                    style.showsGrid = true;
                    style.projection = vfScene::Projection::Orthographic;
                    view(viewer)->setStyle(style);
                    view(viewer)->setCamera({eye, {0, 0, 1}, {0, 0, 1}});
                    viewer.program().window().close();
                });
            });
        });
        inAnotherProcess([&] {
            Viewer viewer;
            viewer.run([&] {
                if (!isWanted) {
                    Program::pause(500);
                    EXPECT_EQ(nullptr, viewer.ui([&] { return viewer.model(); }));
                    return;
                }
                EXPECT_TRUE(
                    viewer.waitFor([&] { return viewer.program().manager().getDocumentList().size() == 2; }));
                EXPECT_TRUE(viewer.waitFor([&] {
                    return viewer.model() && viewer.model()->getFilename() == sailboat &&
                           view(viewer)->getStyle().showsGrid;
                }));
                viewer.ui([&] {
                    EXPECT_EQ(vfScene::Projection::Orthographic, view(viewer)->getStyle().projection);
                    EXPECT_NEAR(0, (view(viewer)->getCamera().eye - eye).length(), 1e-6);
                    EXPECT_TRUE(viewer.viewport()->isOrthographic());
                });
            });
        });
    }
}

TEST_F(ViewerWindow, AFileThatIsDroppedIsOpened)
{
    Viewer viewer;
    viewer.run([&] {
        std::unique_ptr<Source> source;
        viewer.ui([&] {
            source = std::make_unique<Source>(QString::fromStdString(sailboat));
            source->setGeometry(1210, 100, 120, 60);
            source->show();
        });
        Program::pause(200);
        viewer.hand.drag(QPoint(1260, 130), viewer.ui([&] {
            return Viewer::onScreen(*viewer.program().window().centralWidget());
        }));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model() != nullptr; }));
        viewer.ui([&] { source.reset(); });
    });
}

TEST_F(ViewerWindow, TheSceneTreeHidesWithItsMarksAndSelectsWithItsRows)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        const auto row = [&](const char* name) {
            const auto* tree = viewer.program().window().findChild<QTreeWidget*>(QStringLiteral("sceneTree"));
            return tree->findItems(QString::fromUtf8(name), Qt::MatchExactly | Qt::MatchRecursive).first();
        };
        const auto place = [&](const char* name, int x) {
            return viewer.ui([&, x] {
                const auto* tree =
                    viewer.program().window().findChild<QTreeWidget*>(QStringLiteral("sceneTree"));
                const QRect rect = tree->visualItemRect(row(name));
                return Viewer::onScreen(*tree->viewport(), QPoint(rect.left() + x, rect.center().y()));
            });
        };
        viewer.hand.click(place("flag", 40));
        EXPECT_TRUE(viewer.waitFor([&] {
            return viewer.model()->getSelection() && viewer.model()->getSelection()->getName() == "flag";
        }));
        viewer.hand.click(place("hull", 10));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.part("hull")->getNodeMask() == 0; }));
        viewer.hand.key("Ctrl+Z");
        EXPECT_TRUE(viewer.waitFor([&] {
            return viewer.part("hull")->getNodeMask() != 0 && row("hull")->checkState(0) == Qt::Checked;
        }));
    });
}

TEST_F(ViewerWindow, EveryCommandIsRunOnceAndTakenBackOrSaysThatItCannotBe)
{
    const TemporaryDirectory directory;
    const std::string path = copyOfSailboat(directory);
    Viewer viewer({path});
    viewer.run([&] {
        Program& program = viewer.program();
        viewer.ui([&] { program.invoke("vfViewer::SelectNext"); });
        viewer.ui([&] { viewer.model()->hide(*viewer.part("flag")); }); // so that there is something to show
        int undone = 0;
        for (const vfBase::VfString& name : viewer.ui([] { return vfApplication::commandNames(); })) {
            if (name.str().rfind("vf", 0) != 0)
                continue; // of the tests
            // These end what the others need; each has tests of its own.
            if (name == "vfApplicationQt::ActionExit" || name == "vfViewer::Open" ||
                name.str().find("::ActionClose") != std::string::npos || name == "vfViewer::Close" ||
                name.str().find("Undo") != std::string::npos || name.str().find("Redo") != std::string::npos)
                continue;
            const std::string before =
                viewer.ui([&] { return vfTest::digestOf(viewer.model()->getModelScene()); });
            bool canUndo = false;
            bool isRunning = true;
            viewer.program().start([&] {
                canUndo = vfApplication::Command::getCommandByName(name.str()).canUndo();
                const std::map<std::string, std::string> arguments = {
                    {"vfViewer::SetColor", "1,0,0"}, {"vfViewer::Move", "1,2,3"},
                    {"vfViewer::Rotate", "0,0,1,9"}, {"vfViewer::Scale", "2"},
                    {"vfViewer::Rename", "other"},   {"vfViewer::RecomputeNormals", "30"},
                    {"vfViewer::AddFile", sailboat}};
                const auto argument = arguments.find(name.str());
                // What would have nothing to do gets it.
                if (name == "vfViewer::Isolate")
                    viewer.model()->setSelection(viewer.part("hull"));
                program.invoke(name.c_str(),
                               argument == arguments.end() ? nullptr : argument->second.c_str());
                isRunning = false;
            });
            // Questions and menus are given up.
            const auto isOver = [&] {
                if (QWidget* popup = QApplication::activePopupWidget())
                    popup->close();
                else if (QDialog* dialog = Program::dialog())
                    dialog->reject();
                return !isRunning;
            };
            ASSERT_TRUE(viewer.waitFor(isOver)) << name;
            ASSERT_TRUE(viewer.ui([&] { return viewer.model() != nullptr; })) << name;
            if (canUndo && name != "vfViewer::MergeOpen") { // one model is open
                ++undone;
                EXPECT_TRUE(viewer.ui([&] { return viewer.model()->getCommandProcessor()->undo(); })) << name;
            }
            if (name == "vfApplicationQt::ActionNewView")
                continue;                   // from here on the model hangs in two views
            if (name != "vfViewer::Revert") // which takes everything back
                EXPECT_EQ(before, viewer.ui([&] {
                    return vfTest::digestOf(viewer.model()->getModelScene());
                })) << name;
            else
                viewer.ui([&] { viewer.model()->hide(*viewer.part("flag")); });
        }
        EXPECT_EQ(13, undone);
        viewer.ui([&] { program.window().showNormal(); });
    });
}

TEST_F(ViewerWindow, OfTheProgramItselfShowsTheModelAndClosesByKey)
{
    Hand hand;
    vfTest::RunningViewer viewer({sailboat});
    ASSERT_TRUE(hand.waitForWindow("sailboat.obj — vfviewer"));
    quit(hand, viewer);
    EXPECT_EQ(0, viewer.wait().status);
    EXPECT_THAT(vfTest::readFile(std::string(std::getenv("XDG_CONFIG_HOME")) + "/velaforge/vfviewer.json"),
                testing::AllOf(HasSubstr("vfApplicationQt::WindowSettings"), HasSubstr("sailboat.obj")));
}

TEST_F(ViewerWindow, OfTheProgramItselfTellsWhatCouldNotBeOpenedAndEndsWithStatus4)
{
    Hand hand;
    vfTest::RunningViewer viewer({"/none/at/all.obj", sailboat});
    ASSERT_TRUE(hand.waitForWindow("Problems"));
    ASSERT_TRUE(hand.waitForWindow("sailboat.obj — vfviewer"));
    Program::pause(300);
    hand.key("Escape"); // the window with the problems is in front
    quit(hand, viewer);
    EXPECT_EQ(4, viewer.wait().status);
}

TEST_F(ViewerWindow, ModelsOpenedAndClosedOneAfterAnotherGrowNothing)
{
    const auto residentKilobytes = [] {
        malloc_trim(0); // what is free, but not given back, is not what this is about
        std::ifstream file("/proc/self/statm");
        long pages = 0;
        long resident = 0;
        file >> pages >> resident;
        return resident * (sysconf(_SC_PAGESIZE) / 1024);
    };
    Viewer viewer;
    viewer.run([&] {
        const auto openAndClose = [&](int times) {
            for (int i = 0; i < times; ++i) {
                viewer.ui([&] {
                    viewer.program().application().openDocument(vfTest::signpost("obj").c_str(),
                                                                vfBase::Options());
                });
                ASSERT_TRUE(viewer.waitFor(
                    [&] { return viewer.viewport() && viewer.viewport()->getFrameCount() > 0; }));
                viewer.ui([&] { viewer.program().application().closeDocument(viewer.model()); });
            }
        };
        const auto widgets = [&] {
            return viewer.ui([] {
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                return QApplication::allWidgets().size();
            });
        };
        openAndClose(10); // what is kept for good is there by then
        const auto widgetsBefore = widgets();
        // What is lost is lost each time; threads that wait for one another take memory of their own now and then.
        bool hasGrown = true;
        for (int i = 0; i < 4 && hasGrown; ++i) {
            const long before = residentKilobytes();
            vfTest::Search search("models opened and closed in a window", 15);
            while (search.next())
                openAndClose(1);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
            hasGrown = residentKilobytes() - before >= 1024;
#else
            hasGrown = before < 0;
#endif
        }
        EXPECT_FALSE(hasGrown);
        EXPECT_EQ(widgetsBefore, widgets());
    });
}
