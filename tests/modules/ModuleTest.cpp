// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/ModuleInterface.h>
#include <velaforge/modules/ModulePrivate.h>
#include <velaforge/modules/vfAppModule.h>

#include <osg/observer_ptr>
#include <osg/ref_ptr>

#include <gtest/gtest.h>

using vfApplication::MinimalUiSetup;
using vfApplication::Module;
using vfApplication::ModuleInterface;
using vfApplication::ModulePrivate;
using vfApplication::UiSetupPrivate;
using vfTest::slotOf;

namespace {

/// Counts those that live.
struct Counted : Module
{
    Counted() { ++s_alive; }
    explicit Counted(const vfApplication::UiSetup& setup) : Module(setup) { ++s_alive; }
    ~Counted() override { --s_alive; }
    const char* getId() const override { return "test::Counted"; }
    const char* getModuleName() const override { return "Counted"; }
    static int s_alive;
};
int Counted::s_alive = 0;

struct Told : ModuleInterface
{
    const char* getId() const override { return "test::Told"; }
    const char* getModuleName() const override { return Module::getModuleName(); }
    void languageChanged() override { ++changes; }
    int changes = 0;
};

/// A module on a body of the test's own.
struct Bare : Module
{
    explicit Bare(ModulePrivate* body) : Module(body) {}
    const char* getId() const override { return Module::getId(); }
    const char* getModuleName() const override { return Module::getModuleName(); }
};

} // namespace

TEST(Module, DescribesItselfByItsIdUnlessItSaysMore)
{
    const Counted module;
    EXPECT_STREQ("test::Counted", module.getModuleDescription());
    EXPECT_STREQ("Counted", module.getModuleName());
}

TEST(Module, TheBodiesOfItsAbstractOperationsCanBeCalled)
{
    const Told told;
    EXPECT_STREQ("test::Told", told.getModuleName());
    const Bare bare(nullptr);
    EXPECT_STREQ("vfApplication::Module", bare.getId());
    EXPECT_STREQ("vfApplication::Module", bare.getModuleName());
    EXPECT_STREQ("vfApplication::Module", bare.getModuleDescription());
}

TEST(Module, KnowsItsBodyAndTheBodyKnowsIt)
{
    const MinimalUiSetup setup;
    Counted module(setup);
    const Module& constant = module;
    ASSERT_NE(nullptr, module.getModulePrivate());
    EXPECT_EQ(module.getModulePrivate(), constant.getModulePrivate());
    EXPECT_EQ(&module, module.getModulePrivate()->owner);
    EXPECT_EQ(1, module.getModulePrivate()->referenceCount());
}

TEST(Module, HasNoModuleInterfaceEvenWhereItIsOne)
{
    Told told;
    EXPECT_EQ(nullptr, told.getModuleInterface());
    told.onLanguageChange();
    EXPECT_EQ(0, told.changes);
}

TEST(Module, TellsTheModuleInterfaceThatItsBodyNames)
{
    Told told;
    told.getModulePrivate()->moduleInterface = &told;
    EXPECT_EQ(&told, told.getModuleInterface());
    told.onLanguageChange();
    EXPECT_EQ(1, told.changes);
}

TEST(Module, TwoOfOneDeclarationShareItsBodyAndAnswerWithIt)
{
    const MinimalUiSetup setup;
    const Counted first(setup);
    const Counted second(setup);
    EXPECT_EQ(setup.getUiSetupPrivate(), first.getModulePrivate()->uiSetup.get());
    EXPECT_EQ(setup.getUiSetupPrivate(), second.getModulePrivate()->uiSetup.get());
    EXPECT_EQ(&setup, &first.getUiSetup());
    EXPECT_EQ(&setup, &second.getUiSetup());
    EXPECT_EQ(3, setup.getUiSetupPrivate()->referenceCount());
}

TEST(Module, FollowsTheDeclarationThatTheSharedBodyNames)
{
    const MinimalUiSetup setup;
    MinimalUiSetup other;
    const Counted module(setup);
    module.getModulePrivate()->uiSetup->owner = &other;
    EXPECT_EQ(&other, &module.getUiSetup());
    module.getModulePrivate()->uiSetup->owner = const_cast<MinimalUiSetup*>(&setup);
}

TEST(Module, OfNoDeclarationIsLeftWithABodyThatNobodyOwns)
{
    const Counted module;
    ASSERT_TRUE(module.getModulePrivate()->uiSetup.valid());
    EXPECT_EQ(nullptr, module.getModulePrivate()->uiSetup->owner);
    EXPECT_EQ(1, module.getModulePrivate()->uiSetup->referenceCount());
}

TEST(Module, TellsWhetherItsDeclarationIsThere)
{
    EXPECT_FALSE(Counted().hasUiSetup());
    EXPECT_FALSE(Bare(nullptr).hasUiSetup());
    auto* setup = new MinimalUiSetup;
    const Counted module(*setup);
    EXPECT_TRUE(module.hasUiSetup());
    delete setup;
    EXPECT_FALSE(module.hasUiSetup());
}

TEST(Module, KeepsTheBodyOfADeclarationThatIsGone)
{
    auto* setup = new MinimalUiSetup;
    const osg::observer_ptr<UiSetupPrivate> body = setup->getUiSetupPrivate();
    {
        const Counted module(*setup);
        delete setup;
        ASSERT_TRUE(body.valid());
        EXPECT_EQ(nullptr, body->owner);
    }
    EXPECT_FALSE(body.valid());
}

TEST(Module, TheHandleGoesFirstAndTheBodyWithIt)
{
    osg::observer_ptr<ModulePrivate> body;
    {
        Counted module;
        body = module.getModulePrivate();
        EXPECT_TRUE(body.valid());
    }
    EXPECT_FALSE(body.valid());
    EXPECT_EQ(0, Counted::s_alive);
}

TEST(Module, ABodyThatIsHeldElsewhereStaysWithoutAnOwner)
{
    osg::ref_ptr<ModulePrivate> body;
    {
        Counted module;
        body = module.getModulePrivate();
    }
    EXPECT_EQ(nullptr, body->owner);
    EXPECT_EQ(0, Counted::s_alive);
    EXPECT_EQ(1, body->referenceCount());
}

TEST(Module, TheBodyGoesFirstAndDestroysTheHandleOnce)
{
    Module* module = new Counted;
    const osg::observer_ptr<UiSetupPrivate> setup = module->getModulePrivate()->uiSetup.get();
    module->getModulePrivate()->unref();
    EXPECT_EQ(0, Counted::s_alive);
    EXPECT_FALSE(setup.valid());
}

TEST(Module, ANewOwnerReplacesAndDestroysTheFormerOne)
{
    Module* former = new Counted;
    const osg::ref_ptr<ModulePrivate> body = former->getModulePrivate();
    Counted guest;
    body->setOwner(former);
    EXPECT_EQ(2, Counted::s_alive); // the same is no other
    body->setOwner(&guest);
    EXPECT_EQ(1, Counted::s_alive);
    EXPECT_EQ(&guest, body->owner);
    body->owner = nullptr; // the guest has a body of its own
}

TEST(Module, AHandleOnABodyCountsItAndIsNotItsOwner)
{
    const osg::ref_ptr<ModulePrivate> body = new ModulePrivate;
    {
        Bare bare(body.get());
        EXPECT_EQ(body.get(), bare.getModulePrivate());
        EXPECT_EQ(2, body->referenceCount());
        EXPECT_EQ(nullptr, body->owner);
        EXPECT_FALSE(body->uiSetup.valid());
        EXPECT_EQ(nullptr, bare.getModuleInterface());
    }
    EXPECT_EQ(1, body->referenceCount());
}

TEST(vfAppModule, StandsForTheApplication)
{
    const vfApplication::ApplicationSetup setup;
    const vfApplication::vfAppModule module(setup.getUiSetup());
    EXPECT_STREQ("vfApplication::Application", module.getId());
    EXPECT_STREQ("vfAppModule", module.getModuleName());
    EXPECT_STREQ("vfApplication::Application", module.getModuleDescription());
    EXPECT_EQ(&setup.getUiSetup(), &module.getUiSetup());
}

TEST(Module, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&Module::getId));
    EXPECT_EQ(1, slotOf(&Module::getModuleName));
    EXPECT_EQ(2, slotOf(&Module::getModuleDescription));
    EXPECT_EQ(5, slotOf(&ModuleInterface::languageChanged)); // behind the destructor
    EXPECT_EQ(-1, slotOf(&Module::onLanguageChange));
    EXPECT_EQ(2 * sizeof(void*), sizeof(Module));
    EXPECT_EQ(sizeof(Module), sizeof(ModuleInterface));
}
