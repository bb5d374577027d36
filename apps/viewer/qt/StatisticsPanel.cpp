// SPDX-License-Identifier: MIT
#include "qt/StatisticsPanel.h"

#include "model/ModelDocument.h"
#include "model/ModelStatistics.h"
#include "model/NamedCommands.h"

#include <velaforge/qt/QtApplication.h>

#include <QEvent>
#include <QHeaderView>
#include <QLocale>

namespace vfViewer {

StatisticsPanel::StatisticsPanel(QWidget& parent) : QTableWidget(&parent)
{
    setObjectName(QStringLiteral("statistics"));
    setColumnCount(2);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    setShowGrid(false);
    horizontalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
}

void StatisticsPanel::addRow(const QString& name, const QString& value)
{
    const int row = rowCount();
    insertRow(row);
    setItem(row, 0, new QTableWidgetItem(name));
    auto* item = new QTableWidgetItem(value);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setItem(row, 1, item);
}

void StatisticsPanel::refresh()
{
    // Counting goes over the whole model; nobody sees it while the panel is closed.
    if (!isVisible())
        return;
    setRowCount(0);
    const ModelDocument* document = activeModel();
    osg::Node* target = document ? document->target() : nullptr;
    if (!target)
        return;
    const ModelStatistics counted = countModel(*target);
    const QLocale locale;
    addRow(tr("Of"), document->getSelection() ? tr("the selected part") : tr("the whole model"));
    addRow(tr("Triangles"), locale.toString(counted.triangles));
    addRow(tr("Vertices"), locale.toString(counted.vertices));
    addRow(tr("Drawables"), locale.toString(counted.drawables));
    if (counted.bounds.valid()) {
        const osg::Vec3 size = counted.bounds._max - counted.bounds._min;
        addRow(tr("Width (x)"), locale.toString(double(size.x()), 'g', 6));
        addRow(tr("Depth (y)"), locale.toString(double(size.y()), 'g', 6));
        addRow(tr("Height (z)"), locale.toString(double(size.z()), 'g', 6));
    }
}

void StatisticsPanel::showEvent(QShowEvent* event)
{
    QTableWidget::showEvent(event);
    refresh();
}

void StatisticsPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        refresh();
    QTableWidget::changeEvent(event);
}

} // namespace vfViewer
