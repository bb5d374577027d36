// SPDX-License-Identifier: MIT
#pragma once

#include <osg/BoundingBox>

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// What a model consists of, in numbers; what hangs in several places counts in each, and what is hidden does not.
struct ModelStatistics
{
    unsigned long long triangles = 0;
    unsigned long long vertices = 0;
    unsigned long long drawables = 0;
    osg::BoundingBox bounds; ///< invalid for a model without a point
};

ModelStatistics countModel(osg::Node& model);

/// @return "12 triangles and 8 vertices in 1 drawable; 1 wide, 1 deep, 1 high"
std::string describe(const ModelStatistics& statistics);

} // namespace vfViewer
