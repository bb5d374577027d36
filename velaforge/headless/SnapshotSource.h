// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <osg/Image>
#include <osg/ref_ptr>

#include <optional>

namespace vfApplication {

/// What a picture is to be like.
struct SnapshotFormat
{
    int width = 1280; ///< in pixels, at least 1
    int height = 800;
    bool isTransparent = false; ///< what lies behind everything is left out

    /// For one of several pictures all around: which part of a whole turn this one has made, from 0 to 1.
    std::optional<double> turn;
};

/// What a view is, beside a View, when the shell without a screen can take a picture of it.
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

    /// @return the picture, the bottom row first; null with the reason
    virtual osg::ref_ptr<osg::Image> takeSnapshot(const SnapshotFormat& format, vfBase::VfString& reason) = 0;
};

} // namespace vfApplication
