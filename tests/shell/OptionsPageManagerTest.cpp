// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using testing::ElementsAre;
using vfApplication::OptionsPageManager;
using vfApplication::Registry;
using vfApplication::UiOptionsPage;

namespace {

/// Overrides nothing.
struct PlainPage : UiOptionsPage
{};

struct ColorsPage : UiOptionsPage
{
    static const vfBase::ClassInfo s_classInfo;
    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    const char* getGroupName() override { return "Colors"; }
    int getGroupOrder() override { return 7; }
};

struct NoPage : vfBase::VfObject
{
    static int s_alive;
    NoPage() { ++s_alive; }
    ~NoPage() override { --s_alive; }
};
int NoPage::s_alive = 0;

template <class T>
vfBase::VfObject* make()
{
    return new T;
}

const vfBase::ClassInfo plainRecord("test", "PlainPage", "test::PlainPage", &UiOptionsPage::s_classInfo,
                                    nullptr, sizeof(PlainPage), make<PlainPage>);
const vfBase::ClassInfo noPageRecord("test", "NoPage", "test::NoPage", &vfBase::VfObject::s_classInfo,
                                     nullptr, sizeof(NoPage), make<NoPage>);
const vfBase::ClassInfo ColorsPage::s_classInfo("test", "ColorsPage", "test::ColorsPage",
                                                &UiOptionsPage::s_classInfo, nullptr, sizeof(ColorsPage),
                                                make<ColorsPage>);

/// The groups of the pages, which it deletes.
std::vector<std::string> groups(const vfBase::Vector<UiOptionsPage*>& pages)
{
    std::vector<std::string> names;
    for (UiOptionsPage* page : pages) {
        names.emplace_back(page->getGroupName());
        delete page;
    }
    return names;
}

} // namespace

TEST(UiOptionsPage, OneThatOverridesNothingIsGeneralAndDoesNothing)
{
    PlainPage page;
    EXPECT_STREQ("General", page.getGroupName());
    EXPECT_STREQ("OptionsGeneral", page.getGroupIconName());
    EXPECT_EQ(0, page.getGroupOrder());
    EXPECT_EQ(0, page.getTabOrder());
    page.loadOptions();
    page.saveOptions();
    page.applyOptions();
    EXPECT_STREQ("vfApplication::UiOptionsPage", page.getClassInfo()->getClassId());
    EXPECT_STREQ("vfApplication::UiOptionsPage", UiOptionsPage::classId());
}

TEST(UiOptionsPage, ACopyIsAnObjectOfItsOwn)
{
    UiOptionsPage page;
    UiOptionsPage copy(page);
    EXPECT_NE(page.getUniqueId(), copy.getUniqueId());
    const auto id = copy.getUniqueId();
    EXPECT_EQ(&copy, &(copy = page));
    EXPECT_EQ(id, copy.getUniqueId());
}

TEST(OptionsPageManager, WithoutIdsThereAreNoPages)
{
    const OptionsPageManager manager;
    EXPECT_TRUE(manager.createPages().isEmpty());
}

TEST(OptionsPageManager, MakesThePagesInTheOrderOfTheirIdsAndTwiceWhatIsThereTwice)
{
    OptionsPageManager manager;
    manager.addOptionsPageId("test::ColorsPage");
    manager.addOptionsPageId("PlainPage"); // the class name does, too
    manager.addOptionsPageId("test::ColorsPage");
    const vfBase::Vector<UiOptionsPage*> first = manager.createPages();
    const vfBase::Vector<UiOptionsPage*> second = manager.createPages();
    ASSERT_EQ(3u, first.size());
    EXPECT_NE(first.at(0), first.at(2));
    EXPECT_NE(first.at(0), second.at(0)); // new ones each time
    EXPECT_THAT(groups(first), ElementsAre("Colors", "General", "Colors"));
    EXPECT_THAT(groups(second), ElementsAre("Colors", "General", "Colors"));
}

TEST(OptionsPageManager, PassesOverWhatIsUnknownAndWhatIsNoPage)
{
    OptionsPageManager manager;
    manager.addOptionsPageId("test::NoPage");
    manager.addOptionsPageId("test::Unknown");
    manager.addOptionsPageId("");
    manager.addOptionsPageId("test::PlainPage");
    EXPECT_THAT(groups(manager.createPages()), ElementsAre("General"));
    EXPECT_EQ(1, NoPage::s_alive); // stays, reachable for a leak checker
}

TEST(OptionsPageManager, MakesAPageOfAnyClassAnnouncedOrNot)
{
    const OptionsPageManager manager;
    const std::unique_ptr<UiOptionsPage> page(manager.createOptionsPage("test::ColorsPage"));
    ASSERT_TRUE(page);
    EXPECT_EQ(7, page->getGroupOrder());
    EXPECT_EQ(nullptr, manager.createOptionsPage("test::NoPage"));
    EXPECT_EQ(0, NoPage::s_alive);
    EXPECT_EQ(nullptr, manager.createOptionsPage("test::Unknown"));
    EXPECT_EQ(nullptr, manager.createOptionsPage("vfApplication::UiOptionsPage")); // cannot be made by name
    EXPECT_EQ(nullptr, manager.createOptionsPage(nullptr));
}

TEST(OptionsPageManager, CopiesAndAssignmentShareOneList)
{
    // One of them only may be destroyed; the others stay for the process.
    OptionsPageManager manager;
    auto* copy = new OptionsPageManager(manager);
    auto* assigned = new OptionsPageManager;
    vfBase::leakForProcess(copy);
    vfBase::leakForProcess(assigned);
    assigned->addOptionsPageId("test::ColorsPage"); // goes out of sight with the assignment
    EXPECT_EQ(assigned, &(*assigned = manager));
    OptionsPageManager& alias = *assigned;
    *assigned = alias;
    manager.addOptionsPageId("test::PlainPage");
    EXPECT_THAT(groups(copy->createPages()), ElementsAre("General"));
    EXPECT_THAT(groups(assigned->createPages()), ElementsAre("General"));
}

TEST(OptionsPageManager, CopiesMayAllBeDestroyed)
{
    const OptionsPageManager manager;
    const OptionsPageManager copy(manager);
    OptionsPageManager assigned;
    assigned = copy;
    EXPECT_TRUE(assigned.createPages().isEmpty());
}

namespace {

/// Announces a page while it is made.
struct AnnouncingPage : UiOptionsPage
{
    AnnouncingPage()
    {
        for (int i = 0; i < 100 && !isDone; ++i)
            Registry::instance().getOptionsPageManager().addOptionsPageId("test::PlainPage");
        isDone = true;
    }
    static bool isDone;
};

bool AnnouncingPage::isDone = false;

const vfBase::ClassInfo announcingRecord("test", "AnnouncingPage", "test::AnnouncingPage",
                                         &UiOptionsPage::s_classInfo, nullptr, sizeof(AnnouncingPage),
                                         []() -> vfBase::VfObject* { return new AnnouncingPage; });

} // namespace

TEST(OptionsPageManager, APageMayAnnounceOthersWhileItIsMade)
{
    OptionsPageManager& manager = Registry::instance().getOptionsPageManager();
    manager.addOptionsPageId("test::AnnouncingPage");
    const auto pages = manager.createPages();
    EXPECT_EQ(101u, pages.size());
    for (UiOptionsPage* page : pages)
        delete page;
}

TEST(OptionsPageManager, AnnouncingNullEndsTheProcessWithALine)
{
    EXPECT_DEATH(OptionsPageManager().addOptionsPageId(nullptr),
                 "^velaFORGE: OptionsPageManager::addOptionsPageId: the id is null\n$");
}

TEST(ShellRegistry, GivesTheSameManagerAtEveryCall)
{
    OptionsPageManager& manager = Registry::instance().getOptionsPageManager();
    EXPECT_EQ(&Registry::instance(), &Registry::instance());
    EXPECT_EQ(&manager, &Registry::instance().getOptionsPageManager());
    EXPECT_TRUE(manager.createPages().isEmpty());
}

TEST(ShellRegistry, HasNoBodyAndNobodyElseMakesOne)
{
    EXPECT_FALSE(Registry::instance().isValid());
    EXPECT_FALSE(std::is_default_constructible_v<Registry>);
    EXPECT_STREQ("vfBase::Referenced", Registry::instance().getClassInfo()->getClassId());
}

TEST(ShellRegistry, CopiesShareTheListOfPages)
{
    Registry& registry = Registry::instance();
    auto* copy = new Registry(registry);
    auto* moved = new Registry(std::move(*copy));
    for (const Registry* kept : {copy, moved})
        vfBase::leakForProcess(kept);
    registry.getOptionsPageManager().addOptionsPageId("test::PlainPage");
    EXPECT_THAT(groups(copy->getOptionsPageManager().createPages()), ElementsAre("General"));
    EXPECT_THAT(groups(moved->getOptionsPageManager().createPages()), ElementsAre("General"));
    *copy = *moved;
    *moved = std::move(*copy);
    EXPECT_THAT(groups(moved->getOptionsPageManager().createPages()), ElementsAre("General"));
    EXPECT_FALSE(moved->isValid());
}

TEST(UiOptionsPage, OperationsKeepTheirSlots)
{
    using vfTest::slotOf;
    EXPECT_EQ(0, slotOf(&UiOptionsPage::getClassInfo));
    EXPECT_EQ(3, slotOf(&UiOptionsPage::getUniqueId)); // behind the destructor
    EXPECT_EQ(4, slotOf(&UiOptionsPage::getGroupName));
    EXPECT_EQ(5, slotOf(&UiOptionsPage::getGroupIconName));
    EXPECT_EQ(6, slotOf(&UiOptionsPage::getGroupOrder));
    EXPECT_EQ(7, slotOf(&UiOptionsPage::getTabOrder));
    EXPECT_EQ(8, slotOf(&UiOptionsPage::loadOptions));
    EXPECT_EQ(9, slotOf(&UiOptionsPage::saveOptions));
    EXPECT_EQ(10, slotOf(&UiOptionsPage::applyOptions));
    EXPECT_EQ(sizeof(vfBase::VfObject), sizeof(UiOptionsPage));
    EXPECT_EQ(-1, slotOf(&OptionsPageManager::createPages));
    EXPECT_EQ(sizeof(void*), sizeof(OptionsPageManager));
}
