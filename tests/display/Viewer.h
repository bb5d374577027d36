// SPDX-License-Identifier: MIT
#pragma once

#include "Hand.h"
#include "Program.h"
#include "support/Process.h"

#include "model/ModelDocument.h"

#include <velaforge/qt/QtViewport.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace vfTest {

/// The path of a model of some parts.
inline const std::string sailboat = VELAFORGE_SOURCE_DIR "/models/sailboat.obj";

/// A test that needs a display, with one mouse and one keyboard, for itself: "./dev test" starts some and names them in
/// VELAFORGE_TEST_DISPLAY, separated by blanks. The test takes one that no other test uses, and waits for one.
class OnDisplay : public testing::Test
{
protected:
    void SetUp() override
    {
        const std::string display = takeDisplay();
        if (display.empty())
            GTEST_SKIP() << "no display; ./dev test starts one";
        setenv("DISPLAY", display.c_str(), 1);
        keepDriver();
    }

private:
    /// Keeps a display until this process ends.
    static std::string takeDisplay();

    /// Has the software driver of OpenGL stay loaded to the end: a leak checker cannot name what it has lost otherwise.
    static void keepDriver();
};

/// The program itself, as a person starts it.
class RunningViewer : public RunningProgram
{
public:
    explicit RunningViewer(std::vector<std::string> arguments);
};

/// The viewer in a window on the display, with a hand on its mouse and keyboard.
class Viewer
{
public:
    explicit Viewer(const std::vector<std::string>& arguments = {});

    /// @param script  begins when the window has the keyboard
    int run(const std::function<void()>& script);

    /// Gives the window the keyboard, as a window manager does when a dialog goes; there is none on the tests' display.
    void focus();

    /// Keeps a picture of the window, and what stands above it, for the guide where VELAFORGE_KEEP_PICTURES names a directory.
    void keepPicture(const char* name);

    /// Answers the dialog that asks for a file.
    void typeFileName(const std::string& path);

    Program& program() { return m_program; }

    /// The same as those of the program.
    template <class Function>
    auto ui(Function function)
    {
        return m_program.ui(function);
    }
    template <class Condition>
    bool waitFor(Condition condition)
    {
        return m_program.waitFor(condition);
    }

    /// On the display of the window.
    Hand hand;

    // --- on the thread of the window

    vfViewer::ModelDocument* model() const;
    vfApplication::QtViewport* viewport() const;

    /// @return a point of the widget on the screen, in its pixels; the middle of the widget unless told
    static QPoint onScreen(const QWidget& widget, const QPoint& point);
    static QPoint onScreen(const QWidget& widget);

    /// @return where the middle of a part is seen, in the viewport
    QPointF seen(osg::Node& part) const;

    /// @return the part of that name
    osg::Node* part(const char* name) const;

private:
    Program m_program;
};

} // namespace vfTest
