// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Matrixd>

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

/// A camera's matrices.
struct CameraPlacement
{
    osg::Matrixd view;
    osg::Matrixd projection;
};

/// Places a camera so that all of the scene that is shown just fits into the picture, centred.
/// @param aspect  width of the picture divided by its height
CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect);

} // namespace vfViewer
