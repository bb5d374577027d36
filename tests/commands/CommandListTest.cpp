// SPDX-License-Identifier: MIT
#include <velaforge/base/Options.h>
#include <velaforge/commands/CommandList.h>

#include <gtest/gtest.h>

#include <utility>

using vfApplication::CommandList;
using vfApplication::CommandListPrivate;

TEST(CommandList, CopiesAndMovesTheHandleAlone)
{
    CommandList list(new CommandListPrivate);
    const CommandList copy(list);
    const CommandList moved(std::move(list));
    EXPECT_TRUE(copy == moved);
    EXPECT_TRUE(copy == list);

    CommandList assigned;
    EXPECT_FALSE(assigned.isValid());
    assigned = copy;
    EXPECT_EQ(copy.getImp(), assigned.getImp());
    CommandList moveAssigned;
    moveAssigned = std::move(assigned);
    EXPECT_EQ(copy.getImp(), moveAssigned.getImp());
}

TEST(CommandList, HasNoClassRecordOfItsOwn)
{
    EXPECT_EQ(vfBase::Referenced().getClassInfo(), CommandList().getClassInfo());
}

TEST(CommandList, FromAnotherKindOfBodyIsInvalid)
{
    const vfBase::Options options;
    EXPECT_FALSE(CommandList(static_cast<const vfBase::Referenced&>(options)).isValid());
}
