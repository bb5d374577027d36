// SPDX-License-Identifier: MIT
#include "TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace {

// A home of its own for each process: what one test leaves in its settings no other test sees,
// and nobody's real settings are touched.
void isolate(const vfTest::TemporaryDirectory& home)
{
    setenv("HOME", home.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.file(".config").c_str(), 1);
    setenv("XDG_DATA_HOME", home.file(".local/share").c_str(), 1);
    setenv("XDG_CACHE_HOME", home.file(".cache").c_str(), 1);
    setenv("XDG_STATE_HOME", home.file(".local/state").c_str(), 1);
    setenv("XDG_RUNTIME_DIR", home.path().c_str(), 1);
    unsetenv("XDG_CONFIG_DIRS");
    unsetenv("XDG_DATA_DIRS");
    for (const char* name : {"OSG_NOTIFY_LEVEL", "OSGNOTIFYLEVEL", "OSG_LIBRARY_PATH", "OSG_FILE_PATH"})
        unsetenv(name);
    // Windows open where a test asks for them, and not before the eyes of whoever runs the tests.
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DISPLAY"})
        unsetenv(name);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const vfTest::TemporaryDirectory home;
    isolate(home);
    return RUN_ALL_TESTS();
}
