// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/StandardView.h>

#include <osg/Vec3f>

#include <array>
#include <optional>

namespace vfScene {

/// What is drawn of faces.
enum class DrawMode : int
{
    Surfaces = 0,
    Wireframe = 1,
    Points = 2
};

/// The colours behind a model, red, green and blue from 0 to 1.
struct Background
{
    osg::Vec3f top{0.86f, 0.90f, 0.95f};    ///< at the upper edge of the picture
    osg::Vec3f bottom{0.56f, 0.64f, 0.72f}; ///< at the lower edge
};

/// A section plane perpendicular to an axis: what lies above it is not drawn.
struct SectionPlane
{
    bool isOn = false;      ///< whether it cuts
    double position = 0.5;  ///< from 0 at the lowest point of the model to 1 at its highest
    bool isFlipped = false; ///< what lies below it is not drawn instead
};

/// How a view shows a model.
struct ViewStyle
{
    Projection projection = Projection::Perspective; ///< of the camera
    DrawMode drawMode = DrawMode::Surfaces;          ///< surfaces, edges or vertices
    bool isFlat = false;                             ///< flat shading: one shade for each triangle
    bool cullsBackFaces = false;                     ///< faces are not drawn from behind
    bool showsTextures = true;                       ///< textures, otherwise colours of materials only
    bool showsVertexColors = true;                   ///< colours of vertices, otherwise those of materials
    bool showsGrid = false;                          ///< a grid below the model
    bool showsAxes = false;                          ///< the axes in a corner of the picture
    bool showsBoxes = false;                         ///< the bounding box of each part
    bool isAntialiased = true;                       ///< several samples for each pixel
    bool lightFollowsCamera = true;       ///< lights move with the camera, otherwise with the model
    bool usesFileLamps = false;           ///< lights of the file instead of those of the view, if it has any
    std::optional<Background> background; ///< instead of ShownScene::setBackground()
    std::array<SectionPlane, 3> sections; ///< perpendicular to x, y and z
};

} // namespace vfScene
