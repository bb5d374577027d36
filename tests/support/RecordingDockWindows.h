// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowProducer.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vfTest {

/// The half of a dock window that records each change, keeps what it is told, and answers with it.
class RecordingDockWindow : public vfApplication::DockWindowInterface
{
public:
    using DockArea = vfApplication::DockWindow::DockArea;

    explicit RecordingDockWindow(const char* id) : m_id(id) {}

    void setTitle(const char* title, const char* context) override;
    void setAllowedDockingAreas(unsigned int areas) override;
    unsigned int getAllowedDockingAreas() const override { return m_areas; }
    bool isFloating() const override { return floating; }
    void setVisible(bool visible) override;
    bool getVisible() const override { return asked("getVisible", m_visible); }
    void setAllowTabbing(bool allow) override;
    bool getAllowTabbing() const override { return m_allowTabbing; }
    void setAllowTabbed(bool allow) override;
    bool getAllowTabbed() const override { return m_allowTabbed; }
    bool isTabbed() const override { return tabbed; }
    void setCloseable(bool closeable) override;
    bool getCloseable() const override { return m_closeable; }
    void setMoveable(bool moveable) override;
    bool getMoveable() const override { return m_moveable; }
    void setFloatable(bool floatable) override;
    bool getFloatable() const override { return m_floatable; }
    void setAutoHide(bool autoHide) override;
    bool getAutoHide() const override { return asked("getAutoHide", m_autoHide); }
    void setArea(DockArea area) override;
    DockArea getArea() const override { return asked("getArea", m_area); }
    void onLanguageChange() override;

    bool floating = false;
    bool tabbed = false;

    /// Whether what is asked for the state that is kept is recorded too.
    bool recordsQuestions = false;

private:
    template <class Answer>
    Answer asked(const char* operation, Answer answer) const
    {
        if (recordsQuestions)
            changed(operation, std::to_string(answer));
        return answer;
    }

    void changed(const char* operation, const std::string& value) const;

    std::string m_id;
    unsigned int m_areas = 0;
    bool m_visible = false;
    bool m_allowTabbing = false;
    bool m_allowTabbed = false;
    bool m_closeable = false;
    bool m_moveable = false;
    bool m_floatable = false;
    bool m_autoHide = false;
    DockArea m_area = vfApplication::DockWindow::NoDockArea;
};

/// Makes recording halves of windows and keeps them. Stands in DockWindowProducer::Realizer while it lives.
class RecordingDockWindowProducer : public vfApplication::DockWindowProducer
{
public:
    RecordingDockWindowProducer();
    ~RecordingDockWindowProducer() override;
    vfApplication::DockWindowInterface* create(vfApplication::DockWindow* dockWindow) override;

    std::function<void()> inCreate;

private:
    std::vector<std::unique_ptr<RecordingDockWindow>> m_made;
};

/// The half of the manager that records each call.
class RecordingDockWindowManager : public vfApplication::DockWindowManagerInterface
{
public:
    ~RecordingDockWindowManager() override;
    void dockDockWindowToArea(vfApplication::DockWindow::DockArea area,
                              vfApplication::DockWindow* dockWindow) override;
    vfApplication::DockWindow::DockArea
    getDockedDockWindowArea(vfApplication::DockWindow* dockWindow) const override;
};

/// Makes the recording half of the manager. Stands in DockWindowManagerProducer::Realizer while it lives.
class RecordingDockWindowManagerProducer : public vfApplication::DockWindowManagerProducer
{
public:
    RecordingDockWindowManagerProducer();
    ~RecordingDockWindowManagerProducer() override;
    vfApplication::DockWindowManagerInterface* create(vfApplication::DockWindowManager* manager) override;

    std::function<void()> inCreate;
};

/// A dock window that says when it goes.
class RecordedWindow : public vfApplication::DockWindow
{
public:
    explicit RecordedWindow(const char* id) : DockWindow(id) {}
    ~RecordedWindow() override;

    std::function<void()> atEnd;
};

} // namespace vfTest
