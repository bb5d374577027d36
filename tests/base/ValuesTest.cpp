// SPDX-License-Identifier: MIT
// The small value types: lists of texts, variants, options, results, exceptions.
#include <velaforge/base/BaseException.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/base/WriteResult.h>

#include <osgDB/Options>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

using vfBase::Options;
using vfBase::StringList;
using vfBase::VfString;
using vfBase::VfVariant;
using vfBase::WriteResult;

TEST(StringList, MadeWithACountOfZeroIsEmptyAndAcceptsAnInsertAtTheFront)
{
    StringList list(0);
    EXPECT_EQ(0u, list.size());
    EXPECT_TRUE(list.isValid());
    list.insert(0, "a");
    EXPECT_EQ("a", list.get(0));
    EXPECT_EQ(2u, StringList(2u).size());
    EXPECT_EQ("", StringList(2u).get(1));
}

TEST(StringList, InsertsBeforeAPositionAndRemoves)
{
    StringList list;
    list.append("b");
    list.insert(0, "a");
    list.insert(2, "c");
    list.remove(1);
    ASSERT_EQ(2u, list.size());
    EXPECT_EQ("a", list.get(0));
    EXPECT_EQ("c", list.get(1));
    list.clear();
    EXPECT_TRUE(list.isEmpty());
}

TEST(StringList, CopiesAndAssignmentShareAndAClonesIsSeparate)
{
    StringList a;
    StringList b(a);
    b.append("x");
    EXPECT_EQ(1u, a.size());
    StringList c;
    c = a;
    c.append("y");
    EXPECT_EQ(2u, a.size());
    StringList d = a.clone();
    d.append("z");
    EXPECT_EQ(2u, a.size());
    EXPECT_FALSE(StringList(vfBase::Referenced::invalid()).isValid());
    EXPECT_EQ(a.getImp(), StringList(static_cast<const vfBase::Referenced&>(a)).getImp());
}

TEST(VfVariant, MadeFromOrBoundToAnyHandleItTakesValuesOnly)
{
    const VfVariant seven(7);
    const vfBase::Referenced& handle = seven;
    EXPECT_EQ(7, VfVariant(handle).toInteger());
    EXPECT_TRUE(VfVariant(static_cast<const vfBase::Referenced&>(StringList())).isEmpty());

    VfVariant bound("before");
    vfBase::Referenced& base = bound;
    base.setImp(handle);
    EXPECT_EQ(7, bound.toInteger());
    EXPECT_EQ(seven.getImp(), bound.getImp());
    base.setImp(StringList());
    EXPECT_TRUE(bound.isEmpty());
}

TEST(StringList, BoundThroughItsBaseItSharesTheOthersTexts)
{
    StringList list;
    StringList other;
    static_cast<vfBase::Referenced&>(list).setImp(other);
    list.append("x");
    EXPECT_EQ(1u, other.size());
}

TEST(Options, BoundThroughTheirBaseTheyShareTheOthersKeys)
{
    Options options;
    const Options other;
    static_cast<vfBase::Referenced&>(options).setImp(other);
    options.setPluginStringData("KEY", "TRUE");
    EXPECT_EQ("TRUE", other.getPluginStringData("KEY"));
    static_cast<vfBase::Referenced&>(options).setImp(StringList());
    EXPECT_FALSE(options.isValid());
}

TEST(VfVariant, HoldsAnyCopyableValueAndTellsItsType)
{
    EXPECT_TRUE(VfVariant().isEmpty());
    EXPECT_FALSE(VfVariant().isValid());
    EXPECT_TRUE(VfVariant(true).toBool());
    EXPECT_EQ(42, VfVariant(42).toInteger());
    EXPECT_EQ(42, VfVariant(42u).toInteger());
    EXPECT_DOUBLE_EQ(1.5, VfVariant(1.5f).toDouble());
    EXPECT_EQ("text", VfVariant("text").toString());
    EXPECT_EQ("text", VfVariant(std::string("text")).toString());
    StringList list;
    list.append("x");
    EXPECT_EQ(1u, VfVariant(list).toStringList().size());
    struct Own
    {
        int n;
    };
    EXPECT_EQ(7, VfVariant(Own{7}).get<Own>().n);
    EXPECT_TRUE(VfVariant(Own{7}).is<Own>());
}

TEST(VfVariant, AnIntegerAnswersToEveryIntegerTypeInWhichItFits)
{
    const VfVariant five(5);
    EXPECT_TRUE(five.is<int>());
    EXPECT_EQ(5, five.get<int>());
    EXPECT_EQ(5u, five.get<unsigned int>());
    EXPECT_EQ(5, five.get<short>());
    EXPECT_EQ(5u, five.get<std::uint64_t>());
    EXPECT_EQ(5, five.get<long long>());
    EXPECT_EQ(5, five.get<char>());
    EXPECT_EQ('x', VfVariant('x').get<char>());
    EXPECT_EQ(120, VfVariant('x').get<int>());

    EXPECT_TRUE(VfVariant(-1).is<signed char>());
    EXPECT_FALSE(VfVariant(-1).is<unsigned char>());
    EXPECT_FALSE(VfVariant(-1).is<std::uint64_t>());
    EXPECT_EQ(0u, VfVariant(-1).get<unsigned int>());
    EXPECT_TRUE(VfVariant(127).is<std::int8_t>());
    EXPECT_FALSE(VfVariant(128).is<std::int8_t>());
    EXPECT_TRUE(VfVariant(-128).is<std::int8_t>());
    EXPECT_FALSE(VfVariant(-129).is<std::int8_t>());
    EXPECT_TRUE(VfVariant(255).is<std::uint8_t>());
    EXPECT_FALSE(VfVariant(256).is<std::uint8_t>());
    EXPECT_EQ(0, VfVariant(256).get<std::uint8_t>());
    EXPECT_EQ(INT_MAX, VfVariant(INT_MAX).get<int>());
    EXPECT_EQ(INT_MIN, VfVariant(INT_MIN).get<int>());
    EXPECT_FALSE(VfVariant(static_cast<unsigned int>(INT_MAX) + 1).is<int>());
    EXPECT_EQ(LLONG_MIN, VfVariant(LLONG_MIN).get<long long>());
    EXPECT_FALSE(VfVariant(LLONG_MIN).is<std::uint64_t>());
    EXPECT_FALSE(VfVariant(LLONG_MIN).is<int>());
}

TEST(VfVariant, ALargeUnsignedIntegerDoesNotTurnNegative)
{
    const VfVariant large(ULLONG_MAX);
    EXPECT_TRUE(large.is<unsigned long long>());
    EXPECT_EQ(ULLONG_MAX, large.get<std::uint64_t>());
    EXPECT_FALSE(large.is<long long>());
    EXPECT_FALSE(large.is<int>());
    EXPECT_EQ(0, large.toInteger());
    const unsigned long long firstBeyond = static_cast<unsigned long long>(LLONG_MAX) + 1;
    EXPECT_EQ(firstBeyond, VfVariant(firstBeyond).get<unsigned long long>());
    EXPECT_FALSE(VfVariant(firstBeyond).is<long long>());
    EXPECT_EQ(LLONG_MAX, VfVariant(firstBeyond - 1).get<long long>());
}

TEST(VfVariant, AFloatingValueAnswersToEveryFloatingType)
{
    EXPECT_TRUE(VfVariant(0.5f).is<float>());
    EXPECT_EQ(0.5f, VfVariant(0.5f).get<float>());
    EXPECT_EQ(0.5, VfVariant(0.5f).get<double>());
    EXPECT_EQ(0.1f, VfVariant(0.1).get<float>());
    EXPECT_EQ(0.1L, VfVariant(0.1L).get<long double>());
    EXPECT_EQ(0.1, VfVariant(0.1L).get<double>());
    EXPECT_EQ(static_cast<long double>(0.1), VfVariant(0.1).get<long double>());
    EXPECT_FALSE(VfVariant(1e300).is<float>());
    EXPECT_EQ(0.0f, VfVariant(-1e300).get<float>());
    EXPECT_FALSE(VfVariant(std::numeric_limits<long double>::max()).is<double>());
    EXPECT_TRUE(VfVariant(std::numeric_limits<long double>::max()).is<long double>());
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(-std::numeric_limits<float>::infinity(), VfVariant(-infinity).get<float>());
    EXPECT_EQ(infinity, VfVariant(std::numeric_limits<long double>::infinity()).get<double>());
    EXPECT_TRUE(std::isnan(VfVariant(std::nan("")).get<float>()));
    EXPECT_TRUE(VfVariant(std::nan("")).is<double>());
}

TEST(VfVariant, ConvertsBetweenNoOtherTypes)
{
    EXPECT_FALSE(VfVariant(5).is<double>());
    EXPECT_FALSE(VfVariant(5.0).is<int>());
    EXPECT_FALSE(VfVariant(1).is<bool>());
    EXPECT_FALSE(VfVariant(true).is<int>());
    EXPECT_FALSE(VfVariant("5").is<int>());
    EXPECT_FALSE(VfVariant("5").is<std::string>());
    enum class Side
    {
        Left,
        Right
    };
    EXPECT_EQ(Side::Right, VfVariant(Side::Right).get<Side>());
    EXPECT_FALSE(VfVariant(Side::Right).is<int>());
    EXPECT_FALSE(VfVariant().is<int>());
    EXPECT_EQ(0, VfVariant().get<int>());
}

TEST(VfVariant, GivesTheEmptyValueOfATypeThatItDoesNotHold)
{
    const VfVariant number(5);
    EXPECT_FALSE(number.is<VfString>());
    EXPECT_EQ("", number.toString());
    EXPECT_FALSE(number.toBool());
    EXPECT_EQ(0.0, number.toDouble());
    EXPECT_EQ(0u, number.toStringList().size());
    EXPECT_EQ(0, VfVariant("5").toInteger());
}

TEST(VfVariant, ACopySurvivesItsSource)
{
    VfVariant copy;
    {
        const VfVariant source("kept");
        copy = VfVariant(source, true);
        const VfVariant other(source, false);
        EXPECT_EQ("kept", other.toString());
    }
    EXPECT_EQ("kept", copy.toString());
    copy = 3;
    EXPECT_EQ(3, copy.toInteger());
}

TEST(Options, AKeyNeverSetGivesTheEmptyTextWhichIsNotTRUE)
{
    const Options options;
    EXPECT_TRUE(options.isValid());
    EXPECT_FALSE(options.getPluginStringData("NEWDOC") == VfString("TRUE"));
    EXPECT_TRUE(options.getPluginStringData("NEWDOC").empty());
}

TEST(Options, AKeyOnACloneIsNotSeenThroughTheSourceAndOneOnACopyIs)
{
    const Options options;
    Options clone = options.clone();
    clone.setPluginStringData("A", "1");
    EXPECT_TRUE(options.getPluginStringData("A").empty());
    Options copy = options;
    copy.setPluginStringData("B", "2");
    copy.setPluginStringData("B", "3");
    EXPECT_EQ("3", options.getPluginStringData("B"));
    Options assigned;
    assigned = options;
    EXPECT_EQ("3", assigned.getPluginStringData("B"));
    EXPECT_EQ("3", options.clone().getPluginStringData("B"));
}

TEST(Options, WorkOnAnObjectOfOpenSceneGraph)
{
    const osg::ref_ptr<osgDB::Options> body = new osgDB::Options;
    Options options(body.get());
    options.setPluginStringData("key", "value");
    EXPECT_EQ("value", body->getPluginStringData("key"));
    EXPECT_FALSE(Options(static_cast<const osgDB::Options*>(nullptr)).isValid());
    EXPECT_TRUE(Options(static_cast<const vfBase::Referenced&>(options)).isValid());
}

TEST(Options, TheSharedInvalidOnesNeverChange)
{
    EXPECT_FALSE(Options::invalid().isValid());
    Options copy = Options::invalid();
    EXPECT_FALSE(copy.isValid());
    copy.setPluginStringData("A", "1");
    EXPECT_TRUE(copy.getPluginStringData("A").empty());
    EXPECT_FALSE(copy.clone().isValid());
    Options::invalid() = Options();
    EXPECT_FALSE(Options::invalid().isValid());
}

TEST(WriteResult, OnlyOneIsSuccess)
{
    for (int status = 1; status <= 4; ++status) {
        const WriteResult result(static_cast<WriteResult::WriteStatus>(status));
        EXPECT_EQ(status == 1, result.success()) << status;
        EXPECT_EQ(status != 1, result.error()) << status;
    }
    WriteResult copy(WriteResult::Written);
    copy = WriteResult(WriteResult::WriteFailed, "no space");
    EXPECT_EQ(WriteResult::WriteFailed, copy.getStatus());
    EXPECT_EQ("no space", WriteResult(copy).getMessage());
}

TEST(BaseException, TellsItsMessageAndTheCausesTextBehindIt)
{
    EXPECT_STREQ("plain", vfBase::BaseException("plain").what());
    const vfBase::BaseException inner("inner", std::runtime_error("root"));
    EXPECT_STREQ("inner: root", inner.what());
    const vfBase::BaseException outer("outer", inner);
    EXPECT_STREQ("outer: inner: root", outer.what());
    vfBase::BaseException copy(outer);
    EXPECT_STREQ(outer.what(), copy.what());
    copy = inner;
    EXPECT_STREQ("inner: root", copy.what());
}
