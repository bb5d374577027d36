// SPDX-License-Identifier: MIT
#include <velaforge/scene/Normals.h>

#include <osg/Geometry>

#include <gtest/gtest.h>

#include <cmath>

using vfScene::makeNormals;

namespace {

const double crease = 30 * osg::PI / 180;

osg::ref_ptr<osg::Geometry> geometryOf(const std::vector<osg::Vec3>& points,
                                       const std::vector<unsigned int>& corners)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(new osg::Vec3Array(points.begin(), points.end()));
    geometry->getVertexArray()->setBinding(osg::Array::BIND_PER_VERTEX);
    geometry->addPrimitiveSet(new osg::DrawElementsUInt(GL_TRIANGLES, corners.begin(), corners.end()));
    return geometry;
}

const osg::Vec3Array& pointsOf(const osg::Geometry& geometry)
{
    return dynamic_cast<const osg::Vec3Array&>(*geometry.getVertexArray());
}

const osg::Vec3Array& normalsOf(const osg::Geometry& geometry)
{
    return dynamic_cast<const osg::Vec3Array&>(*geometry.getNormalArray());
}

/// Two squares that share an edge along y, the second bent up by an angle.
osg::ref_ptr<osg::Geometry> bent(double angle)
{
    const auto x = static_cast<float>(1 + std::cos(angle));
    const auto z = static_cast<float>(std::sin(angle));
    return geometryOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {x, 0, z}, {x, 1, z}},
                      {0, 1, 2, 0, 2, 3, 1, 4, 5, 1, 5, 2});
}

} // namespace

TEST(Normals, FacesThatMeetAtLessThanTheAngleAreOneSurface)
{
    const auto geometry = bent(20 * osg::PI / 180);
    makeNormals(*geometry, crease);
    EXPECT_EQ(6u, pointsOf(*geometry).size());
    const osg::Vec3 middle = normalsOf(*geometry)[1];
    EXPECT_NEAR(1, middle.length(), 1e-5);
    EXPECT_NEAR(-std::sin(10 * osg::PI / 180), middle.x(), 0.07) << "between the two";
    EXPECT_GT(normalsOf(*geometry)[0].z(), 0.999f);
}

TEST(Normals, FacesThatMeetAtMoreHaveAnEdgeWithItsPointsDoubled)
{
    const auto geometry = bent(60 * osg::PI / 180);
    makeNormals(*geometry, crease);
    const osg::Vec3Array& points = pointsOf(*geometry);
    ASSERT_EQ(8u, points.size());
    ASSERT_EQ(8u, normalsOf(*geometry).size());
    const osg::PrimitiveSet& triangles = *geometry->getPrimitiveSet(0);
    for (unsigned int i = 0; i < triangles.getNumIndices(); i += 3) {
        const osg::Vec3 a = points[triangles.index(i)];
        osg::Vec3 face = (points[triangles.index(i + 1)] - a) ^ (points[triangles.index(i + 2)] - a);
        face.normalize();
        for (unsigned int corner = i; corner < i + 3; ++corner)
            EXPECT_NEAR(1, normalsOf(*geometry)[triangles.index(corner)] * face, 1e-5) << "flat";
    }
}

TEST(Normals, PointsInOnePlaceCountAsOneWhereTrianglesShareNoPoints)
{
    const auto shared = bent(20 * osg::PI / 180);
    std::vector<osg::Vec3> points;
    std::vector<unsigned int> corners;
    for (unsigned int i = 0; i < shared->getPrimitiveSet(0)->getNumIndices(); ++i) {
        osg::Vec3 point = pointsOf(*shared)[shared->getPrimitiveSet(0)->index(i)];
        if (i % 2 && point.x() == 0)
            point.x() = -0.0f; // which is the same place
        points.push_back(point);
        corners.push_back(i);
    }
    const auto apart = geometryOf(points, corners);
    makeNormals(*shared, crease);
    makeNormals(*apart, crease);
    for (unsigned int i = 0; i < corners.size(); ++i) {
        const osg::Vec3 expected = normalsOf(*shared)[shared->getPrimitiveSet(0)->index(i)];
        EXPECT_NEAR(1, expected * normalsOf(*apart)[apart->getPrimitiveSet(0)->index(i)], 1e-5) << i;
    }
}

TEST(Normals, WhatBelongsToAPointGoesWithItsDouble)
{
    const auto geometry = bent(60 * osg::PI / 180);
    auto* places = new osg::Vec2Array(osg::Array::BIND_PER_VERTEX);
    for (int i = 0; i < 6; ++i)
        places->push_back({static_cast<float>(i), 0.5f});
    geometry->setTexCoordArray(0, places);
    const std::vector<osg::Vec3> before(pointsOf(*geometry).begin(), pointsOf(*geometry).end());
    makeNormals(*geometry, crease);
    const auto& after = dynamic_cast<const osg::Vec2Array&>(*geometry->getTexCoordArray(0));
    ASSERT_EQ(8u, after.size());
    for (unsigned int i = 6; i < 8; ++i)
        EXPECT_EQ(before[static_cast<std::size_t>(after[i].x())], pointsOf(*geometry)[i]);
}

TEST(Normals, LinesAndPrimitiveSetsStayApart)
{
    const auto geometry = bent(60 * osg::PI / 180);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_LINE_STRIP, 0, 6));
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_QUADS, 0, 4));
    makeNormals(*geometry, crease);
    ASSERT_EQ(3u, geometry->getNumPrimitiveSets());
    EXPECT_EQ(12u, geometry->getPrimitiveSet(0)->getNumIndices());
    EXPECT_EQ(static_cast<GLenum>(GL_LINE_STRIP), geometry->getPrimitiveSet(1)->getMode());
    EXPECT_EQ(3u, geometry->getPrimitiveSet(1)->index(3));
    EXPECT_EQ(static_cast<GLenum>(GL_TRIANGLES), geometry->getPrimitiveSet(2)->getMode());
    EXPECT_EQ(6u, geometry->getPrimitiveSet(2)->getNumIndices());
}

TEST(Normals, AFanOfManyFacesIsRoundAtItsTip)
{
    constexpr int count = 2000;
    std::vector<osg::Vec3> points = {{0, 0, 3}};
    std::vector<unsigned int> corners;
    for (unsigned int i = 0; i < count; ++i) {
        const double angle = 2 * osg::PI * i / count;
        points.emplace_back(static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), 0.0f);
        corners.insert(corners.end(), {0, 1 + i, 1 + (i + 1) % count});
    }
    const auto geometry = geometryOf(points, corners);
    makeNormals(*geometry, crease);
    EXPECT_EQ(points.size(), pointsOf(*geometry).size());
    EXPECT_NEAR(1, normalsOf(*geometry)[0].z(), 1e-3);
    EXPECT_NEAR(0, normalsOf(*geometry)[1].y(), 0.01);
}

TEST(Normals, TrianglesWithoutAnAreaAndIndicesWithoutAPointDoNoHarm)
{
    const auto geometry =
        geometryOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2, 0, 0, 1, 1, 1, 1, 0, 1, 77});
    makeNormals(*geometry, crease);
    for (const osg::Vec3& normal : normalsOf(*geometry))
        EXPECT_NEAR(1, normal.length(), 1e-5);
}
