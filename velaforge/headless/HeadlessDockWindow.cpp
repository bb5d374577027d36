// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessDockWindow.h>

namespace vfApplication {

namespace {

/// Returns whether all bits of @p area are allowed; true for NoDockArea, which has none.
bool isAllowed(DockWindow::DockArea area, unsigned int areas)
{
    return (static_cast<unsigned int>(area) & ~areas) == 0;
}

} // namespace

HeadlessDockWindow::HeadlessDockWindow() = default;

HeadlessDockWindow::~HeadlessDockWindow() = default;

void HeadlessDockWindow::setTitle(const char* title, const char*)
{
    m_title = title;
}

void HeadlessDockWindow::setAllowedDockingAreas(unsigned int areas)
{
    m_allowedAreas = areas;
    if (!isAllowed(m_area, areas))
        m_area = DockWindow::NoDockArea;
}

unsigned int HeadlessDockWindow::getAllowedDockingAreas() const
{
    return m_allowedAreas;
}

bool HeadlessDockWindow::isFloating() const
{
    return m_floatable && m_area == DockWindow::NoDockArea;
}

void HeadlessDockWindow::setVisible(bool visible)
{
    m_visible = visible;
}

bool HeadlessDockWindow::getVisible() const
{
    return m_visible;
}

void HeadlessDockWindow::setAllowTabbing(bool allow)
{
    m_allowTabbing = allow;
}

bool HeadlessDockWindow::getAllowTabbing() const
{
    return m_allowTabbing;
}

void HeadlessDockWindow::setAllowTabbed(bool allow)
{
    m_allowTabbed = allow;
}

bool HeadlessDockWindow::getAllowTabbed() const
{
    return m_allowTabbed;
}

bool HeadlessDockWindow::isTabbed() const
{
    return false;
}

void HeadlessDockWindow::setCloseable(bool closeable)
{
    m_closeable = closeable;
}

bool HeadlessDockWindow::getCloseable() const
{
    return m_closeable;
}

void HeadlessDockWindow::setMoveable(bool moveable)
{
    m_moveable = moveable;
}

bool HeadlessDockWindow::getMoveable() const
{
    return m_moveable;
}

void HeadlessDockWindow::setFloatable(bool floatable)
{
    m_floatable = floatable;
}

bool HeadlessDockWindow::getFloatable() const
{
    return m_floatable;
}

void HeadlessDockWindow::setAutoHide(bool autoHide)
{
    m_autoHide = autoHide;
}

bool HeadlessDockWindow::getAutoHide() const
{
    return m_autoHide;
}

void HeadlessDockWindow::setArea(DockWindow::DockArea area)
{
    if (isAllowed(area, m_allowedAreas))
        m_area = area;
}

DockWindow::DockArea HeadlessDockWindow::getArea() const
{
    return m_area;
}

void HeadlessDockWindow::onLanguageChange() {}

} // namespace vfApplication
