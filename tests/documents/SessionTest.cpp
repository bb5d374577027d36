// SPDX-License-Identifier: MIT
#include <velaforge/documents/Session.h>

#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>

#include <gtest/gtest.h>

using vfApplication::Session;
using vfBase::SettingsValue;

namespace {

vfBase::Settings storeIn(const std::string& path)
{
    vfBase::Settings store(path);
    store.add(vfBase::SettingsObject(&Session::instance()));
    return store;
}

Session::Entry entry(const std::string& path, int zoom)
{
    return {path, SettingsValue::Map{{"zoom", zoom}}};
}

int zoomOf(const Session::Entry& entry)
{
    int zoom = 0;
    const SettingsValue::Map* map = entry.view.map();
    EXPECT_TRUE(map && map->count("zoom") == 1 && map->at("zoom").read(zoom));
    return zoom;
}

} // namespace

TEST(Session, ComesBackWithTheStateOfItsViews)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    Session& session = Session::instance();
    EXPECT_FALSE(session.isRestored());
    session.setRestored(true);
    session.setEntries({entry("/models/ship, large.obj", 7), entry("/b.stl", 8), {"/plain", {}}});
    ASSERT_TRUE(storeIn(path).save(nullptr));
    session.setRestored(false);
    session.setEntries({});
    ASSERT_TRUE(storeIn(path).load());
    EXPECT_TRUE(session.isRestored());
    ASSERT_EQ(3u, session.getEntries().size());
    EXPECT_EQ("/models/ship, large.obj", session.getEntries()[0].path);
    EXPECT_EQ(7, zoomOf(session.getEntries()[0]));
    EXPECT_EQ(8, zoomOf(session.getEntries()[1]));
    EXPECT_EQ(nullptr, session.getEntries()[2].view.map());
}

TEST(Session, WhatMakesNoSenseInTheFileIsLeftOut)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    Session& session = Session::instance();
    session.setEntries({entry("/a.obj", 1)});
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
    EXPECT_EQ(0u, load("\"path\"", "\"road\"").size());
    EXPECT_EQ(1u, load("\"view\"", "\"sight\"").size());
    EXPECT_EQ(nullptr, session.getEntries()[0].view.map());
}

TEST(Session, NoMoreDocumentsThanAUserOpensComeBack)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("settings.json");
    Session& session = Session::instance();
    std::vector<Session::Entry> many;
    for (std::size_t i = 0; i < Session::mostEntries + 50; ++i)
        many.push_back(entry("/" + std::to_string(i), 1));
    session.setEntries(many);
    ASSERT_TRUE(storeIn(path).save(nullptr));
    session.setEntries({});
    ASSERT_TRUE(storeIn(path).load());
    EXPECT_EQ(Session::mostEntries + 0, session.getEntries().size());
}

TEST(Session, ACopyHasItsEntriesAndANewOneNone)
{
    Session& session = Session::instance();
    session.setRestored(true);
    session.setEntries({entry("/a.obj", 1)});
    const osg::ref_ptr<osg::Object> copy = session.clone(osg::CopyOp());
    const auto& copied = static_cast<const Session&>(*copy);
    EXPECT_TRUE(copied.isRestored());
    ASSERT_EQ(1u, copied.getEntries().size());
    EXPECT_EQ("/a.obj", copied.getEntries()[0].path);
    const osg::ref_ptr<osg::Object> made = session.cloneType();
    EXPECT_FALSE(static_cast<const Session&>(*made).isRestored());
}
