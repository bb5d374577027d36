// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/Version.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/ModuleInterface.h>
#include <velaforge/modules/ModulePrivate.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/ModuleRegistryPrivate.h>
#include <velaforge/modules/ModuleSettings.h>

#include <osgDB/Registry>

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vfApplication::Module;
using vfApplication::ModuleRegistry;
using vfApplication::ModuleRegistryPrivate;
using vfApplication::ModuleSettings;
using vfTest::record;
using vfTest::recorder;

namespace {

struct TestModule : Module
{
    TestModule(std::string moduleId, std::string moduleName)
        : id(std::move(moduleId)), name(std::move(moduleName))
    {}
    ~TestModule() override
    {
        if (atEnd)
            atEnd();
        record("~" + name);
    }
    const char* getId() const override { return id.c_str(); }
    const char* getModuleName() const override { return name.c_str(); }

    std::string id;
    std::string name;
    std::function<void()> atEnd;
};

/// Writes nothing anywhere, for tests on several threads.
struct QuietModule : Module
{
    explicit QuietModule(std::string moduleId) : id(std::move(moduleId)) {}
    const char* getId() const override { return id.c_str(); }
    const char* getModuleName() const override { return id.c_str(); }

    std::string id;
};

struct ModuleProducer : ModuleRegistryPrivate::Producer
{
    ModuleProducer(std::string producerName, const char* producerKey)
        : name(std::move(producerName)), key(producerKey)
    {}
    ~ModuleProducer() override { record("~" + name); }
    const char* getKey() override { return key; }
    vfApplication::ModuleInterface* create() override
    {
        record(name + " create");
        return nullptr;
    }

    std::string name;
    const char* key;
};

/// The directory in which modules are looked for, alone on the library path.
struct ModuleDirectory
{
    ModuleDirectory() { osgDB::Registry::instance()->getLibraryFilePathList() = {directory.path()}; }
    std::string write(const std::string& name) const
    {
        return directory.write("vfModules-" + std::string(vfBase::getVersion()) + "/" + name,
                               "not a library");
    }
    vfTest::TemporaryDirectory directory;
};

std::vector<std::string> activeIds()
{
    std::vector<std::string> ids;
    for (auto it = ModuleRegistry::instance(false)->getActiveModuleMap(); it.hasNext();)
        ids.push_back(it.next().key.str());
    return ids;
}

} // namespace

TEST(ModuleRegistry, IsMadeOnceAndErasedForGood)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    ASSERT_NE(nullptr, registry);
    EXPECT_EQ(registry, ModuleRegistry::instance(false));
    registry->addModule(new TestModule("id", "module"));
    EXPECT_EQ(nullptr, ModuleRegistry::instance(true));
    EXPECT_EQ(nullptr, ModuleRegistry::instance(false));
    EXPECT_EQ(nullptr, ModuleRegistry::instance(true));
    EXPECT_THAT(recorder().lines(), IsEmpty()); // the modules stay
}

TEST(ModuleRegistry, KeepsModulesById)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    auto* b = new TestModule("b", "module b");
    auto* a = new TestModule("a", "module a");
    registry->addModule(b);
    registry->addModule(a);
    EXPECT_EQ(a, registry->getModule("a"));
    EXPECT_EQ(b, registry->getModule("b"));
    EXPECT_EQ(nullptr, registry->getModule("c"));
    EXPECT_EQ(nullptr, registry->getModule(""));
    EXPECT_THAT(activeIds(), ElementsAre("a", "b"));
}

TEST(ModuleRegistry, OfTwoModulesWithOneIdTheLaterStaysAndTheEarlierIsDestroyed)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    registry->addModule(new TestModule("id", "first"));
    auto* second = new TestModule("id", "second");
    registry->addModule(second);
    EXPECT_THAT(recorder().take(), ElementsAre("~first"));
    EXPECT_EQ(second, registry->getModule("id"));
    EXPECT_THAT(activeIds(), ElementsAre("id"));
}

TEST(ModuleRegistry, ACursorKeepsAModuleThatWasReplaced)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    registry->addModule(new TestModule("id", "first"));
    {
        const std::shared_ptr<Module> held = registry->getActiveModuleMap().peekNext().value;
        registry->addModule(new TestModule("id", "second"));
        EXPECT_THAT(recorder().take(), IsEmpty());
    }
    EXPECT_THAT(recorder().take(), ElementsAre("~first"));
}

TEST(ModuleRegistry, RemovingAModuleThatWasNeverAddedRemovesTheOneOfItsId)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    registry->addModule(new TestModule("id", "active"));
    TestModule other("id", "other");
    registry->removeModule(&other);
    EXPECT_THAT(recorder().take(), ElementsAre("~active"));
    EXPECT_EQ(nullptr, registry->getModule("id"));
    registry->removeModule(&other);
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(ModuleRegistry, IgnoresNull)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    registry->addModule(nullptr);
    registry->removeModule(nullptr);
    EXPECT_THAT(activeIds(), IsEmpty());
}

TEST(ModuleRegistry, AModuleMayUseItWhileItIsDestroyed)
{
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    auto* module = new TestModule("id", "module");
    module->atEnd = [registry] {
        EXPECT_EQ(nullptr, registry->getModule("id"));
        registry->addModule(new TestModule("next", "next"));
    };
    registry->addModule(module);
    registry->removeModule(module);
    EXPECT_THAT(recorder().take(), ElementsAre("~module"));
    EXPECT_THAT(activeIds(), ElementsAre("next"));
}

TEST(ModuleRegistry, HasTheModuleOfTheApplicationUnderItsIdAndNotUnderItsName)
{
    const vfTest::RecordingApplication bench;
    ModuleRegistry* registry = ModuleRegistry::instance(false);
    Module* module = registry->getModule("vfApplication::Application");
    ASSERT_NE(nullptr, module);
    EXPECT_STREQ("vfAppModule", module->getModuleName());
    EXPECT_EQ(nullptr, registry->getModule("vfAppModule"));
    EXPECT_EQ(&vfApplication::ApplicationSetup().getUiSetup(), &module->getUiSetup());
}

TEST(ModuleRegistry, WithoutTheDirectoryTheListOfEnabledModulesStays)
{
    ModuleSettings::instance(false)->setModuleStateSettings("one", true);
    EXPECT_FALSE(ModuleRegistry::instance(false)->getModuleInfoMap().hasNext());
    EXPECT_THAT(ModuleSettings::instance(false)->getModuleList(), ElementsAre(Pair("one", true)));
}

TEST(ModuleRegistry, WithTheDirectoryTheListOfEnabledModulesIsEmptiedWhateverIsInIt)
{
    const ModuleDirectory modules;
    modules.write("readme.txt");
    modules.write("vf_one.so");
    ModuleSettings::instance(false)->setModuleStateSettings("one", true);
    ModuleSettings::instance(false)->setModuleStateSettings("two", false);
    EXPECT_FALSE(ModuleRegistry::instance(false)->getModuleInfoMap().hasNext());
    EXPECT_THAT(ModuleSettings::instance(false)->getModuleList(), IsEmpty());
}

TEST(ModuleRegistry, AFileWithTheNameOfTheConstantBehindADotIsNoModule)
{
    const ModuleDirectory modules;
    modules.write("vf_something.VF_MODULE_EXTENSION");
    modules.write("vf_somethingVF_MODULE_EXTENSION");
    EXPECT_FALSE(ModuleRegistry::instance(false)->getModuleInfoMap().hasNext());
}

TEST(ModuleRegistry, LooksForModulesOnceOnly)
{
    ASSERT_NE(nullptr, ModuleRegistry::instance(false));
    const ModuleDirectory modules;
    modules.write("vf_one.so");
    ModuleSettings::instance(false)->setModuleStateSettings("one", true);
    ModuleRegistry::instance(false);
    vfTest::RecordingApplication bench;
    EXPECT_EQ(1u, ModuleSettings::instance(false)->getNumModules());
}

TEST(ModuleRegistry, InARunTheStatesOfTheSettingsFileComeAfterTheScanAndAreSavedAgain)
{
    const ModuleDirectory modules;
    modules.write("vf_one.so");
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("kept", false);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    vfTest::RecordingApplication bench;
    EXPECT_EQ(0u, settings->getNumModules());
    EXPECT_EQ(0, bench.application.run());
    EXPECT_THAT(settings->getModuleList(), ElementsAre(Pair("kept", false)));
    settings->getModuleList().clear();
    vfBase::Settings::loadGlobal();
    EXPECT_THAT(settings->getModuleList(), ElementsAre(Pair("kept", false)));
}

TEST(ModuleRegistry, ModulesAreLookedForBeforeHelpIsAskedFor)
{
    const ModuleDirectory modules;
    modules.write("vf_one.so");
    ModuleSettings::instance(false)->setModuleStateSettings("one", true);
    vfTest::RecordingApplication bench{"program", "--help"};
    EXPECT_EQ(0u, ModuleSettings::instance(false)->getNumModules());
    testing::internal::CaptureStdout();
    EXPECT_EQ(1, bench.application.run());
    testing::internal::GetCapturedStdout();
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(ModuleRegistry, AProducerStaysUntilALaterOneTakesItsPlace)
{
    {
        const ModuleRegistryPrivate::Proxy first(new ModuleProducer("first", "key"));
    }
    EXPECT_THAT(recorder().take(), IsEmpty());
    const ModuleRegistryPrivate::Proxy second(new ModuleProducer("second", std::string("key").c_str()));
    const ModuleRegistryPrivate::Proxy copy(second);
    EXPECT_THAT(recorder().take(), ElementsAre("~first")); // and nothing was created
}

TEST(ModuleRegistry, LetsModulesGoBeforeProducers)
{
    {
        ModuleRegistryPrivate registry;
        registry.producers["key"] = std::make_shared<ModuleProducer>("producer", "key");
        registry.activeModuleMap["id"] = std::make_shared<TestModule>("id", "module");
        EXPECT_FALSE(registry.openingLibrary);
        EXPECT_THAT(registry.libraries, IsEmpty());
    }
    EXPECT_THAT(recorder().take(), ElementsAre("~module", "~producer"));
}

TEST(ModuleRegistry, TakesAndGivesModulesOnSeveralThreadsAtOnce)
{
    std::atomic<int> found{0};
    const auto work = [&found](int number) {
        const std::string own = "own " + std::to_string(number);
        for (int i = 0; i < 500; ++i) {
            ModuleRegistry* registry = ModuleRegistry::instance(false);
            auto* module = new QuietModule(own);
            registry->addModule(module);
            registry->addModule(new QuietModule("shared"));
            if (registry->getModule(own) == module)
                ++found;
            registry->getModule("shared");
            registry->removeModule(module);
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(2000, found);
    EXPECT_THAT(activeIds(), ElementsAre("shared"));
}

TEST(ModuleRegistry, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, vfTest::slotOf(&ModuleRegistryPrivate::registryHook)); // behind the destructor
    EXPECT_EQ(-1, vfTest::slotOf(&ModuleRegistryPrivate::loadModule));
    EXPECT_EQ(sizeof(void*), sizeof(ModuleRegistry));
}
