// SPDX-License-Identifier: MIT
#pragma once

#include <osg/BoundingBox>
#include <osg/Group>
#include <osg/Node>
#include <osg/Vec3d>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include <vector>

// What a view draws beside its model. None of it is lit, cut or drawn in another way when the model is.
namespace vfViewer {

/// @return the edges of a node's box, wherever it hangs below @p top; null for a node without a point
osg::ref_ptr<osg::Node> makeBox(osg::Node& node, const osg::Node& top, const osg::Vec4& color, float width);

/// @return lines on the floor below a box, a round number of units apart; null for a box without an extent
osg::ref_ptr<osg::Node> makeGrid(const osg::BoundingBox& box);

/// @return how far apart the lines of the grid are below a box; 0 for a box without an extent
double gridSpacing(const osg::BoundingBox& box);

/// @return the directions of x, y and z, to be seen in the lower left corner of the picture
osg::ref_ptr<osg::Node> makeAxes();

/// @return points and a line, which lie in the scene, to be seen through everything
osg::ref_ptr<osg::Node> makeMarks(const std::vector<osg::Vec3d>& points, const std::vector<osg::Vec3d>& line,
                                  const osg::Vec4& color);

} // namespace vfViewer
