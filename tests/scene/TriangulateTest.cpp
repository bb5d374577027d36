// SPDX-License-Identifier: MIT
#include <velaforge/scene/Triangulate.h>

#include <osg/Vec3d>

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using testing::ElementsAre;
using vfScene::triangulate;

namespace {

/// The sum of what the triangles cover, each as a vector along its normal.
osg::Vec3d covered(const std::vector<osg::Vec3>& points, const std::vector<unsigned int>& triangles,
                   double& absolute)
{
    osg::Vec3d sum;
    absolute = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const osg::Vec3d a = points.at(triangles[i]);
        const osg::Vec3d area =
            (osg::Vec3d(points.at(triangles[i + 1])) - a) ^ (osg::Vec3d(points.at(triangles[i + 2])) - a);
        sum += area;
        absolute += area.length();
    }
    return sum;
}

/// Expects that the triangles cover the polygon once.
void expectCovered(const std::vector<osg::Vec3>& points)
{
    std::vector<unsigned int> triangles;
    triangulate(points, triangles);
    ASSERT_EQ((points.size() - 2) * 3, triangles.size());
    std::vector<unsigned int> fan;
    for (unsigned int i = 2; i < points.size(); ++i)
        fan.insert(fan.end(), {0, i - 1, i});
    double absolute = 0;
    double ofFan = 0;
    const osg::Vec3d sum = covered(points, triangles, absolute);
    EXPECT_NEAR(0, (sum - covered(points, fan, ofFan)).length(), 1e-4 * sum.length())
        << "the area of the polygon";
    EXPECT_NEAR(sum.length(), absolute, 1e-4 * absolute) << "and no triangle upon another";
}

} // namespace

TEST(Triangulate, AConvexOneBecomesAFan)
{
    std::vector<unsigned int> triangles;
    triangulate({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, triangles);
    EXPECT_THAT(triangles, ElementsAre(0, 1, 2, 0, 2, 3));
}

TEST(Triangulate, ATriangleIsOne)
{
    std::vector<unsigned int> triangles;
    triangulate({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, triangles);
    EXPECT_THAT(triangles, ElementsAre(0, 1, 2));
}

TEST(Triangulate, OneWithADentIsCoveredOnce)
{
    expectCovered({{0, 0, 0}, {2, 0, 0}, {0.5f, 0.5f, 0}, {0, 2, 0}});
    expectCovered({{0, 0, 0}, {0, 2, 0}, {0.5f, 0.5f, 0}, {2, 0, 0}}); // the other way round
}

TEST(Triangulate, LiesInAnyPlane)
{
    for (const osg::Vec3& x :
         {osg::Vec3(1, 0, 0), osg::Vec3(0, 1, 0), osg::Vec3(0, 0, 1), osg::Vec3(1, 2, -1)}) {
        for (const osg::Vec3& y : {osg::Vec3(0, -1, 0.5f), osg::Vec3(0.3f, 0, 1), osg::Vec3(-1, 0.2f, 0.1f)})
        {
            std::vector<osg::Vec3> points;
            for (const auto& [u, v] : {std::pair(0, 0), {4, 0}, {4, 3}, {2, 1}, {0, 3}})
                points.push_back(x * static_cast<float>(u) + y * static_cast<float>(v));
            expectCovered(points);
        }
    }
}

TEST(Triangulate, StarsOfManyCornersAreCoveredOnce)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> length(0.2f, 1);
    for (const int corners : {7, 50, 333}) {
        std::vector<osg::Vec3> points;
        for (int i = 0; i < corners; ++i) {
            const float angle = 6.2831853f * static_cast<float>(i) / static_cast<float>(corners);
            const float radius = length(random);
            points.emplace_back(radius * std::cos(angle), radius * std::sin(angle),
                                0.3f * radius * std::cos(angle));
        }
        expectCovered(points);
    }
}

TEST(Triangulate, OneThatCrossesItselfOrHasNoAreaStillGivesItsTriangles)
{
    const std::vector<std::vector<osg::Vec3>> cases = {
        {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}},
        {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}},
        {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}},
        {{0, 0, 0}, {NAN, 0, 0}, {1, 1, 0}, {0, NAN, 0}, {2, 2, 2}},
    };
    for (const auto& points : cases) {
        std::vector<unsigned int> triangles;
        triangulate(points, triangles);
        EXPECT_EQ((points.size() - 2) * 3, triangles.size());
    }
}
