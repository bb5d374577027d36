// SPDX-License-Identifier: MIT
// What modules may do while the registry takes and releases them.
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleInterface.h>
#include <velaforge/modules/ModulePrivate.h>
#include <velaforge/modules/ModuleRegistry.h>

#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>

using vfApplication::Module;
using vfApplication::ModuleRegistry;

namespace {

struct Acting : Module
{
    explicit Acting(std::string moduleId) : id(std::move(moduleId)) { ++count; }
    ~Acting() override
    {
        --count;
        if (atEnd)
            atEnd();
    }
    const char* getId() const override { return id.c_str(); }
    const char* getModuleName() const override { return "acting"; }

    std::string id;
    std::function<void()> atEnd;
    static int count;
};

int Acting::count = 0;

} // namespace

TEST(ModuleLifetimes, AModuleThatIsAddedTwiceStays)
{
    ModuleRegistry& registry = *ModuleRegistry::instance(false);
    auto* module = new Acting("solar::Acting");
    registry.addModule(module);
    registry.addModule(module);
    EXPECT_EQ(1, Acting::count);
    EXPECT_EQ(module, registry.getModule("solar::Acting"));
    registry.removeModule(module);
    EXPECT_EQ(0, Acting::count);
}

TEST(ModuleLifetimes, AModuleThatIsAddedAgainUnderAnotherIdIsFoundUnderThat)
{
    ModuleRegistry& registry = *ModuleRegistry::instance(false);
    auto* module = new Acting("solar::Before");
    registry.addModule(module);
    module->id = "solar::After";
    registry.addModule(module);
    EXPECT_EQ(nullptr, registry.getModule("solar::Before"));
    EXPECT_EQ(module, registry.getModule("solar::After"));
    registry.removeModule(module);
    EXPECT_EQ(0, Acting::count);
}

TEST(ModuleLifetimes, AModuleThatLosesItsPlaceFindsTheRegistryWithItsSuccessor)
{
    ModuleRegistry& registry = *ModuleRegistry::instance(false);
    auto* former = new Acting("solar::Acting");
    auto* added = new Acting("solar::Acting");
    Module* found = nullptr;
    former->atEnd = [&] {
        found = registry.getModule("solar::Acting");
        registry.addModule(new Acting("solar::Further"));
    };
    registry.addModule(former);
    registry.addModule(added);
    EXPECT_EQ(added, found);
    EXPECT_NE(nullptr, registry.getModule("solar::Further"));
}

TEST(ModuleLifetimes, AModuleThatAsksForTheRegistryAtExitGetsNone)
{
    EXPECT_EXIT(
        {
            auto* module = new Acting("solar::Acting");
            module->atEnd = [] {
                std::fputs(ModuleRegistry::instance(false) ? "there is a registry\n" : "there is none\n",
                           stderr);
            };
            ModuleRegistry::instance(false)->addModule(module);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^there is none\n$");
}

TEST(ModuleLifetimes, AModuleThatIsDestroyedByItsBodyAnswersAsAnEmptyOne)
{
    struct Curious : vfApplication::ModuleInterface
    {
        ~Curious() override
        {
            *answers += getModuleInterface() ? "interface " : "no interface ";
            *answers += hasUiSetup() ? "declaration" : "no declaration";
            onLanguageChange();
        }
        const char* getId() const override { return "solar::Curious"; }
        const char* getModuleName() const override { return "curious"; }
        void languageChanged() override {}
        std::string* answers = nullptr;
    };
    std::string answers;
    auto* module = new Curious;
    module->answers = &answers;
    const osg::ref_ptr<vfApplication::ModulePrivate> body = module->getModulePrivate();
    body->unref(); // the count of the handle
    osg::ref_ptr<vfApplication::ModulePrivate> last;
    last.swap(const_cast<osg::ref_ptr<vfApplication::ModulePrivate>&>(body));
    last = nullptr;
    EXPECT_EQ("no interface no declaration", answers);
}

TEST(ModuleLifetimes, AskingForADeclarationThatIsGoneEndsTheProcessWithALine)
{
    struct Plain : Module
    {
        const char* getId() const override { return "solar::Plain"; }
        const char* getModuleName() const override { return "plain"; }
    };
    EXPECT_DEATH(Plain().getUiSetup(),
                 "^velaFORGE: Module::getUiSetup: the UiSetup that the module was given is destroyed\n$");
}
