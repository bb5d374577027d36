// SPDX-License-Identifier: MIT
// What the viewport shows, and how it is turned.
#include "Viewer.h"

#include "model/ViewerSettings.h"
#include "qt/QtModelView.h"
#include "support/Models.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/qt/internal/MainWindow.h>

#include <gmock/gmock.h>

#include <osg/Camera>
#include <osg/ComputeBoundsVisitor>
#include <osg/MatrixTransform>
#include <osgDB/DatabasePager>
#include <osgViewer/Viewer>

#include <QImage>
#include <QScreen>
#include <QTabWidget>

#include <cmath>

using vfTest::Hand;
using vfTest::Program;
using vfTest::Viewer;

namespace {

using vfTest::sailboat;

struct Camera
{
    osg::Vec3d eye, centre, up;
    double distance() const { return (eye - centre).length(); }
    osg::Vec3d direction() const
    {
        osg::Vec3d ahead = centre - eye;
        ahead.normalize();
        return ahead;
    }
};

Camera cameraOf(Viewer& viewer)
{
    return viewer.ui([&] {
        Camera camera;
        viewer.viewport()->getLookAt(camera.eye, camera.centre, camera.up);
        return camera;
    });
}

/// Waits until the picture stands still. @return the number of pictures drawn until then
unsigned int settle(Viewer& viewer)
{
    unsigned int frames = 0;
    for (int quiet = 0; quiet < 5;) {
        Program::pause(50);
        const unsigned int now = viewer.ui([&] { return viewer.viewport()->getFrameCount(); });
        quiet = now == frames ? quiet + 1 : 0;
        frames = now;
    }
    return frames;
}

/// How far two pictures are apart, from 0 to 255, when looked at from far away: what letters and edges differ by from
/// machine to machine does not count.
double difference(const QImage& one, const QImage& other)
{
    const QSize coarse(48, 32);
    const QImage a = one.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                         .convertToFormat(QImage::Format_RGB32);
    const QImage b = other.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                         .convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int y = 0; y < coarse.height(); ++y) {
        for (int x = 0; x < coarse.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            sum +=
                std::abs(p.red() - q.red()) + std::abs(p.green() - q.green()) + std::abs(p.blue() - q.blue());
        }
    }
    return sum / (3.0 * coarse.width() * coarse.height());
}

/// How far the parts reach from the middle, as parts of width and height. On the thread of the window.
double farthestFromMiddle(const Viewer& viewer)
{
    const vfApplication::QtViewport& viewport = *viewer.viewport();
    double farthest = 0;
    for (const char* name : {"hull", "mast", "rudder"}) {
        osg::ComputeBoundsVisitor bounds;
        viewer.part(name)->accept(bounds);
        for (unsigned int i = 0; i < 8; ++i) {
            const QPointF seen = viewport.project(bounds.getBoundingBox().corner(i));
            farthest = std::max({farthest, std::fabs(seen.x() / viewport.width() - 0.5),
                                 std::fabs(seen.y() / viewport.height() - 0.5)});
        }
    }
    return farthest;
}

} // namespace

class Viewport : public vfTest::OnDisplay
{};

TEST_F(Viewport, LooksAsItDidWhenItWasLookedAt)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.ui([&] { viewer.program().window().resize(1200, 800); });
        settle(viewer);
        const QImage shown = viewer.ui([&] { return viewer.program().window().grab().toImage(); });
        viewer.keepPicture("window.png");
        const QImage reference(QStringLiteral(VELAFORGE_SOURCE_DIR "/tests/display/pictures/window.png"));
        ASSERT_FALSE(reference.isNull());
        EXPECT_LT(difference(reference, shown), 3.0);
        // The measure tells another picture apart.
        viewer.hand.key("3");
        settle(viewer);
        const QImage other = viewer.ui([&] { return viewer.program().window().grab().toImage(); });
        EXPECT_GT(difference(reference, other), 5.0);
    });
}

TEST_F(Viewport, DrawsOnlyWhenSomethingChanged)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        const unsigned int before = settle(viewer);
        Program::pause(500);
        EXPECT_EQ(before, viewer.ui([&] { return viewer.viewport()->getFrameCount(); }));
        viewer.hand.moveTo(viewer.ui([&] { return Viewer::onScreen(*viewer.viewport()); }));
        Program::pause(200);
        EXPECT_EQ(before, viewer.ui([&] { return viewer.viewport()->getFrameCount(); }));
        viewer.hand.key("7");
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.viewport()->getFrameCount() > before; }));
        EXPECT_LE(settle(viewer), before + 4);
    });
}

TEST_F(Viewport, ASceneThatMovesByItselfIsDrawnOnAndOn)
{
    struct Turn : osg::NodeCallback
    {
        void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
        {
            static_cast<osg::MatrixTransform*>(node)->preMult(osg::Matrix::rotate(0.01, 0, 0, 1));
            traverse(node, visitor);
        }
    };
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        osg::ref_ptr<osg::MatrixTransform> turning = new osg::MatrixTransform;
        const unsigned int before = viewer.ui([&] {
            turning->setUpdateCallback(new Turn);
            viewer.viewport()->getScene()->asGroup()->addChild(turning);
            viewer.viewport()->setContinuous(true);
            return viewer.viewport()->getFrameCount();
        });
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.viewport()->getFrameCount() > before + 10; }));
        viewer.ui([&] { viewer.viewport()->setContinuous(false); });
        settle(viewer);
        EXPECT_FALSE(viewer.ui([&] { return viewer.viewport()->isContinuous(); }));
    });
}

TEST_F(Viewport, FilesThatASceneNamesForLaterAreNotRead)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.ui([&] {
            osgDB::DatabasePager* pager = viewer.viewport()->getViewer().getDatabasePager();
            ASSERT_TRUE(pager);
            osg::NodePath path = {&viewer.model()->scene()};
            const osg::ref_ptr<osg::FrameStamp> now = new osg::FrameStamp;
            osg::ref_ptr<osg::Referenced> request;
            pager->requestNodeFile("missing.osgt", path, 1, now, request, nullptr);
            EXPECT_FALSE(pager->isRunning());
            EXPECT_EQ(0u, pager->getFileRequestListSize());
        });
    });
}

TEST_F(Viewport, TurnsMovesAndComesNearerWithTheMouse)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const QPoint middle = viewer.ui([&] { return Viewer::onScreen(*viewer.viewport()); });
        const Camera start = cameraOf(viewer);
        viewer.hand.drag(middle, middle + QPoint(150, 0));
        settle(viewer);
        const Camera turned = cameraOf(viewer);
        EXPECT_GT(0.98, turned.direction() * start.direction());
        EXPECT_NEAR(start.distance(), turned.distance(), 1e-3 * start.distance());

        viewer.hand.drag(middle, middle + QPoint(100, 50), Hand::Middle);
        settle(viewer);
        const Camera moved = cameraOf(viewer);
        EXPECT_NEAR(1, moved.direction() * turned.direction(), 1e-6);
        EXPECT_LT(0.01 * start.distance(), (moved.centre - turned.centre).length());

        viewer.hand.drag(middle, middle + QPoint(0, 120), Hand::Right);
        settle(viewer);
        const Camera dragged = cameraOf(viewer);
        EXPECT_NE(moved.distance(), dragged.distance());

        viewer.hand.moveTo(middle);
        viewer.hand.press(Hand::WheelUp);
        viewer.hand.release(Hand::WheelUp);
        settle(viewer);
        const Camera near = cameraOf(viewer);
        viewer.hand.press(Hand::WheelDown);
        viewer.hand.release(Hand::WheelDown);
        settle(viewer);
        EXPECT_LT(near.distance(), 0.95 * dragged.distance());
        EXPECT_NEAR(dragged.distance(), cameraOf(viewer).distance(), 0.1 * dragged.distance());
    });
}

TEST_F(Viewport, ADragOf200PixelsTurnsBy40DegreesAndKeepsTheHorizon)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.hand.key("1");
        settle(viewer);
        const auto place = [&](const QPoint& point) {
            return viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), point); });
        };
        const Camera start = cameraOf(viewer);
        viewer.hand.drag(place({50, 50}), place({250, 50}));
        settle(viewer);
        const Camera turned = cameraOf(viewer);
        const double radians = std::acos(turned.direction() * start.direction());
        EXPECT_NEAR(40, osg::RadiansToDegrees(radians), 1);
        for (int i = 0; i < 4; ++i)
            viewer.hand.drag(place({50, 50}), place({130, 90}));
        settle(viewer);
        const Camera after = cameraOf(viewer);
        EXPECT_NEAR(0, (after.direction() ^ after.up).z(), 1e-6);
        EXPECT_LT(0, after.up.z());
    });
}

TEST_F(Viewport, TheWheelZoomsToThePointerAndNeverThroughTheSurface)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const osg::Vec3d point = viewer.ui([&] {
            const auto hit = viewer.viewport()->pick(viewer.seen(*viewer.part("flag")).toPoint());
            return hit ? hit->point : osg::Vec3d();
        });
        const auto seen = [&] { return viewer.ui([&] { return viewer.viewport()->project(point); }); };
        const QPointF before = seen();
        const double start = (cameraOf(viewer).eye - point).length();
        viewer.hand.moveTo(viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), before.toPoint()); }));
        const auto turn = [&](Hand::Button wheel, int notches) {
            for (int i = 0; i < notches; ++i) {
                viewer.hand.press(wheel);
                viewer.hand.release(wheel);
            }
            settle(viewer);
        };
        turn(Hand::WheelUp, 5);
        EXPECT_NEAR(before.x(), seen().x(), 3);
        EXPECT_NEAR(before.y(), seen().y(), 3);
        EXPECT_NEAR(start / std::pow(1.2, 5), (cameraOf(viewer).eye - point).length(), 0.02 * start);
        turn(Hand::WheelUp, 60);
        const Camera nearest = cameraOf(viewer);
        EXPECT_LT(0, (point - nearest.eye) * nearest.direction());
        turn(Hand::WheelDown, 50);
        EXPECT_GT(100 * start, (cameraOf(viewer).eye - point).length());
        viewer.hand.key("f");
        settle(viewer);
        EXPECT_TRUE(viewer.ui(
            [&] { return viewer.viewport()->rect().contains(viewer.seen(*viewer.part("hull")).toPoint()); }));
    });
}

TEST_F(Viewport, WhatIsGrabbedStaysUnderThePointer)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const osg::Vec3d point = viewer.ui([&] {
            const auto hit = viewer.viewport()->pick(viewer.seen(*viewer.part("hull")).toPoint());
            return hit ? hit->point : osg::Vec3d();
        });
        const auto seen = [&] { return viewer.ui([&] { return viewer.viewport()->project(point); }); };
        const auto onScreen = [&](const QPointF& position) {
            return viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), position.toPoint()); });
        };
        const QPointF before = seen();
        const QPointF shift(90, -40);
        viewer.hand.drag(onScreen(before), onScreen(before + shift), Hand::Middle);
        settle(viewer);
        EXPECT_NEAR(before.x() + shift.x(), seen().x(), 3);
        EXPECT_NEAR(before.y() + shift.y(), seen().y(), 3);
        // Orbiting turns about it, and zooming goes to it.
        const QPointF grabbed = seen();
        viewer.hand.drag(onScreen(grabbed), onScreen(grabbed + QPointF(70, 30)));
        settle(viewer);
        EXPECT_NEAR(grabbed.x(), seen().x(), 3);
        EXPECT_NEAR(grabbed.y(), seen().y(), 3);
        viewer.hand.drag(onScreen(grabbed), onScreen(grabbed + QPointF(0, 60)), Hand::Right);
        settle(viewer);
        EXPECT_NEAR(grabbed.x(), seen().x(), 3);
        EXPECT_NEAR(grabbed.y(), seen().y(), 3);
    });
}

TEST_F(Viewport, ADoubleClickFitsAPartAndTurnsAboutThePoint)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const osg::Vec3d point = viewer.ui([&] {
            const auto hit = viewer.viewport()->pick(viewer.seen(*viewer.part("flag")).toPoint());
            return hit ? hit->point : osg::Vec3d();
        });
        const double start = cameraOf(viewer).distance();
        viewer.hand.doubleClick(viewer.ui([&] {
            return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part("flag")).toPoint());
        }));
        EXPECT_TRUE(viewer.waitFor([&] {
            osg::Vec3d eye, centre, up;
            viewer.viewport()->getLookAt(eye, centre, up);
            return (eye - centre).length() < 0.5 * start;
        }));
        settle(viewer);
        viewer.ui([&] {
            // It is in the middle, and nearly as large as the view.
            const vfApplication::QtViewport& viewport = *viewer.viewport();
            for (const double x : {0.25, 0.5, 0.75}) {
                const auto hit = viewport.pick(QPointF(x * viewport.width(), 0.5 * viewport.height()));
                ASSERT_TRUE(hit);
                EXPECT_THAT(hit->path, testing::Contains(viewer.part("flag")));
            }
            EXPECT_FALSE(viewport.pick(QPointF(5, 0.5 * viewport.height())));
            EXPECT_LT((viewer.viewport()->getPivot() - point).length(), 0.05 * start);
            ASSERT_NE(nullptr, viewer.model()->getSelection());
            EXPECT_EQ("flag", viewer.model()->getSelection()->getName());
        });
    });
}

TEST_F(Viewport, TheTrackballIsAnOption)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.ui([&] {
            vfViewer::ViewerSettings::instance().setMouse({true, 200});
            viewer.model()->updateAllViews(nullptr);
            EXPECT_EQ(vfApplication::QtViewport::Orbit::Trackball, viewer.viewport()->getOrbit());
        });
        viewer.hand.key("1");
        settle(viewer);
        const auto place = [&](const QPoint& point) {
            return viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), point); });
        };
        const Camera start = cameraOf(viewer);
        viewer.hand.drag(place({50, 50}), place({150, 50})); // at twice the speed
        settle(viewer);
        EXPECT_NEAR(40, osg::RadiansToDegrees(std::acos(cameraOf(viewer).direction() * start.direction())),
                    1);
        viewer.hand.key("1");
        settle(viewer);
        for (int i = 0; i < 3; ++i)
            viewer.hand.drag(place({50, 50}), place({50, 200})); // past the pole
        settle(viewer);
        EXPECT_GT(0, cameraOf(viewer).up.z());
    });
}

TEST_F(Viewport, AClickSelectsAndADragDoesNot)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const auto flag = [&] {
            return viewer.ui([&] {
                return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part("flag")).toPoint());
            });
        };
        viewer.hand.drag(flag(), flag() + QPoint(60, 0));
        settle(viewer);
        EXPECT_EQ(nullptr, viewer.ui([&] { return viewer.model()->getSelection(); }));
        viewer.hand.key("0"); // to where it was
        settle(viewer);
        viewer.hand.click(flag());
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getSelection() != nullptr; }));
        // A click beside the model selects nothing.
        viewer.hand.click(viewer.ui([&] { return Viewer::onScreen(*viewer.viewport(), QPoint(8, 8)); }));
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.model()->getSelection() == nullptr; }));
    });
}

TEST_F(Viewport, HasTheStandardViewsAndFitsTheModel)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        const std::pair<const char*, osg::Vec3d> views[] = {{"1", {0, 1, 0}},  {"Ctrl+1", {0, -1, 0}},
                                                            {"3", {-1, 0, 0}}, {"Ctrl+3", {1, 0, 0}},
                                                            {"7", {0, 0, -1}}, {"Ctrl+7", {0, 0, 1}}};
        for (const auto& [key, direction] : views) {
            viewer.hand.key(key);
            settle(viewer);
            const Camera camera = cameraOf(viewer);
            EXPECT_LT(0.999, camera.direction() * direction) << key;
        }
        const QPoint middle = viewer.ui([&] { return Viewer::onScreen(*viewer.viewport()); });
        viewer.hand.drag(middle, middle + QPoint(300, 200), Hand::Middle);
        settle(viewer);
        viewer.hand.key("f");
        settle(viewer);
        viewer.ui([&] {
            // All of it, in the middle, as large as it fits.
            EXPECT_LT(0.40, farthestFromMiddle(viewer));
            EXPECT_GT(0.56, farthestFromMiddle(viewer)); // boxes are larger than what they hold
        });
    });
}

TEST_F(Viewport, FitsTheSphereAroundItsSceneFromWhereItIsLookedAt)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        for (const bool isOrthographic : {false, true}) {
            viewer.ui([&] {
                vfApplication::QtViewport& viewport = *viewer.viewport();
                viewport.setOrthographic(isOrthographic);
                viewport.lookAt({400, -300, 200}, {380, -300, 190}, {0, 0, 1});
                viewport.fit();
                EXPECT_LT(0.2, farthestFromMiddle(viewer));
                EXPECT_GT(0.51, farthestFromMiddle(viewer));
            });
            const Camera camera = cameraOf(viewer);
            osg::Vec3d direction(-20, 0, -10);
            direction.normalize();
            EXPECT_LT(0.999999, camera.direction() * direction);
            const osg::BoundingSphere bounds =
                viewer.ui([&] { return viewer.viewport()->getScene()->getBound(); });
            EXPECT_NEAR(0, (camera.centre - osg::Vec3d(bounds.center())).length(), 1e-6);
        }
    });
}

TEST_F(Viewport, WhatIsPickedIsTheDrawableThere)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.ui([&] {
            osg::Node* flag = viewer.part("flag");
            const auto hit = viewer.viewport()->pick(viewer.seen(*flag));
            ASSERT_TRUE(hit);
            EXPECT_NE(nullptr, hit->path.back()->asDrawable());
            EXPECT_THAT(hit->path, testing::Contains(flag));
            EXPECT_EQ(1u, hit->path.back()->getNumParents());
            EXPECT_EQ(hit->path[hit->path.size() - 2], hit->path.back()->getParent(0));
            EXPECT_EQ(viewer.viewport()->getScene(), hit->path.front());
        });
    });
}

TEST_F(Viewport, WithoutPerspectiveItShowsAndPicksTheSame)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.hand.key("1");
        settle(viewer);
        const auto picked = [&](const char* name) {
            const QPoint place = viewer.ui([&] {
                return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part(name)).toPoint());
            });
            viewer.hand.click(place);
            settle(viewer);
            return viewer.ui([&] {
                osg::Node* selected = viewer.model()->getSelection();
                return selected ? selected->getName() : std::string();
            });
        };
        EXPECT_EQ("hull", picked("hull"));
        viewer.hand.key("o");
        settle(viewer);
        EXPECT_TRUE(viewer.ui([&] { return viewer.viewport()->isOrthographic(); }));
        EXPECT_EQ("hull", picked("hull"));
        // Nearer is larger there as well, and picking follows.
        const auto width = [&] {
            return viewer.ui([&] {
                return viewer.viewport()->project({1, 0, 0}).x() - viewer.viewport()->project({-1, 0, 0}).x();
            });
        };
        const double before = width();
        viewer.hand.click(viewer.ui([&] { return Viewer::onScreen(*viewer.viewport()); }), Hand::WheelUp);
        settle(viewer);
        EXPECT_LT(before * 1.01, width());
        EXPECT_EQ("hull", picked("hull"));
        viewer.hand.key("p");
        settle(viewer);
        EXPECT_FALSE(viewer.ui([&] { return viewer.viewport()->isOrthographic(); }));
    });
}

TEST_F(Viewport, WhatASectionTakesAwayIsNotPicked)
{
    Viewer viewer({sailboat});
    viewer.run([&] {
        settle(viewer);
        viewer.hand.key("1");
        settle(viewer);
        const auto selected = [&] {
            const QPoint place = viewer.ui([&] {
                return Viewer::onScreen(*viewer.viewport(), viewer.viewport()->project({0, 0, 2}).toPoint());
            });
            viewer.hand.click(place);
            settle(viewer);
            return viewer.ui([&] { return viewer.model()->getSelection() != nullptr; });
        };
        EXPECT_TRUE(selected());
        viewer.hand.key("Shift+Z"); // the upper half goes, with the sail
        settle(viewer);
        EXPECT_FALSE(selected());
        viewer.hand.key("Shift+Z");
        settle(viewer);
        EXPECT_TRUE(selected());
    });
}

TEST_F(Viewport, KeepsItsPictureWhenItsWindowIsResizedOrItsTabIsHidden)
{
    Viewer viewer({sailboat, vfTest::signpost("obj")});
    viewer.run([&] {
        settle(viewer);
        viewer.ui([&] {
            viewer.program().window().resize(900, 600);
            viewer.program().window().findChild<QTabWidget*>(QStringLiteral("documents"))->setCurrentIndex(0);
        });
        settle(viewer);
        viewer.ui([&] {
            const QImage picture = viewer.viewport()->grabFramebuffer();
            EXPECT_EQ(viewer.viewport()->size() * viewer.viewport()->devicePixelRatioF(), picture.size());
            // The model is in the middle of it, not only background.
            const QColor corner = picture.pixelColor(2, picture.height() / 2);
            int differing = 0;
            for (int x = 0; x < picture.width(); ++x)
                differing += picture.pixelColor(x, picture.height() / 2) != corner ? 1 : 0;
            EXPECT_LT(picture.width() / 30, differing);
        });
    });
}

class ViewportAtRatio : public vfTest::OnDisplay, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        OnDisplay::SetUp();
        setenv("QT_SCALE_FACTOR", GetParam(), 1);
    }
};

TEST_P(ViewportAtRatio, HasAllPixelsAndPicksWhatIsSeen)
{
    const double ratio = std::atof(GetParam());
    Viewer viewer({sailboat});
    viewer.run([&] {
        viewer.ui([&] { viewer.program().window().resize(QSize(1100, 760) / ratio); });
        settle(viewer);
        viewer.ui([&] {
            EXPECT_EQ(ratio, viewer.viewport()->devicePixelRatioF());
            const osg::Viewport& shown = *viewer.viewport()->getViewer().getCamera()->getViewport();
            EXPECT_EQ(std::lround(viewer.viewport()->width() * ratio), std::lround(shown.width()));
            EXPECT_EQ(std::lround(viewer.viewport()->height() * ratio), std::lround(shown.height()));
            const QImage picture = viewer.viewport()->grabFramebuffer();
            EXPECT_EQ(std::lround(shown.width()), picture.width());
            EXPECT_EQ(std::lround(shown.height()), picture.height());
            // The flag is red, in the picture where it is picked.
            const QPointF flag = viewer.seen(*viewer.part("flag"));
            const auto hit = viewer.viewport()->pick(flag);
            ASSERT_TRUE(hit);
            EXPECT_NE(hit->path.end(), std::find(hit->path.begin(), hit->path.end(), viewer.part("flag")));
            const QColor color = picture.pixelColor((flag * ratio).toPoint());
            EXPECT_GT(color.red(), 2 * color.blue());
            EXPECT_GT(color.red(), 2 * color.green());
            EXPECT_FALSE(viewer.viewport()->pick(QPointF(3, 3)));
        });
        // With the mouse at the same place.
        viewer.hand.click(viewer.ui([&] {
            return Viewer::onScreen(*viewer.viewport(), viewer.seen(*viewer.part("flag")).toPoint());
        }));
        EXPECT_TRUE(viewer.waitFor([&] {
            return viewer.model()->getSelection() && viewer.model()->getSelection()->getName() == "flag";
        }));
    });
}

INSTANTIATE_TEST_SUITE_P(Ratios, ViewportAtRatio, testing::Values("1", "1.5", "2"));
