// SPDX-License-Identifier: MIT
#include "qt/QtWindowSide.h"

#include "qt/AnimationPanel.h"
#include "qt/ListPanels.h"
#include "qt/PicturePrompt.h"
#include "qt/QtOptionsPages.h"
#include "qt/QtViewerDocManager.h"
#include "qt/ScenePanel.h"
#include "qt/SectionsPanel.h"
#include "qt/StatisticsPanel.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtApplicationProducer.h>
#include <velaforge/qt/QtDockWindowContents.h>

#include <QGuiApplication>

namespace {

std::string displayError(int argc, char** argv)
{
    return vfApplication::QtApplication::displayError(argc, argv).str();
}

void install()
{
    using vfApplication::QtDockWindowContents;
    vfBase::ApplicationInfo::instance().setApplicationIconName("vfviewer");
    vfApplication::QtApplication::prepareOpenGL();
    vfApplication::QtApplicationProducer::install();
    QGuiApplication::setDesktopFileName(QStringLiteral("vfviewer")); // by which desktops find its icon
    vfApplication::QtApplication::addTranslations(":/translations", "vfviewer");
    vfApplication::QtApplication::setPrompt("picture", vfViewer::askForPicture);
    QtDockWindowContents::setContents("vfViewer::SceneTree",
                                      [](QWidget& parent) { return new vfViewer::ScenePanel(parent); });
    QtDockWindowContents::setContents("vfViewer::Properties",
                                      [](QWidget& parent) { return new vfViewer::PropertiesPanel(parent); });
    QtDockWindowContents::setContents("vfViewer::Sections",
                                      [](QWidget& parent) { return new vfViewer::SectionsPanel(parent); });
    QtDockWindowContents::setContents("vfViewer::Animation",
                                      [](QWidget& parent) { return new vfViewer::AnimationPanel(parent); });
    QtDockWindowContents::setContents(
        "vfViewer::Measurements", [](QWidget& parent) { return new vfViewer::MeasurementsPanel(parent); });
    QtDockWindowContents::setContents("vfViewer::Messages",
                                      [](QWidget& parent) { return new vfViewer::MessagesPanel(parent); });
    QtDockWindowContents::setContents("vfViewer::Statistics",
                                      [](QWidget& parent) { return new vfViewer::StatisticsPanel(parent); });
}

vfApplication::DocManager* makeDocManager()
{
    return new vfViewer::QtViewerDocManager;
}

} // namespace

namespace vfViewer {

const WindowSide& qtWindowSide()
{
    static const WindowSide side = {displayError, install, vfApplication::QtApplication::readOptions,
                                    makeDocManager, announceQtOptionsPages};
    return side;
}

} // namespace vfViewer
