// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>

namespace vfApplication {

/// Returns a reason in the language of the window: those that the libraries give are translated, others stay as they are.
QString translatedReason(const std::string& reason);

/// Returns what to tell the user about the exception that is being handled. Must be called in a catch block.
QString currentReason();

} // namespace vfApplication
