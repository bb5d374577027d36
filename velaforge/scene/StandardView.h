// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Matrixd>
#include <osg/Vec3d>

namespace osg {
class Node;
}

namespace vfScene {

/// The ten directions from which a model can be seen; z points up, and its front faces -y.
enum class StandardView : int
{
    Front = 0,
    Back = 1,
    Left = 2,
    Right = 3,
    Top = 4,
    Bottom = 5,
    FrontLeft = 6, ///< this and the following: from an upper corner
    FrontRight = 7,
    BackRight = 8,
    BackLeft = 9
};

/// Number of standard views.
constexpr int standardViewCount = 10;

/// Kinds of projection.
enum class Projection : int
{
    Perspective = 0,
    Orthographic = 1
};

/// The vertical field of view in degrees.
constexpr double heightAngle = 30.0;

/// Position and orientation of a camera.
struct LookAt
{
    osg::Vec3d eye; ///< the position
    osg::Vec3d
        centre;    ///< the point that the user orbits; objects there have the same size in both projections
    osg::Vec3d up; ///< the direction that points up in the picture
};

/// A camera.
struct CameraPlacement
{
    osg::Matrixd view;       ///< the view matrix
    osg::Matrixd projection; ///< the projection matrix; its near and far planes should follow the scene
    LookAt lookAt;           ///< the same as points
};

/// Places a camera so that all visible parts of a scene just fit into the picture, centred.
/// @param scene       the scene
/// @param view        the direction
/// @param aspect      width of the picture divided by its height
/// @param projection  the projection
VFSCENE_EXPORT CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect,
                                           Projection projection = Projection::Perspective);

/// Places a camera in the same way, in the direction of another one.
/// @param node        the part to show; with several parents, where its first parent places it
/// @param direction   the camera whose direction to use
/// @param aspect      width of the picture divided by its height
/// @param projection  the projection
VFSCENE_EXPORT CameraPlacement placeCamera(osg::Node& node, const LookAt& direction, double aspect,
                                           Projection projection);

/// Places a camera on a circle around a scene so that the scene fits into the picture all around.
/// @param scene       the scene; the axis through its centre points up
/// @param direction   the camera at the beginning, whose direction to use
/// @param turn        the fraction of a full turn that the camera has made, counterclockwise seen from above
/// @param aspect      width of the picture divided by its height
/// @param projection  the projection
VFSCENE_EXPORT CameraPlacement placeOnTurntable(osg::Node& scene, const LookAt& direction, double turn,
                                                double aspect, Projection projection);

/// Returns the matrices of a camera.
/// @param lookAt      its position and orientation
/// @param aspect      width of the picture divided by its height
/// @param projection  the projection
VFSCENE_EXPORT CameraPlacement placementOf(const LookAt& lookAt, double aspect, Projection projection);

} // namespace vfScene
