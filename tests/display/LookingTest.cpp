// SPDX-License-Identifier: MIT
// What moves by itself, cameras to come back to, and pictures, with mouse and keyboard.
#include "Viewer.h"

#include "model/ModelView.h"
#include "model/ViewerSettings.h"
#include "support/TemporaryDirectory.h"
#include <velaforge/scene/CameraBookmarks.h>

#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

using vfTest::Program;
using vfTest::TemporaryDirectory;
using vfTest::Viewer;

namespace {

using vfTest::sailboat;
const std::string windmill = VELAFORGE_SOURCE_DIR "/models/windmill.gltf";

class Looking : public vfTest::OnDisplay
{
protected:
    static void with(const std::string& model, const std::function<void(Viewer&)>& script)
    {
        Viewer viewer({model});
        viewer.run([&] {
            ASSERT_TRUE(
                viewer.waitFor([&] { return viewer.viewport() && viewer.viewport()->getFrameCount() > 0; }));
            Program::pause(200);
            script(viewer);
        });
    }

    static double timeOf(Viewer& viewer)
    {
        return viewer.ui([&] { return viewer.model()->getAnimation().getTime(); });
    }

    static unsigned int framesOf(Viewer& viewer)
    {
        return viewer.ui([&] { return viewer.viewport()->getFrameCount(); });
    }

    template <class Widget>
    static Widget& find(Viewer& viewer, const char* name)
    {
        return *viewer.program().window().findChild<Widget*>(QLatin1String(name));
    }

    template <class Widget>
    static Widget& inDialog(const char* name)
    {
        return *Program::dialog()->findChild<Widget*>(QLatin1String(name));
    }

    /// @return the camera of the view
    static vfScene::LookAt cameraOf(Viewer& viewer)
    {
        return viewer.ui([&] {
            return dynamic_cast<vfViewer::ModelView&>(
                       *viewer.program().application().getDocManager().getCurrentView())
                .getCamera();
        });
    }
};

/// The windmill needs a reader that may not be there.
class Playing : public Looking
{
protected:
    void SetUp() override
    {
        if (!vfFormats::hasAssimp())
            GTEST_SKIP() << "built without Assimp";
        Looking::SetUp();
    }
};

} // namespace

TEST_F(Playing, AModelStandsStillUntilItIsPlayedAndWhenItIsHalted)
{
    with(windmill, [](Viewer& viewer) {
        const unsigned int first = framesOf(viewer);
        Program::pause(300);
        EXPECT_EQ(first, framesOf(viewer));
        EXPECT_EQ(0, timeOf(viewer));
        const auto begin = std::chrono::steady_clock::now();
        viewer.hand.key("Space");
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getAnimation().isPlaying(); }));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getAnimation().getTime() > 0.6; }));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.viewport()->getFrameCount() > first + 3; }));
        const double passed = timeOf(viewer);
        const std::chrono::duration<double> onTheWall = std::chrono::steady_clock::now() - begin;
        EXPECT_LE(passed, onTheWall.count()) << "it goes with the time of the clock on the wall";
        viewer.hand.key("Space");
        ASSERT_TRUE(viewer.waitFor([&] { return !viewer.model()->getAnimation().isPlaying(); }));
        Program::pause(200);
        const unsigned int halted = framesOf(viewer);
        const double stood = timeOf(viewer);
        Program::pause(300);
        EXPECT_EQ(halted, framesOf(viewer));
        EXPECT_EQ(stood, timeOf(viewer));
        EXPECT_FALSE(viewer.ui([&] { return viewer.model()->isModified(); }));
    });
}

TEST_F(Playing, ThePanelPlaysGoesToATimeAndChoosesTheAnimation)
{
    with(windmill, [](Viewer& viewer) {
        viewer.ui([&] {
            viewer.program()
                .application()
                .getDockWindowManager()
                .findDockWindow("vfViewer::Animation")
                ->setVisible(true);
        });
        Program::pause(300);
        viewer.ui([&] {
            EXPECT_EQ(2, find<QComboBox>(viewer, "animationChoice").count());
            EXPECT_TRUE(find<QComboBox>(viewer, "animationChoice").isVisible());
            find<QSlider>(viewer, "animationTime").setValue(250);
        });
        EXPECT_NEAR(1, timeOf(viewer), 1e-4);
        viewer.keepPicture("viewer-animation.png");
        viewer.ui([&] {
            auto& tree = find<QTreeWidget>(viewer, "sceneTree");
            EXPECT_FALSE(tree.findItems(QStringLiteral("flag"), Qt::MatchRecursive).isEmpty())
                << "unfolded to where there is something to choose from";
        });
        viewer.ui([&] {
            EXPECT_EQ("1.00 of 4.00 s", find<QLabel>(viewer, "animationLabel").text().toStdString());
        });
        viewer.hand.click(
            viewer.ui([&] { return Viewer::onScreen(find<QToolButton>(viewer, "animationPlay")); }));
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getAnimation().isPlaying(); }));
        ASSERT_TRUE(viewer.waitFor([&] { return find<QSlider>(viewer, "animationTime").value() > 270; }))
            << "the slider goes along";
        viewer.hand.click(
            viewer.ui([&] { return Viewer::onScreen(find<QToolButton>(viewer, "animationPlay")); }));
        ASSERT_TRUE(viewer.waitFor([&] { return !viewer.model()->getAnimation().isPlaying(); }));
        viewer.hand.click(
            viewer.ui([&] { return Viewer::onScreen(find<QComboBox>(viewer, "animationChoice")); }));
        Program::pause(300);
        viewer.hand.key("Down");
        viewer.hand.key("Return");
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getAnimation().getCurrent() == 1; }));
        EXPECT_EQ(0, timeOf(viewer));
        viewer.ui([&] {
            EXPECT_EQ("0.00 of 2.00 s", find<QLabel>(viewer, "animationLabel").text().toStdString());
        });
    });
}

TEST_F(Playing, AClosedModelStopsTheClock)
{
    with(windmill, [](Viewer& viewer) {
        viewer.hand.key("Space");
        ASSERT_TRUE(viewer.waitFor([&] { return viewer.model()->getAnimation().getTime() > 0; }));
        viewer.ui([&] { viewer.program().invoke("vfViewer::Close"); });
        Program::pause(200);
        EXPECT_EQ(nullptr, viewer.ui([&] { return viewer.model(); }));
    });
}

TEST_F(Looking, ACameraIsKeptAndGoneBackTo)
{
    with(sailboat, [](Viewer& viewer) {
        const vfScene::LookAt kept = cameraOf(viewer);
        viewer.hand.key("Ctrl+K");
        ASSERT_TRUE(
            viewer.waitFor([] { return Program::dialog() && Program::dialog()->findChild<QLineEdit*>(); }));
        Program::pause(100);
        viewer.hand.key("Ctrl+A");
        viewer.hand.type("bow");
        viewer.hand.key("Return");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        viewer.focus();
        viewer.hand.key("7"); // from above
        Program::pause(300);
        EXPECT_LT(0.1, (cameraOf(viewer).eye - kept.eye).length());
        viewer.hand.key("Ctrl+G");
        ASSERT_TRUE(
            viewer.waitFor([] { return Program::dialog() && Program::dialog()->findChild<QComboBox*>(); }));
        EXPECT_EQ("bow", viewer.ui([] {
            return Program::dialog()->findChild<QComboBox*>()->currentText().toStdString();
        }));
        Program::pause(100);
        viewer.hand.key("Return");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        Program::pause(200);
        EXPECT_NEAR(0, (cameraOf(viewer).eye - kept.eye).length(), 1e-4);
        EXPECT_EQ(1u, viewer.ui([] { return vfScene::CameraBookmarks::instance().of(sailboat).size(); }));
    });
}

TEST_F(Looking, APictureOfAnySizeIsSavedThroughTheDialog)
{
    const TemporaryDirectory directory;
    const std::string path = directory.file("two words.png");
    with(sailboat, [&path](Viewer& viewer) {
        viewer.hand.key("Ctrl+P");
        ASSERT_TRUE(viewer.program().waitForDialog("pictureDialog"));
        Program::pause(100);
        viewer.ui([&] {
            const QSize view = viewer.viewport()->size();
            EXPECT_EQ(view.width(), inDialog<QSpinBox>("pictureWidth").value()) << "as large as what is seen";
            EXPECT_EQ(view.height(), inDialog<QSpinBox>("pictureHeight").value());
            inDialog<QSpinBox>("pictureWidth").setValue(2 * view.width());
            EXPECT_NEAR(2 * view.height(), inDialog<QSpinBox>("pictureHeight").value(), 1)
                << "of the same shape";
            inDialog<QCheckBox>("pictureShape").setChecked(false);
            inDialog<QSpinBox>("pictureWidth").setValue(640);
            inDialog<QSpinBox>("pictureHeight").setValue(700);
            inDialog<QCheckBox>("pictureTransparent").setChecked(true);
        });
        viewer.keepPicture("viewer-picture.png");
        viewer.hand.click(viewer.ui([] {
            for (auto* button : Program::dialog()->findChildren<QPushButton*>()) {
                if (button->text().contains(QLatin1String("Save")))
                    return Viewer::onScreen(*button);
            }
            return QPoint();
        }));
        viewer.typeFileName(path);
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        ASSERT_TRUE(viewer.waitFor([&path] { return std::filesystem::exists(path); }));
    });
    const QImage picture(QString::fromStdString(path));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(QSize(640, 700), picture.size());
    EXPECT_EQ(0, picture.pixelColor(1, 1).alpha()) << "nothing behind the model";
}

TEST_F(Looking, WhoGivesThePictureUpWritesNothing)
{
    with(sailboat, [](Viewer& viewer) {
        viewer.hand.key("Ctrl+P");
        ASSERT_TRUE(viewer.program().waitForDialog("pictureDialog"));
        Program::pause(100);
        viewer.hand.key("Escape");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        EXPECT_FALSE(std::filesystem::exists(VELAFORGE_SOURCE_DIR "/models/sailboat.png"));
    });
}

TEST_F(Looking, NewViewsAreAsTheOptionsSay)
{
    vfScene::ViewStyle style;
    style.projection = vfScene::Projection::Orthographic;
    style.showsGrid = true;
    vfViewer::ViewerSettings::instance().setFirstStyle(style);
    with(sailboat, [](Viewer& viewer) {
        EXPECT_TRUE(viewer.ui([&] { return viewer.viewport()->isOrthographic(); }));
        viewer.focus();
        viewer.hand.key("Ctrl+,");
        ASSERT_TRUE(viewer.program().waitForDialog("options"));
        Program::pause(100);
        viewer.ui([] {
            EXPECT_EQ(1, inDialog<QComboBox>("firstProjection").currentIndex());
            EXPECT_TRUE(inDialog<QCheckBox>("firstGrid").isChecked());
            inDialog<QCheckBox>("firstGrid").setChecked(false);
            inDialog<QComboBox>("modelUnit").setCurrentIndex(1);
            inDialog<QComboBox>("shownUnit").setCurrentIndex(2);
            inDialog<QSpinBox>("historyMegabytes").setValue(33);
        });
        viewer.hand.key("Return");
        EXPECT_TRUE(viewer.program().waitForNoDialog());
        viewer.ui([&] {
            EXPECT_FALSE(vfViewer::ViewerSettings::instance().getFirstStyle().showsGrid);
            EXPECT_EQ(vfScene::Projection::Orthographic,
                      vfViewer::ViewerSettings::instance().getFirstStyle().projection);
            EXPECT_EQ(vfScene::LengthUnit::Centimetre, viewer.model()->getUnits().shown);
            EXPECT_EQ(33u * 1000000, viewer.model()->getModelScene().getHistoryLimit());
        });
    });
}
