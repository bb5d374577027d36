// SPDX-License-Identifier: MIT
#include "support/Recorder.h"
#include "support/RecordingDockWindows.h"
#include "support/Slots.h"

#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerPrivate.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <osg/observer_ptr>
#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::DockWindow;
using vfApplication::DockWindowManager;
using vfApplication::DockWindowManagerInterface;
using vfApplication::DockWindowManagerPrivate;
using vfApplication::DockWindowManagerProducer;
using vfApplication::DockWindowManagerSettings;
using vfApplication::DockWindowRegistryPrivate;
using vfTest::record;
using vfTest::RecordedWindow;
using vfTest::recorder;
using vfTest::slotOf;

namespace {

/// A manager on a recording screen. Nothing is recorded yet when it is there.
struct Desk
{
    Desk()
    {
        manager = std::make_unique<DockWindowManager>();
        recorder().take();
    }
    vfTest::RecordingDockWindowManagerProducer managers;
    vfTest::RecordingDockWindowProducer windows;
    std::unique_ptr<DockWindowManager> manager;
};

const char* const layersKey = "solar::Layers";

struct LayersProducer : DockWindowRegistryPrivate::Producer
{
    const char* getKey() override { return layersKey; }
    DockWindow* create() override
    {
        record("create layers");
        return new RecordedWindow("another id");
    }
};

} // namespace

TEST(DockWindowManager, AnEmptyOneAnswersNothing)
{
    DockWindowManager manager;
    DockWindow window("id");
    EXPECT_EQ(0u, manager.getNumDockWindows());
    EXPECT_FALSE(manager.hasNextDockWindow());
    EXPECT_FALSE(manager.hasPreviousDockWindow());
    manager.saveDockWindowsState();
    manager.onLanguageChange();
    EXPECT_EQ(0u, DockWindowManagerSettings::instance(false)->getNumDockWindows());
    EXPECT_EQ(nullptr, manager.findDockWindow("id"));
    EXPECT_FALSE(manager.removeDockWindow("id"));
    EXPECT_FALSE(manager.removeDockWindow(&window));
    EXPECT_EQ(nullptr, manager.getDockWindowManagerInterface());
}

TEST(DockWindowManager, NullIsNoWindowAndNoId)
{
    DockWindowManager manager;
    DockWindow empty("");
    ASSERT_TRUE(manager.addDockWindow(&empty));
    EXPECT_EQ(nullptr, manager.findDockWindow(nullptr));
    EXPECT_FALSE(manager.removeDockWindow(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(manager.addDockWindow(nullptr));
    EXPECT_FALSE(manager.removeDockWindow(static_cast<DockWindow*>(nullptr)));
    EXPECT_EQ(1u, manager.getNumDockWindows());
    EXPECT_EQ(&empty, manager.findDockWindow(""));
}

TEST(DockWindowManager, AsksForItsScreenWhenItIsMade)
{
    vfTest::RecordingDockWindowManagerProducer producer;
    DockWindowManager manager;
    EXPECT_THAT(recorder().take(), ElementsAre("create screen"));
    EXPECT_NE(nullptr, manager.getDockWindowManagerInterface());
}

TEST(DockWindowManager, OfTwoWindowsWithOneIdTheFirstStays)
{
    DockWindowManager manager;
    DockWindow first("id");
    DockWindow second("id");
    EXPECT_TRUE(manager.addDockWindow(&first));
    EXPECT_FALSE(manager.addDockWindow(&second));
    EXPECT_FALSE(manager.addDockWindow(&first));
    EXPECT_EQ(&first, manager.findDockWindow("id"));
    EXPECT_EQ(1u, manager.getNumDockWindows());
    EXPECT_EQ(1, second.getDockWindowPrivate()->referenceCount());
}

TEST(DockWindowManager, AWindowThatIsAddedStaysItsMakers)
{
    const Desk desk;
    RecordedWindow window("id");
    recorder().take();
    EXPECT_TRUE(desk.manager->addDockWindow(&window));
    EXPECT_EQ(2, window.getDockWindowPrivate()->referenceCount());
    EXPECT_TRUE(desk.manager->removeDockWindow(&window));
    EXPECT_EQ(1, window.getDockWindowPrivate()->referenceCount());
    EXPECT_THAT(recorder().take(), IsEmpty()); // neither docked nor destroyed
}

TEST(DockWindowManager, AddsADerivedWindowUnderTheIdThatItReports)
{
    struct Derived : DockWindow
    {
        Derived() : DockWindow("base") {}
        const char* getId() const override { return "derived"; }
    };
    DockWindowManager manager;
    Derived window;
    EXPECT_TRUE(manager.addDockWindow(&window));
    EXPECT_EQ(&window, manager.findDockWindow("derived"));
    EXPECT_EQ(nullptr, manager.findDockWindow("base"));
}

TEST(DockWindowManager, ANewWindowIsItsOwnAndNotDocked)
{
    const Desk desk;
    DockWindow& window = desk.manager->addNewDockWindow();
    EXPECT_THAT(recorder().take(), ElementsAre("create window vfApplication::DockWindow::1"));
    EXPECT_STREQ("vfApplication::DockWindow::1", window.getId());
    EXPECT_EQ(&window, desk.manager->findDockWindow(window.getId()));
    EXPECT_EQ(1, window.getDockWindowPrivate()->referenceCount());
}

TEST(DockWindowManager, ANewWindowThatIsRemovedByItsIdIsDestroyed)
{
    const Desk desk;
    DockWindow& window = desk.manager->addNewDockWindow();
    const osg::observer_ptr<vfApplication::DockWindowPrivate> body = window.getDockWindowPrivate();
    EXPECT_TRUE(desk.manager->removeDockWindow(window.getId()));
    EXPECT_FALSE(body.valid());
    EXPECT_EQ(0u, desk.manager->getNumDockWindows());
}

TEST(DockWindowManager, ANewWindowThatIsRemovedItselfIsDestroyed)
{
    const Desk desk;
    DockWindow& window = desk.manager->addNewDockWindow();
    const osg::observer_ptr<vfApplication::DockWindowPrivate> body = window.getDockWindowPrivate();
    EXPECT_TRUE(desk.manager->removeDockWindow(&window));
    EXPECT_FALSE(body.valid());
}

TEST(DockWindowManager, MakesAPlainWindowSetsItUpAndDocksIt)
{
    const Desk desk;
    bool existed = true;
    DockWindow& window = desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::LeftDockArea, true,
                                                                     false, 42, &existed);
    EXPECT_FALSE(existed);
    EXPECT_THAT(recorder().take(), ElementsAre("create window id", "id setVisible 1", "dock id to 1"));
    EXPECT_EQ(42, window.getShortcut());
    EXPECT_STREQ("id", window.getId());
    EXPECT_EQ(&window, desk.manager->findDockWindow("id"));
    EXPECT_EQ(1, window.getDockWindowPrivate()->referenceCount());
}

TEST(DockWindowManager, StartHiddenWinsOverVisible)
{
    const Desk desk;
    const auto add = [&desk](const char* id, bool visible, bool startHidden) -> DockWindow& {
        return desk.manager->addNewOrGetExistingDockWindow(id, DockWindow::LeftDockArea, visible, startHidden,
                                                           0, nullptr);
    };
    EXPECT_FALSE(add("hidden", true, true).getVisible());
    EXPECT_FALSE(add("both no", false, true).getVisible());
    EXPECT_FALSE(add("invisible", false, false).getVisible());
    EXPECT_TRUE(add("visible", true, false).getVisible());
}

TEST(DockWindowManager, GivesTheWindowThatIsThereAndIgnoresTheRest)
{
    const Desk desk;
    DockWindow& first =
        desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::LeftDockArea, true, false, 42, nullptr);
    recorder().take();
    bool existed = false;
    DockWindow& second =
        desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::TopDockArea, false, true, 43, &existed);
    EXPECT_TRUE(existed);
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(42, second.getShortcut());
    EXPECT_TRUE(second.getVisible());
    EXPECT_EQ(&first, &desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::TopDockArea, false, true,
                                                                   43, nullptr));
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(DockWindowManager, WithoutAnIdItMakesOneUpAndDocksNothing)
{
    const Desk desk;
    bool existed = true;
    DockWindow& window = desk.manager->addNewOrGetExistingDockWindow(nullptr, DockWindow::LeftDockArea, true,
                                                                     false, 42, &existed);
    EXPECT_FALSE(existed);
    EXPECT_STREQ("vfApplication::DockWindow::1", window.getId());
    EXPECT_EQ(0, window.getShortcut());
    EXPECT_THAT(recorder().take(), ElementsAre("create window vfApplication::DockWindow::1"));
}

TEST(DockWindowManager, AProducersWindowIsKeptUnderTheIdAskedForAndLeftAsItIs)
{
    const Desk desk;
    const DockWindowRegistryPrivate::Proxy proxy(new LayersProducer);
    bool existed = true;
    DockWindow& window = desk.manager->addNewOrGetExistingDockWindow(layersKey, DockWindow::LeftDockArea,
                                                                     true, false, 42, &existed);
    EXPECT_FALSE(existed);
    EXPECT_THAT(recorder().take(), ElementsAre("create layers", "create window another id"));
    EXPECT_EQ(0, window.getShortcut());
    EXPECT_EQ(&window, desk.manager->findDockWindow(layersKey));
    EXPECT_EQ(nullptr, desk.manager->findDockWindow("another id"));
    EXPECT_EQ(1, window.getDockWindowPrivate()->referenceCount());
    EXPECT_TRUE(desk.manager->removeDockWindow(&window));
    EXPECT_THAT(recorder().take(), ElementsAre("~window"));
}

TEST(DockWindowManager, AWindowThatItsProducerAddsUnderTheSameIdGivesWayToTheOneItReturns)
{
    static DockWindowManager* target = nullptr;
    struct Layers : DockWindow
    {
        Layers() : DockWindow(layersKey) {}
        ~Layers() override { record(std::string("~") + getId()); }
    };
    struct Hasty : LayersProducer
    {
        DockWindow* create() override
        {
            if (DockWindowManager* manager = std::exchange(target, nullptr))
                manager->addNewOrGetExistingDockWindow(layersKey, DockWindow::LeftDockArea, true, false, 0,
                                                       nullptr);
            return new Layers;
        }
    };
    const Desk desk;
    const DockWindowRegistryPrivate::Proxy proxy(new Hasty);
    target = desk.manager.get();
    const DockWindow& window = desk.manager->addNewOrGetExistingDockWindow(
        layersKey, DockWindow::LeftDockArea, true, false, 0, nullptr);
    EXPECT_EQ(1, recorder().count("~solar::Layers"));
    EXPECT_EQ(&window, desk.manager->findDockWindow(layersKey));
    EXPECT_EQ(1u, desk.manager->getNumDockWindows());
}

TEST(DockWindowManager, AnEqualIdAtAnotherAddressMakesAPlainWindow)
{
    const Desk desk;
    const DockWindowRegistryPrivate::Proxy proxy(new LayersProducer);
    const std::string sameText = layersKey;
    const DockWindow& window = desk.manager->addNewOrGetExistingDockWindow(
        sameText.c_str(), DockWindow::LeftDockArea, true, false, 42, nullptr);
    EXPECT_EQ(42, window.getShortcut());
    EXPECT_EQ(&window, &desk.manager->addNewOrGetExistingDockWindow(layersKey, DockWindow::LeftDockArea, true,
                                                                    false, 0, nullptr)); // found by its text
}

TEST(DockWindowManager, AWindowDestroyedWhileInTheTableIsNotFoundAndMakesRoom)
{
    const Desk desk;
    auto* window = new DockWindow("id");
    ASSERT_TRUE(desk.manager->addDockWindow(window));
    delete window;
    EXPECT_EQ(nullptr, desk.manager->findDockWindow("id"));
    EXPECT_EQ(1u, desk.manager->getNumDockWindows());
    EXPECT_EQ(nullptr, desk.manager->nextDockWindow());
    EXPECT_EQ(nullptr, desk.manager->peekNextDockWindow());
    DockWindow next("id");
    EXPECT_TRUE(desk.manager->addDockWindow(&next));
    EXPECT_EQ(&next, desk.manager->findDockWindow("id"));
    EXPECT_EQ(1u, desk.manager->getNumDockWindows());
}

TEST(DockWindowManager, AStaleEntryMakesRoomForANewWindowToo)
{
    const Desk desk;
    auto* stale = new DockWindow("id");
    ASSERT_TRUE(desk.manager->addDockWindow(stale));
    delete stale;
    bool existed = true;
    const DockWindow& window =
        desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::LeftDockArea, true, false, 0, &existed);
    EXPECT_FALSE(existed);
    EXPECT_EQ(&window, desk.manager->findDockWindow("id"));
}

TEST(DockWindowManager, AStaleEntryCanBeRemovedByItsId)
{
    DockWindowManager manager;
    auto* window = new DockWindow("id");
    ASSERT_TRUE(manager.addDockWindow(window));
    delete window;
    EXPECT_TRUE(manager.removeDockWindow("id"));
    EXPECT_EQ(0u, manager.getNumDockWindows());
}

TEST(DockWindowManager, RemovesWindowsByIdentityWhateverTheirIdIs)
{
    DockWindowManager manager;
    DockWindow first("id");
    DockWindow same("id");
    ASSERT_TRUE(manager.addDockWindow(&first));
    EXPECT_FALSE(manager.removeDockWindow(&same));
    EXPECT_TRUE(manager.removeDockWindow("id"));
    EXPECT_FALSE(manager.removeDockWindow("id"));
}

TEST(DockWindowManager, AWindowMayUseItWhileItIsDestroyed)
{
    const Desk desk;
    auto* window = new RecordedWindow("id");
    window->atEnd = [&desk] {
        EXPECT_EQ(nullptr, desk.manager->findDockWindow("id"));
        desk.manager->addNewDockWindow();
    };
    ASSERT_TRUE(desk.manager->addDockWindow(window));
    window->getDockWindowPrivate()->unref_nodelete(); // the table's
    EXPECT_TRUE(desk.manager->removeDockWindow("id"));
    EXPECT_EQ(1u, desk.manager->getNumDockWindows());
}

TEST(DockWindowManager, WalkingAlwaysBeginsAtTheSmallestId)
{
    DockWindowManager manager;
    DockWindow b("b");
    DockWindow a("a");
    manager.addDockWindow(&b);
    EXPECT_EQ(&b, manager.nextDockWindow());
    manager.addDockWindow(&a);
    EXPECT_EQ(&a, manager.nextDockWindow());
    manager.toBackDockWindow();
    EXPECT_EQ(&a, manager.nextDockWindow());
    EXPECT_EQ(&a, manager.peekNextDockWindow());
    EXPECT_EQ(&a, manager.nextDockWindow());
    EXPECT_TRUE(manager.hasNextDockWindow());
    EXPECT_FALSE(manager.hasPreviousDockWindow());
    EXPECT_EQ(nullptr, manager.previousDockWindow());
    EXPECT_EQ(nullptr, manager.peekPreviousDockWindow());
    manager.toFrontDockWindow();
    EXPECT_EQ(&a, manager.nextDockWindow());
}

TEST(DockWindowManager, HandsDockingOnUnchanged)
{
    const Desk desk;
    DockWindow window("not in the table");
    recorder().take();
    desk.manager->dockDockWindowToArea(static_cast<DockWindow::DockArea>(99), &window);
    desk.manager->dockDockWindowToArea(DockWindow::TopDockArea, nullptr);
    EXPECT_EQ(DockWindow::TopDockArea, desk.manager->getDockedDockWindowArea(&window));
    EXPECT_THAT(recorder().take(),
                ElementsAre("dock not in the table to 99", "dock null to 4", "area of not in the table"));
    EXPECT_EQ(0u, desk.manager->getNumDockWindows());
    EXPECT_EQ(0u, DockWindowManagerSettings::instance(false)->getNumDockWindows());
}

TEST(DockWindowManager, TellsTheWindowsOfAChangeOfLanguageInOrderOfTheirIds)
{
    const Desk desk;
    DockWindow b("b");
    DockWindow a("a");
    desk.manager->addDockWindow(&b);
    desk.manager->addDockWindow(&a);
    recorder().take();
    desk.manager->onLanguageChange();
    EXPECT_THAT(recorder().take(), ElementsAre("a onLanguageChange", "b onLanguageChange"));
}

TEST(DockWindowManager, SavesHowEachWindowStandsUnderItsKey)
{
    const Desk desk;
    const DockWindowRegistryPrivate::Proxy proxy(new LayersProducer);
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAreaState("gone", DockWindow::BottomDockArea);
    DockWindow& layers = desk.manager->addNewOrGetExistingDockWindow(layersKey, DockWindow::LeftDockArea,
                                                                     true, false, 0, nullptr);
    DockWindow plain("plain");
    desk.manager->addDockWindow(&plain);
    layers.setVisible(true);
    layers.setArea(DockWindow::RightDockArea);
    plain.setAutoHide(true);
    recorder().take();
    desk.manager->saveDockWindowsState();
    EXPECT_THAT(recorder().take(), IsEmpty());
    EXPECT_EQ(3u, settings->getNumDockWindows());
    EXPECT_EQ(1, settings->getDockWindowVisibleState(layersKey));
    EXPECT_EQ(2, settings->getDockWindowAutoHideState(layersKey));
    EXPECT_EQ(DockWindow::RightDockArea, settings->getDockWindowAreaState(layersKey));
    EXPECT_EQ(2, settings->getDockWindowVisibleState("plain"));
    EXPECT_EQ(1, settings->getDockWindowAutoHideState("plain"));
    EXPECT_EQ(DockWindow::NoDockArea, settings->getDockWindowAreaState("plain"));
    EXPECT_EQ(DockWindow::BottomDockArea, settings->getDockWindowAreaState("gone"));
}

TEST(DockWindowManager, AsksEachWindowForItsThreeStatesInOrder)
{
    const Desk desk;
    DockWindow b("b");
    DockWindow a("a");
    for (DockWindow* window : {&b, &a}) {
        desk.manager->addDockWindow(window);
        dynamic_cast<vfTest::RecordingDockWindow&>(*window->getDockWindowInterface()).recordsQuestions = true;
    }
    recorder().take();
    desk.manager->saveDockWindowsState();
    EXPECT_THAT(recorder().take(), ElementsAre("a getVisible 0", "a getAutoHide 0", "a getArea 0",
                                               "b getVisible 0", "b getAutoHide 0", "b getArea 0"));
}

TEST(DockWindowManager, LetsItsScreenGoBeforeItsWindows)
{
    Desk desk;
    desk.manager->addNewOrGetExistingDockWindow("plain", DockWindow::LeftDockArea, true, false, 0, nullptr);
    const DockWindowRegistryPrivate::Proxy proxy(new LayersProducer);
    desk.manager->addNewOrGetExistingDockWindow(layersKey, DockWindow::LeftDockArea, true, false, 0, nullptr);
    recorder().take();
    desk.manager.reset();
    EXPECT_THAT(recorder().take(), ElementsAre("~screen", "~window"));
}

TEST(DockWindowManager, MayGoBeforeItsBody)
{
    vfTest::RecordingDockWindowManagerProducer producer;
    osg::ref_ptr<DockWindowManagerPrivate> body;
    {
        DockWindowManager manager;
        const DockWindowManager& constant = manager;
        body = manager.getDockWindowManagerPrivate();
        EXPECT_EQ(body.get(), constant.getDockWindowManagerPrivate());
        EXPECT_EQ(&manager, body->dockWindowManager);
        EXPECT_EQ(2, body->referenceCount());
        recorder().take();
    }
    EXPECT_EQ(nullptr, body->dockWindowManager);
    EXPECT_THAT(recorder().take(), IsEmpty());
    body = nullptr;
    EXPECT_THAT(recorder().take(), ElementsAre("~screen"));
}

TEST(DockWindowManager, GoesWithItsBodyWhenThatGoesFirst)
{
    vfTest::RecordingDockWindowManagerProducer producer;
    auto* manager = new DockWindowManager; // a leak checker sees that it goes
    manager->addNewDockWindow();
    recorder().take();
    manager->getDockWindowManagerPrivate()->unref();
    EXPECT_THAT(recorder().take(), ElementsAre("~screen"));
}

TEST(DockWindowManager, AProducerThatThrowsLeavesNothingBehind)
{
    vfTest::RecordingDockWindowManagerProducer producer;
    producer.inCreate = [] { throw std::runtime_error("no screen"); };
    EXPECT_THROW(DockWindowManager(), std::runtime_error); // a leak checker sees the rest
    EXPECT_THAT(recorder().take(), ElementsAre("create screen"));
}

TEST(DockWindowManager, AWindowThatCannotBeMadeLeavesTheTableAsItWas)
{
    Desk desk;
    desk.windows.inCreate = [] { throw std::runtime_error("no window"); };
    EXPECT_THROW(desk.manager->addNewDockWindow(), std::runtime_error);
    EXPECT_THROW(
        desk.manager->addNewOrGetExistingDockWindow("id", DockWindow::LeftDockArea, true, false, 0, nullptr),
        std::runtime_error);
    EXPECT_EQ(0u, desk.manager->getNumDockWindows());
}

TEST(DockWindowManager, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&DockWindowManagerInterface::dockDockWindowToArea)); // behind the destructor
    EXPECT_EQ(3, slotOf(&DockWindowManagerInterface::getDockedDockWindowArea));
    EXPECT_EQ(0, slotOf(&DockWindowManagerProducer::create));
    EXPECT_EQ(-1, slotOf(&DockWindowManager::addDockWindow));
    EXPECT_EQ(sizeof(void*), sizeof(DockWindowManager));
    EXPECT_EQ(sizeof(void*), sizeof(DockWindowManagerInterface));
}
