// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Matrixd>
#include <osg/Vec3d>

namespace osg {
class Node;
}

namespace vfViewer {

/// The ten directions from which a model is looked at; z points up, and the front faces -y.
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

enum class Projection : int
{
    Perspective = 0,
    Orthographic = 1
};

/// The angle from the bottom to the top of a picture, in degrees.
constexpr double heightAngle = 30.0;

/// Where a camera stands, and how it is held.
struct LookAt
{
    osg::Vec3d eye;
    osg::Vec3d centre; ///< about which the user turns; what lies there is as large in both projections
    osg::Vec3d up;
};

/// A camera's matrices.
struct CameraPlacement
{
    osg::Matrixd view;
    osg::Matrixd projection; ///< whose near and far planes are to follow the scene
    LookAt lookAt;
};

/// Places a camera so that all of the scene that is shown just fits into the picture, centred.
/// @param aspect  width of the picture divided by its height
CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect,
                            Projection projection = Projection::Perspective);

/// Places a camera in the same way, in the direction in which another looks.
/// @param node  where it hangs in several places, the first of them is looked at
CameraPlacement placeCamera(osg::Node& node, const LookAt& direction, double aspect, Projection projection);

/// Places a camera so that the scene, turned about the upright axis through its middle, stays in the picture all around.
/// @param direction  in which another camera looks at the scene when it is not turned
/// @param turn       which part of a whole turn the camera has made around the scene, against the clock
CameraPlacement placeOnTurntable(osg::Node& scene, const LookAt& direction, double turn, double aspect,
                                 Projection projection);

/// @return the matrices of a camera that stands there
CameraPlacement placementOf(const LookAt& lookAt, double aspect, Projection projection);

} // namespace vfViewer
