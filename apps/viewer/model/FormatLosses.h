// SPDX-License-Identifier: MIT
#pragma once

#include "formats/Format.h"

#include <string>
#include <vector>

namespace osg {
class Node;
}

namespace vfViewer {

/// @return which of the features of models are in one
unsigned int featuresOf(osg::Node& model);

/// @return what a format does not keep; everything for one that is not written
unsigned int featuresLostBy(const std::string& extension);

/// @return what of a model is lost in a format, in words, "textures"; nothing when it is kept whole
std::vector<std::string> lossesOf(osg::Node& model, const std::string& extension);

/// @return the same in one line, "textures, names"; empty when it is kept whole
std::string describeLosses(osg::Node& model, const std::string& extension);

} // namespace vfViewer
