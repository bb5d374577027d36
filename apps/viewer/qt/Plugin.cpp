// SPDX-License-Identifier: MIT
// What the program finds when it opens the library with the window.
#include "qt/QtWindowSide.h"

extern "C" __attribute__((visibility("default"))) const vfViewer::WindowSide* vfViewerWindowSide()
{
    return &vfViewer::qtWindowSide();
}
