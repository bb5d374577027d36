// SPDX-License-Identifier: MIT
#include <velaforge/scene/StoredStyles.h>

#include <gtest/gtest.h>

using vfBase::SettingsValue;
using vfScene::DrawMode;
using vfScene::LookAt;
using vfScene::Projection;
using vfScene::ViewStyle;

TEST(StoredStyles, AStyleIsReadAsItWasStored)
{
    ViewStyle style;
    style.projection = Projection::Orthographic;
    style.drawMode = DrawMode::Points;
    style.isFlat = style.cullsBackFaces = style.showsGrid = style.showsAxes = style.showsBoxes = true;
    style.showsTextures = style.showsVertexColors = style.isAntialiased = style.lightFollowsCamera = false;
    style.background = vfScene::Background{{1, 0.5f, 0}, {0, 0, 0.25f}};
    style.sections[1] = {true, 0.125, true};
    ViewStyle read;
    ASSERT_TRUE(vfScene::readStored(vfScene::stored(style), read));
    EXPECT_EQ(Projection::Orthographic, read.projection);
    EXPECT_EQ(DrawMode::Points, read.drawMode);
    EXPECT_TRUE(read.isFlat && read.cullsBackFaces && read.showsGrid && read.showsAxes && read.showsBoxes);
    EXPECT_FALSE(read.showsTextures || read.showsVertexColors || read.isAntialiased ||
                 read.lightFollowsCamera);
    ASSERT_TRUE(read.background);
    EXPECT_EQ(osg::Vec3f(1, 0.5f, 0), read.background->top);
    EXPECT_EQ(osg::Vec3f(0, 0, 0.25f), read.background->bottom);
    EXPECT_FALSE(read.sections[0].isOn);
    EXPECT_TRUE(read.sections[1].isOn && read.sections[1].isFlipped);
    EXPECT_EQ(0.125, read.sections[1].position);
    ASSERT_TRUE(vfScene::readStored(vfScene::stored(ViewStyle()), read));
    EXPECT_TRUE(read.showsTextures);
}

TEST(StoredStyles, WhatIsMissingOrMakesNoSenseInAStyleStays)
{
    SettingsValue::Map map = *vfScene::stored(ViewStyle()).map();
    map["drawMode"] = 77;
    map["textures"] = "yes";
    map.erase("grid");
    ViewStyle style;
    style.drawMode = DrawMode::Wireframe;
    style.showsTextures = false;
    style.showsGrid = true;
    EXPECT_TRUE(vfScene::readStored(map, style));
    EXPECT_EQ(DrawMode::Wireframe, style.drawMode);
    EXPECT_FALSE(style.showsTextures);
    EXPECT_TRUE(style.showsGrid);
    EXPECT_FALSE(vfScene::readStored(SettingsValue(), style));
}

TEST(StoredStyles, ACameraIsWholeOrNone)
{
    const LookAt camera{{1, 2, 3}, {4, 5.5, 6}, {0, 0, 1}};
    LookAt read;
    ASSERT_TRUE(vfScene::readStored(vfScene::stored(camera), read));
    EXPECT_EQ(camera.eye, read.eye);
    EXPECT_EQ(camera.centre, read.centre);
    EXPECT_EQ(camera.up, read.up);
    SettingsValue::Map map = *vfScene::stored(camera).map();
    map.erase("eye");
    EXPECT_FALSE(vfScene::readStored(map, read));
    EXPECT_FALSE(vfScene::readStored(SettingsValue::List{1.0, 2.0}, read));
    EXPECT_EQ(camera.eye, read.eye);
}
