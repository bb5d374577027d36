// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtStatusBar.h>

#include <velaforge/qt/PlainText.h>

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QStatusBar>

#include <map>

namespace vfApplication {

struct QtStatusBarPrivate
{
    QPointer<QStatusBar> bar;
    QLabel* progressText;
    QProgressBar* progress;
    std::map<int, QLabel*> fields;

    QLabel* field(StatusBarTextEnum kind)
    {
        QLabel*& label = fields[kind];
        if (!label) {
            label = new QLabel(bar);
            label->setObjectName(QStringLiteral("status%1").arg(int(kind)));
            usePlainText(*label);
            const int gap = bar->fontMetrics().averageCharWidth();
            label->setContentsMargins(gap, 0, gap, 0);
            bar->addPermanentWidget(label);
        }
        return label;
    }
};

QtStatusBar::QtStatusBar(QStatusBar& bar) : d(std::make_unique<QtStatusBarPrivate>())
{
    d->bar = &bar;
    d->progressText = new QLabel(&bar);
    usePlainText(*d->progressText);
    d->progressText->hide();
    d->progress = new QProgressBar(&bar);
    d->progress->setObjectName(QStringLiteral("progress"));
    d->progress->setMaximumWidth(bar.fontMetrics().averageCharWidth() * 30);
    d->progress->hide();
    bar.addPermanentWidget(d->progressText);
    bar.addPermanentWidget(d->progress);
}

QtStatusBar::~QtStatusBar() = default;

void QtStatusBar::updateStatus(StatusBarTextEnum kind, const char* text, int value)
{
    if (!d->bar)
        return;
    QString shown = QString::fromUtf8(text);
    if (kind == StatusBarMessage) {
        d->bar->showMessage(shown, qMax(value, 0));
        return;
    }
    if (kind == StatusBarSelection && value > 1)
        shown += QStringLiteral(" (%1)").arg(value);
    QLabel* label = d->field(kind);
    label->setText(shown);
    label->setVisible(!shown.isEmpty());
}

void QtStatusBar::updateProgressPercent(int percent)
{
    if (!d->bar)
        return;
    d->progress->setValue(qBound(0, percent, 100));
    d->progress->setVisible(percent < 100);
    d->progressText->setVisible(percent < 100 && !d->progressText->text().isEmpty());
    if (d->bar->isVisible())
        d->bar->repaint();
}

void QtStatusBar::updateProgressText(const char* text)
{
    if (!d->bar)
        return;
    d->progressText->setText(QString::fromUtf8(text));
    d->progressText->setVisible(!d->progress->isHidden() && !d->progressText->text().isEmpty());
}

} // namespace vfApplication
