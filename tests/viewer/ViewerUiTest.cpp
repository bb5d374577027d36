// SPDX-License-Identifier: MIT
#include "model/ViewerSettings.h"
#include "support/ChildNames.h"
#include "support/TemporaryDirectory.h"
#include "ui/Menus.h"
#include "ui/ModulePlugin.h"
#include "ui/OptionsPages.h"
#include "ui/SceneModule.h"
#include "ui/ViewerUiSetup.h"

#include <velaforge/base/Settings.h>
#include <velaforge/base/StringList.h>
#include <velaforge/commands/Command.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

#include <gmock/gmock.h>

#include <fstream>
#include <memory>

using testing::ElementsAre;
using vfApplication::CommandItem;
using vfApplication::FileHistorySettings;
using vfTest::childNames;
using vfViewer::ViewerSettings;

namespace {

/// Every name of the viewer's own is that of a command.
void expectCommands(const CommandItem& item)
{
    const std::string name = item.getCommand();
    if (item.isEmpty() && name.rfind("vfViewer::", 0) == 0) {
        EXPECT_TRUE(vfApplication::Command::getCommandByName(name).isValid()) << name;
    }
    for (const CommandItem& child : item.getList())
        expectCommands(child);
}

template <class Page>
std::unique_ptr<Page> makePage(const char* id)
{
    const auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
    auto* page = dynamic_cast<Page*>(pages.createOptionsPage(id));
    EXPECT_NE(nullptr, page) << id;
    return std::unique_ptr<Page>(page);
}

} // namespace

TEST(ViewerUi, ModulesPutTheirMenusInFrontOfTheHelpMenu)
{
    CommandItem root;
    vfViewer::ViewerUiSetup().setupMenus(&root);
    EXPECT_THAT(childNames(root), ElementsAre("&File", "&Edit", "&View", "&Help"));
    vfViewer::SceneUiSetup().setupMenus(&root);
    EXPECT_THAT(childNames(root), ElementsAre("&File", "&Edit", "&View", "&Scene", "&Tools", "&Help"));
    EXPECT_THAT(childNames(vfViewer::findOrAddMenu(&root, "&Edit")),
                ElementsAre("vfApplicationQt::ActionUndo", "vfApplicationQt::ActionRedo", "",
                            "vfApplicationQt::ActionShortcuts", "vfApplicationQt::ActionLanguage",
                            "vfApplicationQt::ActionOptions"));
    expectCommands(root);
}

TEST(ViewerUi, ToolbarsNameCommandsThatAreThere)
{
    CommandItem root;
    vfViewer::ViewerUiSetup().setupToolbars(&root);
    vfViewer::SceneUiSetup().setupToolbars(&root);
    EXPECT_THAT(childNames(root), ElementsAre("Standard", "Views", "Scene"));
    expectCommands(root);
}

TEST(ViewerUi, OffersBothKindsOfDocument)
{
    const vfBase::StringList kinds = vfViewer::ViewerUiSetup().getDocumentViewTemplates();
    ASSERT_EQ(2u, kinds.size());
    EXPECT_EQ("3D models", kinds.get(0));
    EXPECT_EQ("Images", kinds.get(1));
}

TEST(ViewerUi, TheModuleOfTheSceneTellsWhatItIs)
{
    const vfViewer::SceneUiSetup setup;
    const vfViewer::SceneModule module(setup);
    EXPECT_STREQ("vfViewer::Scene", module.getId());
    EXPECT_STREQ("Scene", module.getModuleName());
    EXPECT_STRNE("vfViewer::Scene", module.getModuleDescription());
}

TEST(ViewerUi, AMissingModuleLibraryIsToldWithItsPath)
{
    std::string reason;
    EXPECT_FALSE(vfViewer::addModuleFromLibrary("no_such_module", reason));
    EXPECT_THAT(reason, testing::HasSubstr("/no_such_module.so"));
    EXPECT_FALSE(vfViewer::addModuleFromLibrary("libvfviewer_model", reason));
    EXPECT_THAT(reason, testing::HasSubstr("no module of the viewer"));
}

TEST(OptionsPages, AreAnnouncedInOrder)
{
    vfViewer::announceOptionsPages();
    std::vector<std::string> groups;
    for (vfApplication::UiOptionsPage* page :
         vfApplication::Registry::instance().getOptionsPageManager().createPages())
    {
        groups.emplace_back(page->getGroupName());
        delete page;
    }
    EXPECT_THAT(groups, ElementsAre("General", "Pictures"));
}

TEST(OptionsPages, WhatIsNotAppliedChangesNothing)
{
    const auto recent = makePage<vfViewer::RecentFilesPage>("vfViewer::RecentFilesPage");
    const auto picture = makePage<vfViewer::PicturePage>("vfViewer::PicturePage");
    recent->loadOptions();
    picture->loadOptions();
    EXPECT_EQ(9u, recent->maxFiles);
    EXPECT_EQ(7, picture->firstView);
    EXPECT_EQ(ViewerSettings::instance().getBackgroundTop(), picture->backgroundTop);
    EXPECT_EQ(ViewerSettings::instance().getBackgroundBottom(), picture->backgroundBottom);
    recent->maxFiles = 3;
    picture->firstView = 2;
    EXPECT_EQ(9u, FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ(7, ViewerSettings::instance().getFirstView());
}

TEST(OptionsPages, WhatIsAppliedIsSetAndNonsenseIsNot)
{
    const auto recent = makePage<vfViewer::RecentFilesPage>("vfViewer::RecentFilesPage");
    const auto picture = makePage<vfViewer::PicturePage>("vfViewer::PicturePage");
    picture->loadOptions();
    recent->maxFiles = 3;
    picture->firstView = 2;
    picture->backgroundTop = {1, 0, 0};
    recent->applyOptions();
    picture->applyOptions();
    EXPECT_EQ(3u, FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ(2, ViewerSettings::instance().getFirstView());
    EXPECT_EQ(osg::Vec3f(1, 0, 0), ViewerSettings::instance().getBackgroundTop());
    recent->maxFiles = 0;
    picture->firstView = 10;
    recent->applyOptions();
    picture->applyOptions();
    EXPECT_EQ(1u, FileHistorySettings::instance(false)->getMaxFiles());
    EXPECT_EQ(2, ViewerSettings::instance().getFirstView());
}

TEST(ViewerSettings, ComeBackFromTheStore)
{
    ViewerSettings& settings = ViewerSettings::instance();
    settings.setFirstView(4);
    settings.setBackground({0, 0.5f, 1}, {1, 0.5f, 0});
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings.setFirstView(5);
    settings.setBackground({1, 1, 1}, {1, 1, 1});
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(4, settings.getFirstView());
    EXPECT_EQ(osg::Vec3f(0, 0.5f, 1), settings.getBackgroundTop());
    EXPECT_EQ(osg::Vec3f(1, 0.5f, 0), settings.getBackgroundBottom());
}

TEST(ViewerSettings, ValuesOutOfRangeLeaveWhatWasThere)
{
    ViewerSettings& settings = ViewerSettings::instance();
    settings.setFirstView(4);
    settings.setBackground({0.25f, 0.25f, 0.25f}, {0.75f, 0.75f, 0.75f});
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    const std::string path = vfBase::Settings::global().getSettingsFilePath();
    std::string text = vfTest::readFile(path);
    const auto replace = [&text](const std::string& from, const std::string& to) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    };
    replace("\"firstView\": 4", "\"firstView\": 12");
    replace("0.25", "25");
    replace("0.75", "\"white\"");
    std::ofstream(path) << text;
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(4, settings.getFirstView());
    EXPECT_EQ(osg::Vec3f(0.25f, 0.25f, 0.25f), settings.getBackgroundTop());
    EXPECT_EQ(osg::Vec3f(0.75f, 0.75f, 0.75f), settings.getBackgroundBottom());
}
