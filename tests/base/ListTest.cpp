// SPDX-License-Identifier: MIT
#include <velaforge/base/List.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfBase::List;

namespace {

List<int> numbers(std::initializer_list<int> values)
{
    List<int> made;
    for (const int value : values)
        made.append(value);
    return made;
}

const std::list<int>& elements(const List<int>& list)
{
    return list.asStdList();
}

} // namespace

TEST(List, AppendOnACopyChangesTheSizeOfTheSource)
{
    const List<int> a = numbers({1});
    List<int> b = a;
    b.append(2);
    EXPECT_EQ(2u, a.size());
}

TEST(List, AssignmentSeparatesTheBodiesAndShowsTheElementsToEarlierHandles)
{
    List<int> a = numbers({1});
    const List<int> earlier = a;
    const List<int> b = numbers({2, 3});
    a = b;
    a.append(4);
    EXPECT_EQ(2u, b.size());
    EXPECT_THAT(elements(earlier), ElementsAre(2, 3, 4));
}

TEST(List, PlusLeavesTheLeftOperandLongerAndTheResultIsTheSameList)
{
    const List<int> a = numbers({1});
    const List<int> b = numbers({2, 3});
    List<int> c = a + b;
    EXPECT_EQ(3u, a.size());
    EXPECT_EQ(a.getImp(), c.getImp());
}

TEST(List, FindsFromTheEndBackAndNothingInAnEmptyList)
{
    const List<int> list = numbers({1, 2, 1});
    EXPECT_EQ(List<int>::npos, list.indexOf(1, list.size()));
    EXPECT_EQ(1u, list.indexOf(2));
    EXPECT_EQ(2u, list.lastIndexOf(1, List<int>::npos));
    EXPECT_EQ(0u, list.lastIndexOf(1, 1));
    EXPECT_EQ(List<int>::npos, List<int>().lastIndexOf(1));
    EXPECT_EQ(0xFFFFFFFFu, List<int>::npos);
}

TEST(List, MidOfAllIsEqualButSeparate)
{
    const List<int> list = numbers({1, 2});
    EXPECT_THAT(elements(list.mid(2, 1)), IsEmpty());
    EXPECT_THAT(elements(list.mid(0, 0)), IsEmpty());
    List<int> all = list.mid(0, List<int>::npos);
    EXPECT_TRUE(all == list);
    all.append(3);
    EXPECT_EQ(2u, list.size());
    EXPECT_THAT(elements(list.mid(1)), ElementsAre(2));
}

TEST(List, MovePutsAnElementBeforeTheOneThatWasThere)
{
    List<int> list = numbers({0, 1, 2, 3});
    list.move(0, 0);
    list.move(0, 1);
    EXPECT_THAT(elements(list), ElementsAre(0, 1, 2, 3));
    list.move(0, 2);
    EXPECT_THAT(elements(list), ElementsAre(1, 0, 2, 3));
    list.move(3, 1);
    EXPECT_THAT(elements(list), ElementsAre(1, 3, 0, 2));
    list.move(4, 0);
    EXPECT_THAT(elements(list), ElementsAre(1, 3, 0, 2));
    list.move(0, 4);
    EXPECT_THAT(elements(list), ElementsAre(3, 0, 2, 1));
}

TEST(List, SwapsTwoElementsOrAllContents)
{
    List<int> list = numbers({1, 2, 3});
    list.swap(0u, 2u);
    EXPECT_THAT(elements(list), ElementsAre(3, 2, 1));
    list.swap(1u, 1u);
    List<int> other = numbers({9});
    list.swap(other);
    EXPECT_THAT(elements(list), ElementsAre(9));
    EXPECT_THAT(elements(other), ElementsAre(3, 2, 1));
}

TEST(List, RemovesTheFirstMatchOrAllOfThem)
{
    List<int> list = numbers({1, 2, 1, 3, 1});
    EXPECT_TRUE(list.removeOne(1));
    EXPECT_FALSE(list.removeOne(7));
    EXPECT_THAT(elements(list), ElementsAre(2, 1, 3, 1));
    EXPECT_EQ(2u, list.removeAll(1));
    EXPECT_EQ(0u, list.removeAll(1));
    EXPECT_THAT(elements(list), ElementsAre(2, 3));
}

TEST(List, RemovingAllOfAnElementThatIsInTheListItselfRemovesThemAll)
{
    List<vfBase::VfString> list;
    list << "the same text, too long to be stored in place"
         << "other"
         << "the same text, too long to be stored in place";
    EXPECT_EQ(2u, list.removeAll(list.first()));
    EXPECT_TRUE(list.removeOne(list.first()));
    EXPECT_TRUE(list.isEmpty());
}

TEST(List, InsertsAtACursorAndReturnsOneOnTheNewElement)
{
    List<int> list = numbers({1, 3});
    auto it = list.getIterator();
    it.next();
    auto inserted = list.insert(it, 2);
    EXPECT_THAT(elements(list), ElementsAre(1, 2, 3));
    EXPECT_EQ(2, inserted.peekNext());
    EXPECT_EQ(3, it.peekNext());
}

TEST(List, RemovesAtACursorAndReturnsOneOnTheFollowingElement)
{
    List<int> list = numbers({1, 2, 3, 4});
    auto it = list.getIterator();
    it.next();
    auto following = list.remove(it);
    EXPECT_THAT(elements(list), ElementsAre(1, 3, 4));
    EXPECT_EQ(3, following.next());
    auto first = list.getIterator();
    auto last = list.remove(first, following);
    EXPECT_THAT(elements(list), ElementsAre(4));
    EXPECT_EQ(4, last.peekNext());
}

TEST(List, WorksByIndexLikeAVector)
{
    List<int> list = numbers({1, 2});
    list.prepend(0);
    list.insert(3, 3);
    list.replace(1, 9);
    EXPECT_THAT(elements(list), ElementsAre(0, 9, 2, 3));
    list.remove(1);
    EXPECT_EQ(2, list.takeAt(1));
    EXPECT_EQ(0, list.takeFirst());
    EXPECT_EQ(3, list.takeLast());
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(4, list.value(0, 4));
    EXPECT_EQ(0, list.value(0));
    list << 5 << numbers({6});
    list += 7;
    EXPECT_EQ(5, list[0]);
    EXPECT_EQ(6, list.at(1));
    list.removeFirst();
    list.removeLast();
    EXPECT_EQ(6, list.first());
    EXPECT_EQ(6, list.last());
    list.clear();
    EXPECT_TRUE(list.isEmpty());
    EXPECT_TRUE(list.isValid());
}

TEST(List, ConvertsToAVectorAndASetAndBack)
{
    const List<int> list = numbers({3, 1, 3, 2});
    EXPECT_THAT(list.toVector().asStdVector(), ElementsAre(3, 1, 3, 2));
    EXPECT_EQ(3u, list.toSet().size());
    EXPECT_THAT(elements(List<int>::fromSet(list.toSet())), ElementsAre(1, 2, 3));
    EXPECT_THAT(elements(List<int>::fromVector(list.toVector())), ElementsAre(3, 1, 3, 2));
}

TEST(List, CanBeAppendedToItselfAndMovedOntoItself)
{
    List<int> list = numbers({1, 2});
    list << list;
    EXPECT_THAT(elements(list), ElementsAre(1, 2, 1, 2));
    const List<int> sum = list + list;
    EXPECT_EQ(8u, sum.size());
}
