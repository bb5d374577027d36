// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/scene/ViewStyle.h>

#include <osg/Image>
#include <osg/Vec3d>
#include <osg/ref_ptr>

namespace vfBase {
class VfString;
}

namespace vfViewer {

/// What a click or a drag on the model does.
enum class Tool : int
{
    Select = 0,
    Move = 1, ///< and the following two: the part that is selected
    Rotate = 2,
    Scale = 3,
    MeasureDistance = 4, ///< and the following two: between the points that are clicked
    MeasureAngle = 5,
    MeasureRadius = 6
};

/// What a view of a model is, beside a View, whatever it is shown on.
class ModelView
{
public:
    virtual ~ModelView() = default;

    /// Looks at the whole model from there.
    virtual void lookFrom(vfScene::StandardView view) = 0;

    /// Looks at a part, or with null at the whole model, from where it looks now.
    virtual void fit(osg::Node* part) = 0;

    virtual vfScene::LookAt getCamera() const = 0;
    virtual void setCamera(const vfScene::LookAt& camera) = 0;

    virtual vfScene::ViewStyle getStyle() const = 0;
    virtual void setStyle(const vfScene::ViewStyle& style) = 0;

    /// Shows parts of the model that have moved by themselves where they are now.
    virtual void follow() = 0;

    /// What the hand on the mouse does. @return false for a view without one
    virtual bool setTool(Tool tool) = 0;
    virtual Tool getTool() const = 0;

    /// @return the picture that it shows, drawn anew in that size, the bottom row first; null with the reason
    virtual osg::ref_ptr<osg::Image> takePicture(const vfApplication::SnapshotFormat& format,
                                                 vfBase::VfString& reason) = 0;
};

} // namespace vfViewer
