// SPDX-License-Identifier: MIT
#include "CommandFixtures.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Registry_.h>

#include <gtest/gtest.h>

#include <osg/ref_ptr>

#include <memory>
#include <utility>

using vfApplication::CommandPrivate;
using vfBase::VfVariant;
using vfTest::slotOf;

using Body = osg::ref_ptr<CommandPrivate>;

TEST(CommandPrivate, ThatOverridesNothingCanNeitherDoNorUndo)
{
    const Body body = new CommandPrivate;
    EXPECT_FALSE(body->canUndo());
    EXPECT_FALSE(body->Do());
    EXPECT_FALSE(body->undo());
    EXPECT_FALSE(body->Do(VfVariant(1)));
    EXPECT_FALSE(body->undo(VfVariant(1)));
}

TEST(CommandPrivate, StartsWithoutNameArgumentAndProperties)
{
    const Body body = new CommandPrivate;
    EXPECT_EQ("", body->getName());
    EXPECT_TRUE(body->getArgument().isEmpty());
    EXPECT_TRUE(body->getProperties().isEmpty());
}

TEST(CommandPrivate, CopyAndMoveShareThePropertiesWithTheirSource)
{
    const Body source = new CommandPrivate;
    source->setName("Hide");
    source->invoke("mast");
    const Body copy = new CommandPrivate(*source);
    const Body moved = new CommandPrivate(std::move(*source));
    EXPECT_EQ("Hide", copy->getName());
    EXPECT_EQ("Hide", moved->getName());
    EXPECT_EQ(vfBase::VfString("mast"), copy->getArgument().toString());
    source->getProperties().insert("colour", VfVariant("red"));
    EXPECT_TRUE(copy->getProperties().contains("colour"));
    EXPECT_TRUE(moved->getProperties().contains("colour"));
    EXPECT_EQ("Hide", source->getName());
}

TEST(CommandPrivate, AssignmentCopiesThePropertiesIntoItsOwnMap)
{
    const Body target = new CommandPrivate;
    CommandPrivate::Properties own = target->getProperties();
    own.insert("old", VfVariant(1));
    const Body source = new CommandPrivate;
    source->setName("Move");
    source->invoke("mast");
    source->getProperties().insert("new", VfVariant(2));

    *target = *source;
    EXPECT_EQ("Move", target->getName());
    EXPECT_EQ(vfBase::VfString("mast"), target->getArgument().toString());
    EXPECT_TRUE(own.contains("new"));
    EXPECT_FALSE(own.contains("old"));
    source->getProperties().insert("later", VfVariant(3));
    EXPECT_FALSE(own.contains("later"));

    *target = std::move(*source);
    EXPECT_TRUE(own.contains("later"));

    const Body empty = new CommandPrivate;
    *target = *empty;
    EXPECT_TRUE(own.isEmpty());
    EXPECT_TRUE(target->getArgument().isEmpty());
}

TEST(CommandPrivate, CanBeMadeByNameAsItsObjectPart)
{
    vfBase::VfObject* object = vfBase::Registry_::instance().createType("vfApplication::CommandPrivate");
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(&CommandPrivate::s_classInfo, object->getClassInfo());
    EXPECT_EQ(&vfBase::VfObject::s_classInfo, CommandPrivate::s_classInfo.getParent());
    EXPECT_STREQ("vfApplication::CommandPrivate", CommandPrivate::classId());
    const Body body = dynamic_cast<CommandPrivate*>(object);
    EXPECT_TRUE(body.valid());
}

TEST(CommandPrivate, OperationsKeepTheirSlots)
{
    // setThreadSafeRefUnref stands first, and the destructor takes the two places behind it.
    EXPECT_EQ(0, slotOf(&osg::Referenced::setThreadSafeRefUnref));
    EXPECT_EQ(3, slotOf(&CommandPrivate::invoke));
    EXPECT_EQ(4, slotOf(&CommandPrivate::canUndo));
    EXPECT_EQ(5, slotOf(static_cast<bool (CommandPrivate::*)(const VfVariant&)>(&CommandPrivate::Do)));
    EXPECT_EQ(6, slotOf(static_cast<bool (CommandPrivate::*)(const VfVariant&)>(&CommandPrivate::undo)));
    EXPECT_EQ(-1, slotOf(static_cast<bool (CommandPrivate::*)()>(&CommandPrivate::Do)));
    EXPECT_EQ(-1, slotOf(static_cast<bool (CommandPrivate::*)()>(&CommandPrivate::undo)));
}
