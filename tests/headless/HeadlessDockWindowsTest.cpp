// SPDX-License-Identifier: MIT
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/Settings.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>

#include "support/RecordingShell.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using vfApplication::Application;
using vfApplication::DockWindow;
using vfApplication::DockWindowManagerSettings;
using vfApplication::HeadlessDockWindowProducer;

namespace {

/// An application on the side without a screen.
struct Desk
{
    Desk() : line({"program"})
    {
        vfApplication::HeadlessApplicationProducer::install();
        application =
            std::make_unique<Application>(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    }
    vfApplication::DockWindowManager& manager() { return application->getDockWindowManager(); }
    DockWindow& add(const char* id, DockWindow::DockArea area)
    {
        return manager().addNewOrGetExistingDockWindow(id, area, true, false, 0, nullptr);
    }
    vfTest::CommandLine line;
    std::unique_ptr<Application> application;
};

} // namespace

TEST(HeadlessDockWindow, StandsAtFirstVisibleAndFreeAndKeepsWhatItIsTold)
{
    HeadlessDockWindowProducer::install();
    DockWindow window("id");
    EXPECT_TRUE(window.getVisible());
    EXPECT_FALSE(window.getAutoHide());
    EXPECT_TRUE(window.isFloating());
    EXPECT_FALSE(window.isTabbed());
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
    EXPECT_EQ(15u, window.getAllowedDockingAreas());
    for (const bool value : {false, true}) {
        window.setVisible(value);
        window.setAutoHide(!value);
        window.setAllowTabbing(value);
        window.setAllowTabbed(!value);
        window.setCloseable(value);
        window.setMoveable(!value);
        window.setFloatable(value);
        EXPECT_EQ(value, window.getVisible());
        EXPECT_EQ(!value, window.getAutoHide());
        EXPECT_EQ(value, window.getAllowTabbing());
        EXPECT_EQ(!value, window.getAllowTabbed());
        EXPECT_EQ(value, window.getCloseable());
        EXPECT_EQ(!value, window.getMoveable());
        EXPECT_EQ(value, window.getFloatable());
        EXPECT_EQ(value, window.isFloating());
    }
    window.setTitle("Layers", "menu");
    const auto& half = dynamic_cast<vfApplication::HeadlessDockWindow&>(*window.getDockWindowInterface());
    EXPECT_EQ("Layers", half.getTitle());
    window.getDockWindowInterface()->onLanguageChange();
    EXPECT_STREQ("Layers", window.getTitle());
}

TEST(HeadlessDockWindow, StandsOnlyWhereItMay)
{
    HeadlessDockWindowProducer::install();
    DockWindow window("id");
    window.setAllowedDockingAreas(DockWindow::LeftDockArea | DockWindow::TopDockArea);
    window.setArea(DockWindow::RightDockArea);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
    window.setArea(DockWindow::TopDockArea);
    EXPECT_EQ(DockWindow::TopDockArea, window.getArea());
    EXPECT_FALSE(window.isFloating());
    window.setAllowedDockingAreas(DockWindow::LeftDockArea);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
}

TEST(HeadlessDockWindow, AnAreaOfTwoSidesIsAllowedWhereBothAre)
{
    const auto both = static_cast<DockWindow::DockArea>(DockWindow::LeftDockArea | DockWindow::TopDockArea);
    vfApplication::HeadlessDockWindow window;
    window.setArea(both);
    window.setAllowedDockingAreas(both | DockWindow::RightDockArea);
    EXPECT_EQ(both, window.getArea());
    window.setAllowedDockingAreas(DockWindow::LeftDockArea);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
    window.setArea(both);
    EXPECT_EQ(DockWindow::NoDockArea, window.getArea());
}

TEST(HeadlessDockWindowManager, DocksIntoTheAreaThatTheWindowThenTells)
{
    Desk desk;
    DockWindow& window = desk.add("id", DockWindow::LeftDockArea);
    EXPECT_EQ(DockWindow::LeftDockArea, window.getArea());
    desk.manager().dockDockWindowToArea(DockWindow::BottomDockArea, &window);
    EXPECT_EQ(DockWindow::BottomDockArea, window.getArea());
    EXPECT_EQ(DockWindow::BottomDockArea, desk.manager().getDockedDockWindowArea(&window));
    desk.manager().dockDockWindowToArea(DockWindow::BottomDockArea, nullptr);
    EXPECT_EQ(DockWindow::NoDockArea, desk.manager().getDockedDockWindowArea(nullptr));
}

TEST(HeadlessDockWindows, KnowsTheWindowsThatAreThere)
{
    Desk desk;
    DockWindow& b = desk.add("b", DockWindow::LeftDockArea);
    DockWindow& a = desk.add("a", DockWindow::LeftDockArea);
    EXPECT_THAT(HeadlessDockWindowProducer::windows(), ElementsAre(&b, &a));
    desk.manager().removeDockWindow(&b);
    EXPECT_THAT(HeadlessDockWindowProducer::windows(), ElementsAre(&a));
    DockWindow own("own");
    EXPECT_THAT(HeadlessDockWindowProducer::windows(), ElementsAre(&a, &own));
    desk.application.reset();
    EXPECT_THAT(HeadlessDockWindowProducer::windows(), ElementsAre(&own));
}

TEST(HeadlessDockWindows, WhatARunLeavesTheNextOneFinds)
{
    {
        Desk desk;
        DockWindow& window = desk.add("moved", DockWindow::LeftDockArea);
        DockWindow& other = desk.add("gone next time", DockWindow::TopDockArea);
        window.setVisible(false);
        window.setAutoHide(true);
        window.setArea(DockWindow::BottomDockArea);
        other.setVisible(true);
        EXPECT_EQ(0, desk.application->run());
    }
    vfBase::Settings::loadGlobal();
    const DockWindowManagerSettings& settings = *DockWindowManagerSettings::instance(false);
    EXPECT_EQ(2u, settings.getNumDockWindows());
    EXPECT_EQ(DockWindow::BottomDockArea, settings.getDockWindowAreaState("moved"));
}

TEST(HeadlessDockWindows, ARunPutsTheWindowsAsTheyStoodBefore)
{
    DockWindowManagerSettings& settings = *DockWindowManagerSettings::instance(false);
    settings.setDockWindowVisibleState("id", false);
    settings.setDockWindowAutoHideState("id", true);
    settings.setDockWindowAreaState("id", DockWindow::BottomDockArea);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    Desk desk;
    DockWindow& window = desk.add("id", DockWindow::LeftDockArea);
    DockWindow& unknown = desk.add("unknown", DockWindow::RightDockArea);
    EXPECT_EQ(0, desk.application->run());
    EXPECT_FALSE(window.getVisible());
    EXPECT_TRUE(window.getAutoHide());
    EXPECT_EQ(DockWindow::BottomDockArea, window.getArea());
    EXPECT_TRUE(unknown.getVisible());
    EXPECT_EQ(DockWindow::RightDockArea, unknown.getArea());
}

TEST(HeadlessDockWindows, AWindowThatWasDestroyedWhileInTheTableDoesNoHarm)
{
    Desk desk;
    auto* window = new DockWindow("id");
    ASSERT_TRUE(desk.manager().addDockWindow(window));
    delete window;
    EXPECT_EQ(0, desk.application->run());
    EXPECT_EQ(0u, desk.manager().getNumDockWindows());
    EXPECT_EQ(0u, DockWindowManagerSettings::instance(false)->getNumDockWindows());
}

TEST(HeadlessDockWindows, WithoutAnApplicationNothingIsKept)
{
    HeadlessDockWindowProducer::install();
    const DockWindow window("id");
    HeadlessDockWindowProducer::saveStates();
    EXPECT_EQ(0u, DockWindowManagerSettings::instance(false)->getNumDockWindows());
}
