// SPDX-License-Identifier: MIT
#include "qt/QtOptionsPages.h"

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

} // namespace

const vfBase::ClassInfo QtRecentFilesPage::s_classInfo("vfViewer", "QtRecentFilesPage",
                                                       "vfViewer::QtRecentFilesPage",
                                                       &RecentFilesPage::s_classInfo, nullptr,
                                                       sizeof(QtRecentFilesPage),
                                                       createPage<QtRecentFilesPage>);

const vfBase::ClassInfo QtPicturePage::s_classInfo("vfViewer", "QtPicturePage", "vfViewer::QtPicturePage",
                                                   &PicturePage::s_classInfo, nullptr, sizeof(QtPicturePage),
                                                   createPage<QtPicturePage>);

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
    return page;
}

void QtPicturePage::applyOptions()
{
    if (m_view) {
        firstView = m_view->currentIndex();
        backgroundTop = m_top->color();
        backgroundBottom = m_bottom->color();
    }
    PicturePage::applyOptions();
    for (vfApplication::Document* document :
         vfApplication::Application::instance(false)->getDocManager().getDocumentList())
        document->updateAllViews(nullptr);
}

void announceQtOptionsPages()
{
    auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
    pages.addOptionsPageId(QtRecentFilesPage::s_classInfo.getClassId());
    pages.addOptionsPageId(QtPicturePage::s_classInfo.getClassId());
}

} // namespace vfViewer
