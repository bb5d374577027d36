// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>

namespace vfFormats {

/// Returns the absolute path from which OpenSceneGraph's library of that name is loaded: a plug-in of a listed format from
/// OpenSceneGraph's own directory, whatever the environment says. Other names get a path where no file is.
VFFORMATS_EXPORT std::string pluginPath(const std::string& name);

} // namespace vfFormats
