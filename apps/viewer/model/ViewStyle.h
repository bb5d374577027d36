// SPDX-License-Identifier: MIT
#pragma once

#include "model/StandardView.h"

#include <osg/Vec3f>

#include <array>
#include <optional>

namespace vfViewer {

enum class DrawMode : int
{
    Surfaces = 0,
    Wireframe = 1,
    Points = 2
};

/// The colours behind a model, red, green and blue from 0 to 1.
struct Background
{
    osg::Vec3f top;
    osg::Vec3f bottom;
};

/// A plane across an axis of the model, on one side of which nothing is drawn.
struct SectionPlane
{
    bool isOn = false;
    double position = 0.5;  ///< from 0 at the lowest point of the model to 1 at its highest
    bool isFlipped = false; ///< what lies below it goes, not what lies above
};

/// How a view shows its model.
struct ViewStyle
{
    Projection projection = Projection::Perspective;
    DrawMode drawMode = DrawMode::Surfaces;
    bool isFlat = false; ///< one shade for each triangle
    bool cullsBackFaces = false;
    bool showsTextures = true;
    bool showsVertexColors = true;
    bool showsGrid = false;
    bool showsAxes = false;
    bool showsBoxes = false;
    bool isAntialiased = true;
    bool lightFollowsCamera = true;
    bool usesFileLamps = false;           ///< where the file has lamps, those shine in place of the viewer's
    std::optional<Background> background; ///< in place of the one that is set for all
    std::array<SectionPlane, 3> sections; ///< across x, y and z
};

} // namespace vfViewer
