// SPDX-License-Identifier: MIT
#include "RecordingDockWindows.h"

#include "Recorder.h"

namespace vfTest {

namespace {

std::string text(const char* value)
{
    return value ? "'" + std::string(value) + "'" : "null";
}

} // namespace

void RecordingDockWindow::changed(const char* operation, const std::string& value) const
{
    record(m_id + " " + operation + " " + value);
}

void RecordingDockWindow::setTitle(const char* title, const char* context)
{
    changed("setTitle", text(title) + " " + text(context));
}

void RecordingDockWindow::setAllowedDockingAreas(unsigned int areas)
{
    changed("setAllowedDockingAreas", std::to_string(areas));
    m_areas = areas;
}

void RecordingDockWindow::setVisible(bool visible)
{
    changed("setVisible", std::to_string(visible));
    m_visible = visible;
}

void RecordingDockWindow::setAllowTabbing(bool allow)
{
    changed("setAllowTabbing", std::to_string(allow));
    m_allowTabbing = allow;
}

void RecordingDockWindow::setAllowTabbed(bool allow)
{
    changed("setAllowTabbed", std::to_string(allow));
    m_allowTabbed = allow;
}

void RecordingDockWindow::setCloseable(bool closeable)
{
    changed("setCloseable", std::to_string(closeable));
    m_closeable = closeable;
}

void RecordingDockWindow::setMoveable(bool moveable)
{
    changed("setMoveable", std::to_string(moveable));
    m_moveable = moveable;
}

void RecordingDockWindow::setFloatable(bool floatable)
{
    changed("setFloatable", std::to_string(floatable));
    m_floatable = floatable;
}

void RecordingDockWindow::setAutoHide(bool autoHide)
{
    changed("setAutoHide", std::to_string(autoHide));
    m_autoHide = autoHide;
}

void RecordingDockWindow::setArea(DockArea area)
{
    changed("setArea", std::to_string(area));
    m_area = area;
}

void RecordingDockWindow::onLanguageChange()
{
    record(m_id + " onLanguageChange");
}

RecordingDockWindowProducer::RecordingDockWindowProducer()
{
    Realizer = this;
}

RecordingDockWindowProducer::~RecordingDockWindowProducer()
{
    Realizer = nullptr;
}

vfApplication::DockWindowInterface* RecordingDockWindowProducer::create(vfApplication::DockWindow* dockWindow)
{
    record(std::string("create window ") + dockWindow->getId());
    if (inCreate)
        inCreate();
    m_made.push_back(std::make_unique<RecordingDockWindow>(dockWindow->getId()));
    return m_made.back().get();
}

RecordingDockWindowManager::~RecordingDockWindowManager()
{
    record("~screen");
}

void RecordingDockWindowManager::dockDockWindowToArea(vfApplication::DockWindow::DockArea area,
                                                      vfApplication::DockWindow* dockWindow)
{
    record("dock " + std::string(dockWindow ? dockWindow->getId() : "null") + " to " + std::to_string(area));
}

vfApplication::DockWindow::DockArea
RecordingDockWindowManager::getDockedDockWindowArea(vfApplication::DockWindow* dockWindow) const
{
    record("area of " + std::string(dockWindow ? dockWindow->getId() : "null"));
    return vfApplication::DockWindow::TopDockArea;
}

RecordingDockWindowManagerProducer::RecordingDockWindowManagerProducer()
{
    Realizer = this;
}

RecordingDockWindowManagerProducer::~RecordingDockWindowManagerProducer()
{
    Realizer = nullptr;
}

vfApplication::DockWindowManagerInterface*
RecordingDockWindowManagerProducer::create(vfApplication::DockWindowManager*)
{
    record("create screen");
    if (inCreate)
        inCreate();
    return new RecordingDockWindowManager;
}

RecordedWindow::~RecordedWindow()
{
    if (atEnd)
        atEnd();
    record("~window");
}

} // namespace vfTest
