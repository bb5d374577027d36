// SPDX-License-Identifier: MIT
#pragma once

namespace vfTest {

/// By which loops over sizes and directions go on: the thread sanitizer looks for races, which do not depend on them, and
/// takes ten times as long.
#ifdef __SANITIZE_THREAD__
constexpr int stepOfSearch = 4;
#else
constexpr int stepOfSearch = 1;
#endif

} // namespace vfTest
