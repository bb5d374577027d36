// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <string>

namespace vfApplication {

/// Returns a reason in the language of the window: those that the libraries give are translated, others stay as they are.
QString translatedReason(const std::string& reason);

/// Returns what to tell the user about the exception that is being handled. Must be called in a catch block.
QString currentReason();

/// Does @p work, which calls the program, and shows in the window what that throws. Qt calls slots and event
/// handlers through functions that no exception may leave: they would neither release nor reset what they hold.
void showThrown(const std::function<void()>& work);

} // namespace vfApplication
