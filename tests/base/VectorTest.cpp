// SPDX-License-Identifier: MIT
#include <velaforge/base/List.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfBase::Vector;

namespace {

Vector<int> numbers(std::initializer_list<int> values)
{
    Vector<int> made;
    for (const int value : values)
        made.append(value);
    return made;
}

const std::vector<int>& elements(const Vector<int>& vector)
{
    return vector.asStdVector();
}

} // namespace

TEST(Vector, ACopySharesTheElements)
{
    Vector<int> a = numbers({1, 2});
    Vector<int> b = a;
    b.append(3);
    EXPECT_THAT(elements(a), ElementsAre(1, 2, 3));
    EXPECT_EQ(a.getImp(), b.getImp());
}

TEST(Vector, AssignmentCopiesTheElementsForEverybodyWhoSharesTheLeftSide)
{
    Vector<int> a = numbers({1});
    const Vector<int> earlier = a;
    Vector<int> b = numbers({7, 8});
    a = b;
    a.append(9);
    EXPECT_THAT(elements(b), ElementsAre(7, 8));
    EXPECT_THAT(elements(earlier), ElementsAre(7, 8, 9));
    EXPECT_NE(a.getImp(), b.getImp());
}

TEST(Vector, AssignmentGivesAFurtherHandleOnTheLeftSide)
{
    Vector<int> a;
    const Vector<int> b = numbers({4});
    Vector<int> result = (a = b);
    result.append(5);
    EXPECT_THAT(elements(a), ElementsAre(4, 5));
    EXPECT_THAT(elements(b), ElementsAre(4));
}

TEST(Vector, AssignmentToItselfOrWithinOneBodyChangesNothing)
{
    Vector<int> a = numbers({1, 2});
    Vector<int> same = a;
    a = same;
    Vector<int>& alias = a;
    a = alias;
    EXPECT_THAT(elements(a), ElementsAre(1, 2));
    EXPECT_EQ(a.getImp(), same.getImp());
}

TEST(Vector, PlusChangesItsLeftOperandAndReturnsAHandleOnIt)
{
    const Vector<int> a = numbers({1});
    const Vector<int> b = numbers({2, 3});
    Vector<int> c = a + b;
    EXPECT_EQ(3u, a.size());
    c.append(4);
    EXPECT_THAT(elements(a), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(elements(b), ElementsAre(2, 3));
}

TEST(Vector, OperatorsThatAppendReturnAHandleOnTheSameBody)
{
    Vector<int> a;
    Vector<int> b = (a << 1) << 2;
    b += 3;
    b += numbers({4});
    EXPECT_THAT(elements(a), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(a.getImp(), b.getImp());
}

TEST(Vector, CanBeAppendedToItself)
{
    Vector<int> a = numbers({1, 2});
    a << a;
    a += a;
    EXPECT_THAT(elements(a), ElementsAre(1, 2, 1, 2, 1, 2, 1, 2));
}

TEST(Vector, AnArgumentMayBeAnElementOfTheVectorItself)
{
    Vector<vfBase::VfString> a;
    a << "first element, too long to be stored in place"
      << "second";
    for (int i = 0; i < 40; ++i)
        a.append(a.first());
    a.insert(0, a.last());
    a.insert(1, 3u, a.at(1));
    a.prepend(a.at(2));
    for (unsigned int i = 0; i < a.size(); ++i)
        EXPECT_TRUE(a.at(i) == a.first() || a.at(i) == "second") << i;
    a.fill(a.last());
    EXPECT_EQ(a.size(), a.count(a.last()));
}

TEST(Vector, ValueIsCheckedAndGivesADefaultBehindTheEnd)
{
    const Vector<int> v = numbers({5, 6});
    EXPECT_EQ(6, v.value(1));
    EXPECT_EQ(0, v.value(v.size()));
    EXPECT_EQ(9, v.value(v.size(), 9));
    EXPECT_EQ(9, v.value(Vector<int>::npos, 9));
    EXPECT_EQ(5, v.value(0, 9));
}

TEST(Vector, IndexOfStartsWhereItIsToldAndFindsNothingFromTheEndOn)
{
    const Vector<int> v = numbers({1, 2, 1, 3});
    EXPECT_EQ(0u, v.indexOf(1));
    EXPECT_EQ(2u, v.indexOf(1, 1));
    EXPECT_EQ(2u, v.indexOf(1, 2));
    EXPECT_EQ(Vector<int>::npos, v.indexOf(1, 3));
    EXPECT_EQ(Vector<int>::npos, v.indexOf(1, v.size()));
    EXPECT_EQ(Vector<int>::npos, v.indexOf(4));
}

TEST(Vector, LastIndexOfSearchesBackFromTheLastIndexAtMost)
{
    const Vector<int> v = numbers({1, 2, 1, 3});
    EXPECT_EQ(2u, v.lastIndexOf(1));
    EXPECT_EQ(2u, v.lastIndexOf(1, Vector<int>::npos));
    EXPECT_EQ(2u, v.lastIndexOf(1, 99));
    EXPECT_EQ(0u, v.lastIndexOf(1, 1));
    EXPECT_EQ(Vector<int>::npos, v.lastIndexOf(3, 2));
    EXPECT_EQ(Vector<int>::npos, Vector<int>().lastIndexOf(1, Vector<int>::npos));
}

TEST(Vector, MidCopiesAPartIntoANewVector)
{
    Vector<int> v = numbers({1, 2, 3, 4});
    EXPECT_THAT(elements(v.mid(1, 2)), ElementsAre(2, 3));
    EXPECT_THAT(elements(v.mid(2)), ElementsAre(3, 4));
    EXPECT_THAT(elements(v.mid(3, 5)), ElementsAre(4));
    Vector<int> all = v.mid(0);
    EXPECT_TRUE(all == v);
    all.append(5);
    EXPECT_EQ(4u, v.size());
}

TEST(Vector, MidOfNothingOrBehindTheEndIsEmpty)
{
    const Vector<int> v = numbers({1, 2, 3});
    EXPECT_THAT(elements(v.mid(3, 1)), IsEmpty());
    EXPECT_THAT(elements(v.mid(0, 0)), IsEmpty());
    EXPECT_THAT(elements(v.mid(9)), IsEmpty());
    EXPECT_THAT(elements(v.mid(9, 0xFFFFFFF8u)), IsEmpty()); // pos + len wraps to a small number
    EXPECT_THAT(elements(v.mid(Vector<int>::npos, 2)), IsEmpty());
    EXPECT_THAT(elements(Vector<int>().mid(0)), IsEmpty());
}

TEST(Vector, InsertsReplacesAndRemovesByIndex)
{
    Vector<int> v = numbers({1, 2, 3});
    v.insert(0, 0);
    v.insert(v.size(), 4);
    v.insert(2, 2u, 7);
    EXPECT_THAT(elements(v), ElementsAre(0, 1, 7, 7, 2, 3, 4));
    v.replace(2, 8);
    v.remove(3);
    v.remove(0, 2);
    EXPECT_THAT(elements(v), ElementsAre(8, 2, 3, 4));
    v.removeFirst();
    v.removeLast();
    EXPECT_THAT(elements(v), ElementsAre(2, 3));
}

TEST(Vector, TakingReturnsTheElementAndRemovesIt)
{
    Vector<int> v = numbers({1, 2, 3, 4});
    EXPECT_EQ(2, v.takeAt(1));
    EXPECT_EQ(1, v.takeFirst());
    EXPECT_EQ(4, v.takeLast());
    EXPECT_THAT(elements(v), ElementsAre(3));
}

TEST(Vector, IsMadeWithACountOfDefaultsOrCopies)
{
    EXPECT_THAT(elements(Vector<int>(3u)), ElementsAre(0, 0, 0));
    EXPECT_THAT(elements(Vector<int>(2u, 7)), ElementsAre(7, 7));
    EXPECT_THAT(elements(Vector<int>(0)), IsEmpty()); // a count, not a null body
    EXPECT_TRUE(Vector<int>(0).isValid());
    const Vector<const int*> pointers(2u, nullptr);
    EXPECT_EQ(nullptr, pointers.at(1));
}

TEST(Vector, ReserveOnlyGrowsAndSqueezeGivesStorageUp)
{
    Vector<int> v = numbers({1, 2, 3});
    v.reserve(100);
    EXPECT_GE(v.capacity(), 100u);
    const unsigned int capacity = v.capacity();
    v.reserve(1);
    EXPECT_EQ(capacity, v.capacity());
    v.squeeze();
    EXPECT_EQ(3u, v.capacity());
    v.clear();
    v.squeeze();
    EXPECT_EQ(0u, v.capacity());
    EXPECT_TRUE(v.isEmpty());
}

TEST(Vector, ResizeCutsTheTailOrAppendsDefaults)
{
    Vector<int> v = numbers({1, 2, 3});
    v.resize(2);
    v.resize(4);
    EXPECT_THAT(elements(v), ElementsAre(1, 2, 0, 0));
}

TEST(Vector, FillKeepsTheSizeOrTakesTheOneGiven)
{
    Vector<int> v = numbers({1, 2, 3});
    EXPECT_EQ(v.getImp(), v.fill(5).getImp());
    EXPECT_THAT(elements(v), ElementsAre(5, 5, 5));
    v.fill(6, 2);
    EXPECT_THAT(elements(v), ElementsAre(6, 6));
    v.fill(7, 0);
    EXPECT_TRUE(v.isEmpty());
}

namespace {

/// Keeps the order in which assignments happened.
struct Assigned
{
    static std::vector<int> order;
    int number = 0;

    Assigned() = default;
    explicit Assigned(int n) : number(n) {}
    Assigned(const Assigned&) = default;
    Assigned& operator=(const Assigned&)
    {
        order.push_back(number);
        return *this;
    }
};
std::vector<int> Assigned::order;

} // namespace

TEST(Vector, FillAssignsFromTheLastElementToTheFirst)
{
    Vector<Assigned> v;
    v.asStdVector().reserve(3);
    for (int i = 0; i < 3; ++i)
        v.asStdVector().emplace_back(i);
    Assigned::order.clear();
    v.fill(Assigned());
    EXPECT_THAT(Assigned::order, ElementsAre(2, 1, 0));
}

TEST(Vector, SwapExchangesContentsForAllHandlesAndLeavesTheBodies)
{
    Vector<int> a = numbers({1});
    const Vector<int> onA = a;
    Vector<int> b = numbers({2, 3});
    const auto* bodyOfA = a.getImp();
    a.swap(b);
    EXPECT_THAT(elements(onA), ElementsAre(2, 3));
    EXPECT_THAT(elements(b), ElementsAre(1));
    EXPECT_EQ(bodyOfA, a.getImp());
    a.swap(onA);
    EXPECT_THAT(elements(a), ElementsAre(2, 3));
}

TEST(Vector, ComparesSizeAndElementsInOrder)
{
    EXPECT_TRUE(numbers({1, 2}) == numbers({1, 2}));
    EXPECT_TRUE(numbers({1, 2}) != numbers({2, 1}));
    EXPECT_TRUE(numbers({1}) != numbers({1, 1}));
}

TEST(Vector, GivesItsElementsAndItsStandardContainerToWriteTo)
{
    Vector<int> v = numbers({1, 2});
    v[0] = 5;
    v.at(1) = 6;
    v.data()[0] = 7;
    EXPECT_EQ(7, v.first());
    EXPECT_EQ(6, v.last());
    EXPECT_EQ(v.constData(), v.data());
    const Vector<int> constant = v;
    constant.asStdVector().push_back(8);
    EXPECT_EQ(3u, v.size());
    EXPECT_TRUE(v.contains(8));
    EXPECT_EQ(1u, v.count(8));
}

TEST(Vector, ConvertsToAListAndBackIntoNewBodies)
{
    Vector<int> v = numbers({3, 1, 2});
    vfBase::List<int> list = v.toList();
    list.append(4);
    EXPECT_EQ(3u, v.size());
    EXPECT_THAT(elements(Vector<int>::fromList(list)), ElementsAre(3, 1, 2, 4));
}

TEST(Vector, AdoptsABodyAndDeletesItsContainerOnlyIfItOwnsIt)
{
    std::vector<int> outside{1, 2};
    {
        Vector<int> v(new vfBase::RefVectorPrivate<int>(&outside, false));
        EXPECT_EQ(&outside, v.getImp()->container);
        EXPECT_EQ(&outside, v.getImp()->data);
        v.append(3);
    }
    EXPECT_THAT(outside, ElementsAre(1, 2, 3));
    EXPECT_TRUE(Vector<int>().getImp()->ownsData);
}

TEST(Vector, TakesOverAnotherHandlesBodyThroughSetImp)
{
    Vector<int> a = numbers({1});
    Vector<int> b = numbers({2});
    a.setImp(b);
    a.append(3);
    EXPECT_THAT(elements(b), ElementsAre(2, 3));
    EXPECT_TRUE(a.isValid());
    a.setImp(vfBase::List<int>());
    EXPECT_FALSE(a.isValid());
    a = b; // a handle without a body gets one
    EXPECT_THAT(elements(a), ElementsAre(2, 3));
    EXPECT_NE(a.getImp(), b.getImp());
}

TEST(Vector, IsMadeFromAnyHandleAndInvalidForAForeignBody)
{
    const Vector<int> a = numbers({1});
    const vfBase::Referenced& plain = a;
    EXPECT_EQ(a.getImp(), Vector<int>(plain).getImp());
    EXPECT_FALSE(Vector<int>(vfBase::Referenced::invalid()).isValid());
}
