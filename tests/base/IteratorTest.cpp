// SPDX-License-Identifier: MIT
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Pair.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>

#include <osg/observer_ptr>

#include <gmock/gmock.h>

#include <memory>

using vfBase::AssociativeIterator;
using vfBase::Iterator;
using vfBase::List;
using vfBase::VfString;
using Numbers = vfBase::Map<VfString, int>;
using Entry = vfBase::Pair<VfString, int>;

namespace {

List<int> oneTwoOne()
{
    List<int> list;
    list << 1 << 2 << 1;
    return list;
}

Numbers aToC()
{
    Numbers map;
    map["a"] = 1;
    map["b"] = 2;
    map["c"] = 1;
    return map;
}

} // namespace

TEST(Iterator, WalksBothWaysBetweenTheElements)
{
    auto it = oneTwoOne().getIterator();
    EXPECT_FALSE(it.hasPrevious());
    EXPECT_EQ(1, it.peekNext());
    EXPECT_EQ(1, it.next());
    EXPECT_EQ(2, it.next());
    EXPECT_EQ(2, it.peekPrevious());
    EXPECT_EQ(1, it.next());
    EXPECT_FALSE(it.hasNext());
    EXPECT_EQ(1, it.previous());
    EXPECT_EQ(2, it.previous());
    it.toFront();
    EXPECT_FALSE(it.hasPrevious());
    it.toBack();
    EXPECT_FALSE(it.hasNext());
}

TEST(Iterator, TwoCopiesOfOneCursorAdvanceTogether)
{
    Iterator<List<int>> a = oneTwoOne().getIterator();
    Iterator<List<int>> b = a;
    a.next();
    EXPECT_EQ(2, b.next());
    EXPECT_EQ(1, a.peekNext());
}

TEST(Iterator, AssignmentRebindsToTheOtherCursor)
{
    const List<int> list = oneTwoOne();
    Iterator<List<int>> a = list.getIterator();
    Iterator<List<int>> b = list.getIterator();
    a.next();
    b = a;
    a.next();
    EXPECT_EQ(1, b.next());
    EXPECT_FALSE(a.hasNext());
}

TEST(Iterator, WithoutABodyItIsInvalid)
{
    EXPECT_FALSE(Iterator<List<int>>().isValid());
    const Iterator<List<int>> bodyWithoutContainer(new Iterator<List<int>>::Body);
    EXPECT_FALSE(bodyWithoutContainer.isValid());
    EXPECT_FALSE(bodyWithoutContainer.hasNext());
    EXPECT_FALSE(bodyWithoutContainer.hasPrevious());
    EXPECT_TRUE(oneTwoOne().getIterator().isValid());
}

TEST(Iterator, FindsForwardBehindAMatchAndBackwardOntoIt)
{
    auto it = oneTwoOne().getIterator();
    EXPECT_TRUE(it.findNext(1));
    EXPECT_TRUE(it.findNext(1));
    EXPECT_FALSE(it.hasNext());
    EXPECT_FALSE(it.findNext(1));
    EXPECT_TRUE(it.findPrevious(2));
    EXPECT_EQ(2, it.peekNext());
    EXPECT_FALSE(it.findPrevious(9));
    EXPECT_FALSE(it.hasPrevious());
    EXPECT_FALSE(it.findNext(9));
    EXPECT_FALSE(it.hasNext());
}

TEST(Iterator, KeepsTheElementsAliveWhenTheLastHandleIsGone)
{
    auto list = std::make_unique<List<std::shared_ptr<int>>>();
    const auto number = std::make_shared<int>(5);
    *list << number;
    auto it = list->getIterator();
    list.reset();
    EXPECT_EQ(2, number.use_count());
    EXPECT_EQ(5, *it.next());
    it = Iterator<List<std::shared_ptr<int>>>();
    EXPECT_EQ(1, number.use_count());
}

TEST(Iterator, SetStartsANewCursorAndLeavesTheEarlierOne)
{
    const List<int> first = oneTwoOne();
    List<int> second;
    second << 7;
    Iterator<List<int>> it = first.getIterator();
    Iterator<List<int>> copy = it;
    it.next();
    it.set(second);
    EXPECT_EQ(7, it.next());
    EXPECT_EQ(2, copy.next());
}

TEST(Iterator, TheCursorThatSetLeavesIsNeverReleased)
{
    List<int> list;
    Numbers map;
    Iterator<List<int>> it = list.getIterator();
    AssociativeIterator<Numbers> entry = map.getIterator();
    const osg::observer_ptr<osg::Referenced> former = it.getImp();
    const osg::observer_ptr<osg::Referenced> formerEntry = entry.getImp();
    it.set(list);
    entry.set(map);
    EXPECT_NE(former.get(), it.getImp());
    EXPECT_TRUE(former.valid());
    EXPECT_TRUE(formerEntry.valid());
}

TEST(Iterator, SeesChangesOfTheContainerAndWritesThrough)
{
    List<int> list;
    list << 1 << 2;
    auto it = list.getIterator();
    list.append(3);
    it.next() = 9;
    it.next();
    EXPECT_TRUE(it.hasNext());
    EXPECT_EQ(3, it.next());
    EXPECT_EQ(9, list.first());
}

TEST(Iterator, WorksOnVectorsAndSets)
{
    vfBase::Vector<int> vector(2u, 4);
    auto overVector = vector.getIterator();
    EXPECT_EQ(4, overVector.next());
    vfBase::Set<int> set;
    set << 2 << 1;
    Iterator<vfBase::Set<int>> overSet(set);
    EXPECT_EQ(1, overSet.next());
    EXPECT_TRUE(overSet.findNext(2));
}

TEST(Iterator, TakesOverACursorThroughSetImp)
{
    Iterator<List<int>> a;
    Iterator<List<int>> b = oneTwoOne().getIterator();
    a.setImp(b);
    a.next();
    EXPECT_EQ(2, b.peekNext());
    a.setImp(vfBase::Referenced());
    EXPECT_FALSE(a.isValid());
}

TEST(Iterator, IsMadeFromAnyHandleOnACursor)
{
    List<int> list;
    list << 1 << 2;
    Iterator<List<int>> it(list);
    it.next();
    const vfBase::Referenced& handle = it;
    Iterator<List<int>> same(handle);
    EXPECT_EQ(it.getImp(), same.getImp());
    EXPECT_EQ(2, same.next());
    EXPECT_FALSE(it.hasNext());
    EXPECT_FALSE(Iterator<List<int>>(vfBase::Referenced::invalid()).isValid());
    EXPECT_FALSE(Iterator<List<int>>(static_cast<const vfBase::Referenced&>(list)).isValid());
    EXPECT_FALSE(Iterator<vfBase::Vector<int>>(handle).isValid());
}

TEST(AssociativeIterator, IsMadeFromAnyHandleOnACursor)
{
    Numbers map;
    map["a"] = 1;
    AssociativeIterator<Numbers> it(map);
    const vfBase::Referenced& handle = it;
    AssociativeIterator<Numbers> same(handle);
    EXPECT_EQ(it.getImp(), same.getImp());
    same.next();
    EXPECT_FALSE(it.hasNext());
    EXPECT_FALSE((AssociativeIterator<Numbers>(static_cast<const vfBase::Referenced&>(map)).isValid()));
}

TEST(AssociativeIterator, BeginsWithPositionAndCurrentOnTheFirstEntry)
{
    auto it = aToC().getIterator();
    EXPECT_EQ("a", it.key());
    EXPECT_EQ(1, it.value());
    EXPECT_EQ("a", it.peekNext().key);
    EXPECT_FALSE(it.hasPrevious());
}

TEST(AssociativeIterator, NextAndPreviousLeaveTheEntryPassedAsTheCurrentOne)
{
    auto it = aToC().getIterator();
    EXPECT_TRUE(it.next() == Entry("a", 1));
    EXPECT_TRUE(it.next() == Entry("b", 2));
    EXPECT_EQ("b", it.key());
    EXPECT_EQ("c", it.peekNext().key);
    EXPECT_EQ("b", it.peekPrevious().key);
    EXPECT_TRUE(it.previous() == Entry("b", 2));
    EXPECT_EQ("b", it.key());
    it.toBack();
    EXPECT_FALSE(it.hasNext());
    it.next(); // stays at the end
    EXPECT_FALSE(it.hasNext());
    EXPECT_EQ("c", it.previous().key);
    it.toFront();
    EXPECT_EQ("a", it.key());
}

TEST(AssociativeIterator, FindsByValueAndLeavesTheMatchAsTheCurrentEntry)
{
    auto it = aToC().getIterator();
    it.next();
    EXPECT_TRUE(it.findNext(1));
    EXPECT_EQ("c", it.key());
    EXPECT_FALSE(it.hasNext());
    EXPECT_FALSE(it.findNext(1));
    EXPECT_TRUE(it.findPrevious(2));
    EXPECT_EQ("b", it.key());
    EXPECT_EQ("b", it.peekNext().key);
    EXPECT_FALSE(it.findPrevious(9));
    EXPECT_FALSE(it.hasPrevious());
    EXPECT_EQ(it.getImp()->container->container->end(), it.getImp()->current);
}

TEST(AssociativeIterator, CanStillBeReadAfterTheLastHandleOfTheMapHasGone)
{
    AssociativeIterator<Numbers> it;
    EXPECT_FALSE(it.isValid());
    {
        const Numbers map = aToC();
        it = map.getIterator();
    }
    EXPECT_TRUE(it.isValid());
    EXPECT_EQ(1, it.next().value);
    EXPECT_EQ("b", it.next().key);
}

TEST(AssociativeIterator, CopiesMoveTogetherAndSetStartsAnew)
{
    AssociativeIterator<Numbers> a = aToC().getIterator();
    AssociativeIterator<Numbers> b = a;
    a.next();
    EXPECT_EQ("b", b.next().key);
    Numbers other;
    other["z"] = 26;
    a.set(other);
    EXPECT_EQ("z", a.key());
    EXPECT_EQ("c", b.next().key);
    b.setImp(a);
    EXPECT_EQ("z", b.next().key);
    EXPECT_FALSE(a.hasNext());
}

TEST(AssociativeIterator, GivesCopiesThatDoNotWriteThrough)
{
    const Numbers map = aToC();
    auto it = map.getIterator();
    Entry entry = it.next();
    entry.value = 99;
    EXPECT_EQ(1, map.value("a", 0));
}

TEST(Pair, IsARealCopy)
{
    Entry a("k", 1);
    Entry b = a;
    b.value = 2;
    EXPECT_EQ(1, a.value);
    EXPECT_TRUE(a != b);
    a = b;
    EXPECT_TRUE(a == b);
    Entry moved(std::move(a));
    EXPECT_TRUE(moved == b);
    Entry target;
    EXPECT_TRUE(target == Entry(VfString(), 0));
    target = std::move(moved);
    EXPECT_TRUE(target == b);
    EXPECT_TRUE(Entry("k", 1) != Entry("l", 1));
}
