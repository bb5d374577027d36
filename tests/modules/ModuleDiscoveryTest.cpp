// SPDX-License-Identifier: MIT
// The registry of modules, built with the extension ".so", and real libraries.
#include "support/TemporaryDirectory.h"

#include <velaforge/base/Version.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/modules/ModuleRegistryPrivate.h>
#include <velaforge/modules/ModuleSettings.h>

#include <OpenThreads/ScopedLock>
#include <osgDB/FileUtils>
#include <osgDB/Registry>

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vfApplication::ModuleRegistry;
using vfApplication::ModuleRegistryPrivate;
using vfApplication::ModuleSettings;

namespace {

std::function<void()> toCallWhileLoading;

/// A real directory of modules, alone on the library path.
class ModuleDirectory
{
public:
    ModuleDirectory() { osgDB::Registry::instance()->getLibraryFilePathList() = {m_directory.path()}; }

    std::string path() const { return m_directory.file(std::string("vfModules-") + vfBase::getVersion()); }
    std::string file(const std::string& name) const { return path() + "/" + name; }

    /// Puts a library there. @param part  how much of it, from 0 to 1
    std::string put(const std::string& fixture, const std::string& name, double part = 1) const
    {
        const std::string library = vfTest::readFile(VELAFORGE_FIXTURE_DIR "/" + fixture + ".so");
        EXPECT_FALSE(library.empty()) << fixture;
        const auto size = static_cast<std::size_t>(part * static_cast<double>(library.size()));
        return m_directory.write("vfModules-" + std::string(vfBase::getVersion()) + "/" + name,
                                 library.substr(0, size));
    }

private:
    vfTest::TemporaryDirectory m_directory;
};

bool isOpen(const std::string& path)
{
    void* library = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (library)
        dlclose(library);
    return library != nullptr;
}

std::vector<std::string> openFiles(const ModuleRegistryPrivate& registry)
{
    std::vector<std::string> names;
    for (const auto& library : registry.libraries)
        names.push_back(library->getName());
    return names;
}

/// Module name and file, in order of the names.
std::vector<std::pair<std::string, std::string>> found(const ModuleRegistryPrivate& registry)
{
    std::vector<std::pair<std::string, std::string>> modules;
    for (const auto& [name, file] : registry.moduleInfoMap)
        modules.emplace_back(name.str(), file.str());
    return modules;
}

} // namespace

/// Called by the library "loads".
extern "C" __attribute__((visibility("default"))) void whileLoading()
{
    if (toCallWhileLoading)
        toCallWhileLoading();
}

TEST(ModuleDiscovery, OpensANewModuleAndForgetsItsState)
{
    const ModuleDirectory modules;
    const std::string file = modules.put("loads", "vf_loads.so");
    {
        const ModuleRegistryPrivate registry;
        EXPECT_THAT(found(registry), ElementsAre(Pair("loads", file)));
        EXPECT_THAT(openFiles(registry), ElementsAre(file));
        EXPECT_TRUE(isOpen(file));
        EXPECT_FALSE(registry.openingLibrary);
        EXPECT_EQ(0u, ModuleSettings::instance(false)->getNumModules());
    }
    EXPECT_FALSE(isOpen(file)); // closed with the registry
}

TEST(ModuleDiscovery, ANewModuleCountsAsEnabledWhileItIsLoaded)
{
    const ModuleDirectory modules;
    modules.put("loads", "vf_loads.so");
    std::vector<bool> states;
    toCallWhileLoading = [&states] {
        states.push_back(ModuleSettings::instance(false)->getModuleStateSettings("loads"));
    };
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(states, ElementsAre(true));
    EXPECT_EQ(0u, ModuleSettings::instance(false)->getNumModules());
}

TEST(ModuleDiscovery, LibrariesAreClosedBeforeTheModulesGo)
{
    struct Watching : vfApplication::Module
    {
        Watching(const std::string& library, bool& answer) : file(library), wasOpen(answer) {}
        ~Watching() override { wasOpen = isOpen(file); }
        const char* getId() const override { return "test::Watching"; }
        const char* getModuleName() const override { return "Watching"; }
        std::string file;
        bool& wasOpen;
    };
    bool wasOpen = true;
    const ModuleDirectory modules;
    const std::string file = modules.put("loads", "vf_loads.so");
    {
        ModuleRegistryPrivate registry;
        registry.activeModuleMap["id"] = std::make_shared<Watching>(file, wasOpen);
        EXPECT_TRUE(isOpen(file));
    }
    EXPECT_FALSE(wasOpen);
}

TEST(ModuleDiscovery, IsWhatTheFirstUseOfTheRegistryDoes)
{
    const ModuleDirectory modules;
    const std::string file = modules.put("loads", "vf_loads.so");
    auto it = ModuleRegistry::instance(false)->getModuleInfoMap();
    ASSERT_TRUE(it.hasNext());
    EXPECT_EQ(file, it.next().value.str());
    EXPECT_TRUE(isOpen(file));
}

TEST(ModuleDiscovery, ListsADisabledModuleAndLeavesItClosed)
{
    const ModuleDirectory modules;
    const std::string off = modules.put("loads", "vf_off.so");
    const std::string on = modules.put("loads", "vf_on.so");
    ModuleSettings::instance(false)->setModuleStateSettings("off", false);
    ModuleSettings::instance(false)->setModuleStateSettings("on", true);
    ModuleSettings::instance(false)->setModuleStateSettings("not there", true);
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry), ElementsAre(Pair("off", off), Pair("on", on)));
    EXPECT_THAT(openFiles(registry), ElementsAre(on));
    EXPECT_FALSE(isOpen(off));
    EXPECT_EQ(0u, ModuleSettings::instance(false)->getNumModules());
}

TEST(ModuleDiscovery, ALibraryCutShortIsListedAndNotOpenedAndTheOthersAre)
{
    const ModuleDirectory modules;
    const std::string half =
        modules.put("loads", "vf_half.so", 0.1); // behind that it may hold nothing to load
    const std::string empty = modules.put("loads", "vf_nothing.so", 0);
    const std::string whole = modules.put("loads", "vf_whole.so");
    testing::internal::CaptureStderr();
    const ModuleRegistryPrivate registry;
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_THAT(found(registry),
                ElementsAre(Pair("half", half), Pair("nothing", empty), Pair("whole", whole)));
    EXPECT_THAT(openFiles(registry), ElementsAre(whole));
}

TEST(ModuleDiscovery, ALibraryThatThrowsOrCrashesIsListedAndNotOpenedAndTheOthersAre)
{
    const ModuleDirectory modules;
    const std::string crashes = modules.put("crashes", "vf_crashes.so");
    const std::string loads = modules.put("loads", "vf_loads.so");
    const std::string throws = modules.put("throws", "vf_throws.so");
    testing::internal::CaptureStderr();
    const ModuleRegistryPrivate registry;
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_THAT(found(registry),
                ElementsAre(Pair("crashes", crashes), Pair("loads", loads), Pair("throws", throws)));
    EXPECT_THAT(openFiles(registry), ElementsAre(loads));
    EXPECT_FALSE(isOpen(throws));
    EXPECT_FALSE(isOpen(crashes));
}

TEST(ModuleDiscovery, TheMarkMayStandAnywhereInTheName)
{
    const ModuleDirectory modules;
    const std::string middle = modules.put("loads", "abcvf_middle.so");
    const std::string twice = modules.put("loads", "vf_a_vf_b.so");
    const std::string nothing = modules.put("loads", "vf_.so");
    modules.put("loads", "middle.so");
    modules.put("loads", "vfmiddle.so");
    modules.put("loads", "VF_upper.so");
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry),
                ElementsAre(Pair("", nothing), Pair("a_vf_b", twice), Pair("middle", middle)));
}

TEST(ModuleDiscovery, TheExtensionIsComparedByteForByte)
{
    const ModuleDirectory modules;
    const std::string dots = modules.put("loads", "vf_a.b.so");
    modules.put("loads", "vf_upper.SO");
    modules.put("loads", "vf_versioned.so.1");
    modules.put("loads", "vf_longer.sox");
    modules.put("loads", "vf_so");
    modules.put("loads", "x.vf_so");
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry), ElementsAre(Pair("a.b", dots)));
}

TEST(ModuleDiscovery, OfTwoFilesWithOneNameTheLaterIsListedAndBothAreOpened)
{
    const ModuleDirectory modules;
    modules.put("loads", "vf_twin.so");
    modules.put("loads", "other_vf_twin.so");
    std::vector<std::string> inOrder;
    for (const std::string& entry : osgDB::getDirectoryContents(modules.path())) {
        if (entry.size() > 2)
            inOrder.push_back(modules.file(entry));
    }
    ASSERT_EQ(2u, inOrder.size());
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry), ElementsAre(Pair("twin", inOrder.back())));
    EXPECT_EQ(inOrder, openFiles(registry)); // the second is known by then, and enabled
}

TEST(ModuleDiscovery, LoadsInTheOrderInWhichTheDirectoryTellsItsEntries)
{
    const ModuleDirectory modules;
    for (const char* name : {"vf_d.so", "vf_a.so", "vf_c.so", "vf_e.so", "vf_b.so"})
        modules.put("loads", name);
    std::vector<std::string> inOrder;
    for (const std::string& entry : osgDB::getDirectoryContents(modules.path())) {
        if (entry.size() > 2)
            inOrder.push_back(modules.file(entry));
    }
    EXPECT_EQ(inOrder, openFiles(ModuleRegistryPrivate()));
}

TEST(ModuleDiscovery, AnEmptyDirectoryOrOneWithoutModulesEmptiesTheList)
{
    const ModuleDirectory modules;
    modules.put("loads", "readme.txt");
    ModuleSettings::instance(false)->setModuleStateSettings("a", true);
    ModuleSettings::instance(false)->setModuleStateSettings("b", false);
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry), IsEmpty());
    EXPECT_EQ(0u, ModuleSettings::instance(false)->getNumModules());
}

TEST(ModuleDiscovery, WithoutTheDirectoryNothingIsTouched)
{
    ModuleSettings::instance(false)->setModuleStateSettings("a", true);
    const ModuleRegistryPrivate registry;
    EXPECT_THAT(found(registry), IsEmpty());
    EXPECT_EQ(1u, ModuleSettings::instance(false)->getNumModules());
}

TEST(ModuleDiscovery, ALibraryIsOpenedOnceOnly)
{
    const ModuleDirectory modules;
    const std::string file = modules.put("loads", "vf_loads.so");
    ModuleRegistryPrivate registry;
    EXPECT_TRUE(registry.loadModule(file));
    EXPECT_THAT(openFiles(registry), ElementsAre(file));
    EXPECT_FALSE(registry.loadModule(modules.file("vf_missing.so")));
    EXPECT_FALSE(registry.loadModule(modules.path()));
    EXPECT_THAT(openFiles(registry), ElementsAre(file));
}

TEST(ModuleDiscovery, WhileALibraryIsLoadedTheRegistryIsMarkedAndLockedForOthersOnly)
{
    const ModuleDirectory modules;
    ModuleRegistryPrivate registry; // without modules
    const std::string file = modules.put("loads", "vf_loads.so");
    std::vector<bool> marks;
    toCallWhileLoading = [&] {
        marks.push_back(registry.openingLibrary);
        const OpenThreads::ScopedLock<OpenThreads::ReentrantMutex> again(registry.mutex);
    };
    EXPECT_TRUE(registry.loadModule(file));
    EXPECT_THAT(marks, ElementsAre(true)); // what happened in the child is not seen here
    EXPECT_FALSE(registry.openingLibrary);
}

// Sanitizers cannot follow a process that forks while it has several threads: another thread may hold one of their locks.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(ModuleDiscovery, ALibraryIsOpenedOnceWhenTwoThreadsAskForIt)
{
    ModuleRegistryPrivate registry; // without modules
    const ModuleDirectory modules;
    const std::string file = modules.put("loads", "vf_loads.so");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&registry, &file] { EXPECT_TRUE(registry.loadModule(file)); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(openFiles(registry), ElementsAre(file));
}
#endif
