// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/StandardView.h>
#include <velaforge/scene/ViewStyle.h>

namespace vfApplication {
class Document;
}

namespace vfViewer {

/// @return from where a document is looked at first: what was chosen for this run; else an image straight on, and a model
///         as the settings have it
vfScene::StandardView firstViewFor(const vfApplication::Document& document);

/// Has documents that are opened from here on looked at from there, whatever the settings say.
void chooseFirstView(vfScene::StandardView view);

/// @return how a new view shows its model: as the settings have it, with what was chosen for this run
vfScene::ViewStyle firstStyle();

/// Makes views that are opened from here on use the lamps of files, whatever the settings say.
void chooseFileLamps();

} // namespace vfViewer
