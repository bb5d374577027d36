// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/BoundingBox>

#include <cstdint>

namespace osg {
class Node;
}

namespace vfFormats {

/// How much of what there is in a model, to tell whether a file has all of it.
struct ModelMeasure
{
    std::uint64_t triangles = 0;      ///< polygons count as the triangles that they are made of
    std::uint64_t solidTriangles = 0; ///< those that are still triangles when their corners are rounded
    std::uint64_t lines = 0;
    std::uint64_t points = 0;
    osg::BoundingBoxd box; ///< of the vertices that are used, where they stand

    bool isEmpty() const { return triangles == 0 && lines == 0 && points == 0; }
};

/// Measures a model, hidden parts too.
/// @param lost  features that a format does not keep, as featuresLostBy() tells; lines and points among them are not counted
VFFORMATS_EXPORT ModelMeasure measureModel(osg::Node& model, unsigned int lost);

/// Returns whether a file that measures @p written has everything of a model that measures @p model. A reader may leave out
/// triangles without an area, and formats round.
/// @param isMoving  whether the model moves, so that its box may be that of another time
VFFORMATS_EXPORT bool hasEverything(const ModelMeasure& model, const ModelMeasure& written, bool isMoving);

} // namespace vfFormats
