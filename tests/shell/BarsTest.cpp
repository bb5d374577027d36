// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"

#include <velaforge/shell/TitleBarInterface.h>
#include <velaforge/shell/ToolbarInterface.h>

#include <gtest/gtest.h>

#include <memory>

using vfApplication::Application;
using vfApplication::TitleBarInterface;
using vfApplication::ToolbarInterface;
using vfTest::slotOf;

namespace {

struct Toolbar : ToolbarInterface
{
    void toolbarOperationA() override {}
    void toolbarOperationB() override {}
    void toolbarOperationC() override {}
    void toolbarOperationD() override {}
    int value = 1;
};

struct TitleBar : TitleBarInterface
{
    void titleBarOperationA() override {}
    void titleBarOperationB() override {}
    int value = 1;
};

} // namespace

TEST(ToolbarInterface, HasTheApplicationWhileThereIsOne)
{
    const Toolbar toolbar;
    EXPECT_EQ(nullptr, toolbar.getApplication());
    {
        const vfTest::RecordingApplication bench;
        EXPECT_EQ(&bench.application, toolbar.getApplication());
        EXPECT_EQ(Application::instance(false), toolbar.getApplication());
    }
    EXPECT_EQ(nullptr, toolbar.getApplication());
}

TEST(ToolbarInterface, IsCopiedByWhatDerivesFromIt)
{
    Toolbar first;
    first.value = 2;
    Toolbar copy(first);
    EXPECT_EQ(2, copy.value);
    first.value = 3;
    EXPECT_EQ(&copy, &(copy = first));
    EXPECT_EQ(3, copy.value);
}

TEST(TitleBarInterface, IsCopiedByWhatDerivesFromIt)
{
    TitleBar first;
    first.value = 2;
    TitleBar copy(first);
    EXPECT_EQ(2, copy.value);
    first.value = 3;
    EXPECT_EQ(&copy, &(copy = first));
    EXPECT_EQ(3, copy.value);
}

TEST(ToolbarInterface, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&ToolbarInterface::toolbarOperationA));
    EXPECT_EQ(1, slotOf(&ToolbarInterface::toolbarOperationB));
    EXPECT_EQ(2, slotOf(&ToolbarInterface::toolbarOperationC));
    EXPECT_EQ(3, slotOf(&ToolbarInterface::toolbarOperationD));
    EXPECT_EQ(-1, slotOf(&ToolbarInterface::getApplication));
    EXPECT_EQ(sizeof(void*), sizeof(ToolbarInterface));
}

TEST(TitleBarInterface, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&TitleBarInterface::titleBarOperationA));
    EXPECT_EQ(1, slotOf(&TitleBarInterface::titleBarOperationB));
    EXPECT_EQ(sizeof(void*), sizeof(TitleBarInterface));
}
