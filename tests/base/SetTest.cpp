// SPDX-License-Identifier: MIT
#include <velaforge/base/List.h>
#include <velaforge/base/Set.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfBase::Set;

namespace {

Set<int> numbers(std::initializer_list<int> values)
{
    Set<int> made;
    for (const int value : values)
        made << value;
    return made;
}

std::list<int> elements(const Set<int>& set)
{
    return set.toList().asStdList();
}

} // namespace

TEST(Set, InsertReturnsACursorOnTheElementPresentOrNew)
{
    Set<int> set = numbers({1, 3});
    auto inserted = set.insert(2);
    EXPECT_EQ(2, inserted.peekNext());
    EXPECT_EQ(1, inserted.peekPrevious());
    EXPECT_EQ(3, set.insert(3).peekNext());
    EXPECT_THAT(elements(set), ElementsAre(1, 2, 3));
}

TEST(Set, FindOfAnAbsentElementGivesACursorWithoutAContainer)
{
    const Set<int> set = numbers({1, 2});
    EXPECT_TRUE(set.find(2).isValid());
    EXPECT_EQ(2, set.find(2).peekNext());
    const auto absent = set.find(9);
    EXPECT_FALSE(absent.isValid());
    EXPECT_FALSE(absent.hasNext());
    EXPECT_FALSE(absent.hasPrevious());
}

TEST(Set, ContainsEveryElementOfASubsetAndAlwaysTheEmptySet)
{
    const Set<int> set = numbers({1, 2, 3});
    EXPECT_TRUE(set.contains(2));
    EXPECT_FALSE(set.contains(4));
    EXPECT_TRUE(set.contains(numbers({1, 3})));
    EXPECT_FALSE(set.contains(numbers({1, 4})));
    EXPECT_TRUE(set.contains(Set<int>()));
    EXPECT_TRUE(Set<int>().contains(Set<int>()));
}

TEST(Set, UniteIntersectAndSubtractChangeThisBody)
{
    Set<int> a = numbers({1, 2, 3});
    const Set<int> earlier = a;
    const Set<int> result = a.unite(numbers({3, 4}));
    EXPECT_EQ(a.getImp(), result.getImp());
    EXPECT_THAT(elements(earlier), ElementsAre(1, 2, 3, 4));
    a.intersect(numbers({2, 3, 4, 9}));
    EXPECT_THAT(elements(earlier), ElementsAre(2, 3, 4));
    a.subtract(numbers({3}));
    EXPECT_THAT(elements(earlier), ElementsAre(2, 4));
}

TEST(Set, AnElementCanBeInsertedAndRemovedByOperators)
{
    Set<int> set;
    set << 3;
    set += 1;
    set |= 2;
    EXPECT_THAT(elements(set), ElementsAre(1, 2, 3));
    set -= 2;
    set -= 9;
    EXPECT_THAT(elements(set), ElementsAre(1, 3));
    EXPECT_TRUE(set.remove(3));
    EXPECT_FALSE(set.remove(3));
}

TEST(Set, AndWithAnElementLeavesThatOneOrNone)
{
    Set<int> present = numbers({1, 2, 3});
    present &= 2;
    EXPECT_THAT(elements(present), ElementsAre(2));
    Set<int> absent = numbers({1, 2, 3});
    absent &= 9;
    EXPECT_THAT(elements(absent), IsEmpty());
}

TEST(Set, OperatorsWithASetWorkOnThisBody)
{
    Set<int> set = numbers({1});
    set += numbers({2});
    set |= numbers({3});
    EXPECT_THAT(elements(set), ElementsAre(1, 2, 3));
    set -= numbers({1});
    set &= numbers({3, 4});
    EXPECT_THAT(elements(set), ElementsAre(3));
}

TEST(Set, MinusLeavesItsLeftOperandSmaller)
{
    const Set<int> a = numbers({1, 2, 3});
    const Set<int> c = a - numbers({2});
    EXPECT_THAT(elements(a), ElementsAre(1, 3));
    EXPECT_EQ(a.getImp(), c.getImp());
}

TEST(Set, EveryBinaryOperatorChangesItsLeftOperand)
{
    const Set<int> a = numbers({1, 2});
    EXPECT_EQ(a.getImp(), (a + numbers({3})).getImp());
    EXPECT_EQ(a.getImp(), (a | numbers({4})).getImp());
    EXPECT_THAT(elements(a), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(a.getImp(), (a & numbers({2, 3})).getImp());
    EXPECT_THAT(elements(a), ElementsAre(2, 3));
}

TEST(Set, ASetGivenItselfGivesThePlainResult)
{
    Set<int> set = numbers({1, 2});
    const Set<int>& itself = set;
    set += itself;
    set |= itself;
    set &= itself;
    EXPECT_THAT(elements(set), ElementsAre(1, 2));
    set -= itself;
    EXPECT_THAT(elements(set), IsEmpty());
    Set<int> other = numbers({5, 6});
    other &= *other.find(6).getImp()->position;
    other -= *other.find(6).getImp()->position;
    EXPECT_TRUE(other.isEmpty());
}

TEST(Set, SharesOnCopyAndCopiesOnAssignment)
{
    Set<int> a = numbers({1});
    Set<int> b = a;
    b << 2;
    EXPECT_EQ(2u, a.size());
    Set<int> c;
    c = a;
    c << 3;
    EXPECT_EQ(2u, a.size());
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a != c);
    a.swap(c);
    EXPECT_EQ(3u, b.size());
    a.clear();
    EXPECT_TRUE(b.isEmpty());
}

TEST(Set, ConvertsFromAList)
{
    vfBase::List<int> list;
    list << 3 << 1 << 3;
    EXPECT_THAT(elements(Set<int>::fromList(list)), ElementsAre(1, 3));
}
