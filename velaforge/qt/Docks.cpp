// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/Docks.h>

#include <velaforge/application/Application.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowProducer.h>
#include <velaforge/qt/QtDockWindowManager.h>
#include <velaforge/qt/internal/AutoHideStrips.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/WindowSettings.h>

#include <osg/observer_ptr>

#include <QAction>
#include <QDataStream>
#include <QDockWidget>
#include <QGuiApplication>
#include <QIODevice>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace vfApplication {

namespace {

/// A half, and the body that tells when its window goes.
struct Made
{
    osg::observer_ptr<DockWindowPrivate> body;
    std::unique_ptr<QtDockWindow> half;
};

std::vector<Made>& made()
{
    // Never destroyed: windows of modules may go at the very end.
    static auto& all = *new std::vector<Made>;
    return all;
}

struct WindowProducer : DockWindowProducer
{
    DockWindowInterface* create(DockWindow* dockWindow) override
    {
        made().push_back({dockWindow->getDockWindowPrivate(), std::make_unique<QtDockWindow>(*dockWindow)});
        return made().back().half.get();
    }
};

struct ManagerProducer : DockWindowManagerProducer
{
    DockWindowManagerInterface* create(DockWindowManager*) override { return new QtDockWindowManager; }
};

/// Keeps the halves while it exists. Code of the program that runs between two of them may remove windows,
/// which shows in getDockWindow().
class HalvesKept
{
public:
    HalvesKept() { ++s_count; }
    ~HalvesKept() { --s_count; }
    HalvesKept(const HalvesKept&) = delete;
    HalvesKept& operator=(const HalvesKept&) = delete;

    static bool isAny() { return s_count > 0; }

private:
    static int s_count;
};

int HalvesKept::s_count = 0;

/// Calls @p use for each half whose window is there when its turn comes.
template <class Use>
void forEachHalf(Use use)
{
    const HalvesKept kept;
    for (QtDockWindow* half : Docks::halves()) {
        if (half->getDockWindow())
            use(*half);
    }
}

/// Windows that were destroyed while they were in the manager's table are taken out of it: it must not meet them.
void removeDeadEntries(DockWindowManager& manager)
{
    std::vector<vfBase::VfString> ids;
    for (const Made& one : made()) {
        if (one.body.valid() && !one.body->dockWindow)
            ids.push_back(one.body->id);
    }
    for (const vfBase::VfString& id : ids) {
        if (!manager.findDockWindow(id.c_str()))
            manager.removeDockWindow(id.c_str());
    }
}

/// @return whether a layout that Qt has made knows a window of that name
bool isKnown(const QByteArray& layout, const QString& name)
{
    QByteArray written;
    QDataStream stream(&written, QIODevice::WriteOnly);
    stream << name;
    return layout.contains(written);
}

QByteArray fromBase64(const std::string& text)
{
    return QByteArray::fromBase64(QByteArray::fromStdString(text));
}

} // namespace

void Docks::install()
{
    static WindowProducer windows;
    static ManagerProducer managers;
    DockWindowProducer::Realizer = &windows;
    DockWindowManagerProducer::Realizer = &managers;
}

Docks::Docks(QMainWindow& window) : QObject(&window), m_window(window), m_strips(new AutoHideStrips(window))
{
    window.setDockNestingEnabled(true);
}

Docks::~Docks()
{
    const HalvesKept kept;
    for (std::size_t i = 0; i < made().size(); ++i)
        made()[i].half->detach();
}

std::vector<QtDockWindow*> Docks::halves()
{
    std::vector<QtDockWindow*> there;
    for (const Made& one : made()) {
        if (one.half->getDockWindow())
            there.push_back(one.half.get());
    }
    return there;
}

std::string Docks::idOf(const QtDockWindow& half)
{
    DockWindow* window = half.getDockWindow();
    return window ? window->getId() : "";
}

void Docks::realizeAll()
{
    forEachHalf([this](QtDockWindow& half) {
        if (half.getWidget())
            return;
        // By now the window is whole, and knows how it wants to stand.
        half.getDockWindow()->applyDefaultState();
        half.realize(m_window, *m_strips);
        const std::string id = idOf(half);
        m_defaults[id] = {half.getVisible(), half.getAutoHide()};
    });
}

/// A column or a row of its own, so that all others keep their places and sizes.
void Docks::placeBeside(QtDockWindow& half, DockWindow::DockArea area)
{
    const bool isUpright = area == DockWindow::LeftDockArea || area == DockWindow::RightDockArea;
    if (half.getWidget())
        m_window.addDockWidget(static_cast<Qt::DockWidgetArea>(int(area)), half.getWidget(),
                               isUpright ? Qt::Horizontal : Qt::Vertical);
}

/// Puts a window as it stood, as far as only its own record tells.
void Docks::settle(QtDockWindow& half)
{
    const DockWindowManagerSettings& settings = *DockWindowManagerSettings::instance(false);
    const auto known = settings.getDockWindowList().find(idOf(half));
    if (known == settings.getDockWindowList().end())
        return;
    const auto record = known->second;
    half.setArea(record.area);
    half.setVisible(record.visible);
    half.setAutoHide(record.autoHide);
}

void Docks::restore()
{
    const HalvesKept kept;
    const WindowSettings& settings = WindowSettings::instance();
    realizeAll();
    m_settled = halves();
    m_defaultLayout = m_window.saveState();
    m_isRestored = true;
    if (!settings.geometry.empty())
        m_window.restoreGeometry(fromBase64(settings.geometry));

    const auto& records = DockWindowManagerSettings::instance(false)->getDockWindowList();
    const QByteArray layout = fromBase64(settings.layout);
    std::vector<QtDockWindow*> newcomers;
    forEachHalf([&](QtDockWindow& half) {
        half.setAutoHide(false);
        if (half.getWidget() && !layout.isEmpty() && !isKnown(layout, half.getWidget()->objectName()))
            newcomers.push_back(&half);
    });
    m_hasNewcomers = !newcomers.empty();
    std::map<QtDockWindow*, DockWindow::DockArea> places;
    for (QtDockWindow* half : newcomers) {
        places[half] = half->getArea();
        if (places[half] != DockWindow::NoDockArea && half->getWidget())
            m_window.removeDockWidget(half->getWidget());
    }
    const bool isLaidOut = !layout.isEmpty() && m_window.restoreState(layout);
    forEachHalf([&](QtDockWindow& half) {
        const bool isNew = std::find(newcomers.begin(), newcomers.end(), &half) != newcomers.end();
        const std::string id = idOf(half);
        const auto record = records.find(id);
        if (isNew && places[&half] != DockWindow::NoDockArea) {
            placeBeside(half, places[&half]);
            if (half.getWidget())
                half.getWidget()->setVisible(m_defaults[id].isVisible);
        }
        if (record == records.end()) {
            half.setAutoHide(m_defaults[id].hidesItself);
        } else if (isLaidOut) {
            const bool hidesItself = record->second.autoHide;
            half.setVisible(record->second.visible);
            half.setAutoHide(hidesItself);
        } else {
            settle(half);
        }
    });
    if (!m_window.isVisible())
        hideFloating();
}

void Docks::hideFloating()
{
    forEachHalf([this](const QtDockWindow& half) {
        QDockWidget* widget = half.getWidget();
        if (!widget || !widget->isFloating() || widget->isHidden())
            return;
        m_floating.emplace_back(widget);
        widget->hide();
    });
}

void Docks::showFloating()
{
    const HalvesKept kept;
    for (const QPointer<QDockWidget>& widget : std::exchange(m_floating, {})) {
        if (!widget)
            continue;
        const QRect title(widget->frameGeometry().topLeft(), QSize(widget->frameGeometry().width(), 20));
        bool isReachable = false;
        for (const QScreen* screen : QGuiApplication::screens())
            isReachable = isReachable || screen->availableGeometry().intersects(title);
        if (!isReachable)
            widget->move(widget->screen()->availableGeometry().topLeft());
        widget->show();
    }
}

void Docks::save()
{
    Application* application = Application::instance(false);
    if (!application || !m_isRestored)
        return;
    m_strips->close();
    WindowSettings& settings = WindowSettings::instance();
    if (!m_window.isFullScreen())
        settings.geometry = m_window.saveGeometry().toBase64().toStdString();
    // An unchanged layout is not stored: the stored one may have positions of windows that do not exist today.
    const QByteArray layout = m_window.saveState();
    if (layout != m_restoredLayout || m_hasNewcomers || settings.layout.empty())
        settings.layout = layout.toBase64().toStdString();
    DockWindowManager& manager = application->getDockWindowManager();
    removeDeadEntries(manager);
    manager.saveDockWindowsState();
    // The layout knows the windows of modules too, of which the manager may know nothing.
    DockWindowManagerSettings& windows = *DockWindowManagerSettings::instance(false);
    forEachHalf([&windows](const QtDockWindow& half) {
        const std::string id = idOf(half);
        if (!half.getDockWindow())
            return;
        windows.setDockWindowVisibleState(id, half.getVisible());
        windows.setDockWindowAutoHideState(id, half.getAutoHide());
        windows.setDockWindowAreaState(id, half.getArea());
    });
}

void Docks::reset()
{
    forEachHalf([](QtDockWindow& half) { half.setAutoHide(false); });
    m_window.restoreState(m_defaultLayout);
    forEachHalf([this](QtDockWindow& half) {
        const Standing standing = m_defaults[idOf(half)];
        half.setVisible(standing.isVisible);
        half.setAutoHide(standing.hidesItself);
    });
}

void Docks::update()
{
    if (!m_isRestored)
        return;
    if (m_restoredLayout.isEmpty() && m_window.isVisible())
        m_restoredLayout = m_window.saveState();
    {
        const HalvesKept kept;
        for (std::size_t i = 0; i < made().size(); ++i) {
            if (!made()[i].half->getDockWindow())
                made()[i].half->detach();
        }
    }
    if (!HalvesKept::isAny())
        made().erase(
            std::remove_if(made().begin(), made().end(), [](const Made& one) { return !one.body.valid(); }),
            made().end());
    const HalvesKept kept;
    const std::vector<QtDockWindow*> now = halves();
    if (now != m_settled) {
        const std::vector<QtDockWindow*> before = m_settled;
        m_settled = now;
        realizeAll();
        for (QtDockWindow* half : now) {
            const bool isNew = std::find(before.begin(), before.end(), half) == before.end();
            if (isNew && half->getWidget() && !m_window.restoreDockWidget(half->getWidget()))
                settle(*half);
        }
    }
    forEachHalf([this](const QtDockWindow& half) {
        // A change of a dock window's shortcut is not announced.
        const std::string id = idOf(half);
        const DockWindow* window = half.getDockWindow();
        if (!window)
            return;
        QAction*& action = m_keys[id];
        if (!action) {
            action = new QAction(this);
            connect(action, &QAction::triggered, this, [this, id] { showThrown([&] { toggle(id); }); });
            m_window.addAction(action);
        }
        const int key = window->getShortcut();
        const QKeySequence wanted =
            key == 0 ? QKeySequence() : QKeySequence(QKeyCombination::fromCombined(key));
        if (action->shortcut() != wanted)
            action->setShortcut(wanted);
    });
}

bool Docks::toggle(const std::string& id)
{
    bool isFound = false;
    forEachHalf([&id, &isFound](QtDockWindow& half) {
        if (isFound || idOf(half) != id)
            return;
        isFound = true;
        half.setVisible(!half.getVisible());
        if (half.getVisible() && half.getWidget())
            half.getWidget()->raise();
    });
    return isFound;
}

void Docks::fillMenu(QMenu& menu)
{
    forEachHalf([this, &menu](const QtDockWindow& half) {
        const std::string id = idOf(half);
        if (!half.getWidget() || !half.getDockWindow())
            return;
        QString title = half.getWidget()->windowTitle();
        QAction* action = menu.addAction(title.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setObjectName(toQt(id));
        action->setCheckable(true);
        action->setChecked(half.getVisible());
        action->setEnabled(half.getCloseable() || !half.getVisible());
        connect(action, &QAction::triggered, this, [this, id] { showThrown([&] { toggle(id); }); });
    });
    if (menu.isEmpty())
        menu.addAction(tr("No windows"))->setEnabled(false);
}

} // namespace vfApplication
