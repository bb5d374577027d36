// SPDX-License-Identifier: MIT
#include "support/ChildNames.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/Set.h>
#include <velaforge/base/Vector.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/commands/CommandItemPrivate.h>

#include <osg/observer_ptr>

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;
using vfApplication::CommandItem;
using vfApplication::CommandItemPrivate;
using vfBase::Referenced;
using vfBase::VfString;
using vfBase::VfVariant;
using vfTest::childNames;
using vfTest::slotOf;

// Every operation of the list of items compiles.
template class vfBase::List<CommandItem>;

namespace {

CommandItem named(const char* name)
{
    CommandItem item;
    item.setCommand(name, nullptr);
    return item;
}

CommandItem withoutBody()
{
    return CommandItem(static_cast<CommandItemPrivate*>(nullptr));
}

} // namespace

TEST(CommandItem, IsNewWithABodyOfItsOwnAndEmpty)
{
    const CommandItem item;
    EXPECT_TRUE(item.isValid());
    EXPECT_STREQ("", item.getCommand());
    EXPECT_STREQ("", item.getContext());
    EXPECT_TRUE(item.isEmpty());
    EXPECT_EQ(0u, item.getNumItems());
    EXPECT_TRUE(item.getProperties().isEmpty());
    EXPECT_EQ(0u, item.getToolbarHint());
    EXPECT_FALSE(item == CommandItem());
}

TEST(CommandItem, StreamingNamesFillsTheOneParent)
{
    CommandItem root;
    root << "&File"
         << "&Edit";
    EXPECT_THAT(childNames(root), ElementsAre("&File", "&Edit"));
    EXPECT_EQ(2u, root.getNumItems());
    EXPECT_FALSE(root.isEmpty());
    EXPECT_TRUE(root.getList().at(0).isEmpty());
    EXPECT_TRUE(root.getList().at(1).isEmpty());
}

TEST(CommandItem, StreamingANullNameAppendsAnItemWithoutOne)
{
    CommandItem root;
    root << static_cast<const char*>(nullptr);
    EXPECT_THAT(childNames(root), ElementsAre(""));
}

TEST(CommandItem, StreamingAnItemSharesItAndOneWithoutABodyIsLeftOut)
{
    CommandItem root;
    CommandItem child = named("a");
    CommandItem& result = root << child << withoutBody();
    EXPECT_EQ(&root, &result);
    ASSERT_EQ(1u, root.getNumItems());
    EXPECT_TRUE(root.getList().first() == child);
    root.append(child);
    root.append(withoutBody());
    EXPECT_EQ(2u, root.getNumItems());
}

TEST(CommandItem, MadeWithAParentItIsFoundThereOnceItHasAName)
{
    CommandItem root;
    CommandItem child(&root);
    child.setCommand("vfViewer::Open", nullptr);
    EXPECT_TRUE(root.find("vfViewer::Open") == child);
    EXPECT_TRUE(CommandItem(static_cast<CommandItem*>(nullptr)).isValid());
}

TEST(CommandItem, FindPrefersTheItemItselfToItsChildren)
{
    CommandItem root = named("a");
    root << "a";
    EXPECT_TRUE(root.find("a") == root);
}

TEST(CommandItem, FindLooksAtChildrenButNotAtGrandchildren)
{
    CommandItem root;
    CommandItem file(&root);
    file.setCommand("&File", nullptr);
    file << "vfViewer::Open";
    EXPECT_FALSE(root.find("vfViewer::Open").isValid());
    EXPECT_TRUE(file.find("vfViewer::Open").isValid());
    EXPECT_TRUE(root.find("&File").find("vfViewer::Open").isValid());
}

TEST(CommandItem, FindComparesWholeNamesByteByByte)
{
    CommandItem root = named("root");
    root << "Open"
         << "";
    EXPECT_FALSE(root.find("open").isValid());
    EXPECT_FALSE(root.find("Ope").isValid());
    EXPECT_FALSE(root.find("Opened").isValid());
    EXPECT_TRUE(root.find("") == root.getList().last());
}

TEST(CommandItem, FindOfNullIsInvalidOnEveryItem)
{
    CommandItem root;
    root << "a";
    EXPECT_FALSE(root.find(nullptr).isValid());
    EXPECT_FALSE(root.getList().first().find(nullptr).isValid());
    EXPECT_FALSE(withoutBody().find(nullptr).isValid());
}

TEST(CommandItem, OfTwoChildrenWithOneNameFindGivesTheFirst)
{
    CommandItem root;
    root << "a"
         << "a";
    EXPECT_TRUE(root.find("a") == root.getList().first());
    EXPECT_FALSE(root.find("a") == root.getList().last());
}

TEST(CommandItem, RemoveByNameErasesAllDirectChildrenOfThatName)
{
    CommandItem root;
    root << "a"
         << "b"
         << "a";
    CommandItem inner(&root);
    inner.setCommand("inner", nullptr);
    inner << "a";
    root.remove(static_cast<const char*>(nullptr));
    EXPECT_EQ(4u, root.getNumItems());
    root.remove(root.getList().first().getCommand());
    EXPECT_THAT(childNames(root), ElementsAre("b", "inner"));
    EXPECT_THAT(childNames(inner), ElementsAre("a"));
}

TEST(CommandItem, RemoveByHandleErasesTheFirstEntryOfThatNodeOnly)
{
    CommandItem root;
    const CommandItem child = named("a");
    root << child << "a" << child;
    root.remove(root.getList().first());
    ASSERT_THAT(childNames(root), ElementsAre("a", "a"));
    EXPECT_FALSE(root.getList().first() == child);
    EXPECT_TRUE(root.getList().last() == child);
    root.remove(withoutBody());
    root.remove(named("a"));
    EXPECT_EQ(2u, root.getNumItems());
}

TEST(CommandItem, InsertAppendsBehindAllChildrenWhereverTheOtherStands)
{
    CommandItem root;
    root << "a"
         << "b"
         << "c";
    EXPECT_TRUE(root.insert(named("new"), root.getList().first()));
    EXPECT_THAT(childNames(root), ElementsAre("a", "b", "c", "new"));
    EXPECT_TRUE(root.insert(named("by name"), named("b")));
    EXPECT_THAT(childNames(root), ElementsAre("a", "b", "c", "new", "by name"));
}

TEST(CommandItem, InsertBeforeAStrangerOrWithoutABodyChangesNothing)
{
    CommandItem root;
    root << "a";
    EXPECT_FALSE(root.insert(named("new"), named("b")));
    EXPECT_FALSE(root.insert(withoutBody(), named("a")));
    EXPECT_FALSE(root.insert(named("new"), withoutBody()));
    EXPECT_THAT(childNames(root), ElementsAre("a"));
}

TEST(CommandItem, ANullNameLeavesTheContextToo)
{
    CommandItem item;
    item.setCommand("a", "menu");
    item.setCommand(nullptr, "other");
    EXPECT_STREQ("a", item.getCommand());
    EXPECT_STREQ("menu", item.getContext());
    item.setCommand("b", nullptr);
    EXPECT_STREQ("b", item.getCommand());
    EXPECT_STREQ("menu", item.getContext());
}

TEST(CommandItem, ItsOwnTextsCanBeSetCrosswise)
{
    CommandItem item;
    item.setCommand("a name that is long enough for the heap", "a context that is long enough, too");
    item.setCommand(item.getContext(), item.getCommand());
    EXPECT_STREQ("a context that is long enough, too", item.getCommand());
    EXPECT_STREQ("a name that is long enough for the heap", item.getContext());
}

TEST(CommandItem, APropertyIsReplacedWhateverItsContext)
{
    CommandItem item;
    item.setProperty("icon", VfVariant("open.svg"), nullptr);
    item.setProperty("icon", VfVariant("folder.svg"), "dark");
    EXPECT_EQ(VfString("folder.svg"), item.getProperty("icon").toString());
    EXPECT_EQ(1u, item.getProperties().size());
    EXPECT_EQ("dark", item.getImp()->properties.at("icon").context);
    item.setProperty("icon", VfVariant(), nullptr);
    EXPECT_EQ("", item.getImp()->properties.at("icon").context);
    EXPECT_TRUE(item.getProperty("icon").isEmpty());
}

TEST(CommandItem, AnUnknownPropertyIsEmptyAndMakesNoEntry)
{
    const CommandItem item;
    EXPECT_TRUE(item.getProperty("icon").isEmpty());
    EXPECT_TRUE(item.getProperties().isEmpty());
}

TEST(CommandItem, PropertiesAreANewMapInOrderOfTheKeys)
{
    CommandItem item;
    item.setProperty("b", VfVariant(2), nullptr);
    item.setProperty("B", VfVariant(1), nullptr);
    vfBase::Map<VfString, VfVariant> properties = item.getProperties();
    EXPECT_EQ(VfString("B"), properties.keys().first());
    properties["c"] = VfVariant(3);
    properties["b"] = VfVariant(9);
    EXPECT_EQ(2u, item.getProperties().size());
    EXPECT_EQ(2, item.getProperty("b").toInteger());
}

TEST(CommandItem, IsEmptyWithoutChildrenWhateverElseItHolds)
{
    CommandItem item = named("a");
    item.setProperty("icon", VfVariant("a.svg"), nullptr);
    EXPECT_TRUE(item.isEmpty());
}

TEST(CommandItem, KeepsItsToolbarHint)
{
    CommandItem item;
    item.setToolbarHint(CommandItem::TextBesideIcon);
    EXPECT_EQ(CommandItem::TextBesideIcon, CommandItem(item).getToolbarHint());
    EXPECT_EQ(4u, sizeof(CommandItem::ToolbarHint));
}

TEST(CommandItem, AChangeThroughACopyIsSeenThroughAllHandles)
{
    CommandItem root;
    CommandItem child(&root);
    CommandItem copy = child;
    copy.setCommand("a", nullptr);
    EXPECT_STREQ("a", child.getCommand());
    EXPECT_THAT(childNames(root), ElementsAre("a"));
}

TEST(CommandItem, AssigningAHandleThatOnlyTheOldBodyKeepsAliveIsSafe)
{
    CommandItem item;
    item << "child";
    item = item.getList().first();
    EXPECT_STREQ("child", item.getCommand());
    const CommandItem& same = item;
    item = same;
    EXPECT_STREQ("child", item.getCommand());
}

TEST(CommandItem, AChildThatIsKeptOutlivesItsPlaceAndItsParent)
{
    osg::observer_ptr<CommandItemPrivate> parent;
    CommandItem child;
    {
        CommandItem root;
        parent = root.getImp();
        root << child;
        root.remove(child);
        root << child;
    }
    EXPECT_FALSE(parent.valid());
    EXPECT_TRUE(child.isValid());
    EXPECT_EQ(1, child.getImp()->referenceCount());
}

TEST(CommandItem, CanBeMadeByName)
{
    const std::unique_ptr<vfBase::VfObject> object(
        vfBase::Registry_::instance().createType("vfApplication::CommandItem"));
    const auto* item = dynamic_cast<CommandItem*>(object.get());
    ASSERT_NE(nullptr, item);
    EXPECT_TRUE(item->isValid());
    EXPECT_EQ(&CommandItem::s_classInfo, item->getClassInfo());
    EXPECT_STREQ("vfApplication::CommandItem", CommandItem::classId());
    EXPECT_STREQ("CommandItem", CommandItem::s_classInfo.getClassName());
}

TEST(CommandItem, OperationsKeepTheirSlots)
{
    // Those of VfObject and Referenced, and none of its own.
    EXPECT_EQ(0, slotOf(&CommandItem::getClassInfo));
    EXPECT_EQ(4, slotOf(&Referenced::setImp));
    EXPECT_EQ(12, slotOf(&Referenced::getOrCreateObserverSet));
    EXPECT_EQ(-1, slotOf(&CommandItem::append));
    EXPECT_EQ(-1, slotOf(&CommandItem::getCommand));
}
