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
#include <velaforge/toolkit/CommandNames.h>

#include <gmock/gmock.h>

#include <fstream>
#include <memory>
#include <set>
#include <string>

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

/// @return the texts that menus or toolbars show, which need a translation
std::set<std::string> textsOf(const CommandItem& item)
{
    std::set<std::string> texts;
    for (const CommandItem& child : item.getList()) {
        const std::string shown = child.getProperty("text").toString().str();
        const std::string name = child.getCommand();
        if (!shown.empty())
            texts.insert(shown);
        else if (!child.isEmpty())
            texts.insert(name);
        texts.merge(textsOf(child));
    }
    return texts;
}

/// @return the texts with a translation, of a context
std::set<std::string> translatedIn(const std::string& context)
{
    const std::string all =
        vfTest::readFile(VELAFORGE_SOURCE_DIR "/apps/viewer/qt/translations/declared_de.ts");
    const std::size_t begin = all.find("<name>" + context + "</name>");
    const std::size_t end = all.find("</context>", begin);
    std::set<std::string> texts;
    const std::string open = "<source>";
    for (std::size_t at = all.find(open, begin); at < end; at = all.find(open, at)) {
        at += open.size();
        std::string text = all.substr(at, all.find("</source>", at) - at);
        for (std::size_t mark = text.find("&amp;"); mark != std::string::npos; mark = text.find("&amp;"))
            text.replace(mark, 5, "&");
        texts.insert(text);
    }
    return texts;
}

std::set<std::string> operator-(std::set<std::string> all, const std::set<std::string>& known)
{
    for (const std::string& one : known)
        all.erase(one);
    return all;
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

TEST(ViewerUi, EveryDeclaredTextIsTranslated)
{
    CommandItem root;
    vfViewer::ViewerUiSetup().setupMenus(&root);
    vfViewer::SceneUiSetup().setupMenus(&root);
    vfViewer::ViewerUiSetup().setupToolbars(&root);
    vfViewer::SceneUiSetup().setupToolbars(&root);
    const std::set<std::string> texts = textsOf(root);
    EXPECT_LT(70u, texts.size());
    EXPECT_THAT(texts - translatedIn("vfViewer"), testing::IsEmpty());
    std::set<std::string> prompts;
    for (const vfBase::VfString& name : vfApplication::commandNames()) {
        const auto command = vfApplication::Command::getCommandByName(name.str());
        const std::string prompt =
            command.getProperties().value("prompt", vfBase::VfVariant()).toString().str();
        if (!prompt.empty())
            prompts.insert(prompt);
    }
    EXPECT_LT(10u, prompts.size());
    EXPECT_THAT(prompts - translatedIn("Command"), testing::IsEmpty());
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
    EXPECT_THAT(groups, ElementsAre("General", "Pictures", "Models", "Mouse"));
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

TEST(ViewerSettings, ACopyHasTheValuesAndANewOneTheDefaults)
{
    ViewerSettings& settings = ViewerSettings::instance();
    vfScene::ViewStyle style;
    style.showsGrid = !style.showsGrid;
    settings.setFirstView(2);
    settings.setFirstStyle(style);
    settings.setUnits({vfScene::LengthUnit::Metre, vfScene::LengthUnit::Foot});
    settings.setHistoryMegabytes(64);
    settings.setBackground({1, 0, 0}, {0, 0, 1});
    const osg::ref_ptr<osg::Object> copy = settings.clone(osg::CopyOp());
    const auto& copied = static_cast<const ViewerSettings&>(*copy);
    EXPECT_EQ(2, copied.getFirstView());
    EXPECT_EQ(style.showsGrid, copied.getFirstStyle().showsGrid);
    EXPECT_EQ(vfScene::LengthUnit::Foot, copied.getUnits().shown);
    EXPECT_EQ(64, copied.getHistoryMegabytes());
    EXPECT_EQ(osg::Vec3f(1, 0, 0), copied.getBackgroundTop());
    EXPECT_EQ(osg::Vec3f(0, 0, 1), copied.getBackgroundBottom());
    const osg::ref_ptr<osg::Object> made = settings.cloneType();
    EXPECT_EQ(7, static_cast<const ViewerSettings&>(*made).getFirstView());
    EXPECT_EQ(512, static_cast<const ViewerSettings&>(*made).getHistoryMegabytes());
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

TEST(OptionsPages, TheMouseIsSetWithinItsLimits)
{
    const auto page = makePage<vfViewer::MousePage>("vfViewer::MousePage");
    page->loadOptions();
    EXPECT_FALSE(page->mouse.isTrackball);
    EXPECT_EQ(100, page->mouse.orbitPercent);
    page->mouse = {true, 250};
    page->applyOptions();
    EXPECT_TRUE(vfViewer::ViewerSettings::instance().getMouse().isTrackball);
    EXPECT_EQ(250, vfViewer::ViewerSettings::instance().getMouse().orbitPercent);
    vfViewer::ViewerSettings::instance().setMouse({false, 100000});
    EXPECT_EQ(vfViewer::MouseSettings::fastest, vfViewer::ViewerSettings::instance().getMouse().orbitPercent);
    vfViewer::ViewerSettings::instance().setMouse({false, -1});
    EXPECT_EQ(vfViewer::MouseSettings::slowest, vfViewer::ViewerSettings::instance().getMouse().orbitPercent);
}

TEST(OptionsPages, UnitsHistoryAndTheFirstStyleAreSet)
{
    const auto picture = makePage<vfViewer::PicturePage>("vfViewer::PicturePage");
    const auto model = makePage<vfViewer::ModelPage>("vfViewer::ModelPage");
    picture->loadOptions();
    model->loadOptions();
    EXPECT_EQ(512, model->historyMegabytes);
    EXPECT_EQ(vfScene::LengthUnit::None, model->units.ofModel);
    picture->firstStyle.showsGrid = true;
    picture->firstStyle.projection = vfScene::Projection::Orthographic;
    model->units = {vfScene::LengthUnit::Millimetre, vfScene::LengthUnit::Inch};
    model->historyMegabytes = 64;
    EXPECT_FALSE(ViewerSettings::instance().getFirstStyle().showsGrid);
    picture->applyOptions();
    model->applyOptions();
    EXPECT_TRUE(ViewerSettings::instance().getFirstStyle().showsGrid);
    EXPECT_EQ(vfScene::Projection::Orthographic, ViewerSettings::instance().getFirstStyle().projection);
    EXPECT_EQ(vfScene::LengthUnit::Millimetre, ViewerSettings::instance().getUnits().ofModel);
    EXPECT_EQ(vfScene::LengthUnit::Inch, ViewerSettings::instance().getUnits().shown);
    EXPECT_EQ(64, ViewerSettings::instance().getHistoryMegabytes());
    model->historyMegabytes = 0;
    model->applyOptions();
    EXPECT_EQ(64, ViewerSettings::instance().getHistoryMegabytes());
}

TEST(ViewerSettings, KeepTheFirstStyleWithoutItsBackgroundAndItsSections)
{
    ViewerSettings& settings = ViewerSettings::instance();
    vfScene::ViewStyle style;
    style.showsAxes = true;
    style.isAntialiased = false;
    style.background = vfScene::Background();
    style.sections[1].isOn = true;
    settings.setFirstStyle(style);
    EXPECT_FALSE(settings.getFirstStyle().background);
    EXPECT_FALSE(settings.getFirstStyle().sections[1].isOn);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings.setFirstStyle(vfScene::ViewStyle());
    vfBase::Settings::loadGlobal();
    EXPECT_TRUE(settings.getFirstStyle().showsAxes);
    EXPECT_FALSE(settings.getFirstStyle().isAntialiased);
    EXPECT_FALSE(settings.getFirstStyle().showsGrid);
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
