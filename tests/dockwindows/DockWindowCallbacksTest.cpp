// SPDX-License-Identifier: MIT
// What dock windows may do while the manager calls, saves and removes them.
#include "support/Recorder.h"
#include "support/RecordingDockWindows.h"

#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using vfApplication::DockWindow;
using vfApplication::DockWindowManager;
using vfApplication::DockWindowManagerSettings;
using vfApplication::DockWindowRegistry;
using vfTest::RecordedWindow;

namespace {

/// The toolkit side of a window, which does what a test tells it when the language changes or it is asked for its state.
struct ActingSide : vfTest::RecordingDockWindow
{
    using RecordingDockWindow::RecordingDockWindow;
    void onLanguageChange() override
    {
        ++told;
        if (inHook)
            inHook();
    }
    bool getVisible() const override
    {
        ++told;
        if (inHook)
            inHook();
        return true;
    }
    static int told;
    static std::function<void()> inHook;
};

int ActingSide::told = 0;
std::function<void()> ActingSide::inHook;

struct ActingProducer : vfApplication::DockWindowProducer
{
    ActingProducer() { Realizer = this; }
    ~ActingProducer() override { Realizer = nullptr; }
    vfApplication::DockWindowInterface* create(DockWindow*) override
    {
        sides.push_back(std::make_unique<ActingSide>("side"));
        return sides.back().get();
    }
    std::vector<std::unique_ptr<ActingSide>> sides;
};

struct ActingDesk
{
    ActingDesk()
    {
        ActingSide::told = 0;
        ActingSide::inHook = nullptr;
        for (const char* id : {"a", "b", "c"})
            manager->addNewOrGetExistingDockWindow(id, DockWindow::NoDockArea, true, false, 0, nullptr);
    }
    vfTest::RecordingDockWindowManagerProducer managers;
    ActingProducer producer;
    std::unique_ptr<DockWindowManager> manager = std::make_unique<DockWindowManager>();
};

} // namespace

TEST(DockWindowCallbacks, AWindowMayRemoveItselfAndItsNeighbourWhenTheLanguageChanges)
{
    ActingDesk desk;
    ActingSide::inHook = [&] {
        desk.manager->removeDockWindow("a");
        desk.manager->removeDockWindow("b");
    };
    desk.manager->onLanguageChange();
    EXPECT_EQ(2, ActingSide::told); // a and c
    EXPECT_EQ(1u, desk.manager->getNumDockWindows());
}

TEST(DockWindowCallbacks, AWindowMayAddAnotherOneWhenTheLanguageChanges)
{
    ActingDesk desk;
    ActingSide::inHook = [&] {
        desk.manager->addNewOrGetExistingDockWindow("d", DockWindow::NoDockArea, true, false, 0, nullptr);
    };
    desk.manager->onLanguageChange();
    EXPECT_EQ(3, ActingSide::told);
    EXPECT_EQ(4u, desk.manager->getNumDockWindows());
}

TEST(DockWindowCallbacks, AWindowMayBeRemovedWhileItsStateIsSaved)
{
    ActingDesk desk;
    ActingSide::inHook = [&] { desk.manager->removeDockWindow("a"); };
    desk.manager->saveDockWindowsState();
    EXPECT_EQ(3, ActingSide::told);
    EXPECT_EQ(2u, desk.manager->getNumDockWindows());
    EXPECT_EQ(DockWindowManagerSettings::StoredVisible,
              DockWindowManagerSettings::instance(false)->getDockWindowVisibleState("c"));
}

TEST(DockWindowCallbacks, TheManagerMayBeDestroyedWhenTheLanguageChanges)
{
    ActingDesk desk;
    ActingSide::inHook = [&] {
        ActingSide::inHook = nullptr;
        desk.manager.reset();
    };
    desk.manager->onLanguageChange();
    EXPECT_EQ(nullptr, desk.manager);
}

TEST(DockWindowCallbacks, AnEntryWhoseWindowWasDestroyedIsPassedOver)
{
    ActingDesk desk;
    auto own = std::make_unique<RecordedWindow>("own");
    desk.manager->addDockWindow(own.get());
    own.reset();
    desk.manager->onLanguageChange();
    desk.manager->saveDockWindowsState();
    EXPECT_EQ(6, ActingSide::told);
}

TEST(DockWindowCallbacks, AWindowKnowsItsIdInItsDestructorWhenItIsRemoved)
{
    struct Producer : vfApplication::DockWindowRegistryPrivate::Producer
    {
        const char* getKey() override { return key; }
        DockWindow* create() override
        {
            auto* window = new RecordedWindow(key);
            window->atEnd = [window] { vfTest::record(std::string("end of ") + window->getId()); };
            return window;
        }
        const char* key = "registered";
    };
    ActingDesk desk;
    auto* producer = new Producer;
    const char* key = producer->key;
    const vfApplication::DockWindowRegistryPrivate::Proxy proxy(producer);
    for (int way = 0; way < 3; ++way) {
        vfTest::recorder().take();
        DockWindow& window =
            desk.manager->addNewOrGetExistingDockWindow(key, DockWindow::NoDockArea, true, false, 0, nullptr);
        if (way == 0)
            desk.manager->removeDockWindow(key);
        else if (way == 1)
            desk.manager->removeDockWindow(&window);
        else
            desk.manager.reset();
        EXPECT_EQ(1, vfTest::recorder().count("end of registered")) << way;
    }
}

TEST(DockWindowCallbacks, AWindowThatItsBodyDestroysAnswersAsAnEmptyOne)
{
    ActingProducer producer;
    std::string answers;
    auto* window = new RecordedWindow("own");
    window->atEnd = [&] {
        answers = std::string(window->getId()) + "," + window->getTitle() + "," +
                  std::to_string(window->getShortcut());
        window->setShortcut(5);
        window->setTitle("late", nullptr);
        answers += window->getDockWindowInterface() ? ",interface" : ",none";
    };
    osg::ref_ptr<vfApplication::DockWindowPrivate> body = window->getDockWindowPrivate();
    body->unref(); // the count of the window
    body = nullptr;
    EXPECT_EQ(",,0,none", answers);
}

TEST(DockWindowCallbacks, AWindowMayUseTheTableWhileTheManagerIsDestroyed)
{
    ActingDesk desk;
    DockWindowManager& manager = *desk.manager;
    struct Removing : DockWindow
    {
        Removing() : DockWindow("0") {}
        ~Removing() override { manager->removeDockWindow("b"); }
        DockWindowManager* manager = nullptr;
    };
    auto* window = new Removing;
    window->manager = &manager;
    manager.addDockWindow(window);
    window->getDockWindowPrivate()->unref_nodelete(); // the table is the one owner
    manager.removeDockWindow("0");
    EXPECT_EQ(2u, manager.getNumDockWindows());
}

TEST(DockWindowCallbacks, WhatTheToolkitSideThrowsLeavesNoWindowBehind)
{
    struct Throwing : ActingSide
    {
        using ActingSide::ActingSide;
        void setVisible(bool) override { throw std::runtime_error("no screen"); }
    };
    struct Producer : vfApplication::DockWindowProducer
    {
        Producer() { Realizer = this; }
        ~Producer() override { Realizer = nullptr; }
        vfApplication::DockWindowInterface* create(DockWindow*) override { return &side; }
        Throwing side{"side"};
    };
    vfTest::RecordingDockWindowManagerProducer managers;
    const Producer producer;
    DockWindowManager manager;
    EXPECT_THROW(manager.addNewOrGetExistingDockWindow("a", DockWindow::NoDockArea, true, false, 0, nullptr),
                 std::runtime_error);
    EXPECT_EQ(0u, manager.getNumDockWindows());
}

TEST(DockWindowCallbacks, WhoAsksForTheRegistryAtExitGetsNone)
{
    EXPECT_EXIT(
        {
            static struct Late
            {
                ~Late() { std::fputs(DockWindowRegistry::instance(false) ? "there\n" : "none\n", stderr); }
            } late;
            DockWindowRegistry::instance(false);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^none\n$");
}

TEST(DockWindowCallbacks, AWindowWithoutAToolkitSideEndsTheProcessWithALine)
{
    EXPECT_DEATH(DockWindow("alone").setVisible(true),
                 "^velaFORGE: DockWindow: no toolkit side has set DockWindowProducer::Realizer\n$");
}
