// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtDockWindow.h>

#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/VfString.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/qt/QtDockWindowContents.h>
#include <velaforge/qt/internal/AutoHideStrips.h>
#include <velaforge/qt/internal/DockPanel.h>
#include <velaforge/qt/internal/Text.h>

#include <osg/observer_ptr>

#include <QCoreApplication>
#include <QMainWindow>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace vfApplication {

namespace {

bool isOneArea(DockWindow::DockArea area)
{
    return area == DockWindow::LeftDockArea || area == DockWindow::RightDockArea ||
           area == DockWindow::TopDockArea || area == DockWindow::BottomDockArea;
}

/// The two sides number the areas alike.
Qt::DockWidgetArea toQtArea(DockWindow::DockArea area)
{
    return static_cast<Qt::DockWidgetArea>(static_cast<int>(area));
}

static_assert(int(DockWindow::LeftDockArea) == int(Qt::LeftDockWidgetArea));
static_assert(int(DockWindow::RightDockArea) == int(Qt::RightDockWidgetArea));
static_assert(int(DockWindow::TopDockArea) == int(Qt::TopDockWidgetArea));
static_assert(int(DockWindow::BottomDockArea) == int(Qt::BottomDockWidgetArea));

/// @return the first area of a set, none for an empty one
DockWindow::DockArea firstArea(unsigned int areas)
{
    for (const auto area : {DockWindow::LeftDockArea, DockWindow::RightDockArea, DockWindow::TopDockArea,
                            DockWindow::BottomDockArea})
    {
        if (areas & static_cast<unsigned int>(area))
            return area;
    }
    return DockWindow::NoDockArea;
}

} // namespace

struct QtDockWindowPrivate
{
    /// Panels are shown, hidden and moved by means of events, in which the contents may have the window removed.
    using Watch = vfBase::LifeWatch<QtDockWindowPrivate>;

    QtDockWindowPrivate() = default;
    ~QtDockWindowPrivate() { Watch::end(this); }
    QtDockWindowPrivate(const QtDockWindowPrivate&) = delete;
    QtDockWindowPrivate& operator=(const QtDockWindowPrivate&) = delete;

    osg::observer_ptr<DockWindowPrivate> body;
    QPointer<QMainWindow> window;
    QPointer<AutoHideStrips> strips;
    QPointer<DockPanel> panel;

    // What it was told; area and visibility count only while there is no panel, or the panel hides itself.
    vfBase::VfString title;
    vfBase::VfString context;
    unsigned int areas = DockWindow::AllDockAreas;
    DockWindow::DockArea area = DockWindow::NoDockArea;
    bool isVisible = true;
    bool allowsTabbing = true;
    bool allowsTabbed = true;
    bool isCloseable = true;
    bool isMoveable = true;
    bool isFloatable = true;
    bool hidesItself = false;

    bool isBehindButton() const { return panel && strips && strips->contains(*panel); }

    QString shownTitle() const
    {
        const QString text = toQt(title);
        return context.empty() ? text : QCoreApplication::translate(context.c_str(), title.c_str());
    }

    void setFeatures() const
    {
        QDockWidget::DockWidgetFeatures features;
        features.setFlag(QDockWidget::DockWidgetClosable, isCloseable);
        features.setFlag(QDockWidget::DockWidgetMovable, isMoveable);
        features.setFlag(QDockWidget::DockWidgetFloatable, isFloatable);
        panel->setFeatures(features);
    }

    /// Where it goes that has no place of its own.
    DockWindow::DockArea somewhere() const
    {
        const DockWindow::DockArea first = firstArea(areas);
        return first == DockWindow::NoDockArea ? DockWindow::LeftDockArea : first;
    }

    void place(DockWindow::DockArea wanted) const
    {
        // What Qt lets be docked by hand it lets be docked here, and the other way round.
        panel->setAllowedAreas(Qt::DockWidgetAreas::fromInt(int(areas & DockWindow::AllDockAreas)));
        if (wanted != DockWindow::NoDockArea) {
            window->addDockWidget(toQtArea(wanted), panel);
            setFloating(false);
            return;
        }
        if (window->dockWidgetArea(panel) == Qt::NoDockWidgetArea)
            window->addDockWidget(toQtArea(somewhere()), panel);
        setFloating(isFloatable);
    }

    void setFloating(bool floating) const
    {
        if (panel)
            panel->setFloating(floating);
    }

    void show(bool visible) const
    {
        if (panel)
            panel->setVisible(visible);
    }

    /// Whether it hides depends on whether it should, is docked, and is there at all.
    void updateAutoHide()
    {
        if (!panel || !strips)
            return;
        const bool wanted = hidesItself && isVisible && !panel->isFloating();
        if (wanted == isBehindButton())
            return;
        const Watch watch(this);
        if (!wanted) {
            strips->remove(*panel);
            if (!watch.isGone())
                show(isVisible);
            return;
        }
        panel->createContents();
        if (!watch.isGone())
            show(false);
        if (!watch.isGone() && panel && strips)
            strips->add(*panel);
    }
};

QtDockWindow::QtDockWindow(DockWindow& window) : d(std::make_unique<QtDockWindowPrivate>())
{
    d->body = window.getDockWindowPrivate();
}

QtDockWindow::~QtDockWindow()
{
    detach();
}

DockWindow* QtDockWindow::getDockWindow() const
{
    return d->body.valid() ? d->body->dockWindow : nullptr;
}

QDockWidget* QtDockWindow::getWidget() const
{
    return d->panel;
}

void QtDockWindow::realize(QMainWindow& window, AutoHideStrips& strips)
{
    DockWindow* dockWindow = getDockWindow();
    if (d->panel || !dockWindow)
        return;
    d->window = &window;
    d->strips = &strips;
    d->panel = new DockPanel(window, *this);
    d->panel->setObjectName(toQt(vfBase::VfString(dockWindow->getId())));
    d->panel->setWindowTitle(d->shownTitle());
    d->setFeatures();
    const QtDockWindowPrivate::Watch watch(d.get());
    d->place(d->area);
    if (!watch.isGone())
        d->show(d->isVisible);
    if (!watch.isGone())
        d->updateAutoHide();
}

void QtDockWindow::detach()
{
    if (!d->panel)
        return;
    d->area = getArea();
    d->isVisible = getVisible();
    // Whatever its contents do when they are hidden finds no panel here.
    const QPointer<DockPanel> panel = std::exchange(d->panel, nullptr);
    const QPointer<QMainWindow> window = d->window;
    panel->forgetHalf();
    if (d->strips)
        d->strips->remove(*panel);
    // It may be one of its own buttons that had it removed.
    if (panel)
        panel->hide();
    if (panel && window)
        window->removeDockWidget(panel);
    if (panel)
        panel->deleteLater();
}

void QtDockWindow::setTitle(const char* title, const char* context)
{
    d->title = title;
    d->context = vfBase::VfString(context);
    onLanguageChange();
}

void QtDockWindow::onLanguageChange()
{
    if (d->panel)
        d->panel->setWindowTitle(d->shownTitle());
}

void QtDockWindow::setAllowedDockingAreas(unsigned int areas)
{
    d->areas = areas;
    if (d->panel)
        d->panel->setAllowedAreas(Qt::DockWidgetAreas::fromInt(int(areas & DockWindow::AllDockAreas)));
    const DockWindow::DockArea area = getArea();
    if (area == DockWindow::NoDockArea || (areas & static_cast<unsigned int>(area)))
        return;
    const DockWindow::DockArea next = d->isFloatable ? DockWindow::NoDockArea : firstArea(areas);
    const QtDockWindowPrivate::Watch watch(d.get());
    if (d->panel)
        d->place(next);
    if (watch.isGone())
        return;
    d->area = next;
    d->updateAutoHide();
}

unsigned int QtDockWindow::getAllowedDockingAreas() const
{
    return d->areas;
}

bool QtDockWindow::isFloating() const
{
    return d->panel ? d->panel->isFloating() : d->isFloatable && d->area == DockWindow::NoDockArea;
}

bool QtDockWindow::getVisible() const
{
    return d->panel && !d->isBehindButton() ? !d->panel->isHidden() : d->isVisible;
}

void QtDockWindow::setVisible(bool visible)
{
    d->isVisible = visible;
    const QtDockWindowPrivate::Watch watch(d.get());
    d->updateAutoHide();
    if (!watch.isGone() && d->panel && !d->isBehindButton())
        d->panel->setVisible(visible);
}

void QtDockWindow::setAllowTabbing(bool allow)
{
    d->allowsTabbing = allow;
    enforceTabbing();
}

bool QtDockWindow::getAllowTabbing() const
{
    return d->allowsTabbing;
}

void QtDockWindow::setAllowTabbed(bool allow)
{
    d->allowsTabbed = allow;
    enforceTabbing();
}

bool QtDockWindow::getAllowTabbed() const
{
    return d->allowsTabbed;
}

bool QtDockWindow::isTabbed() const
{
    if (!d->panel || !d->window || d->panel->isHidden())
        return false;
    const QList<QDockWidget*> others = d->window->tabifiedDockWidgets(d->panel);
    return std::any_of(others.begin(), others.end(),
                       [](const QDockWidget* other) { return !other->isHidden(); });
}

void QtDockWindow::enforceTabbing()
{
    if (!isTabbed())
        return;
    const QList<QDockWidget*> others = d->window->tabifiedDockWidgets(d->panel);
    for (QDockWidget* dock : others) {
        const auto* other = dynamic_cast<const DockPanel*>(dock);
        if (!other || !other->half())
            continue;
        // One of the two is behind a tab of the other.
        const bool isAllowed = (d->allowsTabbing && other->half()->getAllowTabbed()) ||
                               (d->allowsTabbed && other->half()->getAllowTabbing());
        if (isAllowed)
            continue;
        d->window->addDockWidget(d->window->dockWidgetArea(d->panel), d->panel); // at the end, without a tab
        return;
    }
}

void QtDockWindow::setCloseable(bool closeable)
{
    d->isCloseable = closeable;
    if (d->panel)
        d->setFeatures();
}

bool QtDockWindow::getCloseable() const
{
    return d->isCloseable;
}

void QtDockWindow::setMoveable(bool moveable)
{
    d->isMoveable = moveable;
    if (d->panel)
        d->setFeatures();
}

bool QtDockWindow::getMoveable() const
{
    return d->isMoveable;
}

void QtDockWindow::setFloatable(bool floatable)
{
    d->isFloatable = floatable;
    if (!d->panel)
        return;
    const QtDockWindowPrivate::Watch watch(d.get());
    if (!floatable && d->panel->isFloating())
        d->panel->setFloating(false);
    if (watch.isGone() || !d->panel)
        return;
    d->setFeatures();
    d->updateAutoHide();
}

bool QtDockWindow::getFloatable() const
{
    return d->isFloatable;
}

void QtDockWindow::setAutoHide(bool autoHide)
{
    // Who was closed stays closed, and who is seen stays there.
    d->isVisible = getVisible();
    d->hidesItself = autoHide;
    d->updateAutoHide();
}

bool QtDockWindow::getAutoHide() const
{
    return d->hidesItself;
}

void QtDockWindow::setArea(DockWindow::DockArea area)
{
    const bool isAllowed = isOneArea(area) && (d->areas & static_cast<unsigned int>(area));
    if (area != DockWindow::NoDockArea && !isAllowed)
        return;
    d->area = area;
    if (!d->panel || area == getArea())
        return;
    const bool isVisible = getVisible();
    const QtDockWindowPrivate::Watch watch(d.get());
    if (d->isBehindButton())
        d->strips->remove(*d->panel);
    if (!watch.isGone() && d->panel)
        d->place(area);
    if (watch.isGone())
        return;
    d->isVisible = isVisible;
    d->show(isVisible);
    if (!watch.isGone())
        d->updateAutoHide();
}

DockWindow::DockArea QtDockWindow::getArea() const
{
    if (!d->panel || !d->window)
        return d->area;
    return d->panel->isFloating()
               ? DockWindow::NoDockArea
               : static_cast<DockWindow::DockArea>(int(d->window->dockWidgetArea(d->panel)));
}

} // namespace vfApplication
