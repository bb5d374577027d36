// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDialog>

class QLabel;
class QPlainTextEdit;

namespace vfApplication {

/// What went wrong, line by line, in a window that keeps nobody waiting.
class VFAPPLICATIONQT_EXPORT ProblemsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ProblemsDialog(QWidget* parent);

    /// Adds a line; the lines of the last time are gone once the dialog was closed.
    void add(const QString& subject, const QString& reason);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QLabel* m_heading;
    QPlainTextEdit* m_lines;
};

} // namespace vfApplication
