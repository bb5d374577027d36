// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/FileHistorySettings.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <thread>
#include <vector>

using testing::HasSubstr;
using vfApplication::ApplicationSettings;
using vfApplication::FileHistorySettings;

TEST(ApplicationSettings, HasItsDefaultsWithoutASettingsFile)
{
    vfBase::Settings::loadGlobal();
    const ApplicationSettings* settings = ApplicationSettings::instance(false);
    EXPECT_EQ("LEFT", settings->getSplashHorizontalAlignmet());
    EXPECT_EQ("BOTTOM", settings->getSplashVerticalAlignmet());
    EXPECT_EQ(osg::Vec3f(1, 1, 1), settings->getSplashTextColor());
    EXPECT_EQ("", settings->getWorkingLocation());
}

TEST(ApplicationSettings, CloneTypeHasDefaultsAndCloneThePresentValues)
{
    ApplicationSettings* settings = ApplicationSettings::instance(false);
    settings->setSplashHorizontalAlignmet("RIGHT");
    settings->setSplashVerticalAlignmet("TOP");
    settings->setSplashTextColor({0, 0.5f, 1});
    settings->setWorkingLocation("/models");
    const osg::ref_ptr<osg::Object> type = settings->cloneType();
    const osg::ref_ptr<osg::Object> copy = settings->clone(osg::CopyOp::SHALLOW_COPY);
    const auto& defaults = dynamic_cast<const ApplicationSettings&>(*type);
    const auto& clone = dynamic_cast<const ApplicationSettings&>(*copy);
    EXPECT_EQ("LEFT", defaults.getSplashHorizontalAlignmet());
    EXPECT_EQ(osg::Vec3f(1, 1, 1), defaults.getSplashTextColor());
    EXPECT_EQ("RIGHT", clone.getSplashHorizontalAlignmet());
    EXPECT_EQ("TOP", clone.getSplashVerticalAlignmet());
    EXPECT_EQ(osg::Vec3f(0, 0.5f, 1), clone.getSplashTextColor());
    EXPECT_EQ("/models", clone.getWorkingLocation());
    EXPECT_NE(settings, &clone);
}

TEST(ApplicationSettings, IsOfTheSameKindOnlyAsItsOwnClass)
{
    const ApplicationSettings* settings = ApplicationSettings::instance(false);
    EXPECT_TRUE(settings->isSameKindAs(settings));
    EXPECT_FALSE(settings->isSameKindAs(FileHistorySettings::instance(false)));
    EXPECT_FALSE(settings->isSameKindAs(nullptr));
    EXPECT_STREQ("vfApplication", settings->libraryName());
    EXPECT_STREQ("Application", settings->className());
    EXPECT_STREQ("Application", settings->tagName());
}

TEST(ApplicationSettings, ErasedItIsGoneForGood)
{
    ASSERT_NE(nullptr, ApplicationSettings::instance(false));
    EXPECT_EQ(nullptr, ApplicationSettings::instance(true));
    EXPECT_EQ(nullptr, ApplicationSettings::instance(false));
    EXPECT_EQ(nullptr, ApplicationSettings::instance(true));
}

TEST(ApplicationSettings, ASetterGivenTheFieldItselfChangesNothing)
{
    ApplicationSettings* settings = ApplicationSettings::instance(false);
    settings->setWorkingLocation("a directory whose name is too long to be stored in place");
    settings->setSplashVerticalAlignmet(settings->getSplashVerticalAlignmet());
    settings->setSplashHorizontalAlignmet(settings->getSplashHorizontalAlignmet());
    settings->setWorkingLocation(settings->getWorkingLocation());
    EXPECT_EQ("BOTTOM", settings->getSplashVerticalAlignmet());
    EXPECT_EQ("LEFT", settings->getSplashHorizontalAlignmet());
    EXPECT_EQ("a directory whose name is too long to be stored in place", settings->getWorkingLocation());
}

TEST(ApplicationSettings, ComeBackFromTheStoreInTheOrderInWhichTheyWereRegistered)
{
    ApplicationSettings* settings = ApplicationSettings::instance(false);
    settings->setSplashTextColor({0.25f, 0.5f, 0.75f});
    settings->setWorkingLocation("/models");
    vfApplication::FileHistory(4).addFileToHistory("a.obj");
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings->setSplashTextColor({0, 0, 0});
    settings->setWorkingLocation("");
    vfApplication::FileHistory(9).addFileToHistory("b.obj");
    vfBase::Settings::loadGlobal();
    EXPECT_EQ(osg::Vec3f(0.25f, 0.5f, 0.75f), settings->getSplashTextColor());
    EXPECT_EQ("/models", settings->getWorkingLocation());
    EXPECT_EQ(4u, FileHistorySettings::instance(false)->getMaxFiles());
    const std::string text = vfTest::readFile(vfBase::Settings::global().getSettingsFilePath());
    EXPECT_THAT(text, HasSubstr("\"vfApplication::Application\""));
    EXPECT_THAT(text, HasSubstr("\"vfApplication::FileHistorySettings\""));
    EXPECT_THAT(text, HasSubstr("\"splashTextColor\""));
}

TEST(ApplicationSettings, AColourThatIsNoneIsToldAndLeavesTheOneThatWasThere)
{
    vfBase::NotifyHandler::instance().install();
    ApplicationSettings* settings = ApplicationSettings::instance(false);
    const std::string path = vfBase::Settings::global().getSettingsFilePath();
    ASSERT_TRUE(vfBase::Settings::global().save(nullptr));
    settings->setSplashTextColor({0.25f, 0.5f, 0.75f});
    for (const char* color : {"7", "[1, 1]", "[1, 1, 1, 1]", "[1, 1, \"x\"]", "[1, 1, 1e300]"}) {
        std::ofstream(path) << "{\"vfApplication::Application\": {\"splashTextColor\": " << color << "}}";
        testing::internal::CaptureStderr();
        vfBase::Settings::loadGlobal();
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("\"splashTextColor\"")) << color;
        EXPECT_EQ(osg::Vec3f(0.25f, 0.5f, 0.75f), settings->getSplashTextColor()) << color;
    }
}

TEST(ApplicationSettings, TheStoreMeetsAllObjectsInTheOrderOfTheirRegistration)
{
    // Of two lists of properties for one class the later one counts.
    using vfBase::SettingsProperties;
    const auto recording = [](const char* name) {
        const auto get = [name](const vfBase::SettingsObjectPrivate&) {
            vfTest::record(name);
            return vfBase::SettingsValue(1);
        };
        const auto set = [](vfBase::SettingsObjectPrivate&, const vfBase::SettingsValue&) { return true; };
        return std::vector<SettingsProperties::Property>{
            SettingsProperties::property<vfBase::SettingsObjectPrivate>("value", get, set)};
    };
    const SettingsProperties files("vfApplication::FileHistorySettings", recording("FileHistorySettings"));
    const SettingsProperties windows("vfApplication::DockWindows", recording("DockWindows"));
    const SettingsProperties application("vfApplication::Application", recording("Application"));
    const SettingsProperties modules("vfApplication::Modules", recording("Modules"));
    const vfTest::TemporaryDirectory directory;
    ASSERT_TRUE(vfBase::Settings::global().save(directory.file("settings.json").c_str()));
    vfTest::Lines order = vfTest::recorder().take();
    order.erase(std::unique(order.begin(), order.end()), order.end());
    EXPECT_THAT(order, testing::ElementsAre("Application", "Modules", "DockWindows", "FileHistorySettings"));
}

TEST(ApplicationSettings, AreReadThroughTheApplication)
{
    vfTest::RecordingApplication bench;
    ApplicationSettings* settings = ApplicationSettings::instance(false);
    settings->setSplashHorizontalAlignmet("RIGHT");
    settings->setSplashTextColor({0.25f, 0.5f, 0.75f});
    EXPECT_STREQ("RIGHT", bench.application.getSplashHorizontalAlignmet());
    EXPECT_STREQ("BOTTOM", bench.application.getSplashVerticalAlignmet());
    float r = 0;
    float g = 0;
    float b = 0;
    bench.application.getSplashTextColor(r, g, b);
    EXPECT_EQ(osg::Vec3f(0.25f, 0.5f, 0.75f), osg::Vec3f(r, g, b));
}

TEST(ApplicationSettings, IsMadeOnceForTwoThreadsAtOnce)
{
    const ApplicationSettings* seen[2] = {};
    std::thread first([&seen] { seen[0] = ApplicationSettings::instance(false); });
    std::thread second([&seen] { seen[1] = ApplicationSettings::instance(false); });
    first.join();
    second.join();
    EXPECT_EQ(seen[0], seen[1]);
}

TEST(ApplicationSettings, OperationsKeepTheirSlots)
{
    using vfBase::SettingsObjectPrivate;
    EXPECT_EQ(vfTest::slotOf(&osg::Object::cloneType), vfTest::slotOf(&ApplicationSettings::cloneType));
    EXPECT_EQ(vfTest::slotOf(&osg::Object::clone), vfTest::slotOf(&ApplicationSettings::clone));
    EXPECT_EQ(vfTest::slotOf(&osg::Object::className), vfTest::slotOf(&ApplicationSettings::className));
    EXPECT_GT(vfTest::slotOf(&SettingsObjectPrivate::tagName), vfTest::slotOf(&osg::Object::className));
    EXPECT_EQ(vfTest::slotOf(&SettingsObjectPrivate::tagName), vfTest::slotOf(&FileHistorySettings::tagName));
}
