// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <osg/Image>
#include <osg/ref_ptr>

#include <optional>

namespace vfApplication {

/// The size and kind of a picture.
struct SnapshotFormat
{
    int width = 1280; ///< in pixels, at least 1
    int height = 800; ///< in pixels, at least 1

    /// Whether the background is transparent.
    bool isTransparent = false;

    /// For one of several pictures around the model: the orbit angle as a fraction of a full turn, from 0 to
    /// 1. Empty for the camera of the view.
    std::optional<double> turn;
};

/// A second base class, beside View, of views that HeadlessApplication can take a picture of.
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

    /// Draws the view. If it throws, the caller reports the exception as the reason.
    /// @param format  size and kind of the picture
    /// @param reason  set to the reason if the result is null
    /// @return the picture, bottom row first; null if it could not be drawn
    virtual osg::ref_ptr<osg::Image> takeSnapshot(const SnapshotFormat& format, vfBase::VfString& reason) = 0;
};

} // namespace vfApplication
