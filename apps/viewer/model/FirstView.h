// SPDX-License-Identifier: MIT
#pragma once

#include "model/StandardView.h"

namespace vfApplication {
class Document;
}

namespace vfViewer {

/// @return from where a document is looked at first: what was chosen for this run; else an image straight on, and a model
///         as the settings have it
StandardView firstViewFor(const vfApplication::Document& document);

/// Has documents that are opened from here on looked at from there, whatever the settings say.
void chooseFirstView(StandardView view);

} // namespace vfViewer
