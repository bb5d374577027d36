// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>

class QWidget;

namespace vfApplication {

/// Asks for the argument of a command that says in its properties that it wants one: "prompt" is the question,
/// "promptValue" what is proposed, "promptKind" "text" unless given. It is "color" for a colour as "red,green,blue" from 0
/// to 1, "files" for a list of files to open, of the formats in "promptFilter" with commas between them, "choice" for one of
/// the list "promptChoices", or what QtApplication::setPrompt() made known.
/// @param argument  the answer; as it was where the command wants none
/// @return false when the user gave up
bool askForArgument(QWidget& window, const Command::Properties& properties, vfBase::VfVariant& argument);

} // namespace vfApplication
