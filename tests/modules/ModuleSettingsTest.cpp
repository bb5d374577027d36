// SPDX-License-Identifier: MIT
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/modules/ModuleSettings.h>

#include <osg/ref_ptr>

#include <gmock/gmock.h>

#include <fstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using vfApplication::ModuleSettings;

TEST(ModuleSettings, AnUnknownModuleIsNeitherEnabledNorValidAndADisabledOneIsValid)
{
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("off", false);
    EXPECT_FALSE(settings->getModuleStateSettings("unknown"));
    EXPECT_FALSE(settings->isValidModule("unknown"));
    EXPECT_FALSE(settings->getModuleStateSettings("off"));
    EXPECT_TRUE(settings->isValidModule("off"));
    EXPECT_EQ(1u, settings->getNumModules()); // asking makes no entry
}

TEST(ModuleSettings, RemovingAnUnknownModuleChangesNothing)
{
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("one", true);
    EXPECT_FALSE(settings->removeModule("two"));
    EXPECT_EQ(1u, settings->getNumModules());
    EXPECT_TRUE(settings->removeModule("one"));
    EXPECT_EQ(0u, settings->getNumModules());
}

TEST(ModuleSettings, SettingAKnownModuleReplacesItsState)
{
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("b", true);
    settings->setModuleStateSettings("a", true);
    settings->setModuleStateSettings("b", false);
    EXPECT_FALSE(settings->getModuleStateSettings("b"));
    EXPECT_TRUE(settings->getModuleStateSettings("a"));
    EXPECT_EQ(2u, settings->getNumModules());
    const ModuleSettings& constant = *settings;
    EXPECT_THAT(constant.getModuleList(), ElementsAre(Pair("a", true), Pair("b", false)));
    settings->getModuleList()["a"] = false;
    EXPECT_FALSE(settings->getModuleStateSettings("a"));
}

TEST(ModuleSettings, CloneTypeIsEmptyAndCloneHasTheList)
{
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("one", true);
    const osg::ref_ptr<osg::Object> type = settings->cloneType();
    const osg::ref_ptr<osg::Object> copy = settings->clone(osg::CopyOp::SHALLOW_COPY);
    settings->setModuleStateSettings("one", false);
    EXPECT_THAT(dynamic_cast<const ModuleSettings&>(*type).getModuleList(), IsEmpty());
    EXPECT_THAT(dynamic_cast<const ModuleSettings&>(*copy).getModuleList(), ElementsAre(Pair("one", true)));
    EXPECT_NE(settings, copy.get());
}

TEST(ModuleSettings, IsOfItsOwnKindAndName)
{
    const ModuleSettings* settings = ModuleSettings::instance(false);
    EXPECT_TRUE(settings->isSameKindAs(settings));
    EXPECT_FALSE(settings->isSameKindAs(vfApplication::ApplicationSettings::instance(false)));
    EXPECT_FALSE(settings->isSameKindAs(nullptr));
    EXPECT_STREQ("vfApplication", settings->libraryName());
    EXPECT_STREQ("Modules", settings->className());
    EXPECT_STREQ("Modules", settings->tagName());
}

TEST(ModuleSettings, ErasedItIsGoneForGood)
{
    ASSERT_NE(nullptr, ModuleSettings::instance(false));
    EXPECT_EQ(nullptr, ModuleSettings::instance(true));
    EXPECT_EQ(nullptr, ModuleSettings::instance(false));
}

TEST(ModuleSettings, ComeBackFromTheStoreInPlaceOfWhatWasThere)
{
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("on", true);
    settings->setModuleStateSettings("off", false);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings->getModuleList().clear();
    settings->setModuleStateSettings("other", true);
    vfBase::Settings::loadGlobal();
    EXPECT_THAT(settings->getModuleList(), ElementsAre(Pair("off", false), Pair("on", true)));
    EXPECT_THAT(vfTest::readFile(vfBase::Settings::global().getSettingsFilePath()),
                HasSubstr("\"vfApplication::Modules\""));
}

TEST(ModuleSettings, AListThatIsNoListIsToldAndLeavesWhatWasThere)
{
    vfBase::NotifyHandler::instance().install();
    ModuleSettings* settings = ModuleSettings::instance(false);
    settings->setModuleStateSettings("before", true);
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    const std::string path = vfBase::Settings::global().getSettingsFilePath();
    const std::string text = vfTest::readFile(path);
    const std::string entry = "\"before\": true";
    ASSERT_NE(std::string::npos, text.find(entry));
    std::string wrongState = text;
    wrongState.replace(text.find(entry), entry.size(), "\"before\": 7");
    std::string noMap = text;
    noMap.replace(text.find("\"modules\""), std::string::npos, "\"modules\": [true] } }");
    for (const std::string& spoilt : {wrongState, noMap}) {
        std::ofstream(path) << spoilt;
        testing::internal::CaptureStderr();
        vfBase::Settings::loadGlobal();
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("\"modules\""));
        EXPECT_THAT(settings->getModuleList(), ElementsAre(Pair("before", true)));
    }
}

TEST(ModuleSettings, OperationsKeepTheirSlots)
{
    EXPECT_EQ(vfTest::slotOf(&osg::Object::cloneType), vfTest::slotOf(&ModuleSettings::cloneType));
    EXPECT_EQ(vfTest::slotOf(&osg::Object::clone), vfTest::slotOf(&ModuleSettings::clone));
    EXPECT_EQ(vfTest::slotOf(&osg::Object::className), vfTest::slotOf(&ModuleSettings::className));
    EXPECT_EQ(-1, vfTest::slotOf(&ModuleSettings::getNumModules));
}
