// SPDX-License-Identifier: MIT
// Producers registered by real plug-ins that are opened at run time.
#include "fixtures/Producers.h"
#include "support/RecordingDockWindows.h"

#include <velaforge/base/LeakForProcess.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>

#include <osg/ref_ptr>
#include <osgDB/DynamicLibrary>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <dlfcn.h>

using vfApplication::DockWindow;
using vfApplication::DockWindowManager;
using vfApplication::DockWindowRegistry;
using vfApplication::ModuleRegistry;

namespace {

osg::ref_ptr<osgDB::DynamicLibrary> openPlugin(const std::string& name)
{
    return osgDB::DynamicLibrary::loadLibrary(VELAFORGE_FIXTURE_DIR "/" + name + ".so");
}

/// A plug-in whose own classes are in use stays open to the end of the process.
osgDB::DynamicLibrary& lastingPlugin()
{
    const osg::ref_ptr<osgDB::DynamicLibrary> library = openPlugin("plugin");
    vfBase::leakForProcess(library.get());
    return *library;
}

template <class Function>
Function* function(osgDB::DynamicLibrary& library, const char* name)
{
    return reinterpret_cast<Function*>(library.getProcAddress(name));
}

} // namespace

TEST(Plugin, ItsDockWindowIsMadeForThePointerThatItKeeps)
{
    vfTest::RecordingDockWindowManagerProducer screens;
    vfTest::RecordingDockWindowProducer halves;
    osgDB::DynamicLibrary& plugin = lastingPlugin();
    const char* key = function<const char*()>(plugin, "pluginWindowKey")();
    DockWindowManager manager;
    bool existed = true;
    DockWindow& window =
        manager.addNewOrGetExistingDockWindow(key, DockWindow::LeftDockArea, true, false, 0, &existed);
    EXPECT_FALSE(existed);
    EXPECT_EQ(7, window.getShortcut());
    EXPECT_TRUE(window.applyDefaultState());
    EXPECT_TRUE(manager.removeDockWindow(key));
}

TEST(Plugin, ItsModuleComesToTheRegistryByADirectCallOnly)
{
    osgDB::DynamicLibrary& plugin = lastingPlugin();
    EXPECT_EQ(nullptr, ModuleRegistry::instance(false)->getModule("fixtures::PluginModule"));
    function<void()>(plugin, "addPluginModule")();
    vfApplication::Module* module = ModuleRegistry::instance(false)->getModule("fixtures::PluginModule");
    ASSERT_NE(nullptr, module);
    EXPECT_STREQ("Plugin", module->getModuleName());
    EXPECT_EQ(nullptr, module->getModuleInterface());
}

TEST(Plugin, ItsEntriesOutliveItsProxies)
{
    osg::ref_ptr<osgDB::DynamicLibrary> plugin = openPlugin("closable_plugin");
    ASSERT_TRUE(plugin);
    const std::string file = plugin->getName();
    EXPECT_EQ(2, fixtures::livingProducers);
    plugin = nullptr;
    ASSERT_EQ(nullptr, dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD)) << "the plug-in is still open";
    EXPECT_EQ(2, fixtures::livingProducers);
    const std::unique_ptr<DockWindow> window(
        DockWindowRegistry::instance(false)->create(fixtures::lastingWindowKey));
    ASSERT_TRUE(window);
    EXPECT_STREQ("lasting", window->getId());
}

TEST(Plugin, OpenedAgainItsProducersReplaceThoseOfTheFirstTime)
{
    for (int i = 0; i < 3; ++i) {
        const osg::ref_ptr<osgDB::DynamicLibrary> plugin = openPlugin("closable_plugin");
        ASSERT_TRUE(plugin);
        EXPECT_EQ(2, fixtures::livingProducers);
    }
}
