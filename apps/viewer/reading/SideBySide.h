// SPDX-License-Identifier: MIT
#pragma once

#include <future>

namespace vfViewer {

/// For std::async: in a thread of its own, and where the system has none to give, by whoever waits for it.
constexpr std::launch sideBySide = std::launch::async | std::launch::deferred;

} // namespace vfViewer
