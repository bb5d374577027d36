// SPDX-License-Identifier: MIT
#include "qt/LoadDialog.h"

#include <velaforge/isolation/Job.h>
#include <velaforge/qt/PlainText.h>

#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace vfViewer {

namespace {

constexpr int millisecondsUntilShown = 250;
constexpr int millisecondsBetween = 100;

/// The cursor of everything that is not this dialog says that there is to be waited; in here there is something to do.
class OrdinaryCursor
{
public:
    OrdinaryCursor() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~OrdinaryCursor() { QGuiApplication::restoreOverrideCursor(); }
    OrdinaryCursor(const OrdinaryCursor&) = delete;
    OrdinaryCursor& operator=(const OrdinaryCursor&) = delete;
};

} // namespace

void LoadDialog::waitFor(vfIsolation::Job& job, bool isSaving, QWidget* window)
{
    QEventLoop loop;
    job.whenDone([&loop] { QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection); });
    QTimer::singleShot(millisecondsUntilShown, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (job.isDone())
        return;
    const OrdinaryCursor cursor;
    LoadDialog dialog(job, isSaving, window && window->isVisible() ? window : nullptr);
    QObject::connect(&dialog, &QDialog::rejected, &loop, [&job] { job.cancel(); });
    dialog.show();
    loop.exec();
    // The loop also ends when the program is told to end.
    job.cancel();
    while (!job.wait(1000)) { // files are being moved to their places
    }
}

LoadDialog::LoadDialog(vfIsolation::Job& job, bool isSaving, QWidget* window)
    : QDialog(window), m_job(job), m_bar(new QProgressBar)
{
    setObjectName(QStringLiteral("loading"));
    setModal(true);
    const QString name = QFileInfo(QFile::decodeName(job.path().c_str())).fileName();
    setWindowTitle((isSaving ? tr("Saving %1") : tr("Opening %1")).arg(name));
    auto* label = new QLabel((isSaving ? tr("Writing “%1”…") : tr("Reading “%1”…")).arg(name));
    vfApplication::usePlainText(*label);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
    m_bar->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &LoadDialog::showProgress);
    timer->start(millisecondsBetween);
    showProgress();
}

void LoadDialog::showProgress()
{
    const double progress = m_job.progress();
    m_bar->setRange(0, progress < 0 ? 0 : 100);
    m_bar->setValue(static_cast<int>(progress * 100));
}

} // namespace vfViewer
