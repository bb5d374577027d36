// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/DocumentTabs.h>

#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/internal/Text.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QUrl>

#include <algorithm>

namespace vfApplication {

namespace {

// The width of a tab, in average characters of its font.
constexpr int leastCharacters = 12;
constexpr int mostCharacters = 32;

} // namespace

DocumentTabBar::DocumentTabBar(QWidget* parent) : QTabBar(parent)
{
    setContextMenuPolicy(Qt::CustomContextMenu);
}

QSize DocumentTabBar::tabSizeHint(int index) const
{
    QSize size = QTabBar::tabSizeHint(index);
    const int unit = fontMetrics().averageCharWidth();
    size.setWidth(std::clamp(size.width(), leastCharacters * unit, mostCharacters * unit));
    return size;
}

QSize DocumentTabBar::minimumTabSizeHint(int index) const
{
    return tabSizeHint(index);
}

void DocumentTabBar::mouseReleaseEvent(QMouseEvent* event)
{
    const int index = tabAt(event->position().toPoint());
    if (event->button() == Qt::MiddleButton && index >= 0) {
        event->accept();
        Q_EMIT tabCloseRequested(index);
        return;
    }
    QTabBar::mouseReleaseEvent(event);
}

DocumentTabs::DocumentTabs(QWidget* parent) : QTabWidget(parent)
{
    auto* bar = new DocumentTabBar(this);
    setTabBar(bar);
    setDocumentMode(true);
    setMovable(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideMiddle);
    connect(bar, &QWidget::customContextMenuRequested, this, &DocumentTabs::showMenu);
}

void DocumentTabs::setTitle(QWidget& page, const QString& title, const QString& path, bool isModified)
{
    const int index = indexOf(&page);
    QString label = title;
    label.replace(QLatin1Char('&'), QLatin1String("&&"));
    setTabText(index, isModified ? label + QLatin1Char('*') : label);
    setTabToolTip(index, plainToolTip(path.isEmpty() ? title : path));
    tabBar()->setTabData(index, path);
}

void DocumentTabs::showMenu(const QPoint& position)
{
    const int index = tabBar()->tabAt(position);
    if (index < 0)
        return;
    const QPointer<QWidget> page = widget(index);
    const QString path = tabBar()->tabData(index).toString();
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("tabMenu"));
    const QAction* close = menu.addAction(tr("&Close"));
    QAction* others = menu.addAction(tr("Close &others"));
    menu.addSeparator();
    QAction* copy = menu.addAction(tr("Copy &path"));
    QAction* folder = menu.addAction(tr("Show in &folder"));
    others->setEnabled(count() > 1);
    copy->setEnabled(!path.isEmpty());
    folder->setEnabled(!path.isEmpty());
    const QPointer<DocumentTabs> self = this;
    const QAction* chosen = menu.exec(tabBar()->mapToGlobal(position));
    if (!self || !page)
        return;
    if (chosen == close)
        Q_EMIT tabCloseRequested(indexOf(page));
    else if (chosen == others)
        closeOthers(*page);
    else if (chosen == copy)
        QGuiApplication::clipboard()->setText(path);
    else if (chosen == folder)
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

void DocumentTabs::closeOthers(QWidget& kept)
{
    const QPointer<DocumentTabs> self = this;
    const QPointer<QWidget> page = &kept;
    while (self && page && count() > 1) {
        const int index = indexOf(page) == 0 ? 1 : 0;
        const QPointer<QWidget> other = widget(index);
        Q_EMIT tabCloseRequested(index);
        if (self && other && indexOf(other) >= 0)
            return; // the user wants to keep it
    }
}

} // namespace vfApplication
