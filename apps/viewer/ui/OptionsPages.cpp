// SPDX-License-Identifier: MIT
#include "ui/OptionsPages.h"

#include "model/ViewerSettings.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/documents/Session.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

#include <algorithm>

namespace vfViewer {

namespace {

template <class Page>
vfBase::VfObject* createPage()
{
    return new Page;
}

} // namespace

const vfBase::ClassInfo RecentFilesPage::s_classInfo("vfViewer", "RecentFilesPage",
                                                     "vfViewer::RecentFilesPage", &UiOptionsPage::s_classInfo,
                                                     nullptr, sizeof(RecentFilesPage),
                                                     createPage<RecentFilesPage>);

const vfBase::ClassInfo PicturePage::s_classInfo("vfViewer", "PicturePage", "vfViewer::PicturePage",
                                                 &UiOptionsPage::s_classInfo, nullptr, sizeof(PicturePage),
                                                 createPage<PicturePage>);

const vfBase::ClassInfo ModelPage::s_classInfo("vfViewer", "ModelPage", "vfViewer::ModelPage",
                                               &UiOptionsPage::s_classInfo, nullptr, sizeof(ModelPage),
                                               createPage<ModelPage>);

const vfBase::ClassInfo MousePage::s_classInfo("vfViewer", "MousePage", "vfViewer::MousePage",
                                               &UiOptionsPage::s_classInfo, nullptr, sizeof(MousePage),
                                               createPage<MousePage>);

const vfBase::ClassInfo* RecentFilesPage::getClassInfo() const
{
    return &s_classInfo;
}

void RecentFilesPage::loadOptions()
{
    maxFiles = vfApplication::FileHistorySettings::instance(false)->getMaxFiles();
    restoresSession = vfApplication::Session::instance().isRestored();
}

void RecentFilesPage::applyOptions()
{
    vfApplication::FileHistorySettings::instance(false)->setMaxFiles(std::max(maxFiles, 1u));
    vfApplication::Session::instance().setRestored(restoresSession);
}

const vfBase::ClassInfo* PicturePage::getClassInfo() const
{
    return &s_classInfo;
}

const char* PicturePage::getGroupName()
{
    return "Pictures";
}

const char* PicturePage::getGroupIconName()
{
    return "OptionsPictures";
}

int PicturePage::getGroupOrder()
{
    return 1;
}

void PicturePage::loadOptions()
{
    const ViewerSettings& settings = ViewerSettings::instance();
    firstView = settings.getFirstView();
    backgroundTop = settings.getBackgroundTop();
    backgroundBottom = settings.getBackgroundBottom();
    firstStyle = settings.getFirstStyle();
}

void PicturePage::applyOptions()
{
    ViewerSettings::instance().setFirstView(firstView);
    ViewerSettings::instance().setBackground(backgroundTop, backgroundBottom);
    ViewerSettings::instance().setFirstStyle(firstStyle);
}

const vfBase::ClassInfo* ModelPage::getClassInfo() const
{
    return &s_classInfo;
}

const char* ModelPage::getGroupName()
{
    return "Models";
}

const char* ModelPage::getGroupIconName()
{
    return "OptionsModels";
}

int ModelPage::getGroupOrder()
{
    return 2;
}

void ModelPage::loadOptions()
{
    units = ViewerSettings::instance().getUnits();
    historyMegabytes = ViewerSettings::instance().getHistoryMegabytes();
}

void ModelPage::applyOptions()
{
    ViewerSettings::instance().setUnits(units);
    ViewerSettings::instance().setHistoryMegabytes(historyMegabytes);
}

const vfBase::ClassInfo* MousePage::getClassInfo() const
{
    return &s_classInfo;
}

const char* MousePage::getGroupName()
{
    return "Mouse";
}

const char* MousePage::getGroupIconName()
{
    return "OptionsMouse";
}

int MousePage::getGroupOrder()
{
    return 3;
}

void MousePage::loadOptions()
{
    mouse = ViewerSettings::instance().getMouse();
}

void MousePage::applyOptions()
{
    ViewerSettings::instance().setMouse(mouse);
}

void announceOptionsPages()
{
    auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
    pages.addOptionsPageId(RecentFilesPage::s_classInfo.getClassId());
    pages.addOptionsPageId(PicturePage::s_classInfo.getClassId());
    pages.addOptionsPageId(ModelPage::s_classInfo.getClassId());
    pages.addOptionsPageId(MousePage::s_classInfo.getClassId());
}

} // namespace vfViewer
