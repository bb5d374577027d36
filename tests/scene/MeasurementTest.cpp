// SPDX-License-Identifier: MIT
#include <velaforge/scene/Measurement.h>

#include <gtest/gtest.h>

using vfScene::describe;
using vfScene::describeLength;
using vfScene::LengthUnit;
using vfScene::measure;
using vfScene::MeasureKind;
using vfScene::Units;

TEST(Measurement, ADistanceIsThatBetweenTwoPoints)
{
    EXPECT_DOUBLE_EQ(5, measure(MeasureKind::Distance, {{1, 1, 1}, {4, 5, 1}})->value);
    EXPECT_DOUBLE_EQ(0, measure(MeasureKind::Distance, {{1, 1, 1}, {1, 1, 1}})->value);
    EXPECT_NEAR(1e-3, measure(MeasureKind::Distance, {{1e6, 0, 0}, {1e6 + 1e-3, 0, 0}})->value, 1e-9);
}

TEST(Measurement, AnAngleIsThatAtTheSecondPoint)
{
    const auto angle = [](const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c) {
        return measure(MeasureKind::Angle, {a, b, c})->value;
    };
    EXPECT_NEAR(90, angle({1, 0, 0}, {0, 0, 0}, {0, 7, 0}), 1e-12);
    EXPECT_NEAR(180, angle({1, 0, 0}, {0, 0, 0}, {-2, 0, 0}), 1e-12);
    EXPECT_NEAR(0, angle({1, 0, 0}, {0, 0, 0}, {3, 0, 0}), 1e-12);
    EXPECT_NEAR(60, angle({1, 0, 0}, {0, 1, 0}, {0, 0, 1}), 1e-12);
    EXPECT_NEAR(1e-6, angle({1, 0, 0}, {0, 0, 0}, {1, 1e-6 * osg::PI / 180, 0}), 1e-12);
}

TEST(Measurement, ARadiusIsThatOfTheCircleThroughThreePoints)
{
    const auto found = measure(MeasureKind::Radius, {{5, 2, 1}, {3, 4, 1}, {1, 2, 1}});
    ASSERT_TRUE(found);
    EXPECT_NEAR(2, found->value, 1e-12);
    // What is drawn for it lies on it all around.
    const auto line = vfScene::lineOf(*found);
    ASSERT_LT(50u, line.size());
    osg::Vec3d sum;
    for (const osg::Vec3d& point : line) {
        EXPECT_NEAR(2, (point - osg::Vec3d(3, 2, 1)).length(), 1e-9);
        EXPECT_NEAR(1, point.z(), 1e-9);
        sum += point;
    }
    EXPECT_NEAR(0, (line.front() - line.back()).length(), 1e-9);
    EXPECT_NEAR(0, (sum / static_cast<double>(line.size()) - osg::Vec3d(3, 2, 1)).length(), 0.1);
    EXPECT_EQ(2u, vfScene::lineOf(*measure(MeasureKind::Distance, {{0, 0, 0}, {1, 0, 0}})).size());
}

TEST(Measurement, WhatIsNotThereIsNotMeasured)
{
    EXPECT_FALSE(measure(MeasureKind::Distance, {}));
    EXPECT_FALSE(measure(MeasureKind::Distance, {{0, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Distance, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Angle, {{1, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Angle, {{1, 0, 0}, {2, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Radius, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Radius, {{0, 0, 0}, {0, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(measure(MeasureKind::Radius, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}));
}

TEST(Measurement, LengthsAreShownInTheUnitThatIsWanted)
{
    EXPECT_EQ("12.5", describeLength(12.5, Units()));
    EXPECT_EQ("12.5 mm", describeLength(12.5, Units{LengthUnit::Millimetre, LengthUnit::None}));
    EXPECT_EQ("1.25 cm", describeLength(12.5, Units{LengthUnit::Millimetre, LengthUnit::Centimetre}));
    EXPECT_EQ("2 in", describeLength(50.8, Units{LengthUnit::Millimetre, LengthUnit::Inch}));
    EXPECT_EQ("304.8 mm", describeLength(1, Units{LengthUnit::Foot, LengthUnit::Millimetre}));
    EXPECT_EQ("3 m", describeLength(3, Units{LengthUnit::Metre, LengthUnit::Metre}));
    // Of what means nothing nothing is made.
    EXPECT_EQ("3", describeLength(3, Units{LengthUnit::None, LengthUnit::Metre}));
    const Units millimetres{LengthUnit::Millimetre, LengthUnit::None};
    EXPECT_EQ("distance 2 mm",
              describe(*measure(MeasureKind::Distance, {{0, 0, 0}, {0, 0, 2}}), millimetres));
    EXPECT_EQ("angle 90°",
              describe(*measure(MeasureKind::Angle, {{1, 0, 0}, {0, 0, 0}, {0, 1, 0}}), millimetres));
    EXPECT_EQ("radius 1 mm",
              describe(*measure(MeasureKind::Radius, {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}}), millimetres));
}

TEST(Measurement, EachUnitHasASymbol)
{
    for (int i = 0; i < vfScene::lengthUnitCount; ++i) {
        const auto unit = static_cast<LengthUnit>(i);
        EXPECT_EQ(unit, vfScene::unitOf(vfScene::symbolOf(unit)));
    }
    EXPECT_EQ(LengthUnit::None, vfScene::unitOf("none"));
    EXPECT_FALSE(vfScene::unitOf("furlong"));
    EXPECT_FALSE(vfScene::unitOf("MM"));
}
