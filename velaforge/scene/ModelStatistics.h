// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/BoundingBox>

#include <cstddef>
#include <string>

namespace osg {
class Node;
}

namespace vfScene {

class ModelScene;

/// Numbers of a model. Hidden parts do not count; a node with several parents counts once for each path to it.
struct ModelStatistics
{
    unsigned long long triangles = 0; ///< polygons count as the triangles that they consist of
    unsigned long long vertices = 0;  ///< elements of vertex arrays
    unsigned long long parts = 0;     ///< nodes that draw something
    unsigned long long materials = 0; ///< each once, as the following
    unsigned long long textures = 0;  ///< different textures
    unsigned long long memory = 0;    ///< bytes of vertices, primitives and images
    osg::BoundingBox bounds;          ///< invalid for a model without vertices
};

/// Counts what a model consists of.
VFSCENE_EXPORT ModelStatistics countModel(osg::Node& model);

/// Returns the bytes of vertices, primitives and images of a node and its descendants, hidden ones included, each once.
VFSCENE_EXPORT std::size_t measureMemory(osg::Node& node);

/// Returns a number of bytes as text, "12.3 MB".
VFSCENE_EXPORT std::string describeMemory(unsigned long long bytes);

/// Returns the size of the undo history as text, "3 steps hold 1.2 MB of at most 512 MB".
VFSCENE_EXPORT std::string describeHistory(const ModelScene& scene);

/// Returns statistics in one line, "12 triangles and 8 vertices in 1 part, 1 material, 0 textures, 1.2 kB; 1 wide, 1 deep, 1
/// high".
VFSCENE_EXPORT std::string describe(const ModelStatistics& statistics);

} // namespace vfScene
