// SPDX-License-Identifier: MIT
#pragma once

#include <QTableWidget>

namespace vfViewer {

/// What the active model, or the part that is selected, consists of.
class StatisticsPanel : public QTableWidget
{
    Q_OBJECT

public:
    explicit StatisticsPanel(QWidget& parent);

    void refresh();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void addRow(const QString& name, const QString& value);
};

} // namespace vfViewer
