// SPDX-License-Identifier: MIT
#include "support/Recorder.h"
#include "support/RecordingDockWindows.h"
#include "support/Slots.h"

#include <velaforge/dockwindows/DockWindowPrivate.h>

#include <osg/observer_ptr>
#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::DockWindow;
using vfApplication::DockWindowInterface;
using vfApplication::DockWindowPrivate;
using vfApplication::DockWindowProducer;
using vfTest::RecordedWindow;
using vfTest::recorder;
using vfTest::slotOf;

TEST(DockWindow, GeneratedIdsAreDifferentAndCountFromOne)
{
    const DockWindow first;
    const DockWindow second;
    EXPECT_STREQ("vfApplication::DockWindow::1", first.getId());
    EXPECT_STREQ("vfApplication::DockWindow::2", second.getId());
    {
        const DockWindow third;
    }
    EXPECT_STREQ("vfApplication::DockWindow::4", DockWindow().getId()); // no number comes twice
}

TEST(DockWindow, AnEmptyIdIsTakenAndNullGeneratesOne)
{
    const DockWindow empty("");
    const DockWindow named("solar::Layers");
    const DockWindow generated(static_cast<const char*>(nullptr));
    EXPECT_STREQ("", empty.getId());
    EXPECT_STREQ("solar::Layers", named.getId());
    EXPECT_STREQ("vfApplication::DockWindow::1", generated.getId());
}

TEST(DockWindow, WithoutAProducerItHasItsIdTitleAndShortcut)
{
    DockWindow window("id");
    EXPECT_EQ(nullptr, window.getDockWindowInterface());
    EXPECT_STREQ("", window.getTitle());
    EXPECT_EQ(0, window.getShortcut());
    window.setShortcut(-7);
    EXPECT_EQ(-7, window.getShortcut());
    EXPECT_FALSE(window.applyDefaultState());
}

TEST(DockWindow, TheProducerIsAskedBeforeADerivedWindowIsThere)
{
    vfTest::RecordingDockWindowProducer producer;
    struct Derived : DockWindow
    {
        Derived() : DockWindow("id") { vfTest::record("Derived"); }
        const char* getId() const override { return "derived"; }
    };
    Derived window;
    EXPECT_THAT(recorder().take(), ElementsAre("create window id", "Derived"));
    EXPECT_NE(nullptr, window.getDockWindowInterface());
}

TEST(DockWindow, KeepsTheTitleAndTellsItWithTheContext)
{
    vfTest::RecordingDockWindowProducer producer;
    DockWindow window("id");
    recorder().take();
    window.setTitle("Layers", "menu");
    EXPECT_STREQ("Layers", window.getTitle());
    window.setTitle(window.getTitle(), "");
    EXPECT_STREQ("Layers", window.getTitle());
    window.setTitle(nullptr, nullptr);
    EXPECT_STREQ("", window.getTitle());
    EXPECT_THAT(recorder().take(),
                ElementsAre("id setTitle 'Layers' 'menu'", "id setTitle 'Layers' ''", "id setTitle '' null"));
}

TEST(DockWindow, KeepsTheShortcutToItself)
{
    vfTest::RecordingDockWindowProducer producer;
    DockWindow window("id");
    recorder().take();
    window.setShortcut(42);
    EXPECT_EQ(42, window.getShortcut());
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(DockWindow, PassesEverythingElseOnAndKeepsNothingOfIt)
{
    vfTest::RecordingDockWindowProducer producer;
    DockWindow window("id");
    auto& half = dynamic_cast<vfTest::RecordingDockWindow&>(*window.getDockWindowInterface());
    recorder().take();

    const auto strange = static_cast<DockWindow::DockArea>(0x12345678);
    window.setAllowedDockingAreas(0xFFFFFFFFu);
    window.setVisible(true);
    window.setAllowTabbing(true);
    window.setAllowTabbed(true);
    window.setCloseable(true);
    window.setMoveable(true);
    window.setFloatable(true);
    window.setAutoHide(true);
    window.setArea(strange);
    EXPECT_THAT(recorder().take(),
                ElementsAre("id setAllowedDockingAreas 4294967295", "id setVisible 1", "id setAllowTabbing 1",
                            "id setAllowTabbed 1", "id setCloseable 1", "id setMoveable 1",
                            "id setFloatable 1", "id setAutoHide 1", "id setArea 305419896"));
    EXPECT_EQ(0xFFFFFFFFu, window.getAllowedDockingAreas());
    EXPECT_EQ(strange, window.getArea());

    // One at a time is false, so that no getter can answer for another.
    const auto answers = [&window] {
        return std::vector<bool>{window.getVisible(),   window.getAllowTabbing(), window.getAllowTabbed(),
                                 window.getCloseable(), window.getMoveable(),     window.getFloatable(),
                                 window.getAutoHide(),  window.isFloating(),      window.isTabbed()};
    };
    half.floating = half.tabbed = true;
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, true, true, true, true, true));
    half.setVisible(false);
    EXPECT_THAT(answers(), ElementsAre(false, true, true, true, true, true, true, true, true));
    half.setVisible(true);
    half.setAllowTabbing(false);
    EXPECT_THAT(answers(), ElementsAre(true, false, true, true, true, true, true, true, true));
    half.setAllowTabbing(true);
    half.setAllowTabbed(false);
    EXPECT_THAT(answers(), ElementsAre(true, true, false, true, true, true, true, true, true));
    half.setAllowTabbed(true);
    half.setCloseable(false);
    EXPECT_THAT(answers(), ElementsAre(true, true, true, false, true, true, true, true, true));
    half.setCloseable(true);
    half.setMoveable(false);
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, false, true, true, true, true));
    half.setMoveable(true);
    half.setFloatable(false);
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, true, false, true, true, true));
    half.setFloatable(true);
    half.setAutoHide(false);
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, true, true, false, true, true));
    half.setAutoHide(true);
    half.floating = false;
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, true, true, true, false, true));
    half.floating = true;
    half.tabbed = false;
    EXPECT_THAT(answers(), ElementsAre(true, true, true, true, true, true, true, true, false));
}

TEST(DockWindow, WhoHoldsTheBodyOfADeletedWindowSeesThatItIsGone)
{
    auto* window = new RecordedWindow("id");
    const osg::ref_ptr<DockWindowPrivate> body = window->getDockWindowPrivate();
    EXPECT_EQ(window, body->dockWindow);
    EXPECT_EQ(2, body->referenceCount());
    delete window;
    EXPECT_EQ(nullptr, body->dockWindow);
    EXPECT_EQ(1, body->referenceCount());
    EXPECT_THAT(recorder().take(), ElementsAre("~window"));
}

TEST(DockWindow, TheBodyGoesWithTheWindow)
{
    osg::observer_ptr<DockWindowPrivate> body;
    {
        DockWindow window;
        const DockWindow& constant = window;
        body = window.getDockWindowPrivate();
        EXPECT_EQ(body.get(), constant.getDockWindowPrivate());
    }
    EXPECT_FALSE(body.valid());
}

TEST(DockWindow, ABodyWhoseWindowGaveItUpDeletesTheWindowOnce)
{
    auto* window = new RecordedWindow("id");
    {
        const osg::ref_ptr<DockWindowPrivate> body = window->getDockWindowPrivate();
        body->unref_nodelete();
        EXPECT_THAT(recorder().take(), IsEmpty());
    }
    EXPECT_THAT(recorder().take(), ElementsAre("~window"));
}

TEST(DockWindow, AProducerThatThrowsLeavesNothingBehind)
{
    vfTest::RecordingDockWindowProducer producer;
    producer.inCreate = [] { throw std::runtime_error("no window"); };
    EXPECT_THROW(DockWindow("id"), std::runtime_error); // a leak checker sees the rest
    EXPECT_THAT(recorder().take(), ElementsAre("create window id"));
}

TEST(DockWindow, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&DockWindow::getId));
    EXPECT_EQ(1, slotOf(&DockWindow::applyDefaultState));
    EXPECT_EQ(-1, slotOf(&DockWindow::setVisible));
    EXPECT_EQ(2 * sizeof(void*), sizeof(DockWindow));

    EXPECT_EQ(2, slotOf(&DockWindowInterface::setTitle)); // behind the destructor
    EXPECT_EQ(3, slotOf(&DockWindowInterface::setAllowedDockingAreas));
    EXPECT_EQ(4, slotOf(&DockWindowInterface::getAllowedDockingAreas));
    EXPECT_EQ(5, slotOf(&DockWindowInterface::isFloating));
    EXPECT_EQ(6, slotOf(&DockWindowInterface::setVisible));
    EXPECT_EQ(7, slotOf(&DockWindowInterface::getVisible));
    EXPECT_EQ(8, slotOf(&DockWindowInterface::setAllowTabbing));
    EXPECT_EQ(9, slotOf(&DockWindowInterface::getAllowTabbing));
    EXPECT_EQ(10, slotOf(&DockWindowInterface::setAllowTabbed));
    EXPECT_EQ(11, slotOf(&DockWindowInterface::getAllowTabbed));
    EXPECT_EQ(12, slotOf(&DockWindowInterface::isTabbed));
    EXPECT_EQ(13, slotOf(&DockWindowInterface::setCloseable));
    EXPECT_EQ(14, slotOf(&DockWindowInterface::getCloseable));
    EXPECT_EQ(15, slotOf(&DockWindowInterface::setMoveable));
    EXPECT_EQ(16, slotOf(&DockWindowInterface::getMoveable));
    EXPECT_EQ(17, slotOf(&DockWindowInterface::setFloatable));
    EXPECT_EQ(18, slotOf(&DockWindowInterface::getFloatable));
    EXPECT_EQ(19, slotOf(&DockWindowInterface::setAutoHide));
    EXPECT_EQ(20, slotOf(&DockWindowInterface::getAutoHide));
    EXPECT_EQ(21, slotOf(&DockWindowInterface::setArea));
    EXPECT_EQ(22, slotOf(&DockWindowInterface::getArea));
    EXPECT_EQ(23, slotOf(&DockWindowInterface::onLanguageChange));
    EXPECT_EQ(sizeof(void*), sizeof(DockWindowInterface));

    EXPECT_EQ(0, slotOf(&DockWindowProducer::create));
    EXPECT_EQ(sizeof(void*), sizeof(DockWindowProducer));
}

TEST(DockWindow, UsedAfterItsBodyWasDestroyedItEndsTheProcessWithALine)
{
    struct Late : DockWindow
    {
        using DockWindow::DockWindow;
        ~Late() override { setVisible(true); }
    };
    const vfTest::RecordingDockWindowProducer producer;
    auto* window = new Late("id");
    // The body goes first, and the window with it.
    EXPECT_DEATH(window->getDockWindowPrivate()->unref(),
                 "velaFORGE: DockWindow: used after its body was destroyed\n$");
    delete window;
}
