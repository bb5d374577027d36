// SPDX-License-Identifier: MIT
#include "qt/SectionsPanel.h"

#include "model/ModelView.h"
#include "model/NamedCommands.h"

#include <velaforge/application/Application.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>
#include <velaforge/qt/QtApplication.h>

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QSlider>

#include <cmath>

namespace vfViewer {

namespace {

constexpr int sliderSteps = 1000;
QString nameOf(std::size_t axis)
{
    return QStringLiteral("xyz").mid(qsizetype(axis), 1);
}

/// @return the view that is looked at, null while there is no model
ModelView* currentView()
{
    auto* application = vfApplication::Application::instance(false);
    return activeModel() ? dynamic_cast<ModelView*>(application->getDocManager().getCurrentView()) : nullptr;
}

} // namespace

SectionsPanel::SectionsPanel(QWidget& parent) : QWidget(&parent)
{
    auto* grid = new QGridLayout(this);
    for (std::size_t axis = 0; axis < m_rows.size(); ++axis) {
        Row& row = m_rows[axis];
        const QString name = nameOf(axis);
        row.isOn = new QCheckBox(this);
        row.isOn->setObjectName(QStringLiteral("section_") + name);
        row.position = new QSlider(Qt::Horizontal, this);
        row.position->setObjectName(QStringLiteral("sectionPosition_") + name);
        row.position->setRange(0, sliderSteps);
        row.isFlipped = new QCheckBox(this);
        row.isFlipped->setObjectName(QStringLiteral("sectionFlip_") + name);
        const int line = int(axis);
        grid->addWidget(row.isOn, line, 0);
        grid->addWidget(row.position, line, 1);
        grid->addWidget(row.isFlipped, line, 2);
        connect(row.isOn, &QCheckBox::toggled, this, [this, axis] { apply(axis); });
        connect(row.position, &QSlider::valueChanged, this, [this, axis] { apply(axis); });
        connect(row.isFlipped, &QCheckBox::toggled, this, [this, axis] { apply(axis); });
    }
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(1, 1);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
    retranslate();
    refresh();
}

void SectionsPanel::retranslate()
{
    for (std::size_t axis = 0; axis < m_rows.size(); ++axis) {
        m_rows[axis].isOn->setText(tr("Across %1").arg(nameOf(axis)));
        m_rows[axis].isFlipped->setText(tr("Other side"));
    }
}

void SectionsPanel::refresh()
{
    const ModelView* view = currentView();
    setEnabled(view != nullptr);
    if (!view)
        return;
    m_isFilling = true;
    for (std::size_t axis = 0; axis < m_rows.size(); ++axis) {
        const vfScene::SectionPlane section = view->getStyle().sections[axis];
        const Row& row = m_rows[axis];
        row.isOn->setChecked(section.isOn);
        row.position->setValue(int(std::lround(section.position * sliderSteps)));
        row.isFlipped->setChecked(section.isFlipped);
        row.position->setEnabled(section.isOn);
        row.isFlipped->setEnabled(section.isOn);
    }
    m_isFilling = false;
}

void SectionsPanel::apply(std::size_t axis)
{
    ModelView* view = currentView();
    if (m_isFilling || !view)
        return;
    const Row& row = m_rows[axis];
    vfScene::ViewStyle style = view->getStyle();
    style.sections[axis] = {row.isOn->isChecked(), double(row.position->value()) / sliderSteps,
                            row.isFlipped->isChecked()};
    view->setStyle(style);
    row.position->setEnabled(row.isOn->isChecked());
    row.isFlipped->setEnabled(row.isOn->isChecked());
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

void SectionsPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

} // namespace vfViewer
