// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <osg/Image>
#include <osg/ref_ptr>

namespace vfApplication {

/// What a view is, beside a View, when the shell without a screen can take a picture of it.
///
///     class ChartView : public vfApplication::View, public vfApplication::SnapshotSource
///     {
///         osg::ref_ptr<osg::Image> takeSnapshot(int width, int height, vfBase::VfString& reason) override;
///         ...
///     };
class SnapshotSource
{
public:
    virtual ~SnapshotSource() = default;

    /// @param width, height  in pixels, at least 1
    /// @return the picture, the bottom row first; null with the reason
    virtual osg::ref_ptr<osg::Image> takeSnapshot(int width, int height, vfBase::VfString& reason) = 0;
};

} // namespace vfApplication
