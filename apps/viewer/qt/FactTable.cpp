// SPDX-License-Identifier: MIT
#include "qt/FactTable.h"

#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/QtApplication.h>

#include <QEvent>
#include <QHeaderView>

#include <algorithm>

namespace vfViewer {

FactTable::FactTable(QWidget& parent, const char* name) : QTableWidget(&parent)
{
    setObjectName(QLatin1String(name));
    setColumnCount(2);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    setShowGrid(false);
    horizontalHeader()->hide();
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrap(false);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->addListener(*this, [this] { refresh(); });
}

void FactTable::addRow(const QString& name, const QString& value)
{
    const int row = rowCount();
    insertRow(row);
    auto* label = new QTableWidgetItem(name);
    label->setToolTip(vfApplication::plainToolTip(name));
    setItem(row, 0, label);
    auto* item = new QTableWidgetItem(value);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    item->setToolTip(vfApplication::plainToolTip(value));
    setItem(row, 1, item);
}

void FactTable::refresh()
{
    // The facts may need a traversal of the whole model.
    if (!isVisible())
        return;
    setRowCount(0);
    fill();
    fitColumns();
}

void FactTable::fitColumns()
{
    setColumnWidth(0, std::min(sizeHintForColumn(0), viewport()->width() / 2));
}

void FactTable::resizeEvent(QResizeEvent* event)
{
    QTableWidget::resizeEvent(event);
    fitColumns();
}

void FactTable::showEvent(QShowEvent* event)
{
    QTableWidget::showEvent(event);
    refresh();
}

void FactTable::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        refresh();
    QTableWidget::changeEvent(event);
}

} // namespace vfViewer
