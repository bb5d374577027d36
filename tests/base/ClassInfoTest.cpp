// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/VfString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

using vfBase::ClassInfo;
using vfBase::Registry_;
using vfBase::VfObject;

namespace {

class Thing : public VfObject
{
public:
    static const ClassInfo s_classInfo;
    const ClassInfo* getClassInfo() const override { return &s_classInfo; }
};

VfObject* createThing()
{
    return new Thing;
}

const ClassInfo Thing::s_classInfo("test", "Thing", "test::Thing", &VfObject::s_classInfo, nullptr,
                                   sizeof(Thing), createThing);

/// A handle has its VfObject as a virtual base.
class Handle : public vfBase::Referenced
{
public:
    static const ClassInfo s_classInfo;
    const ClassInfo* getClassInfo() const override { return &s_classInfo; }
};

const ClassInfo Handle::s_classInfo("test", "Handle", "test::Handle", &vfBase::Referenced::s_classInfo,
                                    nullptr, sizeof(Handle), []() -> VfObject* { return new Handle; });

const ClassInfo abstractThing("test", "Abstract", "test::Abstract", &Thing::s_classInfo, nullptr, 8, nullptr);

} // namespace

TEST(ClassInfo, KeepsWhatItWasMadeWith)
{
    EXPECT_STREQ("test", Thing::s_classInfo.getLibraryName());
    EXPECT_STREQ("Thing", Thing::s_classInfo.getClassName());
    EXPECT_STREQ("test::Thing", Thing::s_classInfo.getClassId());
    EXPECT_EQ(&VfObject::s_classInfo, Thing::s_classInfo.getParent());
    EXPECT_EQ(nullptr, Thing::s_classInfo.getSecondParent());
    EXPECT_EQ(static_cast<int>(sizeof(Thing)), Thing::s_classInfo.getSize());
    EXPECT_TRUE(abstractThing.isDerivedFrom(&VfObject::s_classInfo));
    EXPECT_FALSE(Thing::s_classInfo.isDerivedFrom(&abstractThing));
    EXPECT_FALSE(Thing::s_classInfo.isDerivedFrom(nullptr));
}

TEST(ClassInfo, CreatesAnObjectOfItsClass)
{
    const std::unique_ptr<VfObject> made(Thing::s_classInfo.create());
    ASSERT_TRUE(made);
    EXPECT_EQ(&Thing::s_classInfo, made->getClassInfo());
    EXPECT_EQ(nullptr, abstractThing.create());
}

TEST(Registry, FindsAClassByItsIdAndByItsName)
{
    const std::unique_ptr<VfObject> byId(Registry_::instance().createType("test::Thing"));
    const std::unique_ptr<VfObject> byName(Registry_::instance().createType("Thing"));
    EXPECT_TRUE(dynamic_cast<Thing*>(byId.get()));
    EXPECT_TRUE(dynamic_cast<Thing*>(byName.get()));
    EXPECT_NE(byId, byName);
}

TEST(Registry, CreatesHandlesThroughTheirVirtualBase)
{
    const std::unique_ptr<VfObject> made(Registry_::instance().createType("test::Handle"));
    EXPECT_TRUE(dynamic_cast<Handle*>(made.get()));
}

TEST(Registry, AnUnregisteredNameGivesNullAndRaisesNothing)
{
    EXPECT_NO_THROW(EXPECT_EQ(nullptr, Registry_::instance().createType("test::Nothing")));
    EXPECT_EQ(nullptr, Registry_::instance().createType(""));
    EXPECT_EQ(nullptr, Registry_::instance().createType(nullptr));
    EXPECT_EQ(nullptr, Registry_::instance().createType("test::Abstract"));
    EXPECT_EQ(&abstractThing, Registry_::instance().findClass("Abstract"));
}

TEST(Registry, ADestroyedRecordIsNoLongerFound)
{
    {
        const ClassInfo passing("test", "Passing", "test::Passing", nullptr, nullptr, 8, createThing);
        const std::unique_ptr<VfObject> made(Registry_::instance().createType("Passing"));
        EXPECT_TRUE(made);
    }
    EXPECT_EQ(nullptr, Registry_::instance().createType("Passing"));
    EXPECT_EQ(nullptr, Registry_::instance().createType("test::Passing"));
}

TEST(Registry, AnIdIsFoundBeforeAnEqualClassName)
{
    const ClassInfo byName("test", "Ambiguous", "test::First", nullptr, nullptr, 8, nullptr);
    const ClassInfo byId("test", "Other", "Ambiguous", nullptr, nullptr, 8, nullptr);
    EXPECT_EQ(&byId, Registry_::instance().findClass("Ambiguous"));
}

TEST(Registry, TellsItsClassesInOrderOfTheirIdsEachOnce)
{
    const ClassInfo second("test", "B", "test::zz::B", nullptr, nullptr, 8, nullptr);
    const ClassInfo first("test", "A", "test::zz::A", nullptr, nullptr, 8, nullptr);
    const ClassInfo again("test", "A", "test::zz::A", nullptr, nullptr, 8, nullptr);
    const std::vector<const ClassInfo*> classes = Registry_::instance().getClasses();
    const auto at = std::find(classes.begin(), classes.end(), &first);
    ASSERT_NE(classes.end(), at);
    ASSERT_NE(classes.end(), at + 1);
    EXPECT_EQ(&second, at[1]);
    EXPECT_EQ(0, std::count(classes.begin(), classes.end(), &again));
}

TEST(VfObject, ACopyIsANewObject)
{
    const Thing a;
    const Thing b(a);
    EXPECT_NE(a.getUniqueId(), b.getUniqueId());
    EXPECT_EQ(&VfObject::s_classInfo, VfObject().getClassInfo());
}
