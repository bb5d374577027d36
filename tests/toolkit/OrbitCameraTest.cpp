// SPDX-License-Identifier: MIT
// How a camera moves when the user orbits, pans and zooms.
#include <velaforge/toolkit/OrbitCamera.h>

#include <gtest/gtest.h>

#include <osg/Math>
#include <osg/Matrixd>

#include <cmath>
#include <limits>
#include <random>

using vfApplication::OrbitCamera;

namespace {

constexpr OrbitCamera::Limits anywhere{0, std::numeric_limits<double>::infinity()};

/// Looks north at the origin, from eye level.
OrbitCamera levelCamera()
{
    OrbitCamera camera;
    camera.lookAt({0, -10, 0}, {0, 0, 0}, {0, 0, 1});
    return camera;
}

void expectEqual(const osg::Vec3d& expected, const osg::Vec3d& actual)
{
    EXPECT_LT((expected - actual).length(), 1e-9)
        << actual.x() << ' ' << actual.y() << ' ' << actual.z() << " instead of " << expected.x() << ' '
        << expected.y() << ' ' << expected.z();
}

/// Returns where the camera sees a point: to the right, upwards, and how far ahead.
osg::Vec3d seen(const OrbitCamera& camera, const osg::Vec3d& point)
{
    const osg::Vec3d local = point * camera.toCamera();
    return {local.x() / -local.z(), local.y() / -local.z(), -local.z()};
}

double roll(const OrbitCamera& camera)
{
    return osg::RadiansToDegrees(std::asin(camera.right().z()));
}

} // namespace

TEST(OrbitCamera, ReadsBackWhatWasSet)
{
    OrbitCamera camera;
    camera.lookAt({1, 2, 3}, {4, -5, 6}, {0.1, 0.2, 1});
    expectEqual({1, 2, 3}, camera.eye());
    expectEqual({4, -5, 6}, camera.centre());
    expectEqual({4, -5, 6}, camera.pivot());
    EXPECT_NEAR(0, camera.up() * camera.ahead(), 1e-12);
    EXPECT_LT(0, camera.up().z());
}

TEST(OrbitCamera, ItsMatricesAreThoseOfTheScene)
{
    OrbitCamera camera;
    camera.lookAt({1, 2, 3}, {4, -5, 6}, {0.1, 0.2, 1});
    const osg::Matrixd expected =
        osg::Matrixd::lookAt(osg::Vec3d(1, 2, 3), osg::Vec3d(4, -5, 6), osg::Vec3d(0.1, 0.2, 1));
    const osg::Matrixd back = osg::Matrixd::inverse(expected);
    for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(expected.ptr()[i], camera.toCamera().ptr()[i], 1e-12) << i;
        EXPECT_NEAR(back.ptr()[i], camera.toScene().ptr()[i], 1e-12) << i;
    }
}

TEST(OrbitCamera, FindsAnOrientationWhereNoneIsTold)
{
    OrbitCamera camera;
    camera.lookAt({0, 0, 5}, {0, 0, 0}, {0, 0, 1}); // upwards is the line of sight
    EXPECT_NEAR(0, camera.up() * camera.ahead(), 1e-12);
    EXPECT_NEAR(1, camera.up().length(), 1e-12);
    camera.lookAt({1, 1, 1}, {1, 1, 1}, {0, 0, 0});
    EXPECT_NEAR(1, camera.ahead().length(), 1e-12);
    EXPECT_NEAR(1, camera.up().length(), 1e-12);
    EXPECT_LT(0, camera.distance());
}

TEST(OrbitCamera, ADragToTheRightMovesTheNearSideToTheRight)
{
    for (const auto style : {OrbitCamera::Style::Turntable, OrbitCamera::Style::Trackball}) {
        OrbitCamera camera = levelCamera();
        camera.setStyle(style);
        const osg::Vec3d nearSide(0, -1, 0);
        const osg::Vec3d before = seen(camera, nearSide);
        camera.orbit(5, 3);
        EXPECT_LT(before.x(), seen(camera, nearSide).x());
        EXPECT_GT(before.y(), seen(camera, nearSide).y());
    }
}

TEST(OrbitCamera, TurnsByTheAngleThatWasTold)
{
    OrbitCamera camera = levelCamera();
    camera.orbit(90, 0);
    expectEqual({-10, 0, 0}, camera.eye());
    expectEqual({0, 0, 0}, camera.centre());
    camera.orbit(0, 30);
    EXPECT_NEAR(10 * std::sin(osg::DegreesToRadians(30.0)), camera.eye().z(), 1e-9);
}

TEST(OrbitCamera, KeepsTheHorizonOnATurntable)
{
    OrbitCamera camera = levelCamera();
    std::mt19937 random(7);
    std::uniform_real_distribution<double> degrees(-40, 40);
    for (int i = 0; i < 10000; ++i) {
        camera.orbit(degrees(random), degrees(random));
        ASSERT_NEAR(0, camera.right().z(), 1e-9) << "after step " << i;
        ASSERT_LE(-1e-9, camera.up().z()) << "upside down after step " << i;
    }
    EXPECT_NEAR(10, (camera.eye() - camera.pivot()).length(), 1e-6);
}

TEST(OrbitCamera, StopsAtThePolesAndComesBackTheSameWay)
{
    OrbitCamera camera = levelCamera();
    camera.orbit(0, 500);
    expectEqual({0, 0, 10}, camera.eye());
    expectEqual({0, 1, 0}, camera.up());
    camera.orbit(0, -90);
    expectEqual({0, -10, 0}, camera.eye());
    expectEqual({0, 0, 1}, camera.up());
    camera.orbit(0, -500);
    expectEqual({0, 0, -10}, camera.eye());
    camera.orbit(90, 0); // turns the picture about its middle
    expectEqual({0, 0, -10}, camera.eye());
    camera.orbit(0, 90);
    EXPECT_NEAR(-10, camera.eye().x(), 1e-9);
}

TEST(OrbitCamera, BeginsToTurnFromAViewFromAbove)
{
    OrbitCamera camera;
    camera.lookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    camera.orbit(0, -30);
    EXPECT_GT(0, camera.eye().y());
    EXPECT_NEAR(0, camera.eye().x(), 1e-9);
    EXPECT_NEAR(0, roll(camera), 1e-6);
}

TEST(OrbitCamera, RightsARolledCameraAsItTurnsAndNotAtOnce)
{
    OrbitCamera camera;
    camera.lookAt({0, -10, 0}, {0, 0, 0}, {0.5, 0, std::sqrt(0.75)});
    const double rolled = std::fabs(roll(camera));
    EXPECT_NEAR(30, rolled, 1e-6);
    camera.orbit(1, 0);
    EXPECT_NEAR(rolled - 2, std::fabs(roll(camera)), 0.1);
    camera.orbit(20, 0);
    EXPECT_NEAR(0, roll(camera), 1e-6);
}

TEST(OrbitCamera, ATurntableStandsUprightInASceneWithAnotherUpAxis)
{
    OrbitCamera camera;
    camera.setUpAxis({0, 2, 0});
    camera.lookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    camera.orbit(37, 21);
    camera.orbit(-80, 10);
    EXPECT_NEAR(0, camera.right().y(), 1e-9);
    camera.setUpAxis({0, 0, 0}); // means nothing, and changes nothing
    camera.orbit(10, 0);
    EXPECT_NEAR(0, camera.right().y(), 1e-9);
}

TEST(OrbitCamera, ThePivotStaysWhereItIsInThePicture)
{
    for (const auto style : {OrbitCamera::Style::Turntable, OrbitCamera::Style::Trackball}) {
        OrbitCamera camera = levelCamera();
        camera.setStyle(style);
        const osg::Vec3d corner(2, 1, -1);
        camera.setPivot(corner);
        const osg::Vec3d before = seen(camera, corner);
        camera.orbit(25, -15);
        expectEqual(before, seen(camera, corner));
        camera.orbit(-70, 40);
        expectEqual(before, seen(camera, corner));
    }
}

TEST(OrbitCamera, WhatIsZoomedToStaysWhereItIsInThePicture)
{
    OrbitCamera camera = levelCamera();
    const osg::Vec3d corner(2, 1, -1);
    const osg::Vec3d before = seen(camera, corner);
    camera.zoom(0.5, corner, anywhere);
    const osg::Vec3d after = seen(camera, corner);
    EXPECT_NEAR(before.x(), after.x(), 1e-12);
    EXPECT_NEAR(before.y(), after.y(), 1e-12);
    EXPECT_NEAR(0.5 * before.z(), after.z(), 1e-12);
    EXPECT_NEAR(5, camera.distance(), 1e-12);
    camera.zoom(2, corner, anywhere);
    expectEqual({0, -10, 0}, camera.eye());
    EXPECT_NEAR(10, camera.distance(), 1e-12);
}

TEST(OrbitCamera, NeverZoomsThroughASurfaceNorLosesTheScene)
{
    OrbitCamera camera = levelCamera();
    const OrbitCamera::Limits limits{0.01, 500};
    const osg::Vec3d surface(0, -1, 0);
    for (int i = 0; i < 200; ++i)
        camera.zoom(1 / 1.2, surface, limits);
    EXPECT_NEAR(0.01, (camera.eye() - surface).length(), 1e-9);
    camera.zoom(1.2, surface, limits); // the way back begins at once
    EXPECT_NEAR(0.012, (camera.eye() - surface).length(), 1e-9);
    for (int i = 0; i < 200; ++i)
        camera.zoom(1.2, surface, limits);
    EXPECT_NEAR(500, (camera.eye() - surface).length(), 1e-6);
    camera.zoom(0.5, surface, limits);
    EXPECT_NEAR(250, (camera.eye() - surface).length(), 1e-6);
}

TEST(OrbitCamera, ComesBackFromBeyondTheLimits)
{
    OrbitCamera camera = levelCamera();
    const OrbitCamera::Limits tooFar{0.01, 5};
    camera.zoom(1.2, {0, 0, 0}, tooFar);
    EXPECT_NEAR(10, (camera.eye()).length(), 1e-9);
    camera.zoom(0.9, {0, 0, 0}, tooFar);
    EXPECT_NEAR(9, (camera.eye()).length(), 1e-9);
    const OrbitCamera::Limits tooNear{20, 50};
    camera.zoom(0.9, {0, 0, 0}, tooNear);
    EXPECT_NEAR(9, (camera.eye()).length(), 1e-9);
    camera.zoom(2, {0, 0, 0}, tooNear);
    EXPECT_NEAR(18, (camera.eye()).length(), 1e-9);
}

TEST(OrbitCamera, DoesNotZoomByWhatIsNoFactorNorFromThePointItself)
{
    OrbitCamera camera = levelCamera();
    for (const double factor : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()})
        camera.zoom(factor, {0, 0, 0}, anywhere);
    camera.zoom(0.5, camera.eye(), anywhere);
    expectEqual({0, -10, 0}, camera.eye());
}

TEST(OrbitCamera, PanningDoesNotTurn)
{
    OrbitCamera camera = levelCamera();
    camera.pan({1, 2, 3});
    expectEqual({1, -8, 3}, camera.eye());
    expectEqual({1, 2, 3}, camera.centre());
    expectEqual({0, 0, 0}, camera.pivot());
    EXPECT_NEAR(8, camera.depthOf({0, 0, 0}), 1e-12);
}
