// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>

class QWidget;

namespace vfViewer {

/// Asks which picture of the current view is to be kept: its size, whether what is behind the model is left out, and its
/// file.
/// @param argument  that of the command vfViewer::SavePicture
/// @return false when the user gave up
bool askForPicture(QWidget& window, const vfApplication::Command::Properties& properties,
                   vfBase::VfVariant& argument);

} // namespace vfViewer
