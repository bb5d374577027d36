// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>

namespace vfFormats {

/// Returns whether a file has the extension of a format of models.
VFFORMATS_EXPORT bool isModelFile(const std::string& path);

/// Returns whether a file has the extension of a format of images.
VFFORMATS_EXPORT bool isImageFile(const std::string& path);

/// Returns the extensions of all models, "obj,stl,ply", as the filter of a document template takes them.
VFFORMATS_EXPORT std::string modelFilter();

/// Returns the extensions of all images in the same way.
VFFORMATS_EXPORT std::string imageFilter();

/// Returns the extensions of the formats in which models are written, those first that keep everything.
VFFORMATS_EXPORT std::string writableFormats();

/// Returns why a model cannot be written under a name; empty when its extension is one of writableFormats().
VFFORMATS_EXPORT std::string writeError(const std::string& path);

/// Returns why the file at @p path cannot be read, in words; empty when it is a regular file with contents that this
/// process may open.
VFFORMATS_EXPORT std::string readError(const std::string& path);

} // namespace vfFormats
