// SPDX-License-Identifier: MIT
#include "CommandFixtures.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/Registry_.h>

#include <gmock/gmock.h>

#include <thread>
#include <vector>

using testing::ElementsAre;
using vfApplication::Command;
using vfApplication::CommandPrivate;
using vfBase::Referenced;
using vfBase::VfString;
using vfBase::VfVariant;
using vfTest::record;
using vfTest::recorder;
using vfTest::RecordingCommand;
using vfTest::slotOf;

TEST(Command, HasNoBodyByDefaultAndItsCopiesAreHarmless)
{
    const Command command;
    Command copy(command);
    EXPECT_FALSE(command.isValid());
    EXPECT_EQ(nullptr, command.getImp());
    EXPECT_TRUE(copy == command);
    copy = Command(new CommandPrivate);
    EXPECT_TRUE(copy.isValid());
    copy = command;
    EXPECT_FALSE(copy.isValid());
}

TEST(Command, FromAHandleOnAnotherKindOfBodyIsInvalid)
{
    const vfBase::Options options;
    ASSERT_TRUE(options.isValid());
    EXPECT_FALSE(Command(static_cast<const Referenced&>(options)).isValid());
    EXPECT_FALSE(Command(Referenced()).isValid());
}

TEST(Command, FromAHandleOnACommandSharesTheBody)
{
    const Command command(new CommandPrivate);
    const Referenced handle = command;
    EXPECT_TRUE(Command(handle) == command);
    EXPECT_EQ(command.getUniqueId(), handle.getUniqueId());
}

TEST(Command, EqualMeansTheSameBodyNotAnEqualName)
{
    Command a(new RecordingCommand("same"));
    Command b(new RecordingCommand("same"));
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a == Command(a));
}

TEST(Command, SetImpTakesOverACommandAndLetsGoOfItForAnythingElse)
{
    Command command;
    const Command other(new CommandPrivate);
    command.setImp(other);
    EXPECT_TRUE(command == other);
    command.setImp(vfBase::Options());
    EXPECT_FALSE(command.isValid());
    EXPECT_EQ(nullptr, command.getImp());
}

TEST(Command, MovedFromHasNoBodyAndTheCountStays)
{
    CommandPrivate* body = new CommandPrivate;
    Command from(body);
    const Command to(std::move(from));
    EXPECT_FALSE(from.isValid()); // NOLINT(clang-analyzer-cplusplus.Move): what it promises
    EXPECT_EQ(nullptr, from.getImp());
    EXPECT_EQ(body, to.getImp());
    EXPECT_EQ(1, body->referenceCount());
}

TEST(Command, AssignmentToItselfAndInACycleKeepsTheBody)
{
    Command a(new RecordingCommand("a"));
    Command& same = a;
    a = same;
    EXPECT_STREQ("a", a.getName());
    Command b(a);
    a = b;
    b = a;
    EXPECT_STREQ("a", b.getName());
    EXPECT_EQ(0, recorder().count("~a"));
}

TEST(Command, AssigningAHandleThatOnlyTheOldBodyKeepsAliveIsSafe)
{
    class Holder : public CommandPrivate
    {
    public:
        Command inner{new RecordingCommand("inner")};
    };
    auto* holder = new Holder;
    Command command(holder);
    command = holder->inner;
    EXPECT_STREQ("inner", command.getName());
}

TEST(Command, ByNameOfAnUnknownClassIsInvalid)
{
    EXPECT_FALSE(Command::getCommandByName("solar::NoSuchCommand").isValid());
    EXPECT_FALSE(Command::getCommandByName("").isValid());
}

TEST(Command, ByNameMakesANewBodyEachTime)
{
    const Command a = Command::getCommandByName("vfApplication::CommandPrivate");
    const Command b = Command::getCommandByName("vfApplication::CommandPrivate");
    ASSERT_TRUE(a.isValid());
    ASSERT_TRUE(b.isValid());
    EXPECT_FALSE(a == b);
    EXPECT_STREQ("", a.getName());
}

namespace {

class Bystander : public vfBase::VfObject
{
public:
    ~Bystander() override { record("~Bystander"); }
};

const vfBase::ClassInfo bystanderInfo("vfTest", "Bystander", "vfTest::Bystander",
                                      &vfBase::VfObject::s_classInfo, nullptr,
                                      static_cast<int>(sizeof(Bystander)),
                                      []() -> vfBase::VfObject* { return new Bystander; });

} // namespace

TEST(Command, ByNameOfAClassThatIsNoCommandIsInvalidAndTheObjectIsDeleted)
{
    EXPECT_FALSE(Command::getCommandByName("vfTest::Bystander").isValid());
    EXPECT_EQ(1, recorder().count("~Bystander"));
}

TEST(Command, CannotBeMadeByNameItself)
{
    EXPECT_EQ(nullptr, vfBase::Registry_::instance().createType("vfApplication::Command"));
}

TEST(Command, DoWithAnArgumentLeavesTheStoredOneAlone)
{
    Command command(new RecordingCommand("c"));
    command.invoke("stored"); // without an active document it is kept and not run
    EXPECT_TRUE(command.Do("given"));
    EXPECT_TRUE(command.Do());
    EXPECT_TRUE(command.undo("given"));
    EXPECT_TRUE(command.undo());
    EXPECT_THAT(recorder().take(), ElementsAre("do c given", "do c stored", "undo c given", "undo c stored"));
}

TEST(Command, InvokeWithoutAnArgumentOverwritesTheStoredOneWithTheEmptyValue)
{
    Command command(new RecordingCommand("c"));
    command.invoke("stored");
    EXPECT_EQ(VfString("stored"), command->getArgument().toString());
    command.invoke();
    EXPECT_TRUE(command->getArgument().isEmpty());
}

TEST(Command, InvokeWithNoApplicationKeepsTheArgumentAndRunsNothing)
{
    Command command(new RecordingCommand("c"));
    command.invoke("x");
    EXPECT_EQ(VfString("x"), command->getArgument().toString());
    EXPECT_TRUE(recorder().lines().empty());
}

TEST(Command, NamesItsOwnClassWhateverTheBodys)
{
    const Command command(new RecordingCommand);
    EXPECT_STREQ("Command", command.getClassName());
    EXPECT_EQ(VfString("vfApplication::Command"), command.getId());
    EXPECT_STREQ("vfApplication::Command", Command::classId());
    EXPECT_EQ(&Referenced::s_classInfo, Command::s_classInfo.getParent());
}

TEST(Command, SetPropertiesChangesTheMapThatAnEarlierGetPropertiesShows)
{
    Command command(new CommandPrivate);
    Command::Properties before = command.getProperties();
    EXPECT_TRUE(before.isEmpty());

    Command::Properties given;
    given.insert("colour", VfVariant("red"));
    command.setProperties(given);
    EXPECT_TRUE(before.contains("colour"));

    before.insert("width", VfVariant(3));
    EXPECT_TRUE(command.getProperties().contains("width"));
    EXPECT_FALSE(given.contains("width"));

    command.setProperties(command.getProperties());
    EXPECT_EQ(2u, command.getProperties().size());
}

TEST(Command, SharesItsNameThroughAllHandles)
{
    Command a(new CommandPrivate);
    const Command b(a);
    a.setName("Hide");
    EXPECT_STREQ("Hide", b.getName());
}

TEST(Command, InvalidIsOneSharedHandleAlsoForTwoThreadsAtOnce)
{
    std::vector<Command*> seen(8, nullptr);
    std::vector<std::thread> threads;
    for (Command*& place : seen)
        threads.emplace_back([&place] { place = &Command::invalid(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const Command* command : seen)
        EXPECT_EQ(&Command::invalid(), command);
    EXPECT_FALSE(Command::invalid().isValid());
}

TEST(Command, OperationsKeepTheirSlots)
{
    // VfObject's three come first (the destructor takes two places), then the nine of Referenced.
    EXPECT_EQ(0, slotOf(&Command::getClassInfo));
    EXPECT_EQ(3, slotOf(&Referenced::getUniqueId));
    EXPECT_EQ(4, slotOf(&Command::setImp));
    EXPECT_EQ(9, slotOf(&Referenced::isValid));
    EXPECT_EQ(12, slotOf(&Referenced::getOrCreateObserverSet));
    EXPECT_EQ(13, slotOf(static_cast<void (Command::*)(const VfVariant&)>(&Command::invoke)));
    EXPECT_EQ(14, slotOf(static_cast<void (Command::*)()>(&Command::invoke)));
    EXPECT_EQ(15, slotOf(&Command::canUndo));
    EXPECT_EQ(16, slotOf(static_cast<bool (Command::*)()>(&Command::Do)));
    EXPECT_EQ(17, slotOf(static_cast<bool (Command::*)(const VfVariant&)>(&Command::Do)));
    EXPECT_EQ(18, slotOf(static_cast<bool (Command::*)()>(&Command::undo)));
    EXPECT_EQ(19, slotOf(static_cast<bool (Command::*)(const VfVariant&)>(&Command::undo)));
}
