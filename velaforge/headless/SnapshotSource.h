// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <osg/Image>
#include <osg/ref_ptr>

#include <optional>

namespace vfApplication {

/// Size and kind of a picture.
struct SnapshotFormat
{
    /// In pixels, at least 1.
    int width = 1280;
    int height = 800;

    /// Whether the background is left out.
    bool isTransparent = false;

    /// For one of several pictures around the model: the part of a whole turn, from 0 to 1.
    std::optional<double> turn;
};

/// Base class of views, beside View, that the shell without a screen can take a picture of.
///
///     class ChartView : public vfApplication::View, public vfApplication::SnapshotSource
///     {
///         osg::ref_ptr<osg::Image> takeSnapshot(const vfApplication::SnapshotFormat& format,
///                                               vfBase::VfString& reason) override;
///         ...
///     };
class SnapshotSource
{
public:
    virtual ~SnapshotSource() = default;

    /// Draws the view. An exception counts as a failure with its reason.
    /// @return the picture, the bottom row first; null with the reason
    virtual osg::ref_ptr<osg::Image> takeSnapshot(const SnapshotFormat& format, vfBase::VfString& reason) = 0;
};

} // namespace vfApplication
