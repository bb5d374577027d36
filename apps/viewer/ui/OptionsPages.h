// SPDX-License-Identifier: MIT
#pragma once

#include "model/ViewerSettings.h"

#include <velaforge/scene/Measurement.h>
#include <velaforge/scene/ViewStyle.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <osg/Vec3f>

namespace vfBase {
class ClassInfo;
}

namespace vfViewer {

/// How many recent files are kept, and whether what was open comes back.
class RecentFilesPage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    void loadOptions() override;
    void applyOptions() override;

    /// What the page shows, at least 1.
    unsigned int maxFiles = 1;
    bool restoresSession = false;
};

/// From where and how models are looked at first, and what is behind them.
class PicturePage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    const char* getGroupName() override;
    const char* getGroupIconName() override;
    int getGroupOrder() override;
    void loadOptions() override;
    void applyOptions() override;

    // What the page shows, see ViewerSettings.
    int firstView = 0;
    osg::Vec3f backgroundTop;
    osg::Vec3f backgroundBottom;
    vfScene::ViewStyle firstStyle;
};

/// What the numbers of models mean, and how much the history of a document may hold.
class ModelPage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    const char* getGroupName() override;
    const char* getGroupIconName() override;
    int getGroupOrder() override;
    void loadOptions() override;
    void applyOptions() override;

    // What the page shows, see ViewerSettings.
    vfScene::Units units;
    int historyMegabytes = 1;
};

/// How the mouse moves the camera.
class MousePage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override;
    const char* getGroupName() override;
    const char* getGroupIconName() override;
    int getGroupOrder() override;
    void loadOptions() override;
    void applyOptions() override;

    /// What the page shows, see ViewerSettings.
    MouseSettings mouse;
};

/// Announces the pages of the viewer.
void announceOptionsPages();

} // namespace vfViewer
