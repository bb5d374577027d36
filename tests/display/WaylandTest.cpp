// SPDX-License-Identifier: MIT
// The viewer's window with Wayland, on a compositor of the test's own that draws into memory.
#include "Viewer.h"

#include <gtest/gtest.h>

#include <QImage>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using vfTest::Program;
using vfTest::RunningProgram;
using vfTest::RunningViewer;
using vfTest::TemporaryDirectory;

namespace {

class Wayland : public testing::Test
{
protected:
    Wayland()
        : compositor({"weston", "--backend=headless-backend.so", "--use-gl", "--debug", "--no-config",
                      "--socket=test", "--width=1000", "--height=800", "--idle-time=0"})
    {
        setenv("WAYLAND_DISPLAY", "test", 1);
        const std::string socket = std::string(std::getenv("XDG_RUNTIME_DIR")) + "/test";
        EXPECT_TRUE(waitUntil([&] { return fs::exists(socket); })) << "the compositor does not start";
    }

    template <class Condition>
    static bool waitUntil(Condition condition)
    {
        for (int i = 0; i < 100; ++i) {
            if (condition())
                return true;
            Program::pause(100);
        }
        return false;
    }

    /// @return what the screen shows
    static QImage look()
    {
        const TemporaryDirectory directory;
        vfTest::runProgram({"weston-screenshooter"}, directory.path());
        QImage picture;
        for (const auto& entry : fs::directory_iterator(directory.path()))
            picture.load(QString::fromStdString(entry.path().string()));
        return picture;
    }

    /// @return how many points of the screen have the red of the sailboat's flag and stripe
    static int redPoints()
    {
        const QImage picture = look();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor colour = picture.pixelColor(x, y);
                count += colour.red() > 110 && colour.green() < 70 && colour.blue() < 70;
            }
        }
        return count;
    }

    RunningProgram compositor;
};

} // namespace

TEST_F(Wayland, ShowsTheModelInAWindow)
{
    ASSERT_TRUE(waitUntil([] { return redPoints() == 0; })) << "the compositor draws no desktop";
    RunningViewer viewer({VELAFORGE_SOURCE_DIR "/models/sailboat.obj"});
    EXPECT_TRUE(waitUntil([] { return redPoints() >= 2000; }));
    viewer.terminate();
    EXPECT_EQ(-SIGTERM, viewer.wait().status) << "it ran until it was ended";
}
