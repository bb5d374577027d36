// SPDX-License-Identifier: MIT
#pragma once

#include <QTableWidget>

namespace vfViewer {

/// Names and values in two columns, updated after each change while the table is visible.
class FactTable : public QTableWidget
{
    Q_OBJECT

public:
    /// Shows them anew.
    void refresh();

protected:
    FactTable(QWidget& parent, const char* name);

    /// To be overridden: adds the rows.
    virtual void fill() = 0;

    void addRow(const QString& name, const QString& value);

    /// Shares the width between the columns: all of the names, but never more than half.
    void fitColumns();

    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
};

} // namespace vfViewer
