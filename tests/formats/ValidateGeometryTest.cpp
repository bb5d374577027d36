// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ValidateGeometry.h>

#include <osg/Geometry>

#include <gtest/gtest.h>

#include <vector>

using vfFormats::validateGeometry;

namespace {

osg::ref_ptr<osg::Geometry> withPoints(unsigned int count)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, count));
    return geometry;
}

template <class Elements>
osg::PrimitiveSet* elements(std::initializer_list<unsigned int> indices)
{
    auto* set = new Elements(GL_TRIANGLES);
    for (const unsigned int index : indices)
        set->push_back(static_cast<typename Elements::value_type>(index));
    return set;
}

/// @return how many of the primitive sets are left beside three points
unsigned int left(const std::vector<osg::ref_ptr<osg::PrimitiveSet>>& sets)
{
    const auto geometry = withPoints(3);
    for (const auto& set : sets)
        geometry->addPrimitiveSet(set);
    const bool isChanged = validateGeometry(*geometry);
    EXPECT_EQ(isChanged, geometry->getNumPrimitiveSets() < sets.size());
    return geometry->getNumPrimitiveSets();
}

} // namespace

TEST(ValidateGeometry, PrimitivesOfPointsThatAreThereStay)
{
    osg::ref_ptr<osg::DrawArrayLengths> lengths = new osg::DrawArrayLengths(GL_TRIANGLES, 0);
    lengths->push_back(3);
    EXPECT_EQ(5u,
              left({elements<osg::DrawElementsUInt>({0, 1, 2}), elements<osg::DrawElementsUShort>({0, 1, 2}),
                    elements<osg::DrawElementsUByte>({0, 1, 2}), new osg::DrawArrays(GL_TRIANGLES, 0, 3),
                    lengths}));
    EXPECT_EQ(1u, left({elements<osg::DrawElementsUInt>({})}));
}

TEST(ValidateGeometry, OthersGo)
{
    osg::ref_ptr<osg::DrawArrayLengths> lengths = new osg::DrawArrayLengths(GL_TRIANGLES, 1);
    lengths->push_back(3);
    EXPECT_EQ(0u,
              left({elements<osg::DrawElementsUInt>({0, 1, 3}), elements<osg::DrawElementsUInt>({0, ~0u, 1}),
                    elements<osg::DrawElementsUShort>({0, 0xffff, 2}),
                    elements<osg::DrawElementsUByte>({0, 1, 9}), new osg::DrawArrays(GL_TRIANGLES, 1, 3),
                    new osg::DrawArrays(GL_TRIANGLES, -1, 2), new osg::DrawArrays(GL_TRIANGLES, 0, -1),
                    new osg::DrawArrays(GL_TRIANGLES, 0x7fffffff, 0x7fffffff), lengths}));
    EXPECT_EQ(1u,
              left({elements<osg::DrawElementsUInt>({0, 1, 3}), elements<osg::DrawElementsUInt>({0, 1, 2})}));
}

TEST(ValidateGeometry, ArraysThatAreTooShortGo)
{
    const auto geometry = withPoints(4);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
    geometry->setNormalArray(new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, 3));
    geometry->setColorArray(new osg::Vec4Array(osg::Array::BIND_OVERALL, 1));
    geometry->setTexCoordArray(0, new osg::Vec2Array(osg::Array::BIND_PER_VERTEX, 4));
    geometry->setTexCoordArray(1, new osg::Vec2Array(osg::Array::BIND_PER_VERTEX, 1));
    EXPECT_TRUE(validateGeometry(*geometry));
    EXPECT_FALSE(geometry->getNormalArray());
    EXPECT_TRUE(geometry->getColorArray());
    EXPECT_TRUE(geometry->getTexCoordArray(0));
    EXPECT_FALSE(geometry->getTexCoordArray(1));
    EXPECT_FALSE(validateGeometry(*geometry)) << "nothing more to take";
}
