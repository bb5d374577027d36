// SPDX-License-Identifier: MIT
// What would corrupt memory ends the process with one line, in release builds, too.
#include <velaforge/base/Iterator.h>
#include <velaforge/base/List.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/Vector.h>

#include <gmock/gmock.h>

using vfBase::Iterator;
using vfBase::List;
using vfBase::Map;
using vfBase::Vector;

namespace {

Vector<int> twoNumbers()
{
    Vector<int> numbers;
    numbers << 1 << 2;
    return numbers;
}

List<int> twoInAList()
{
    List<int> numbers;
    numbers << 1 << 2;
    return numbers;
}

const char* const outOfRange = "^velaFORGE: vfBase container: the index is out of range\n$";
const char* const empty = "^velaFORGE: vfBase container: asked for an element of an empty one\n$";

} // namespace

TEST(ContainerFaults, AnIndexOutOfRange)
{
    EXPECT_DEATH(twoNumbers()[2], outOfRange);
    EXPECT_DEATH(twoNumbers().at(2), outOfRange);
    EXPECT_DEATH(twoNumbers().replace(2, 0), outOfRange);
    EXPECT_DEATH(twoNumbers().remove(2), outOfRange);
    EXPECT_DEATH(twoNumbers().insert(3, 0), outOfRange);
    EXPECT_DEATH(twoNumbers().insert(3, 2, 0), outOfRange);
    EXPECT_DEATH(twoNumbers().remove(1, 2),
                 "^velaFORGE: vfBase::Vector::remove: the number is out of range\n$");
    EXPECT_DEATH(twoInAList().takeAt(2), outOfRange);
    EXPECT_DEATH(twoInAList().move(3, 0), outOfRange);
    EXPECT_DEATH(twoInAList().swap(0u, 2u), outOfRange);
}

TEST(ContainerFaults, AnElementOfAnEmptyContainer)
{
    EXPECT_DEATH(Vector<int>().first(), empty);
    EXPECT_DEATH(Vector<int>().takeLast(), empty);
    EXPECT_DEATH(List<int>().last(), empty);
    EXPECT_DEATH(List<int>().removeLast(), empty);
    EXPECT_DEATH((Map<int, int>().firstKey()),
                 "^velaFORGE: vfBase::Map: asked for an entry of an empty one\n$");
}

TEST(ContainerFaults, ACursorThatIsMovedBeyondTheContainer)
{
    EXPECT_DEATH(Vector<int>().getIterator().next(),
                 "^velaFORGE: vfBase::Iterator: there is no element behind the cursor\n$");
    EXPECT_DEATH(twoNumbers().getIterator().previous(),
                 "^velaFORGE: vfBase::Iterator: there is no element before the cursor\n$");
    EXPECT_DEATH((Map<int, int>().getIterator().peekNext()),
                 "^velaFORGE: vfBase::AssociativeIterator: there is no entry behind the cursor\n$");
    EXPECT_DEATH((Map<int, int>().getIterator().key()),
                 "^velaFORGE: vfBase::AssociativeIterator: there is no current entry\n$");
}

TEST(ContainerFaults, ACursorOfAnotherList)
{
    EXPECT_DEATH(
        {
            List<int> other = twoInAList();
            twoInAList().insert(other.getIterator(), 3);
        },
        "^velaFORGE: vfBase::List: the cursor stands in another container\n$");
    EXPECT_DEATH(
        {
            List<int> list = twoInAList();
            Iterator<List<int>> end = list.getIterator();
            end.toBack();
            list.remove(end);
        },
        "^velaFORGE: vfBase::List::remove: the cursor stands at the end\n$");
    EXPECT_DEATH(
        {
            List<int> list = twoInAList();
            Iterator<List<int>> end = list.getIterator();
            end.toBack();
            list.remove(end, list.getIterator());
        },
        "^velaFORGE: vfBase::List::remove: the second cursor stands before the first\n$");
}

TEST(ContainerFaults, ACursorOfAnotherMapIsNoHint)
{
    Map<int, int> map;
    map[1] = 1;
    Map<int, int> other;
    other[5] = 5;
    map.insert(other.getIterator(), 2, 2);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ(1u, other.size());
}

TEST(ContainerFaults, APositionOutOfRangeOfAListOfTextsIsHarmless)
{
    vfBase::StringList texts;
    texts.append("a");
    EXPECT_EQ("", texts.get(1));
    texts.remove(1);
    texts.insert(2, "b");
    EXPECT_EQ(1u, texts.size());
}
