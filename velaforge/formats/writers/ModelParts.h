// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/writers/Appearance.h>

#include <osg/Matrixd>

#include <string>
#include <vector>

namespace osg {
class Geometry;
class Node;
} // namespace osg

namespace vfFormats {

/// A geometry in one of the places where a model shows it, as writers of formats without a scene graph need it.
struct ModelPart
{
    const osg::Geometry* geometry;
    osg::Matrixd matrix; ///< from the coordinates of the geometry to those of the model
    Appearance look;
    std::string
        name; ///< of the nearest node above that has one, else of the geometry; in UTF-8, may be empty
};

/// Returns the geometries of a model that have vertices and primitives, in its order. They point into the model.
std::vector<ModelPart> collectParts(osg::Node& model);

} // namespace vfFormats
