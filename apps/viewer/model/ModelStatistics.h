// SPDX-License-Identifier: MIT
#pragma once

#include <osg/BoundingBox>

#include <cstddef>
#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

class ModelScene;

/// What a model consists of, in numbers; what hangs in several places counts in each, and what is hidden does not.
struct ModelStatistics
{
    unsigned long long triangles = 0;
    unsigned long long vertices = 0;
    unsigned long long parts = 0;
    unsigned long long materials = 0; ///< and the following: each counts once, wherever it is used
    unsigned long long textures = 0;
    unsigned long long memory = 0; ///< bytes of points, primitives and images
    osg::BoundingBox bounds;       ///< invalid for a model without a point
};

ModelStatistics countModel(osg::Node& model);

/// @return the bytes of the points, primitives and images at and below a node, hidden ones too, each once
std::size_t measureMemory(osg::Node& node);

/// @return "12.3 MB"
std::string describeMemory(unsigned long long bytes);

/// @return "3 steps hold 1.2 MB of at most 512 MB"
std::string describeHistory(const ModelScene& scene);

/// @return "12 triangles and 8 vertices in 1 part, 1 material, 0 textures, 1.2 kB; 1 wide, 1 deep, 1 high"
std::string describe(const ModelStatistics& statistics);

} // namespace vfViewer
