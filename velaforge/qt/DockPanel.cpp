// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/DockPanel.h>

#include <velaforge/qt/QtDockWindow.h>
#include <velaforge/qt/QtDockWindowContents.h>
#include <velaforge/qt/internal/Reasons.h>

#include <QContextMenuEvent>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>

namespace vfApplication {

DockPanel::DockPanel(QMainWindow& window, QtDockWindow& half) : QDockWidget(&window), m_half(&half)
{
    // A panel that was moved onto another may have to go beside it.
    const auto enforce = [this] {
        if (m_half)
            m_half->enforceTabbing();
    };
    connect(this, &QDockWidget::dockLocationChanged, this, enforce, Qt::QueuedConnection);
    connect(this, &QDockWidget::visibilityChanged, this, enforce, Qt::QueuedConnection);
}

void DockPanel::createContents()
{
    DockWindow* window = m_half ? m_half->getDockWindow() : nullptr;
    if (m_hasContents || !window)
        return;
    m_hasContents = true;
    const QPointer<DockPanel> self(this); // the program may have the window removed
    QWidget* contents = nullptr;
    try {
        if (auto* own = dynamic_cast<QtDockWindowContents*>(window))
            contents = own->createContents(*this);
        else if (const auto create = QtDockWindowContents::findContents(window->getId()))
            contents = create(*this);
    } catch (...) {
        if (self)
            setWidget(new QWidget(this));
        throw;
    }
    if (self)
        setWidget(contents ? contents : new QWidget(this));
}

void DockPanel::setVisible(bool visible)
{
    const QPointer<DockPanel> self(this);
    const bool isFirst = visible && !m_hasContents && parentWidget() && parentWidget()->isVisible();
    if (isFirst)
        showThrown([this] { createContents(); });
    if (self)
        QDockWidget::setVisible(visible);
    if (self && isFirst)
        makeRoom();
}

/// A layout that was saved while the panel was empty and hidden gives it next to no place.
void DockPanel::makeRoom()
{
    auto* window = qobject_cast<QMainWindow*>(parentWidget());
    if (!window || isFloating() || !isVisible() || !widget())
        return;
    const Qt::DockWidgetArea area = window->dockWidgetArea(this);
    const bool isBeside = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
    const QSize wanted = sizeHint();
    if (isBeside && width() < wanted.width())
        window->resizeDocks({this}, {wanted.width()}, Qt::Horizontal);
    else if (!isBeside && height() < wanted.height())
        window->resizeDocks({this}, {wanted.height()}, Qt::Vertical);
}

void DockPanel::showEvent(QShowEvent* event)
{
    const QPointer<DockPanel> self(this);
    showThrown([this] { createContents(); });
    if (self)
        QDockWidget::showEvent(event);
}

void DockPanel::contextMenuEvent(QContextMenuEvent* event)
{
    if (!m_half)
        return;
    event->accept();
    const QPointer<DockPanel> self(this);
    QMenu menu; // no child: the panel may be deleted while the menu is open
    menu.setObjectName(QStringLiteral("panelMenu"));
    QAction* hides = menu.addAction(tr("Hide when not in use"));
    hides->setCheckable(true);
    hides->setChecked(m_half->getAutoHide());
    hides->setEnabled(!isFloating());
    QAction* floats = menu.addAction(tr("Tear off"));
    floats->setCheckable(true);
    floats->setChecked(isFloating());
    floats->setEnabled(m_half->getFloatable());
    QAction* closes = menu.addAction(tr("Close"));
    closes->setEnabled(m_half->getCloseable());
    const QAction* chosen = menu.exec(event->globalPos());
    if (!self || !m_half)
        return;
    if (chosen == hides)
        showThrown([this] { m_half->setAutoHide(!m_half->getAutoHide()); });
    else if (chosen == floats)
        setFloating(!isFloating());
    else if (chosen == closes)
        m_half->setVisible(false);
}

} // namespace vfApplication
