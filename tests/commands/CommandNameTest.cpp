// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandName.h>
#include <velaforge/commands/CommandPrivate.h>

#include <gmock/gmock.h>

#include <thread>
#include <vector>

using vfApplication::CommandName;

TEST(CommandName, IsEmptyByDefaultAndForAnEmptyText)
{
    EXPECT_EQ("", CommandName().str());
    EXPECT_EQ("", CommandName(std::string()).str());
    CommandName name("move");
    name = CommandName();
    EXPECT_EQ("", name.str());
}

TEST(CommandName, EqualNamesOfOneThreadShareTheirText)
{
    const CommandName first("Move the mast of the boat");
    const CommandName second("Move the mast of the boat");
    const CommandName other("Hide the mast");
    EXPECT_EQ(&first.str(), &second.str());
    EXPECT_NE(&first.str(), &other.str());
    EXPECT_EQ("Hide the mast", other.str());
}

TEST(CommandName, KeepsTheTextOfEachHoweverManyNamesThereAre)
{
    std::vector<CommandName> names;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 1000; ++i)
            names.emplace_back("Move part " + std::to_string(i));
    }
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ("Move part " + std::to_string(i % 1000), names[i].str());
}

TEST(CommandName, MayHoldZeroBytes)
{
    const std::string text("a\0b", 3);
    EXPECT_EQ(text, CommandName(text).str());
}

TEST(CommandName, AssignedToItselfItStays)
{
    CommandName name("turn");
    const CommandName& same = name;
    name = same;
    EXPECT_EQ("turn", name.str());
}

TEST(CommandName, OutlivesTheThreadThatMadeIt)
{
    CommandName name;
    std::thread([&] { name = CommandName("made elsewhere"); }).join();
    EXPECT_EQ("made elsewhere", name.str());
}

TEST(CommandName, CanBeCopiedAndDestroyedOnSeveralThreads)
{
    const CommandName name("shared");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&name] {
            for (int round = 0; round < 1000; ++round) {
                const CommandName copy(name);
                EXPECT_EQ("shared", copy.str());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ("shared", name.str());
}

namespace {

struct MakesANameAtItsEnd
{
    ~MakesANameAtItsEnd() { *target = CommandName("last words"); }
    CommandName* target = nullptr;
};

} // namespace

TEST(CommandName, CanBeMadeByTheLastObjectsOfAThread)
{
    CommandName name;
    std::thread([&name] {
        static thread_local MakesANameAtItsEnd last; // made first, and so gone last
        last.target = &name;
        CommandName("words");
    }).join();
    EXPECT_EQ("last words", name.str());
}

TEST(CommandName, ANameGivenToACommandCostsItOneWord)
{
    EXPECT_EQ(sizeof(void*), sizeof(CommandName));
    // A long history of small commands is the reason for it: see the benchmarks.
    EXPECT_LE(sizeof(vfApplication::CommandPrivate), 48u);
}
