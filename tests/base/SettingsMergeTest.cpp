// SPDX-License-Identifier: MIT
// What is in the file after two programs have saved that began with the same one.
#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>

using testing::ElementsAre;
using vfBase::Settings;
using vfBase::SettingsObject;
using vfBase::SettingsProperties;
using vfBase::SettingsValue;
using Texts = std::vector<std::string>;

namespace {

/// Keeps one value of any kind.
class Notebook : public vfBase::SettingsObjectPrivate
{
public:
    osg::Object* cloneType() const override { return new Notebook; }
    osg::Object* clone(const osg::CopyOp&) const override { return new Notebook; }
    bool isSameKindAs(const osg::Object* object) const override
    {
        return dynamic_cast<const Notebook*>(object);
    }
    const char* libraryName() const override { return "test"; }
    const char* className() const override { return "Notebook"; }

    SettingsValue value;

protected:
    ~Notebook() override = default;
};

const SettingsProperties properties("test::Notebook",
                                    {SettingsProperties::property<Notebook>(
                                        "value", [](const Notebook& book) { return book.value; },
                                        [](Notebook& book, const SettingsValue& value) {
                                            book.value = value;
                                            return true;
                                        })});

struct Program
{
    explicit Program(const std::string& path) : settings(vfBase::VfString(path)), book(new Notebook)
    {
        settings.add(SettingsObject(book.get()));
        settings.load();
    }

    bool save(const SettingsValue& value)
    {
        book->value = value;
        return settings.save(nullptr);
    }

    Settings settings;
    osg::ref_ptr<Notebook> book;
};

SettingsValue listOf(const Texts& texts)
{
    return SettingsValue::List(texts.begin(), texts.end());
}

Texts textsIn(const SettingsValue& value)
{
    Texts texts;
    for (const SettingsValue& entry : value.list() ? *value.list() : SettingsValue::List()) {
        texts.emplace_back();
        EXPECT_TRUE(entry.read(texts.back()));
    }
    return texts;
}

/// Two programs begin with @p base; one saves @p theirs and then the other @p mine. @return what a third one
/// reads
SettingsValue merged(const SettingsValue& base, const SettingsValue& mine, const SettingsValue& theirs)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("notebook.json");
    EXPECT_TRUE(Program(path).save(base));
    Program me(path);
    Program other(path);
    EXPECT_TRUE(other.save(theirs));
    EXPECT_TRUE(me.save(mine));
    return Program(path).book->value;
}

Texts mergedTexts(const Texts& base, const Texts& mine, const Texts& theirs)
{
    return textsIn(merged(listOf(base), listOf(mine), listOf(theirs)));
}

SettingsValue named(const std::string& name, int size)
{
    return SettingsValue::Map{{"name", name}, {"size", size}};
}

std::string text(const SettingsValue& value)
{
    if (const SettingsValue::List* list = value.list()) {
        std::string all = "[";
        for (const SettingsValue& entry : *list)
            all += text(entry) + " ";
        return all + "]";
    }
    if (const SettingsValue::Map* map = value.map()) {
        std::string all = "{";
        for (const auto& [key, entry] : *map)
            all += key + ":" + text(entry) + " ";
        return all + "}";
    }
    std::string word;
    std::int64_t number = 0;
    if (value.read(word))
        return word;
    return value.read(number) ? std::to_string(number) : "?";
}

} // namespace

TEST(SettingsMerge, FilesThatTwoProgramsOpenedAreBothRecentTheLastSavedFirst)
{
    EXPECT_THAT(mergedTexts({"a", "b"}, {"mine", "a", "b"}, {"theirs", "a", "b"}),
                ElementsAre("mine", "theirs", "a", "b"));
    EXPECT_THAT(mergedTexts({}, {"m2", "m1"}, {"t2", "t1"}), ElementsAre("m2", "m1", "t2", "t1"));
}

TEST(SettingsMerge, AFileThatWasOpenedAgainIsInFront)
{
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"c", "a", "b"}, {"theirs", "a", "b", "c"}),
                ElementsAre("c", "theirs", "a", "b"));
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"b", "c", "a"}, {"theirs", "a", "b", "c"}),
                ElementsAre("b", "c", "theirs", "a"));
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"mine", "a", "b", "c"}, {"c", "a", "b"}),
                ElementsAre("mine", "c", "a", "b"));
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"b", "a", "c"}, {"c", "a", "b"}), ElementsAre("b", "c", "a"));
}

TEST(SettingsMerge, AnElementThatBothAddedStandsThereOnce)
{
    EXPECT_THAT(mergedTexts({"a"}, {"new", "a"}, {"new", "a"}), ElementsAre("new", "a"));
    EXPECT_THAT(mergedTexts({"a"}, {"new", "a"}, {"a", "x", "new"}), ElementsAre("new", "a", "x"));
}

TEST(SettingsMerge, WhatOneRemovedIsNotBroughtBackByTheOther)
{
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"mine", "a", "b", "c"}, {"a", "c"}),
                ElementsAre("mine", "a", "c"));
    EXPECT_THAT(mergedTexts({"a", "b", "c"}, {"a", "c"}, {"theirs", "a", "b", "c"}),
                ElementsAre("theirs", "a", "c"));
    EXPECT_THAT(mergedTexts({"a", "b"}, {"mine", "a", "b"}, {}), ElementsAre("mine"));
    EXPECT_THAT(mergedTexts({"a", "b"}, {"b", "a"}, {"a"}), ElementsAre("a"));
    EXPECT_THAT(mergedTexts({"a", "b"}, {"b"}, {"a"}), ElementsAre());
}

TEST(SettingsMerge, WhatWasAppendedStaysAtTheEndAndWhatWasInsertedInItsPlace)
{
    EXPECT_THAT(mergedTexts({"a", "b"}, {"a", "b", "mine"}, {"a", "b", "theirs"}),
                ElementsAre("a", "b", "mine", "theirs"));
    EXPECT_THAT(mergedTexts({"a", "b"}, {"a", "mine", "b"}, {"theirs", "a", "b"}),
                ElementsAre("theirs", "a", "mine", "b"));
    EXPECT_THAT(mergedTexts({"a", "b"}, {"a", "b", "mine"}, {"a"}), ElementsAre("a", "mine"));
}

TEST(SettingsMerge, FurtherSavesOfBothLoseNothingAndRepeatNothing)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.file("notebook.json");
    Program one(path);
    Program two(path);
    EXPECT_TRUE(one.save(listOf({"one"})));
    EXPECT_TRUE(two.save(listOf({"two"})));
    EXPECT_TRUE(one.save(listOf({"one again", "one"})));
    EXPECT_TRUE(two.save(listOf({"two again", "two"})));
    EXPECT_THAT(textsIn(Program(path).book->value), ElementsAre("two again", "one again", "two", "one"));
    EXPECT_TRUE(one.save(listOf({"one again"})));
    EXPECT_THAT(textsIn(Program(path).book->value), ElementsAre("two again", "one again", "two"));
    // Two still holds what it held, and must not bring it back.
    EXPECT_TRUE(two.save(listOf({"last", "two again", "two"})));
    EXPECT_THAT(textsIn(Program(path).book->value), ElementsAre("last", "two again", "one again", "two"));
}

TEST(SettingsMerge, ObjectsOfAListAreRecognisedByTheirNames)
{
    const SettingsValue base = SettingsValue::List{named("bow", 1), named("stern", 2)};
    EXPECT_EQ("[{name:bow size:10 } {name:stern size:20 } ]",
              text(merged(base, SettingsValue::List{named("bow", 10), named("stern", 2)},
                          SettingsValue::List{named("bow", 1), named("stern", 20)})));
    EXPECT_EQ("[{name:mine size:3 } {name:theirs size:4 } {name:bow size:1 } ]",
              text(merged(base, SettingsValue::List{named("mine", 3), named("bow", 1), named("stern", 2)},
                          SettingsValue::List{named("theirs", 4), named("bow", 1)})));
    // Both changed the same one.
    EXPECT_EQ("[{name:bow size:10 } {name:stern size:2 } ]",
              text(merged(base, SettingsValue::List{named("bow", 10), named("stern", 2)},
                          SettingsValue::List{named("bow", 11), named("stern", 2)})));
    // One removed what the other changed.
    EXPECT_EQ("[{name:bow size:1 } {name:stern size:20 } ]",
              text(merged(base, SettingsValue::List{named("bow", 1)},
                          SettingsValue::List{named("bow", 1), named("stern", 20)})));
    EXPECT_EQ("[{name:bow size:1 } {name:stern size:20 } ]",
              text(merged(base, SettingsValue::List{named("bow", 1), named("stern", 20)},
                          SettingsValue::List{named("bow", 1)})));
}

TEST(SettingsMerge, PlacesThatTwoProgramsKeepForOneModelAreBothThere)
{
    const auto model = [](const SettingsValue::List& places) -> SettingsValue {
        return SettingsValue::List{SettingsValue::Map{{"path", "boat.obj"}, {"places", places}}};
    };
    EXPECT_EQ("[{path:boat.obj places:[{name:bow size:1 } {name:stern size:2 } {name:keel size:3 } ] } ]",
              text(merged(model({named("keel", 3)}), model({named("bow", 1), named("keel", 3)}),
                          model({named("stern", 2), named("keel", 3)}))));
}

TEST(SettingsMerge, ObjectsWithoutANameAreRecognisedByAllTheyHold)
{
    const auto object = [](int number) { return SettingsValue(SettingsValue::Map{{"number", number}}); };
    EXPECT_EQ("[{number:3 } {number:4 } {number:1 } ]",
              text(merged(SettingsValue::List{object(1), object(2)},
                          SettingsValue::List{object(3), object(1), object(2)},
                          SettingsValue::List{object(4), object(1)})));
}

TEST(SettingsMerge, AColourIsOneValueAndIsNotMixed)
{
    EXPECT_EQ("[1 0 0 ]", text(merged(SettingsValue::List{1, 1, 1}, SettingsValue::List{1, 0, 0},
                                      SettingsValue::List{0, 0, 1})));
    EXPECT_EQ("[a 1 ]", text(merged(SettingsValue::List{"b", 0}, SettingsValue::List{"a", 1},
                                    SettingsValue::List{"c", 0})));
    const auto listOfOne = [](const SettingsValue& element) {
        SettingsValue::List list;
        list.push_back(element); // braces around one element may mean a copy of it
        return list;
    };
    EXPECT_EQ("[[1 ] ]",
              text(merged(SettingsValue::List{}, listOfOne(listOfOne(1)), listOfOne(listOfOne(2)))));
}

TEST(SettingsMerge, AListThatHoldsATextTwiceIsOneValue)
{
    EXPECT_THAT(mergedTexts({"a"}, {"a", "a", "mine"}, {"theirs"}), ElementsAre("a", "a", "mine"));
    EXPECT_THAT(mergedTexts({"a"}, {"mine"}, {"t", "t"}), ElementsAre("mine"));
    EXPECT_THAT(mergedTexts({"a", "a"}, {"mine"}, {"theirs"}), ElementsAre("mine"));
}

TEST(SettingsMerge, KeysOfMapsMergeAtAnyDepth)
{
    const auto nested = [](const SettingsValue::Map& inner) -> SettingsValue {
        return SettingsValue::Map{{"outer", SettingsValue::Map{{"inner", inner}}}};
    };
    EXPECT_EQ("{outer:{inner:{mine:2 theirs:3 } } }",
              text(merged(nested({{"old", 1}}), nested({{"old", 1}, {"mine", 2}}), nested({{"theirs", 3}}))));
    EXPECT_EQ("{files:[m t a ] }", text(merged(SettingsValue::Map{{"files", listOf({"a"})}},
                                               SettingsValue::Map{{"files", listOf({"m", "a"})}},
                                               SettingsValue::Map{{"files", listOf({"t", "a"})}})));
}

TEST(SettingsMerge, RandomListsLoseNothingAndRepeatNothing)
{
    std::mt19937 random(7);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    const auto changed = [&](Texts list, const std::string& prefix) {
        for (std::size_t changes = below(5); changes > 0; --changes) {
            const std::size_t at = below(list.size() + 1);
            const auto position = list.begin() + static_cast<std::ptrdiff_t>(at);
            if (at == list.size() || below(3) == 0)
                list.insert(position, prefix + std::to_string(changes));
            else if (below(2) == 0)
                list.erase(position);
            else
                std::rotate(list.begin(), position, position + 1);
        }
        return list;
    };
    for (int round = 0; round < 60; ++round) {
        Texts names;
        for (std::size_t i = below(6); i > 0; --i)
            names.push_back("b" + std::to_string(i));
        const Texts base = names;
        const Texts mine = changed(base, "m");
        const Texts theirs = changed(base, "t");
        const Texts result = mergedTexts(base, mine, theirs);

        const std::set<std::string> inBase(base.begin(), base.end());
        const std::set<std::string> inMine(mine.begin(), mine.end());
        const std::set<std::string> inTheirs(theirs.begin(), theirs.end());
        std::set<std::string> expected;
        for (const Texts* list : {&base, &mine, &theirs}) {
            for (const std::string& name : *list) {
                if (inBase.count(name) ? inMine.count(name) && inTheirs.count(name)
                                       : inMine.count(name) || inTheirs.count(name))
                    expected.insert(name);
            }
        }
        EXPECT_EQ(expected, std::set<std::string>(result.begin(), result.end()));
        EXPECT_EQ(expected.size(), result.size());
        if (theirs == base) {
            EXPECT_EQ(mine, result);
        }
        if (mine == base) {
            EXPECT_EQ(theirs, result);
        }
        // What I put in front is in front, unless they have removed it.
        if (!mine.empty() && (base.empty() || mine[0] != base[0]) && expected.count(mine[0]) &&
            !inBase.count(mine[0]))
        {
            EXPECT_EQ(mine[0], result[0]);
        }
    }
}
