// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

namespace vfIsolation {
class Job;
}

namespace vfViewer {

/// Shows how far the reading or writing of a file has come, and takes "Cancel".
class LoadDialog : public QDialog
{
    Q_OBJECT

public:
    /// Waits for a job while the window goes on with its work. What the user does in the first moment is kept for
    /// afterwards; then the dialog takes it. When the program is to end meanwhile, or the dialog is closed, the job is
    /// cancelled.
    /// @param isSaving  whether the file is written
    static void waitFor(vfIsolation::Job& job, bool isSaving, QWidget* window);

private:
    LoadDialog(vfIsolation::Job& job, bool isSaving, QWidget* window);

    void showProgress();

    vfIsolation::Job& m_job;
    QProgressBar* m_bar;
};

} // namespace vfViewer
