// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/BoundingBox>
#include <osg/Group>
#include <osg/Node>
#include <osg/Vec3d>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include <vector>

namespace vfScene {

// Overlays are drawn over a model. Lighting, section planes and draw modes of the model do not affect them.

/// Returns the edges of the bounding box of a node; null for a node without vertices.
/// @param node   the node
/// @param top    the root of the scene; the box is in its coordinates, once for each path to @p node
/// @param color  red, green, blue and alpha from 0 to 1
/// @param width  of the lines in pixels
VFSCENE_EXPORT osg::ref_ptr<osg::Node> makeBox(osg::Node& node, const osg::Node& top, const osg::Vec4& color,
                                               float width);

/// Returns a grid on the floor of a bounding box; null for a box without an extent.
VFSCENE_EXPORT osg::ref_ptr<osg::Node> makeGrid(const osg::BoundingBox& box);

/// Returns the distance between the lines of that grid, a round number; 0 for a box without an extent.
VFSCENE_EXPORT double gridSpacing(const osg::BoundingBox& box);

/// Returns the axes x, y and z, drawn in the lower left corner of the picture.
VFSCENE_EXPORT osg::ref_ptr<osg::Node> makeAxes();

/// Returns points and a line through the scene that the model does not hide.
/// @param points  in the coordinates of the scene
/// @param line    in the same coordinates
/// @param color   red, green, blue and alpha from 0 to 1
VFSCENE_EXPORT osg::ref_ptr<osg::Node> makeMarks(const std::vector<osg::Vec3d>& points,
                                                 const std::vector<osg::Vec3d>& line, const osg::Vec4& color);

} // namespace vfScene
