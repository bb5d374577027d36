// SPDX-License-Identifier: MIT
// The main function of every test program. Started by hand it runs the cases that --gtest_filter names in this one
// process, which suits a debugger. "--apart <seconds> [suite or case ...]" runs each in a process of its own, as
// ctest does.
#include "CasesApart.h"
#include "TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (argc > 2 && std::strcmp(argv[1], "--apart") == 0)
        return vfTest::runCasesApart({argv + 3, argv + argc}, std::atoi(argv[2]));
    const vfTest::TemporaryDirectory home;
    vfTest::isolate(home.path());
    return RUN_ALL_TESTS();
}
