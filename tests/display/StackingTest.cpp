// SPDX-License-Identifier: MIT
// Windows of the program above one another, as a window manager stacks them.
#include "Viewer.h"

#include "support/TemporaryDirectory.h"

#include <velaforge/qt/internal/MainWindow.h>

#include <gmock/gmock.h>

#include <QDockWidget>

#include <cstdio>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using vfTest::Program;
using vfTest::RunningProgram;
using vfTest::Viewer;

namespace {

class Stacking : public vfTest::OnDisplay
{
protected:
    void SetUp() override
    {
        OnDisplay::SetUp();
        if (IsSkipped())
            return;
        const vfTest::Hand hand;
        for (int i = 0; i < 600 && !hand.hasWindowManager(); ++i) {
            // One that finds another still there ends at once.
            if (!m_manager || m_manager->isOverWithin(100))
                m_manager =
                    std::make_unique<RunningProgram>(std::vector<std::string>{"openbox", "--sm-disable"});
        }
        ASSERT_TRUE(hand.hasWindowManager()) << "openbox did not start";
    }

    void TearDown() override
    {
        if (m_manager) {
            m_manager->terminate();
            m_manager->wait();
        }
    }

    /// Runs the program in a process of its own.
    static void inAnotherProcess(const std::vector<std::string>& arguments,
                                 const std::function<void(Viewer&)>& script)
    {
        const pid_t child = fork();
        if (child == 0) {
            Viewer viewer(arguments);
            const int code = viewer.run([&] { script(viewer); });
            std::fflush(nullptr);
            _exit(code == 0 && !HasFailure() ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "what failed stands above";
    }

private:
    std::unique_ptr<RunningProgram> m_manager;
};

/// @return any dock window, the same in each start
QDockWidget& dockWindow(Viewer& viewer)
{
    return *viewer.program().window().findChild<QDockWidget*>();
}

} // namespace

TEST_F(Stacking, ProblemsOfTheStartStandInFrontOfTheWindow)
{
    inAnotherProcess({"missing.obj"}, [](Viewer& viewer) {
        EXPECT_TRUE(viewer.waitFor([&] { return viewer.hand.stackedWindows().size() == 2; }));
        Program::pause(100);
        const std::vector<std::string> windows = viewer.hand.stackedWindows();
        ASSERT_EQ(2u, windows.size());
        EXPECT_EQ("Problems", windows.back());
    });
}

TEST_F(Stacking, ADockWindowThatFloatedComesBackInFrontOfTheWindow)
{
    inAnotherProcess({vfTest::sailboat}, [](Viewer& viewer) {
        viewer.ui([&] {
            dockWindow(viewer).setFloating(true);
            dockWindow(viewer).setGeometry(300, 300, 300, 200);
            dockWindow(viewer).show();
        });
        Program::pause(200);
    });
    inAnotherProcess({vfTest::sailboat}, [](Viewer& viewer) {
        Program::pause(300);
        const std::string title = viewer.ui([&] {
            EXPECT_TRUE(dockWindow(viewer).isFloating());
            EXPECT_TRUE(dockWindow(viewer).isVisible());
            return dockWindow(viewer).windowTitle().toStdString();
        });
        for (const bool isAfterClick : {false, true}) {
            if (isAfterClick) {
                const auto place = [&] {
                    return Viewer::onScreen(viewer.program().window(), QPoint(600, 700));
                };
                viewer.hand.click(viewer.ui(place));
                Program::pause(300);
            }
            const std::vector<std::string> windows = viewer.hand.stackedWindows();
            ASSERT_EQ(2u, windows.size());
            EXPECT_THAT(windows.back(), HasSubstr(title))
                << "after a click on the main window: " << isAfterClick;
        }
    });
}

TEST_F(Stacking, WindowsOfTheirOwnForFilesOfTheCommandLineStandInFrontOfTheMainWindow)
{
    const vfTest::TemporaryDirectory directory;
    auto ui = std::make_unique<vfTest::SheetUi>();
    ui->mode = vfApplication::UiSetup::SeparateWindows;
    Program program({directory.write("one.sheet", "one\n"), directory.write("two.sheet", "two\n")},
                    std::move(ui));
    const vfTest::Hand hand;
    program.run([&] {
        EXPECT_TRUE(program.waitFor([&] { return hand.stackedWindows().size() == 3; }));
        Program::pause(100);
        const std::vector<std::string> windows = hand.stackedWindows();
        ASSERT_EQ(3u, windows.size());
        EXPECT_THAT(windows[0], HasSubstr("program")) << "the main window";
        EXPECT_EQ("two.sheet", windows[2]) << "the one opened last";
    });
}
