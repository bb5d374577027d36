// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/formats/Format.h>

#include <string>
#include <vector>

namespace osg {
class Node;
}

namespace vfFormats {

/// Returns the features that a model has, as bits of ModelFeature.
VFFORMATS_EXPORT unsigned int featuresOf(osg::Node& model);

/// Returns the features that a format does not keep; all of them for a format that is not written.
VFFORMATS_EXPORT unsigned int featuresLostBy(const std::string& extension);

/// Returns the features of a model that are lost when it is written in a format, in words, such as "textures"; none when the
/// format keeps all of them.
VFFORMATS_EXPORT std::vector<std::string> lossesOf(osg::Node& model, const std::string& extension);

/// Returns the same in one line, such as "textures, names"; empty when the format keeps all of them.
VFFORMATS_EXPORT std::string describeLosses(osg::Node& model, const std::string& extension);

} // namespace vfFormats
