// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDialog>

class QLabel;
class QPlainTextEdit;

namespace vfApplication {

/// A modeless window that lists failures, a line each.
class VFAPPLICATIONQT_EXPORT ProblemsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ProblemsDialog(QWidget* parent);

    /// Adds a line, and shows the dialog if the window behind it is shown: it would get in front of this. The lines of the
    /// last time are gone once the dialog was closed.
    void add(const QString& subject, const QString& reason);

    /// Shows the dialog at the front if there are lines that the user has not closed.
    void present();

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void retranslate();

    QLabel* m_heading;
    QPlainTextEdit* m_lines;
    bool m_isRead = false;
};

} // namespace vfApplication
