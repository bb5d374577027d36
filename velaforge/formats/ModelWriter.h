// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <velaforge/base/VfString.h>

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

/// @return the formats in which models are written, with commas between them
VFFORMATS_EXPORT std::string writableFormats();

/// @return why a model is not written under that name; empty when its extension is one of writableFormats()
VFFORMATS_EXPORT std::string writeError(const std::string& path);

/// Writes a scene and waits for it, see SaveJob.
/// @param reason  set to why it could not be written, otherwise unchanged
/// @return false with the files as they were
VFFORMATS_EXPORT bool writeModel(const osg::Node& scene, const vfBase::VfString& path,
                                 vfBase::VfString& reason);

} // namespace vfFormats
