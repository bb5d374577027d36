// SPDX-License-Identifier: MIT
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/VfString.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vfBase::VfString;
using Numbers = vfBase::Map<VfString, int>;

namespace {

Numbers numbers(std::initializer_list<std::pair<const char*, int>> entries)
{
    Numbers made;
    for (const auto& [key, value] : entries)
        made.insert(key, value);
    return made;
}

std::map<std::string, int> entries(const Numbers& map)
{
    std::map<std::string, int> found;
    for (const auto& [key, value] : map.asStdMap())
        found[key] = value;
    return found;
}

} // namespace

TEST(Map, ReadingAnAbsentKeyThroughAConstHandleAddsAnEntry)
{
    const Numbers map = numbers({{"a", 1}});
    EXPECT_EQ(0, map["b"]);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ(1, map["a"]);
    EXPECT_EQ(2u, map.size());
}

TEST(Map, ValueDoesNotAddAnEntry)
{
    const Numbers map = numbers({{"a", 1}});
    EXPECT_EQ(7, map.value("b", 7));
    EXPECT_EQ(1, map.value("a", 7));
    EXPECT_EQ(1u, map.size());
}

TEST(Map, InsertLeavesTheOldValueOfAPresentKeyAndIndexingReplacesIt)
{
    Numbers map = numbers({{"k", 1}});
    auto it = map.insert("k", 2);
    EXPECT_EQ(1, map.value("k", 0));
    EXPECT_EQ("k", it.key());
    EXPECT_EQ(1, it.value());
    map["k"] = 2;
    EXPECT_EQ(2, map.value("k", 0));
}

TEST(Map, InsertReturnsACursorWithPositionAndCurrentOnTheEntry)
{
    Numbers map = numbers({{"a", 1}, {"c", 3}});
    auto it = map.insert("b", 2);
    EXPECT_EQ("b", it.key());
    EXPECT_EQ(it.getImp()->position, it.getImp()->current);
    EXPECT_EQ("b", it.peekNext().key);
    EXPECT_EQ("a", it.peekPrevious().key);
}

TEST(Map, InsertsWithACursorAsAHint)
{
    Numbers map = numbers({{"a", 1}, {"c", 3}});
    auto hint = map.find("c");
    EXPECT_EQ(2, map.insert(hint, "b", 2).value());
    EXPECT_EQ(1, map.insert(hint, "a", 9).value());
    EXPECT_EQ(4, map.insert(map.find("nowhere"), "d", 4).value());
    EXPECT_THAT(entries(map), ElementsAre(Pair("a", 1), Pair("b", 2), Pair("c", 3), Pair("d", 4)));
}

TEST(Map, FindOfAnAbsentKeyIsInvalid)
{
    const Numbers map = numbers({{"a", 1}});
    EXPECT_FALSE(map.find("b").isValid());
    EXPECT_TRUE(map.find("a").isValid());
    EXPECT_EQ(1, map.find("a").value());
}

TEST(Map, BoundsAreCursorsOnTheEntryOrInvalidAtTheEnd)
{
    const Numbers map = numbers({{"b", 1}, {"d", 2}});
    EXPECT_EQ("b", map.lowerBound("a").key());
    EXPECT_EQ("b", map.lowerBound("b").key());
    EXPECT_EQ("d", map.upperBound("b").key());
    EXPECT_FALSE(map.upperBound("d").isValid());
    EXPECT_FALSE(map.lowerBound("e").isValid());
}

TEST(Map, FindsKeysByValueInOrderOfTheKeys)
{
    const Numbers map = numbers({{"b", 2}, {"a", 1}, {"c", 2}});
    EXPECT_EQ("b", map.key(2, "none"));
    EXPECT_EQ("none", map.key(9, "none"));
    EXPECT_THAT(map.keys().asStdList(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(map.keys(2).asStdList(), ElementsAre("b", "c"));
    EXPECT_THAT(map.values().asStdList(), ElementsAre(1, 2, 2));
    EXPECT_EQ(1u, map.count("a"));
    EXPECT_EQ(0u, map.count("z"));
    EXPECT_TRUE(map.contains("a"));
    EXPECT_FALSE(map.contains("z"));
}

TEST(Map, TakesAndRemovesEntries)
{
    Numbers map = numbers({{"a", 1}, {"b", 2}});
    EXPECT_EQ(1, map.take("a"));
    EXPECT_EQ(0, map.take("a"));
    EXPECT_TRUE(map.remove("b"));
    EXPECT_FALSE(map.remove("b"));
    EXPECT_TRUE(map.isEmpty());
}

TEST(Map, FirstAndLastReferToEntriesInOrderOfTheKeys)
{
    Numbers map = numbers({{"b", 2}, {"a", 1}});
    map.first() = 5;
    map.last() = 6;
    EXPECT_EQ("a", map.firstKey());
    EXPECT_EQ("b", map.lastKey());
    const Numbers& read = map;
    EXPECT_EQ(&map.first(), &read.first());
    EXPECT_EQ(&map.last(), &read.last());
    EXPECT_THAT(entries(map), ElementsAre(Pair("a", 5), Pair("b", 6)));
}

TEST(Map, UniteKeepsTheSmallerOfTwoValues)
{
    Numbers map = numbers({{"a", 5}, {"b", 1}, {"c", 3}});
    const Numbers earlier = map;
    const Numbers result = map.unite(numbers({{"a", 2}, {"b", 4}, {"c", 3}, {"d", 7}}));
    EXPECT_THAT(entries(earlier), ElementsAre(Pair("a", 2), Pair("b", 1), Pair("c", 3), Pair("d", 7)));
    EXPECT_EQ(map.getImp(), result.getImp());
    map.unite(map);
    EXPECT_EQ(4u, map.size());
}

TEST(Map, SharesOnCopyAndCopiesOnAssignment)
{
    Numbers a = numbers({{"a", 1}});
    Numbers b = a;
    b["b"] = 2;
    EXPECT_EQ(2u, a.size());
    Numbers c;
    c = a;
    c["c"] = 3;
    EXPECT_EQ(2u, a.size());
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    EXPECT_TRUE(numbers({{"a", 1}}) != numbers({{"a", 2}}));
    a.swap(c);
    EXPECT_EQ(3u, b.size());
    b.clear();
    EXPECT_THAT(entries(a), IsEmpty());
}

TEST(Map, ReplacingAValueByOneOfItsOwnIsPlain)
{
    vfBase::Map<VfString, VfString> map;
    map["a"] = "a text that is too long to be stored in place";
    map.insert("b", map["a"]);
    map.insert("c", map.first());
    EXPECT_EQ(map["a"], map["c"]);
    EXPECT_TRUE(map.remove(map.firstKey()));
    EXPECT_EQ(2u, map.size());
}
