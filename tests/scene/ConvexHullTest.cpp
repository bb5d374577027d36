// SPDX-License-Identifier: MIT
#include "support/ThreadSanitizer.h"

#include <velaforge/scene/ConvexHull.h>

#include <osg/Vec3d>
#include <osg/ref_ptr>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <thread>

using vfScene::hullOf;

namespace {

osg::ref_ptr<osg::Vec3Array> cloud(int count, unsigned int seed = 1)
{
    std::mt19937 random(seed);
    std::normal_distribution<float> spread;
    osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    for (int i = 0; i < count; ++i)
        points->push_back({3 * spread(random), spread(random) + 100, 0.2f * spread(random)});
    return points;
}

template <class Points>
double reach(const Points& points, const osg::Vec3d& direction)
{
    double most = std::numeric_limits<double>::lowest();
    for (const osg::Vec3& point : points)
        most = std::max(most, osg::Vec3d(point) * direction);
    return most;
}

} // namespace

TEST(ConvexHull, OfFewPointsIsAllOfThem)
{
    const auto points = cloud(100);
    EXPECT_EQ(std::vector<osg::Vec3>(points->begin(), points->end()), *hullOf(*points));
}

TEST(ConvexHull, ReachesAsFarAsAllPointsOnEverySide)
{
    const auto points = cloud(300000);
    const auto outline = hullOf(*points);
    EXPECT_LT(outline->size(), points->size() / 2);
    std::mt19937 random(5);
    std::normal_distribution<double> spread;
    for (int i = 0; i < 200; i += vfTest::stepOfSearch) {
        osg::Vec3d direction(spread(random), spread(random), spread(random));
        direction.normalize();
        const double all = reach(*points, direction);
        const double size = all + reach(*points, -direction);
        EXPECT_LE(reach(*outline, direction), all);
        EXPECT_NEAR(all, reach(*outline, direction), 0.01 * std::max(size, 25.0));
    }
}

TEST(ConvexHull, ReachesToAnyPoint)
{
    // However many there are, and wherever the farthest stands among them.
    for (int count = 5000; count < 5013; count += vfTest::stepOfSearch) {
        const auto points = cloud(count);
        for (const int far :
             {0, 1, 2, 3, 2499, 2500, 2501, count / 2, count - 4, count - 3, count - 2, count - 1}) {
            const osg::Vec3 kept = (*points)[static_cast<std::size_t>(far)];
            for (int axis = 0; axis < 3; ++axis) {
                osg::Vec3d direction;
                direction[axis] = far % 2 ? 1 : -1;
                (*points)[static_cast<std::size_t>(far)] = osg::Vec3(direction * 700);
                points->dirty();
                EXPECT_NEAR(700, reach(*hullOf(*points), direction), 1e-3) << count << " " << far;
            }
            (*points)[static_cast<std::size_t>(far)] = kept;
        }
    }
}

TEST(ConvexHull, IsRememberedUntilThePointsChange)
{
    const auto points = cloud(10000);
    const auto before = hullOf(*points);
    EXPECT_EQ(before, hullOf(*points));
    (*points)[0].set(500, 100, 0);
    points->dirty();
    EXPECT_NE(before, hullOf(*points));
    EXPECT_NEAR(500, reach(*hullOf(*points), {1, 0, 0}), 1e-3);
    points->push_back({-900, 100, 0});
    EXPECT_NEAR(900, reach(*hullOf(*points), {-1, 0, 0}), 1e-3);
}

TEST(ConvexHull, PointsThatAreNoneAreLeftOut)
{
    const auto points = cloud(10000);
    (*points)[5].set(NAN, 0, 0);
    (*points)[6].set(INFINITY, 0, 0);
    (*points)[7].set(3e38f, 3e38f, 0);
    for (const osg::Vec3& point : *hullOf(*points))
        EXPECT_TRUE(std::isfinite(point.length2()));
    (*points)[7].set(3e38f, 0, 0);
    (*points)[8].set(-3e38f, 0, 0); // between them there is more than a number can tell
    points->dirty();
    EXPECT_FALSE(hullOf(*points)->empty());
    const osg::ref_ptr<osg::Vec3Array> same = new osg::Vec3Array(10000);
    EXPECT_EQ(1u, hullOf(*same)->size());
}

TEST(ConvexHull, OfManyArraysEachIsRemembered)
{
    std::vector<osg::ref_ptr<osg::Vec3Array>> arrays;
    std::vector<std::shared_ptr<const vfScene::ConvexHull>> hulls;
    for (int i = 0; i < 100; ++i) {
        arrays.push_back(cloud(5000));
        hulls.push_back(hullOf(*arrays.back()));
        if (i % 3 == 0)
            arrays[static_cast<std::size_t>(i) / 2] = nullptr; // and those that are gone are forgotten
    }
    for (std::size_t i = 0; i < arrays.size(); ++i) {
        if (arrays[i]) {
            EXPECT_EQ(hulls[i], hullOf(*arrays[i])) << i;
        }
    }
}

TEST(ConvexHull, MayBeWorkedOutOnAnotherThreadAndRemembered)
{
    const auto points = cloud(20000);
    std::shared_ptr<const vfScene::ConvexHull> there;
    std::thread([&] { there = vfScene::computeHull(*points); }).join();
    vfScene::rememberHull(*points, there);
    EXPECT_EQ(there, hullOf(*points));
}
