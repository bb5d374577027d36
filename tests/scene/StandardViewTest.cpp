// SPDX-License-Identifier: MIT
#include <velaforge/scene/StandardView.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/MatrixTransform>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using vfScene::CameraPlacement;
using vfScene::placeCamera;
using vfScene::StandardView;

namespace {

osg::ref_ptr<osg::Geode> pointsAt(const std::vector<osg::Vec3>& places)
{
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(new osg::Vec3Array(places.begin(), places.end()));
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<int>(places.size())));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(geometry);
    return geode;
}

osg::Vec3d project(const CameraPlacement& camera, const osg::Vec3d& point)
{
    return point * (camera.view * camera.projection);
}

struct Extent
{
    double left = 9, right = -9, bottom = 9, top = -9;
};

Extent extentOf(const CameraPlacement& camera, const std::vector<osg::Vec3>& places)
{
    Extent extent;
    for (const osg::Vec3& place : places) {
        const osg::Vec3d p = project(camera, place);
        extent.left = std::min(extent.left, p.x());
        extent.right = std::max(extent.right, p.x());
        extent.bottom = std::min(extent.bottom, p.y());
        extent.top = std::max(extent.top, p.y());
    }
    return extent;
}

} // namespace

TEST(StandardView, EveryViewShowsAllOfTheModelCentredAndAsLargeAsItFits)
{
    std::mt19937 engine(3);
    std::uniform_real_distribution<float> number(-1, 1);
    for (int view = 0; view < vfScene::standardViewCount; ++view) {
        for (const double aspect : {1.6, 0.5}) {
            std::vector<osg::Vec3> places;
            for (int i = 0; i < 200; ++i)
                places.emplace_back(100 + 3 * number(engine), number(engine), -50 + 0.5f * number(engine));
            const CameraPlacement camera =
                placeCamera(*pointsAt(places), static_cast<StandardView>(view), aspect);
            const Extent extent = extentOf(camera, places);
            EXPECT_NEAR(extent.left, -extent.right, 2e-3) << view;
            EXPECT_NEAR(extent.bottom, -extent.top, 2e-3) << view;
            EXPECT_NEAR(0.90, std::max(extent.right, extent.top), 1e-3) << view;
        }
    }
}

TEST(StandardView, TheSixSidesLookAlongTheAxes)
{
    const std::vector<osg::Vec3> places = {{-1, -1, -1}, {1, 1, 1}};
    const osg::ref_ptr<osg::Geode> scene = pointsAt(places);
    const auto direction = [&scene](StandardView view, const osg::Vec3d& axis) {
        const CameraPlacement camera = placeCamera(*scene, view, 1);
        return osg::Matrixd::transform3x3(axis, camera.view);
    };
    const osg::Vec3d x(1, 0, 0);
    const osg::Vec3d y(0, 1, 0);
    const osg::Vec3d z(0, 0, 1);
    const auto expectSame = [](const osg::Vec3d& a, const osg::Vec3d& b) {
        EXPECT_LT((a - b).length(), 1e-9);
    };
    // In the camera's own directions: x to the right, y up, z towards the eye.
    expectSame(x, direction(StandardView::Front, x));
    expectSame(y, direction(StandardView::Front, z));
    expectSame(-x, direction(StandardView::Back, x));
    expectSame(y, direction(StandardView::Back, z));
    expectSame(z, direction(StandardView::Left, -x));
    expectSame(y, direction(StandardView::Left, z));
    expectSame(z, direction(StandardView::Right, x));
    expectSame(y, direction(StandardView::Right, z));
    expectSame(z, direction(StandardView::Top, z));
    expectSame(x, direction(StandardView::Top, x));
    expectSame(z, direction(StandardView::Bottom, -z));
    expectSame(x, direction(StandardView::Bottom, x));
}

TEST(StandardView, TheCornersLookDownFromFourSides)
{
    const osg::ref_ptr<osg::Geode> scene = pointsAt({{-1, -1, -1}, {1, 1, 1}});
    const std::pair<StandardView, std::pair<int, int>> corners[] = {{StandardView::FrontLeft, {-1, -1}},
                                                                    {StandardView::FrontRight, {1, -1}},
                                                                    {StandardView::BackRight, {1, 1}},
                                                                    {StandardView::BackLeft, {-1, 1}}};
    for (const auto& [view, side] : corners) {
        osg::Vec3d eye;
        osg::Vec3d center;
        osg::Vec3d up;
        placeCamera(*scene, view, 1).view.getLookAt(eye, center, up);
        EXPECT_GT(eye.x() * side.first, 0);
        EXPECT_GT(eye.y() * side.second, 0);
        EXPECT_GT(eye.z(), 0);
        EXPECT_GT(up.z(), 0.5);
    }
}

TEST(StandardView, FollowsTransformsAndPassesHiddenNodesOver)
{
    const osg::ref_ptr<osg::MatrixTransform> moved =
        new osg::MatrixTransform(osg::Matrix::translate(10, 0, 0));
    moved->addChild(pointsAt({{-1, -1, -1}, {1, 1, 1}}));
    const osg::ref_ptr<osg::Geode> hidden = pointsAt({{1000, 1000, 1000}});
    hidden->setNodeMask(0);
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(moved);
    scene->addChild(hidden);
    const CameraPlacement camera = placeCamera(*scene, StandardView::Front, 1);
    const Extent extent = extentOf(camera, {{9, -1, -1}, {11, 1, 1}});
    EXPECT_NEAR(0.9, extent.right, 0.2);
    EXPECT_LE(extent.right, 0.9001);
}

TEST(StandardView, APointALineAndNothingAtAllGetASoundCamera)
{
    for (const std::vector<osg::Vec3>& places :
         {std::vector<osg::Vec3>{{5, 5, 5}}, {{0, -1, 0}, {0, 1, 0}}, {}, {{1e6f, 1e6f, 1e6f}}})
    {
        for (int view = 0; view < vfScene::standardViewCount; ++view) {
            const CameraPlacement camera = placeCamera(*pointsAt(places), static_cast<StandardView>(view), 1);
            EXPECT_TRUE(camera.view.valid());
            for (const osg::Vec3& place : places) {
                const osg::Vec3d p = project(camera, place);
                EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()));
                EXPECT_LT((osg::Vec3d(place) * camera.view).z(), 0) << "in front of the camera";
            }
        }
    }
}

TEST(StandardView, NumbersThatAreNotFiniteArePassedOver)
{
    const float nan = std::nanf("");
    const std::vector<osg::Vec3> places = {{-1, -1, -1}, {nan, 0, 0}, {1, 1, 1}};
    const CameraPlacement camera = placeCamera(*pointsAt(places), StandardView::Front, 1);
    EXPECT_TRUE(camera.view.valid());
    EXPECT_NEAR(0.9, extentOf(camera, {{-1, -1, -1}, {1, 1, 1}}).right, 0.2);
}

TEST(StandardView, WithoutPerspectiveTheModelFillsThePictureAsWell)
{
    const std::vector<osg::Vec3> places = {{-3, -1, 4}, {5, 2, 9}, {0, 7, 6}};
    for (int view = 0; view < vfScene::standardViewCount; ++view) {
        for (const double aspect : {1.6, 0.5}) {
            const CameraPlacement camera = placeCamera(*pointsAt(places), static_cast<StandardView>(view),
                                                       aspect, vfScene::Projection::Orthographic);
            const Extent extent = extentOf(camera, places);
            EXPECT_NEAR(extent.left, -extent.right, 1e-6) << view;
            EXPECT_NEAR(extent.bottom, -extent.top, 1e-6) << view;
            EXPECT_NEAR(0.90, std::max(extent.right, extent.top), 1e-6) << view;
        }
    }
}

TEST(StandardView, APartIsLookedAtWhereItHangsAndFromTheSameDirection)
{
    const osg::ref_ptr<osg::MatrixTransform> place =
        new osg::MatrixTransform(osg::Matrix::scale(2, 2, 2) * osg::Matrix::translate(100, 50, 20));
    const std::vector<osg::Vec3> places = {{-1, -1, -1}, {1, 1, 1}, {1, -1, 0}};
    const osg::ref_ptr<osg::Geode> part = pointsAt(places);
    place->addChild(part);
    const vfScene::LookAt from = {{3, 4, 5}, {1, 1, 1}, {0, 0, 1}};
    for (const auto projection : {vfScene::Projection::Perspective, vfScene::Projection::Orthographic}) {
        const CameraPlacement camera = placeCamera(*part, from, 1.5, projection);
        std::vector<osg::Vec3> there;
        for (const osg::Vec3& point : places)
            there.push_back(point * place->getMatrix());
        const Extent extent = extentOf(camera, there);
        EXPECT_NEAR(0.90, std::max(extent.right, extent.top), 2e-3);
        osg::Vec3d direction = camera.lookAt.eye - camera.lookAt.centre;
        direction.normalize();
        osg::Vec3d wanted = from.eye - from.centre;
        wanted.normalize();
        EXPECT_NEAR(1, direction * wanted, 1e-9);
    }
    // Who looks nowhere looks from the front.
    const CameraPlacement camera =
        placeCamera(*part, {{1, 1, 1}, {1, 1, 1}, {0, 0, 1}}, 1, vfScene::Projection::Perspective);
    EXPECT_GT(0, (camera.lookAt.eye - camera.lookAt.centre).y());
}

TEST(StandardView, WhatIsAtTheCentreIsAsLargeInBothProjections)
{
    const vfScene::LookAt from = {{0, -10, 0}, {0, 0, 0}, {0, 0, 1}};
    const CameraPlacement one = vfScene::placementOf(from, 1.3, vfScene::Projection::Perspective);
    const CameraPlacement other = vfScene::placementOf(from, 1.3, vfScene::Projection::Orthographic);
    const osg::Vec3d point(1, 0, 0.5);
    EXPECT_NEAR(project(one, point).x(), project(other, point).x(), 1e-9);
    EXPECT_NEAR(project(one, point).y(), project(other, point).y(), 1e-9);
}

TEST(StandardView, PointsOfAnyPrecisionAndShapesAreSeenWhole)
{
    const std::vector<osg::Vec3> corners{{-3, -1, -1}, {3, -1, -1}, {-3, 1, -1}, {3, 1, -1},
                                         {-3, -1, 1},  {3, -1, 1},  {-3, 1, 1},  {3, 1, 1}};
    const osg::ref_ptr<osg::Geometry> precise = new osg::Geometry;
    precise->setVertexArray(new osg::Vec3dArray(corners.begin(), corners.end()));
    precise->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<int>(corners.size())));
    const osg::ref_ptr<osg::Drawable> bounded = new osg::Drawable;
    bounded->setInitialBound({-3, -1, -1, 3, 1, 1});
    const osg::ref_ptr<osg::MatrixTransform> moved =
        new osg::MatrixTransform(osg::Matrixd::translate(100, 0, 0) * osg::Matrixd::scale(2, 2, 2));
    std::vector<osg::Vec3> places;
    for (const osg::Vec3& corner : corners)
        places.push_back(corner * moved->getMatrix());
    for (osg::Drawable* drawable : {static_cast<osg::Drawable*>(precise.get()), bounded.get()}) {
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        geode->addDrawable(drawable);
        moved->removeChildren(0, moved->getNumChildren());
        moved->addChild(geode);
        const Extent extent = extentOf(placeCamera(*moved, StandardView::Front, 1.0), places);
        EXPECT_NEAR(-0.9, extent.left, 1e-3);
        EXPECT_NEAR(0.9, extent.right, 1e-3);
        EXPECT_NEAR(-extent.top, extent.bottom, 1e-3);
    }
}
