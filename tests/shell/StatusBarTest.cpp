// SPDX-License-Identifier: MIT
#include "support/Slots.h"

#include <velaforge/shell/StatusBar.h>
#include <velaforge/shell/StatusBarInterface.h>

#include <gtest/gtest.h>

using vfApplication::StatusBar;
using vfApplication::StatusBarInterface;
using vfTest::slotOf;

namespace {

struct Shown : StatusBarInterface
{
    static int s_alive;
    Shown() { ++s_alive; }
    ~Shown() override { --s_alive; }
    void updateStatus(vfApplication::StatusBarTextEnum, const char*, int) override {}
    void updateProgressPercent(int) override {}
    void updateProgressText(const char*) override {}
};
int Shown::s_alive = 0;

} // namespace

TEST(StatusBar, APlainOneTakesEveryUpdateAndShowsNothing)
{
    StatusBar bar;
    bar.updateStatus(vfApplication::StatusBarMessage, "text", 1);
    bar.updateProgressPercent(50);
    bar.updateProgressText(nullptr);
    EXPECT_EQ(nullptr, bar.getStatusBarInterface());
}

TEST(StatusBar, HasNoInterfaceEvenWhereItIsOne)
{
    Shown bar;
    EXPECT_EQ(nullptr, bar.getStatusBarInterface());
    const StatusBar& constant = bar;
    EXPECT_EQ(&bar, constant.getStatusBarPrivate()->owner);
    EXPECT_EQ(bar.getStatusBarPrivate(), constant.getStatusBarPrivate());
}

TEST(StatusBar, MayGoBeforeItsBodyOrWithIt)
{
    delete new Shown;
    EXPECT_EQ(0, Shown::s_alive);
    StatusBar* bar = new Shown;
    delete bar->getStatusBarPrivate(); // takes its owner with it
    EXPECT_EQ(0, Shown::s_alive);
}

TEST(StatusBar, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&StatusBar::updateStatus));
    EXPECT_EQ(3, slotOf(&StatusBar::updateProgressPercent));
    EXPECT_EQ(4, slotOf(&StatusBar::updateProgressText));
    EXPECT_EQ(2, slotOf(&StatusBarInterface::updateStatus));
}
