// SPDX-License-Identifier: MIT
#include "qt/QtOptionsPages.h"

#include "model/ModelDocument.h"
#include "qt/ColorButton.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>

namespace vfViewer {

namespace {

template <class Page>
vfBase::VfObject* createPage()
{
    return new Page;
}

void updateOpenModels()
{
    for (vfApplication::Document* document :
         vfApplication::Application::instance(false)->getDocManager().getDocumentList())
        document->updateAllViews(nullptr);
}

} // namespace

const vfBase::ClassInfo QtRecentFilesPage::s_classInfo("vfViewer", "QtRecentFilesPage",
                                                       "vfViewer::QtRecentFilesPage",
                                                       &RecentFilesPage::s_classInfo, nullptr,
                                                       sizeof(QtRecentFilesPage),
                                                       createPage<QtRecentFilesPage>);

const vfBase::ClassInfo QtPicturePage::s_classInfo("vfViewer", "QtPicturePage", "vfViewer::QtPicturePage",
                                                   &PicturePage::s_classInfo, nullptr, sizeof(QtPicturePage),
                                                   createPage<QtPicturePage>);

const vfBase::ClassInfo QtModelPage::s_classInfo("vfViewer", "QtModelPage", "vfViewer::QtModelPage",
                                                 &ModelPage::s_classInfo, nullptr, sizeof(QtModelPage),
                                                 createPage<QtModelPage>);

const vfBase::ClassInfo QtMousePage::s_classInfo("vfViewer", "QtMousePage", "vfViewer::QtMousePage",
                                                 &MousePage::s_classInfo, nullptr, sizeof(QtMousePage),
                                                 createPage<QtMousePage>);

const vfBase::ClassInfo* QtRecentFilesPage::getClassInfo() const
{
    return &s_classInfo;
}

QString QtRecentFilesPage::getTitle()
{
    return tr("Recent files");
}

QWidget* QtRecentFilesPage::createWidget(QWidget& parent)
{
    auto* page = new QWidget(&parent);
    m_count = new QSpinBox(page);
    m_count->setObjectName(QStringLiteral("maxFiles"));
    m_count->setRange(1, 99);
    m_count->setValue(int(maxFiles));
    m_session = new QCheckBox(tr("Open at the start what was open at the end"), page);
    m_session->setObjectName(QStringLiteral("restoreSession"));
    m_session->setChecked(restoresSession);
    auto* form = new QFormLayout(page);
    form->addRow(tr("Recent files to keep:"), m_count);
    form->addRow(m_session);
    return page;
}

void QtRecentFilesPage::applyOptions()
{
    if (m_count)
        maxFiles = static_cast<unsigned int>(m_count->value());
    if (m_session)
        restoresSession = m_session->isChecked();
    RecentFilesPage::applyOptions();
}

const vfBase::ClassInfo* QtPicturePage::getClassInfo() const
{
    return &s_classInfo;
}

QString QtPicturePage::getTitle()
{
    return tr("Pictures");
}

QWidget* QtPicturePage::createWidget(QWidget& parent)
{
    auto* page = new QWidget(&parent);
    m_view = new QComboBox(page);
    m_view->setObjectName(QStringLiteral("firstView"));
    m_view->addItems({tr("Front"), tr("Back"), tr("Left"), tr("Right"), tr("Top"), tr("Bottom"),
                      tr("Front left corner"), tr("Front right corner"), tr("Back right corner"),
                      tr("Back left corner")});
    m_view->setCurrentIndex(firstView);
    m_top = new ColorButton(backgroundTop, page);
    m_bottom = new ColorButton(backgroundBottom, page);
    auto* form = new QFormLayout(page);
    form->addRow(tr("Look at models first from:"), m_view);
    form->addRow(tr("Background at the top:"), m_top);
    form->addRow(tr("Background at the bottom:"), m_bottom);
    const auto addCheck = [&](const char* name, const QString& text, bool isOn) {
        auto* box = new QCheckBox(text, page);
        box->setObjectName(QLatin1String(name));
        box->setChecked(isOn);
        form->addRow(box);
        return box;
    };
    m_projection = new QComboBox(page);
    m_projection->setObjectName(QStringLiteral("firstProjection"));
    m_projection->addItems({tr("Perspective"), tr("Orthographic")});
    m_projection->setCurrentIndex(int(firstStyle.projection));
    form->addRow(tr("New views:"), m_projection);
    m_grid = addCheck("firstGrid", tr("Show the grid"), firstStyle.showsGrid);
    m_axes = addCheck("firstAxes", tr("Show the axes"), firstStyle.showsAxes);
    m_smooth = addCheck("firstSmooth", tr("Smooth edges"), firstStyle.isAntialiased);
    m_lamps = addCheck("firstLamps", tr("Use the lamps of files"), firstStyle.usesFileLamps);
    return page;
}

void QtPicturePage::applyOptions()
{
    if (m_view) {
        firstView = m_view->currentIndex();
        backgroundTop = m_top->color();
        backgroundBottom = m_bottom->color();
        firstStyle.projection = vfScene::Projection(m_projection->currentIndex());
        firstStyle.showsGrid = m_grid->isChecked();
        firstStyle.showsAxes = m_axes->isChecked();
        firstStyle.isAntialiased = m_smooth->isChecked();
        firstStyle.usesFileLamps = m_lamps->isChecked();
    }
    PicturePage::applyOptions();
    updateOpenModels();
}

const vfBase::ClassInfo* QtModelPage::getClassInfo() const
{
    return &s_classInfo;
}

QString QtModelPage::getTitle()
{
    return tr("Models");
}

QWidget* QtModelPage::createWidget(QWidget& parent)
{
    auto* page = new QWidget(&parent);
    const auto makeChoice = [page](const char* name, vfScene::LengthUnit unit) {
        auto* choice = new QComboBox(page);
        choice->setObjectName(QLatin1String(name));
        choice->addItem(tr("None"));
        for (int number = 1; number < vfScene::lengthUnitCount; ++number)
            choice->addItem(QString::fromUtf8(vfScene::symbolOf(vfScene::LengthUnit(number))));
        choice->setCurrentIndex(int(unit));
        return choice;
    };
    m_unit = makeChoice("modelUnit", units.ofModel);
    m_shown = makeChoice("shownUnit", units.shown);
    m_history = new QSpinBox(page);
    m_history->setObjectName(QStringLiteral("historyMegabytes"));
    m_history->setRange(1, 1000000);
    m_history->setSuffix(tr(" MB"));
    m_history->setValue(historyMegabytes);
    auto* form = new QFormLayout(page);
    form->addRow(tr("Unit of models:"), m_unit);
    form->addRow(tr("Unit that is shown:"), m_shown);
    form->addRow(tr("What can be undone holds at most:"), m_history);
    return page;
}

void QtModelPage::applyOptions()
{
    if (m_unit) {
        units = {vfScene::LengthUnit(m_unit->currentIndex()), vfScene::LengthUnit(m_shown->currentIndex())};
        historyMegabytes = m_history->value();
    }
    ModelPage::applyOptions();
    for (vfApplication::Document* document :
         vfApplication::Application::instance(false)->getDocManager().getDocumentList())
    {
        if (auto* model = dynamic_cast<ModelDocument*>(document))
            model->takeSettings();
    }
    updateOpenModels();
}

const vfBase::ClassInfo* QtMousePage::getClassInfo() const
{
    return &s_classInfo;
}

QString QtMousePage::getTitle()
{
    return tr("Mouse");
}

QWidget* QtMousePage::createWidget(QWidget& parent)
{
    auto* page = new QWidget(&parent);
    m_orbit = new QComboBox(page);
    m_orbit->setObjectName(QStringLiteral("orbit"));
    m_orbit->addItems({tr("Turntable: the up axis stays upright"), tr("Trackball: in all directions")});
    m_orbit->setCurrentIndex(mouse.isTrackball ? 1 : 0);
    m_speed = new QSpinBox(page);
    m_speed->setObjectName(QStringLiteral("orbitPercent"));
    m_speed->setRange(MouseSettings::slowest, MouseSettings::fastest);
    m_speed->setSingleStep(10);
    m_speed->setSuffix(tr(" %"));
    m_speed->setValue(mouse.orbitPercent);
    auto* form = new QFormLayout(page);
    form->addRow(tr("Orbiting:"), m_orbit);
    form->addRow(tr("Speed of orbiting:"), m_speed);
    return page;
}

void QtMousePage::applyOptions()
{
    if (m_orbit) {
        mouse.isTrackball = m_orbit->currentIndex() == 1;
        mouse.orbitPercent = m_speed->value();
    }
    MousePage::applyOptions();
    updateOpenModels();
}

void announceQtOptionsPages()
{
    auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
    pages.addOptionsPageId(QtRecentFilesPage::s_classInfo.getClassId());
    pages.addOptionsPageId(QtPicturePage::s_classInfo.getClassId());
    pages.addOptionsPageId(QtModelPage::s_classInfo.getClassId());
    pages.addOptionsPageId(QtMousePage::s_classInfo.getClassId());
}

} // namespace vfViewer
