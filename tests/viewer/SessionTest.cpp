// SPDX-License-Identifier: MIT
#include "model/Session.h"

#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>

#include <gtest/gtest.h>

using vfScene::DrawMode;
using vfScene::Projection;
using vfScene::ViewStyle;
using vfViewer::Session;

namespace {

vfBase::Settings storeIn(const std::string& path)
{
    vfBase::Settings store(path);
    store.add(vfBase::SettingsObject(&Session::instance()));
    return store;
}

/// Saves what there is, forgets it, and reads it again.
void saveAndLoad(const std::string& path)
{
    ASSERT_TRUE(storeIn(path).save(nullptr));
    Session::instance().setRestored(false);
    Session::instance().setEntries({});
    ASSERT_TRUE(storeIn(path).load());
}

} // namespace

TEST(Session, ComesBackWithCamerasAndStyles)
{
    const vfTest::TemporaryDirectory directory;
    ViewStyle style;
    style.projection = Projection::Orthographic;
    style.drawMode = DrawMode::Points;
    style.isFlat = style.cullsBackFaces = style.showsGrid = style.showsAxes = style.showsBoxes = true;
    style.showsTextures = style.showsVertexColors = style.isAntialiased = style.lightFollowsCamera = false;
    style.background = vfScene::Background{{1, 0.5f, 0}, {0, 0, 0.25f}};
    style.sections[1] = {true, 0.125, true};
    Session& session = Session::instance();
    EXPECT_FALSE(session.isRestored());
    session.setRestored(true);
    session.setEntries({{"/models/ship, large.obj", {{1, 2, 3}, {4, 5.5, 6}, {0, 0, 1}}, style},
                        {"/b.stl", {{9, 9, 9}, {0, 0, 0}, {0, 0, 1}}, ViewStyle()}});
    saveAndLoad(directory.file("settings.json"));
    EXPECT_TRUE(session.isRestored());
    ASSERT_EQ(2u, session.getEntries().size());
    const Session::Entry& first = session.getEntries()[0];
    EXPECT_EQ("/models/ship, large.obj", first.path);
    EXPECT_EQ(osg::Vec3d(1, 2, 3), first.camera.eye);
    EXPECT_EQ(osg::Vec3d(4, 5.5, 6), first.camera.centre);
    EXPECT_EQ(osg::Vec3d(0, 0, 1), first.camera.up);
    EXPECT_EQ(Projection::Orthographic, first.style.projection);
    EXPECT_EQ(DrawMode::Points, first.style.drawMode);
    EXPECT_TRUE(first.style.isFlat && first.style.cullsBackFaces && first.style.showsGrid &&
                first.style.showsAxes && first.style.showsBoxes);
    EXPECT_FALSE(first.style.showsTextures || first.style.showsVertexColors || first.style.isAntialiased ||
                 first.style.lightFollowsCamera);
    ASSERT_TRUE(first.style.background);
    EXPECT_EQ(osg::Vec3f(1, 0.5f, 0), first.style.background->top);
    EXPECT_EQ(osg::Vec3f(0, 0, 0.25f), first.style.background->bottom);
    EXPECT_FALSE(first.style.sections[0].isOn);
    EXPECT_TRUE(first.style.sections[1].isOn && first.style.sections[1].isFlipped);
    EXPECT_EQ(0.125, first.style.sections[1].position);
    EXPECT_FALSE(session.getEntries()[1].style.background);
    EXPECT_TRUE(session.getEntries()[1].style.showsTextures);
}

TEST(Session, WhatMakesNoSenseInTheFileIsLeftOut)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    Session& session = Session::instance();
    session.setEntries({{"/a.obj", {{1, 2, 3}, {4, 5, 6}, {0, 0, 1}}, ViewStyle()}});
    ASSERT_TRUE(storeIn(path).save(nullptr));
    const std::string text = vfTest::readFile(path);
    const auto load = [&](const std::string& from, const std::string& to) {
        std::string changed = text;
        const std::size_t at = changed.find(from);
        EXPECT_NE(std::string::npos, at) << from << " in " << text;
        changed.replace(at, from.size(), to);
        directory.write("settings.json", changed);
        session.setEntries({});
        EXPECT_TRUE(storeIn(path).load());
        return session.getEntries();
    };
    EXPECT_EQ(1u, load("/a.obj", "/b.obj").size());
    EXPECT_EQ(0u, load("/a.obj", "").size());
    EXPECT_EQ(0u, load("\"eye\"", "\"nose\"").size());
    EXPECT_EQ(1u, load("\"drawMode\": 0", "\"drawMode\": 77").size());
    EXPECT_EQ(DrawMode::Surfaces, session.getEntries()[0].style.drawMode);
    EXPECT_EQ(1u, load("\"style\"", "\"stile\"").size());
    EXPECT_TRUE(session.getEntries()[0].style.showsTextures);
}

TEST(Session, ACopyHasItsEntriesAndANewOneNone)
{
    Session& session = Session::instance();
    session.setRestored(true);
    session.setEntries({{"/a.obj", {{1, 2, 3}, {4, 5, 6}, {0, 0, 1}}, {}}});
    const osg::ref_ptr<osg::Object> copy = session.clone(osg::CopyOp());
    const auto& copied = static_cast<const Session&>(*copy);
    EXPECT_TRUE(copied.isRestored());
    ASSERT_EQ(1u, copied.getEntries().size());
    EXPECT_EQ("/a.obj", copied.getEntries()[0].path);
    const osg::ref_ptr<osg::Object> made = session.cloneType();
    EXPECT_FALSE(static_cast<const Session&>(*made).isRestored());
}
