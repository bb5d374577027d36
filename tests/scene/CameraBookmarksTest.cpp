// SPDX-License-Identifier: MIT
#include <velaforge/scene/CameraBookmarks.h>

#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>

#include <gtest/gtest.h>

using vfScene::CameraBookmark;
using vfScene::CameraBookmarks;
using vfScene::Projection;

namespace {

CameraBookmark place(const std::string& name, double height)
{
    return {name, {{1, 2, height}, {4, 5.5, 6}, {0, 0, 1}}, Projection::Perspective};
}

std::vector<std::string> namesOf(const std::string& path)
{
    std::vector<std::string> names;
    for (const CameraBookmark& one : CameraBookmarks::instance().of(path))
        names.push_back(one.name);
    return names;
}

vfBase::Settings storeIn(const std::string& path)
{
    vfBase::Settings store(path);
    store.add(vfBase::SettingsObject(&CameraBookmarks::instance()));
    return store;
}

using Names = std::vector<std::string>;

} // namespace

TEST(CameraBookmarks, EachFileHasItsOwnInTheOrderInWhichTheyWereKept)
{
    CameraBookmarks& places = CameraBookmarks::instance();
    EXPECT_TRUE(places.of("/a.obj").empty());
    EXPECT_TRUE(places.keep("/a.obj", place("bow", 1)));
    EXPECT_TRUE(places.keep("/b.obj", place("tip", 2)));
    EXPECT_TRUE(places.keep("/a.obj", place("aft", 3)));
    EXPECT_EQ((Names{"bow", "aft"}), namesOf("/a.obj"));
    EXPECT_EQ((Names{"tip"}), namesOf("/b.obj"));
    EXPECT_EQ(3, places.of("/a.obj")[1].camera.eye.z());
}

TEST(CameraBookmarks, OneOfTheSameNameTakesThePlaceOfTheOther)
{
    CameraBookmarks& places = CameraBookmarks::instance();
    places.keep("/a.obj", place("bow", 1));
    places.keep("/a.obj", place("aft", 2));
    EXPECT_TRUE(places.keep("/a.obj", place("bow", 9)));
    EXPECT_EQ((Names{"bow", "aft"}), namesOf("/a.obj"));
    EXPECT_EQ(9, places.of("/a.obj")[0].camera.eye.z());
}

TEST(CameraBookmarks, WhatIsForgottenIsGone)
{
    CameraBookmarks& places = CameraBookmarks::instance();
    places.keep("/a.obj", place("bow", 1));
    EXPECT_FALSE(places.forget("/a.obj", "aft"));
    EXPECT_FALSE(places.forget("/b.obj", "bow"));
    EXPECT_TRUE(places.forget("/a.obj", "bow"));
    EXPECT_TRUE(places.of("/a.obj").empty());
    EXPECT_TRUE(places.getEntries().empty()) << "a file without places is not remembered";
}

TEST(CameraBookmarks, AreNotMoreThanThereIsRoomFor)
{
    CameraBookmarks& places = CameraBookmarks::instance();
    for (std::size_t i = 0; i < CameraBookmarks::mostBookmarks; ++i)
        EXPECT_TRUE(places.keep("/a.obj", place(std::to_string(i), 1)));
    EXPECT_FALSE(places.keep("/a.obj", place("one more", 1)));
    EXPECT_TRUE(places.keep("/a.obj", place("7", 2))) << "instead of another";
    EXPECT_FALSE(places.keep("/b.obj", place(std::string(100000, 'a'), 1))) << "a name without end";
    EXPECT_TRUE(places.keep("/b.obj", place(std::string(200, 'a'), 1)));
    EXPECT_EQ(CameraBookmarks::mostBookmarks, places.of("/a.obj").size());
    for (std::size_t i = 1; i < CameraBookmarks::mostFiles; ++i)
        places.keep("/" + std::to_string(i), place("bow", 1));
    places.keep("/a.obj", place("8", 3)); // so that another is the oldest
    places.keep("/new.obj", place("bow", 1));
    EXPECT_EQ(CameraBookmarks::mostFiles, places.getEntries().size());
    EXPECT_TRUE(places.of("/1").empty());
    EXPECT_FALSE(places.of("/a.obj").empty());
}

TEST(CameraBookmarks, ComeBackFromTheStore)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    CameraBookmarks& places = CameraBookmarks::instance();
    CameraBookmark flat = place("flat, \"as drawn\"", 4);
    flat.projection = Projection::Orthographic;
    places.keep("/a b.obj", place("bow", 1));
    places.keep("/a b.obj", flat);
    ASSERT_TRUE(storeIn(path).save(nullptr));
    places.setEntries({});
    ASSERT_TRUE(storeIn(path).load());
    ASSERT_EQ((Names{"bow", "flat, \"as drawn\""}), namesOf("/a b.obj"));
    const CameraBookmark read = places.of("/a b.obj")[1];
    EXPECT_EQ(Projection::Orthographic, read.projection);
    EXPECT_EQ(flat.camera.eye, read.camera.eye);
    EXPECT_EQ(flat.camera.centre, read.camera.centre);
    EXPECT_EQ(flat.camera.up, read.camera.up);
}

TEST(CameraBookmarks, WhatMakesNoSenseInTheStoreIsLeftOut)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    CameraBookmarks::instance().keep("/a.obj", place("good", 1));
    CameraBookmarks::instance().keep("/a.obj", place("bad", 1));
    CameraBookmarks::instance().keep("/b.obj", place("alone", 1));
    ASSERT_TRUE(storeIn(path).save(nullptr));
    std::string text = vfTest::readFile(path);
    const auto replace = [&text](const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        ASSERT_NE(std::string::npos, at) << from;
        text.replace(at, from.size(), to);
    };
    replace("\"bad\"", "17");
    replace("\"alone\"", "\"\"");
    directory.write("settings.json", text);
    CameraBookmarks::instance().setEntries({});
    ASSERT_TRUE(storeIn(path).load());
    EXPECT_EQ((Names{"good"}), namesOf("/a.obj"));
    EXPECT_TRUE(CameraBookmarks::instance().of("/b.obj").empty());
}

TEST(CameraBookmarks, ACopyKeepsItsOwn)
{
    CameraBookmarks& places = CameraBookmarks::instance();
    places.keep("/a.obj", place("bow", 1));
    const osg::ref_ptr<osg::Object> copy = places.clone(osg::CopyOp());
    auto& copied = static_cast<CameraBookmarks&>(*copy);
    ASSERT_EQ(1u, copied.of("/a.obj").size());
    EXPECT_TRUE(copied.forget("/a.obj", "bow"));
    EXPECT_EQ(1u, places.of("/a.obj").size());
}
