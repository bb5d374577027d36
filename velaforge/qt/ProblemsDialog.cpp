// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/ProblemsDialog.h>

#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>

#include <utility>

namespace vfApplication {

ProblemsDialog::ProblemsDialog(QWidget* parent)
    : QDialog(parent), m_heading(new QLabel(this)), m_lines(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("problems"));
    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    m_lines->setReadOnly(true);
    m_lines->setMaximumBlockCount(1000);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* heading = new QHBoxLayout;
    heading->addWidget(icon);
    heading->addWidget(m_heading, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(heading);
    layout->addWidget(m_lines);
    layout->addWidget(buttons);
    resize(560, 240);
    retranslate();
}

void ProblemsDialog::retranslate()
{
    setWindowTitle(tr("Problems"));
    m_heading->setText(tr("This could not be done:"));
}

void ProblemsDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

void ProblemsDialog::add(const QString& subject, const QString& reason)
{
    // What the user has closed was read.
    if (std::exchange(m_isRead, false))
        m_lines->clear();
    // What a file calls itself must not look like another line.
    const QString line = subject.isEmpty() ? reason : QStringLiteral("%1: %2").arg(subject, reason);
    m_lines->appendPlainText(line.simplified());
    if (parentWidget()->isVisible())
        present();
}

void ProblemsDialog::present()
{
    if (m_isRead)
        return;
    show();
    raise();
}

void ProblemsDialog::hideEvent(QHideEvent* event)
{
    m_isRead = m_isRead || !event->spontaneous();
    QDialog::hideEvent(event);
}

} // namespace vfApplication
