// SPDX-License-Identifier: MIT
#include "support/RecordingShell.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/UiListing.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>
#include <velaforge/shell/UiOptionsPage.h>
#include <velaforge/toolkit/CommandNames.h>

#include <gmock/gmock.h>

#include <sstream>

using testing::Contains;
using testing::Not;
using vfApplication::Application;
using vfApplication::CommandItem;
using vfApplication::DockWindow;
using vfApplication::nearestName;
using vfBase::VfString;

namespace {

struct Known : vfApplication::CommandPrivate
{};
const vfBase::ClassInfo known("test", "Known", "test::Known", &vfApplication::CommandPrivate::s_classInfo,
                              nullptr, sizeof(Known), []() -> vfBase::VfObject* { return new Known; });
const vfBase::ClassInfo abstractCommand("test", "Abstract", "test::Abstract",
                                        &vfApplication::CommandPrivate::s_classInfo, nullptr, 8, nullptr);

struct Page : vfApplication::UiOptionsPage
{
    explicit Page(const vfBase::ClassInfo& pageRecord, const char* pageGroup, int order, int tab)
        : record(pageRecord), group(pageGroup), groupOrder(order), tabOrder(tab)
    {}
    const vfBase::ClassInfo* getClassInfo() const override { return &record; }
    const char* getGroupName() override { return group; }
    int getGroupOrder() override { return groupOrder; }
    int getTabOrder() override { return tabOrder; }
    const vfBase::ClassInfo& record;
    const char* group;
    int groupOrder;
    int tabOrder;
};
extern const vfBase::ClassInfo lastPage, firstPage, secondPage;
const vfBase::ClassInfo lastPage("test", "LastPage", "test::LastPage", nullptr, nullptr, 8,
                                 []() -> vfBase::VfObject* { return new Page(lastPage, "Last", 2, 0); });
const vfBase::ClassInfo secondPage("test", "SecondPage", "test::SecondPage", nullptr, nullptr, 8,
                                   []() -> vfBase::VfObject* { return new Page(secondPage, "First", 1, 2); });
const vfBase::ClassInfo firstPage("test", "FirstPage", "test::FirstPage", nullptr, nullptr, 8,
                                  []() -> vfBase::VfObject* { return new Page(firstPage, "First", 1, 1); });

struct Declaration : vfApplication::MinimalUiSetup
{
    void setupMenus(CommandItem* root) override
    {
        *root << "test::Known";
        CommandItem file = root->find("&File");
        CommandItem deep(&file);
        deep.setCommand("&Salt && pepper\n", nullptr);
        deep << "test::Known"
             << ""
             << "test::Unknown";
    }
    void setupToolbars(CommandItem* root) override
    {
        root->append(endless);
        endless.setCommand("Endless", nullptr);
        endless << "test::Known";
        endless << endless;
    }
    ~Declaration() override { endless.remove(endless); } // what holds itself would never go
    CommandItem endless;
};

struct SomeModule : vfApplication::Module
{
    SomeModule() = default;
    explicit SomeModule(const vfApplication::UiSetup& setup) : Module(setup) {}
    const char* getId() const override { return id; }
    const char* getModuleName() const override { return id; }
    const char* id = "test::Module";
};

} // namespace

TEST(UiListing, ShowsWhatIsDeclaredAsATree)
{
    vfApplication::HeadlessApplicationProducer::install();
    vfTest::CommandLine line({"program"});
    Application application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    Declaration setup;
    auto* module = new SomeModule(setup);
    module->id = "a module"; // before the application's, in the order of ids
    vfApplication::ModuleRegistry::instance(false)->addModule(module);
    auto* silent = new SomeModule; // its declaration is gone
    vfApplication::ModuleRegistry::instance(false)->addModule(silent);
    DockWindow& window = application.getDockWindowManager().addNewOrGetExistingDockWindow(
        "test::Window", DockWindow::LeftDockArea, true, true, 0, nullptr);
    window.setTitle("&Window", nullptr);
    window.setAutoHide(true);
    for (const auto area : {DockWindow::RightDockArea, DockWindow::TopDockArea, DockWindow::BottomDockArea,
                            DockWindow::NoDockArea, static_cast<DockWindow::DockArea>(3)})
        application.getDockWindowManager().addNewDockWindow().setArea(area);
    auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
    for (const char* id : {"test::LastPage", "test::SecondPage", "test::FirstPage"})
        pages.addOptionsPageId(id);

    std::ostringstream listed;
    vfApplication::listUi(listed);
    const std::string text = listed.str();
    EXPECT_THAT(text, testing::StartsWith("menus\n"
                                          "  File\n"
                                          "    vfApplicationQt::ActionOpen (not registered here)\n"
                                          "    vfApplicationQt::ActionExit (not registered here)\n"
                                          "    Salt & pepper\\n\n"
                                          "      test::Known\n"
                                          "      -\n"
                                          "      test::Unknown (not registered here)\n"
                                          "  test::Known\n"
                                          "toolbars\n"
                                          "  Standard\n"
                                          "    vfApplicationQt::CommandAbout (not registered here)\n"
                                          "  Endless\n"
                                          "    test::Known\n"
                                          "    Endless ...\n"
                                          "dock windows\n"));
    EXPECT_THAT(text, testing::EndsWith("dock windows\n"
                                        "  test::Window \"Window\", left, hidden, auto-hide\n"
                                        "  vfApplication::DockWindow::1, right\n"
                                        "  vfApplication::DockWindow::2, top\n"
                                        "  vfApplication::DockWindow::3, bottom\n"
                                        "  vfApplication::DockWindow::4, floating\n"
                                        "  vfApplication::DockWindow::5, area 3\n"
                                        "options pages\n"
                                        "  First\n"
                                        "    test::FirstPage\n"
                                        "    test::SecondPage\n"
                                        "  Last\n"
                                        "    test::LastPage\n"));
}

TEST(CommandNames, AreThoseOfTheCommandsThatCanBeMade)
{
    const std::vector<VfString> names = vfApplication::commandNames();
    EXPECT_THAT(names, Contains(VfString("test::Known")));
    EXPECT_THAT(names, Not(Contains(VfString("test::Abstract"))));
    EXPECT_THAT(names, Not(Contains(VfString("vfApplication::CommandPrivate"))));
    EXPECT_THAT(names, Not(Contains(VfString("test::FirstPage"))));
}

TEST(CommandNames, TheNearestTakesTheFewestChanges)
{
    const std::vector<VfString> names = {"a::Hide", "a::Show", "b::Undo", "b::Hide"};
    EXPECT_EQ("a::Hide", nearestName("a::Hid", names));
    EXPECT_EQ("a::Hide", nearestName("A::HIDE", names));
    EXPECT_EQ("b::Hide", nearestName("b::Hidee", names));
    EXPECT_EQ("b::Undo", nearestName("undu", names)); // the namespace need not be known
    EXPECT_EQ("a::Hide", nearestName("hide", names)); // of two the first
    EXPECT_EQ("a::Hide", nearestName("", names));
    EXPECT_EQ("", nearestName("hide", {}));
    EXPECT_NE("", nearestName(std::string(1000000, 'x'), names));
}
