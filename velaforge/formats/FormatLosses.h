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

/// @return which of the features of models are in one
VFFORMATS_EXPORT unsigned int featuresOf(osg::Node& model);

/// @return what a format does not keep; everything for one that is not written
VFFORMATS_EXPORT unsigned int featuresLostBy(const std::string& extension);

/// @return what of a model is lost in a format, in words, "textures"; nothing when it is kept whole
VFFORMATS_EXPORT std::vector<std::string> lossesOf(osg::Node& model, const std::string& extension);

/// @return the same in one line, "textures, names"; empty when it is kept whole
VFFORMATS_EXPORT std::string describeLosses(osg::Node& model, const std::string& extension);

} // namespace vfFormats
