// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/AutoHideStrips.h>

#include <velaforge/qt/PlainText.h>

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vfApplication {

namespace {

Qt::ToolBarArea toolBarArea(Qt::DockWidgetArea area)
{
    switch (area) {
    case Qt::RightDockWidgetArea:
        return Qt::RightToolBarArea;
    case Qt::TopDockWidgetArea:
        return Qt::TopToolBarArea;
    case Qt::BottomDockWidgetArea:
        return Qt::BottomToolBarArea;
    default:
        return Qt::LeftToolBarArea;
    }
}

} // namespace

AutoHideStrips::AutoHideStrips(QMainWindow& window)
    : QObject(&window), m_window(window), m_frame(new QFrame(&window))
{
    m_frame->setObjectName(QStringLiteral("autoHidePanel"));
    m_frame->setFrameShape(QFrame::StyledPanel);
    m_frame->setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(m_frame);
    layout->setContentsMargins(2, 2, 2, 2);
    auto* title = new QLabel(m_frame);
    usePlainText(*title);
    layout->addWidget(title);
    m_frame->hide();
    window.installEventFilter(this);
}

QToolBar& AutoHideStrips::strip(Qt::DockWidgetArea area)
{
    QToolBar*& bar = m_strips[area];
    if (!bar) {
        bar = new QToolBar(&m_window);
        bar->setObjectName(QStringLiteral("autoHideStrip%1").arg(int(area)));
        bar->setMovable(false);
        bar->toggleViewAction()->setVisible(false);
        m_window.addToolBar(toolBarArea(area), bar);
    }
    bar->show();
    return *bar;
}

void AutoHideStrips::add(QDockWidget& dock)
{
    if (contains(dock))
        return;
    auto* button = new QToolButton;
    button->setText(dock.windowTitle());
    button->setObjectName(QStringLiteral("autoHide:") + dock.objectName());
    connect(&dock, &QDockWidget::windowTitleChanged, button, &QToolButton::setText);
    connect(button, &QToolButton::clicked, this, [this, &dock] {
        if (m_opened == &dock)
            close();
        else
            open(dock);
    });
    strip(m_window.dockWidgetArea(&dock)).addWidget(button);
    m_buttons[&dock] = button;
}

void AutoHideStrips::remove(QDockWidget& dock)
{
    if (m_opened == &dock)
        close();
    const auto found = m_buttons.find(&dock);
    if (found == m_buttons.end())
        return;
    delete found->second;
    m_buttons.erase(found);
    for (const auto& [area, bar] : m_strips) {
        const bool isEmpty = std::none_of(m_buttons.begin(), m_buttons.end(), [strip = bar](const auto& one) {
            return one.second && one.second->parentWidget() == strip;
        });
        if (isEmpty)
            bar->hide();
    }
}

void AutoHideStrips::open(QDockWidget& dock)
{
    const QPointer<QDockWidget> opened(&dock);
    close();
    if (!opened || !contains(dock) || !dock.widget())
        return;
    m_opened = &dock;
    m_frame->findChild<QLabel*>()->setText(dock.windowTitle());
    m_frame->layout()->addWidget(dock.widget());
    dock.setWidget(nullptr);
    place();
    m_frame->show();
    m_frame->raise();
    // Each of these may close the panel, or have its window removed.
    if (QWidget* shown = contents())
        shown->show();
    if (QWidget* shown = contents())
        shown->setFocus();
    if (m_opened)
        qApp->installEventFilter(this);
}

QWidget* AutoHideStrips::contents() const
{
    const QLayoutItem* item = m_opened ? m_frame->layout()->itemAt(1) : nullptr;
    return item ? item->widget() : nullptr;
}

void AutoHideStrips::close()
{
    if (!m_opened)
        return;
    qApp->removeEventFilter(this);
    QWidget* shown = contents();
    QDockWidget* dock = std::exchange(m_opened, nullptr);
    if (shown) {
        m_frame->layout()->removeWidget(shown);
        dock->setWidget(shown);
    }
    m_frame->hide();
}

/// Along the edge of the area, over whatever is in the middle.
void AutoHideStrips::place()
{
    const QRect centre = m_window.centralWidget() ? m_window.centralWidget()->geometry() : m_window.rect();
    const QSize wanted = m_frame->sizeHint().expandedTo(QSize(200, 150));
    const int width = qMin(wanted.width(), qMax(centre.width() * 2 / 3, 120));
    const int height = qMin(wanted.height(), qMax(centre.height() * 2 / 3, 90));
    QRect rect = centre;
    switch (m_window.dockWidgetArea(m_opened)) {
    case Qt::RightDockWidgetArea:
        rect.setLeft(centre.right() - width);
        break;
    case Qt::TopDockWidgetArea:
        rect.setHeight(height);
        break;
    case Qt::BottomDockWidgetArea:
        rect.setTop(centre.bottom() - height);
        break;
    default:
        rect.setWidth(width);
    }
    m_frame->setGeometry(rect);
}

bool AutoHideStrips::isInside(const QWidget* widget) const
{
    // A menu or a list that the panel opened is a window of its own, and still belongs to it.
    for (const QWidget* at = widget; at; at = at->parentWidget()) {
        if (at == m_frame || qobject_cast<const QToolButton*>(at) == m_buttons.at(m_opened))
            return true;
    }
    return false;
}

bool AutoHideStrips::eventFilter(QObject* object, QEvent* event)
{
    if (!m_opened)
        return false;
    if (event->type() == QEvent::Resize && object == &m_window)
        place();
    const bool isElsewhere = event->type() == QEvent::MouseButtonPress && object->isWidgetType() &&
                             !isInside(static_cast<QWidget*>(object));
    const bool isGivenUp =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (isElsewhere || isGivenUp)
        close();
    return false;
}

} // namespace vfApplication
