// SPDX-License-Identifier: MIT
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/modules/ModuleSettings.h>

#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <fstream>

using testing::HasSubstr;
using vfApplication::DockWindow;
using vfApplication::DockWindowManagerSettings;

TEST(DockWindowManagerSettings, KnowsNothingAtFirstAndAskingMakesNoRecord)
{
    const DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    EXPECT_EQ(0, settings->getDockWindowVisibleState("id"));
    EXPECT_EQ(0, settings->getDockWindowAutoHideState("id"));
    EXPECT_EQ(0, settings->getDockWindowAreaState("id"));
    EXPECT_EQ(0u, settings->getNumDockWindows());
    EXPECT_TRUE(settings->getDockWindowList().empty());
}

TEST(DockWindowManagerSettings, SettingTheAreaOfAnUnknownWindowMakesItVisibleAndAutoHidden)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAreaState("id", DockWindow::TopDockArea);
    EXPECT_EQ(1, settings->getDockWindowVisibleState("id"));
    EXPECT_EQ(1, settings->getDockWindowAutoHideState("id"));
    EXPECT_EQ(DockWindow::TopDockArea, settings->getDockWindowAreaState("id"));
    EXPECT_EQ(1u, settings->getNumDockWindows());
}

TEST(DockWindowManagerSettings, HidingAnUnknownWindowMakesItAutoHiddenAndInNoArea)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowVisibleState("id", false);
    EXPECT_EQ(2, settings->getDockWindowVisibleState("id"));
    EXPECT_EQ(1, settings->getDockWindowAutoHideState("id"));
    EXPECT_EQ(0, settings->getDockWindowAreaState("id"));
}

TEST(DockWindowManagerSettings, SettingTheAutoHidingOfAnUnknownWindowMakesItVisibleAndInNoArea)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAutoHideState("id", false);
    EXPECT_EQ(1, settings->getDockWindowVisibleState("id"));
    EXPECT_EQ(2, settings->getDockWindowAutoHideState("id"));
    EXPECT_EQ(0, settings->getDockWindowAreaState("id"));
}

TEST(DockWindowManagerSettings, EachSetterChangesItsOwnFieldOnly)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowVisibleState("id", false);
    settings->setDockWindowAutoHideState("id", false);
    settings->setDockWindowAreaState("id", DockWindow::LeftDockArea);
    const auto state = [settings] { return settings->getDockWindowList().at("id"); };
    EXPECT_FALSE(state().visible);
    EXPECT_FALSE(state().autoHide);
    EXPECT_EQ(DockWindow::LeftDockArea, state().area);
    settings->setDockWindowVisibleState("id", true);
    EXPECT_TRUE(state().visible);
    EXPECT_FALSE(state().autoHide);
    settings->setDockWindowAutoHideState("id", true);
    settings->setDockWindowVisibleState("id", false);
    EXPECT_TRUE(state().autoHide);
    EXPECT_FALSE(state().visible);
    EXPECT_EQ(DockWindow::LeftDockArea, state().area);
    EXPECT_EQ(1u, settings->getNumDockWindows());
}

TEST(DockWindowManagerSettings, CloneTypeIsEmptyAndCloneHasTheRecords)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAreaState("id", DockWindow::TopDockArea);
    const osg::ref_ptr<osg::Object> type = settings->cloneType();
    const osg::ref_ptr<osg::Object> copy = settings->clone(osg::CopyOp::SHALLOW_COPY);
    settings->setDockWindowAreaState("id", DockWindow::LeftDockArea);
    EXPECT_EQ(0u, dynamic_cast<const DockWindowManagerSettings&>(*type).getNumDockWindows());
    EXPECT_EQ(DockWindow::TopDockArea,
              dynamic_cast<const DockWindowManagerSettings&>(*copy).getDockWindowAreaState("id"));
}

TEST(DockWindowManagerSettings, IsOfItsOwnKindAndName)
{
    const DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    EXPECT_TRUE(settings->isSameKindAs(settings));
    EXPECT_FALSE(settings->isSameKindAs(vfApplication::ModuleSettings::instance(false)));
    EXPECT_FALSE(settings->isSameKindAs(nullptr));
    EXPECT_STREQ("vfApplication", settings->libraryName());
    EXPECT_STREQ("DockWindows", settings->className());
    EXPECT_STREQ("DockWindows", settings->tagName());
}

TEST(DockWindowManagerSettings, ErasedItIsGoneForGood)
{
    ASSERT_NE(nullptr, DockWindowManagerSettings::instance(false));
    EXPECT_EQ(nullptr, DockWindowManagerSettings::instance(true));
    EXPECT_EQ(nullptr, DockWindowManagerSettings::instance(false));
}

TEST(DockWindowManagerSettings, ComeBackFromTheStoreWithAreasThatNobodyHereKnows)
{
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAreaState("a \"b\" \xC3\xA4", static_cast<DockWindow::DockArea>(-5));
    settings->setDockWindowVisibleState("", false);
    settings->setDockWindowAutoHideState("", false);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings->setDockWindowVisibleState("", true);
    settings->setDockWindowVisibleState("later", true);
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(2u, settings->getNumDockWindows());
    EXPECT_EQ(-5, settings->getDockWindowAreaState("a \"b\" \xC3\xA4"));
    EXPECT_EQ(2, settings->getDockWindowVisibleState(""));
    EXPECT_EQ(2, settings->getDockWindowAutoHideState(""));
    EXPECT_THAT(vfTest::readFile(vfBase::Settings::global().getSettingsFilePath()),
                HasSubstr("\"vfApplication::DockWindows\""));
}

TEST(DockWindowManagerSettings, ARecordThatIsNotWholeIsToldAndLeavesWhatWasThere)
{
    vfBase::NotifyHandler::instance().install();
    DockWindowManagerSettings* settings = DockWindowManagerSettings::instance(false);
    settings->setDockWindowAreaState("id", DockWindow::TopDockArea);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    const std::string path = vfBase::Settings::global().getSettingsFilePath();
    const std::string whole = vfTest::readFile(path);
    for (const std::string field : {"\"area\"", "\"visible\"", "\"autoHide\""}) {
        std::string text = whole;
        ASSERT_NE(std::string::npos, text.find(field));
        text.replace(text.find(field), field.size(), "\"other\"");
        std::ofstream(path) << text;
        settings->setDockWindowAreaState("id", DockWindow::LeftDockArea);
        testing::internal::CaptureStderr();
        vfBase::Settings::loadGlobal();
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("\"windows\"")) << field;
        EXPECT_EQ(DockWindow::LeftDockArea, settings->getDockWindowAreaState("id")) << field;
    }
    std::string noMap = whole;
    noMap.replace(whole.find("\"windows\""), std::string::npos, "\"windows\": 7 } }");
    std::ofstream(path) << noMap;
    testing::internal::CaptureStderr();
    vfBase::Settings::loadGlobal();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("\"windows\""));
    EXPECT_EQ(DockWindow::LeftDockArea, settings->getDockWindowAreaState("id"));
}

TEST(DockWindowManagerSettings, OperationsKeepTheirSlots)
{
    EXPECT_EQ(vfTest::slotOf(&osg::Object::clone), vfTest::slotOf(&DockWindowManagerSettings::clone));
    EXPECT_EQ(vfTest::slotOf(&osg::Object::className), vfTest::slotOf(&DockWindowManagerSettings::className));
    EXPECT_EQ(-1, vfTest::slotOf(&DockWindowManagerSettings::getNumDockWindows));
}
