// SPDX-License-Identifier: MIT
#pragma once

#include <future>

namespace vfBase {

/// A launch policy for std::async: a new thread; if the system cannot start one, the thread that waits for the result.
constexpr std::launch asyncOrDeferred = std::launch::async | std::launch::deferred;

} // namespace vfBase
