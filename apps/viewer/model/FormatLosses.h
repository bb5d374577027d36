// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace osg {
class Node;
}

namespace vfViewer {

/// What a model may have that not every format keeps. Numbers are bits.
enum ModelFeature : unsigned int
{
    PartNames = 1,
    SeveralParts = 2,
    Colors = 4, ///< of materials
    Textures = 8,
    VertexColors = 16,
    SmoothNormals = 32,
    Lines = 64,
    Points = 128,
    HiddenParts = 256,
    Animations = 512
};

/// @return what there is of them in a model
unsigned int featuresOf(osg::Node& model);

/// @return what a format does not keep; everything for one that is not written
unsigned int featuresLostBy(const std::string& extension);

/// @return what of a model is lost in a format, in words, "textures"; nothing when it is kept whole
std::vector<std::string> lossesOf(osg::Node& model, const std::string& extension);

/// @return the same in one line, "textures, names"; empty when it is kept whole
std::string describeLosses(osg::Node& model, const std::string& extension);

} // namespace vfViewer
