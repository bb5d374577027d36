// SPDX-License-Identifier: MIT
#pragma once

#include "ui/WindowSide.h"

namespace vfViewer {

/// @return the viewer's side with a window, on Qt
const WindowSide& qtWindowSide();

} // namespace vfViewer
