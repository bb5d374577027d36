// SPDX-License-Identifier: MIT
#pragma once

#include "Actor.h"

#include <string>
#include <vector>

namespace vfLife {

/// @return the hooks that the scenario reaches, in the order of the table
const std::vector<std::string>& hooks();

/// Runs a whole program that takes @p action the nth time that it reaches @p hook, in this process.
/// @return what came of it: "done", "refused" or "-"; for Action::Throw who gets the exception: "passes" and "wrapped" the
///         caller, "caught" none; "not reached"; or a complaint that begins with "fault:"
std::string play(const std::string& hook, Action action, int nth);

} // namespace vfLife
