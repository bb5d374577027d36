// SPDX-License-Identifier: MIT
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfString.h>

#include <gtest/gtest.h>

#include <sstream>

using vfBase::StringList;
using vfBase::VfString;

TEST(VfString, StartsEmptyAndTakesANullPointerForTheEmptyText)
{
    EXPECT_TRUE(VfString().empty());
    EXPECT_TRUE(VfString(static_cast<const char*>(nullptr)).empty());
    VfString text("mast");
    text = static_cast<const char*>(nullptr);
    EXPECT_STREQ("", text.c_str());
}

TEST(VfString, KeepsBytesAsTheyAre)
{
    const std::string bytes("a\0\xff\n", 4);
    const VfString text(bytes);
    EXPECT_EQ(4u, text.size());
    EXPECT_EQ(bytes, static_cast<std::string>(text));
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(bytes, stream.str());
}

TEST(VfString, ComparesAndOrdersByByte)
{
    EXPECT_TRUE(VfString("a") == VfString("a"));
    EXPECT_TRUE(VfString("TRUE") != VfString("true"));
    EXPECT_TRUE(VfString("Z") < VfString("a"));
    EXPECT_FALSE(VfString("a") < VfString("a"));
    EXPECT_TRUE(VfString("a") < VfString("aa"));
}

TEST(VfString, NullComparesAsTheEmptyTextOnEitherSide)
{
    const char* const none = nullptr;
    const VfString empty;
    const VfString text("a");
    EXPECT_TRUE(none == empty);
    EXPECT_TRUE(empty == none);
    EXPECT_FALSE(none == text);
    EXPECT_FALSE(text == none);
    EXPECT_TRUE(none != text);
    EXPECT_TRUE(text != none);
    EXPECT_FALSE(none != empty);
    EXPECT_FALSE(empty != none);
    EXPECT_TRUE(none < text);
    EXPECT_FALSE(text < none);
    EXPECT_FALSE(none < empty);
    EXPECT_TRUE("a" == text && text == "a" && "b" != text && text != "b" && "Z" < text && text < "b");
    EXPECT_EQ("a", text + none);
}

TEST(VfString, ConcatenationMakesANewTextAndAppendingChangesThisOne)
{
    const VfString hull("hull");
    EXPECT_EQ(VfString("hull.obj"), hull + ".obj");
    EXPECT_EQ(VfString("hullhull"), hull + hull);
    EXPECT_EQ(VfString("hull"), hull);
    VfString text("a");
    text += text;
    EXPECT_EQ(VfString("aa"), text);
}

TEST(VfString, AssigningAPartOfItsOwnTextIsSafe)
{
    VfString text("foremast, long enough to be allocated on the heap");
    text = text.c_str() + 4;
    EXPECT_STREQ("mast, long enough to be allocated on the heap", text.c_str());
}

TEST(VfString, SplitGivesThePiecesInOrderAndDropsEmptyOnes)
{
    const StringList pieces = VfString(",obj,,stl,").split(',');
    ASSERT_EQ(2u, pieces.size());
    EXPECT_EQ(VfString("obj"), pieces.get(0));
    EXPECT_EQ(VfString("stl"), pieces.get(1));
    EXPECT_EQ(0u, VfString().split(',').size());
    EXPECT_EQ(0u, VfString(",,").split(',').size());
    EXPECT_EQ(1u, VfString("obj").split(',').size());
}

TEST(VfString, IsNoHandleAndHasAnIdentityOfItsOwn)
{
    const VfString a("same");
    const VfString b(a);
    EXPECT_NE(a.getUniqueId(), b.getUniqueId());
    EXPECT_STREQ("VfString", a.getClassInfo()->getClassName());
}
