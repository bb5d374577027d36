// SPDX-License-Identifier: MIT
#include "support/ChildNames.h"
#include "support/Slots.h"

#include <velaforge/commands/CommandItem.h>
#include <velaforge/commands/CommandItemPrivate.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/UiSetupPrivate.h>

#include <osg/observer_ptr>
#include <osg/ref_ptr>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::CommandItem;
using vfApplication::MinimalUiSetup;
using vfApplication::UiSetup;
using vfApplication::UiSetupPrivate;
using vfTest::childNames;
using vfTest::slotOf;

namespace {

/// Counts those that live.
struct Counted : MinimalUiSetup
{
    Counted() { ++s_alive; }
    ~Counted() override { --s_alive; }
    void setupMenus(CommandItem* root) override
    {
        MinimalUiSetup::setupMenus(root);
        *root << "more";
    }
    static int s_alive;
};
int Counted::s_alive = 0;

/// A second handle on the body of another.
struct Guest : MinimalUiSetup
{
    void takeOver(UiSetupPrivate& body) { body.setOwner(this); }
};

} // namespace

TEST(UiSetup, HasItsDefaults)
{
    MinimalUiSetup setup;
    EXPECT_EQ(UiSetup::TabbedDocuments, setup.getDocumentIntefaceMode());
    EXPECT_EQ(0, static_cast<int>(setup.getDocumentIntefaceMode()));
    EXPECT_EQ(0u, setup.getDocumentViewTemplates().size());
    EXPECT_TRUE(setup.showViewTitleButtons());
    EXPECT_FALSE(setup.showViewLogo());
    EXPECT_FALSE(setup.showViewDocumentSlider());
    EXPECT_TRUE(setup.showTitleBarLogo());
    EXPECT_TRUE(setup.showSceneGraphTreeView());
}

TEST(UiSetup, HandleAndBodyKnowEachOther)
{
    const MinimalUiSetup setup;
    ASSERT_NE(nullptr, setup.getUiSetupPrivate());
    EXPECT_EQ(&setup, setup.getUiSetupPrivate()->owner);
    EXPECT_EQ(1, setup.getUiSetupPrivate()->referenceCount());
}

TEST(UiSetup, TheHandleGoesFirstAndTheBodyWithIt)
{
    osg::observer_ptr<UiSetupPrivate> body;
    {
        const Counted setup;
        body = setup.getUiSetupPrivate();
        EXPECT_TRUE(body.valid());
    }
    EXPECT_FALSE(body.valid());
    EXPECT_EQ(0, Counted::s_alive);
}

TEST(UiSetup, ABodyThatIsHeldElsewhereStaysWithoutAnOwner)
{
    osg::ref_ptr<UiSetupPrivate> body;
    {
        const Counted setup;
        body = setup.getUiSetupPrivate();
    }
    EXPECT_EQ(nullptr, body->owner);
    EXPECT_EQ(1, body->referenceCount());
}

TEST(UiSetup, TheBodyGoesFirstAndDestroysTheHandleOnce)
{
    UiSetup* setup = new Counted;
    setup->getUiSetupPrivate()->unref();
    EXPECT_EQ(0, Counted::s_alive);
}

TEST(UiSetup, ANewOwnerReplacesAndDestroysTheFormerOne)
{
    UiSetup* former = new Counted;
    const osg::ref_ptr<UiSetupPrivate> body = former->getUiSetupPrivate();
    Guest guest;
    guest.takeOver(*body);
    EXPECT_EQ(0, Counted::s_alive);
    EXPECT_EQ(&guest, body->owner);
    body->owner = nullptr; // the guest has a body of its own
}

TEST(MinimalUiSetup, DeclaresTheFileMenu)
{
    MinimalUiSetup setup;
    CommandItem root;
    setup.setupMenus(&root);
    ASSERT_THAT(childNames(root), ElementsAre("&File"));
    EXPECT_THAT(childNames(root.find("&File")),
                ElementsAre("vfApplicationQt::ActionOpen", "vfApplicationQt::ActionExit"));
    EXPECT_STREQ("", root.find("&File").getContext());
}

TEST(MinimalUiSetup, ViewsNamedViewHaveTheMenusOfTheMostDerivedClassAndOthersNone)
{
    Counted setup;
    CommandItem root;
    setup.setupViewMenus("Views", &root);
    setup.setupViewMenus("view", &root);
    setup.setupViewMenus("", &root);
    EXPECT_THAT(childNames(root), IsEmpty());
    setup.setupViewMenus("View", &root);
    EXPECT_THAT(childNames(root), ElementsAre("&File", "more"));
}

TEST(MinimalUiSetup, DeclaresTheStandardToolbar)
{
    MinimalUiSetup setup;
    CommandItem root;
    setup.setupToolbars(&root);
    ASSERT_THAT(childNames(root), ElementsAre("Standard"));
    EXPECT_THAT(childNames(root.find("Standard")), ElementsAre("vfApplicationQt::CommandAbout"));
    // The parent's entry, and the handle that stays for the process.
    EXPECT_EQ(2, root.getList().first().getImp()->referenceCount());
}

TEST(UiSetup, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&UiSetup::getDocumentIntefaceMode));
    EXPECT_EQ(3, slotOf(&UiSetup::getDocumentViewTemplates));
    EXPECT_EQ(4, slotOf(&UiSetup::setupMenus));
    EXPECT_EQ(5, slotOf(&UiSetup::setupViewMenus));
    EXPECT_EQ(6, slotOf(&UiSetup::showViewTitleButtons));
    EXPECT_EQ(7, slotOf(&UiSetup::showViewLogo));
    EXPECT_EQ(8, slotOf(&UiSetup::showViewDocumentSlider));
    EXPECT_EQ(9, slotOf(&UiSetup::declareExtraA));
    EXPECT_EQ(10, slotOf(&UiSetup::declareExtraB));
    EXPECT_EQ(11, slotOf(&UiSetup::declareExtraC));
    EXPECT_EQ(12, slotOf(&UiSetup::setupToolbars));
    EXPECT_EQ(13, slotOf(&UiSetup::declareExtraD));
    EXPECT_EQ(14, slotOf(&UiSetup::declareExtraE));
    EXPECT_EQ(15, slotOf(&UiSetup::showTitleBarLogo));
    EXPECT_EQ(16, slotOf(&UiSetup::showSceneGraphTreeView));
    EXPECT_EQ(17, slotOf(&UiSetup::declareExtraF));
}
