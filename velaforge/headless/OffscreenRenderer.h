// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>

#include <osg/Image>
#include <osg/Matrixd>
#include <osg/Vec3f>
#include <osg/ref_ptr>

#include <memory>

namespace osg {
class Node;
}

namespace vfApplication {

struct OffscreenRendererPrivate;

/// Draws a scene into an image without a window and without a display, on the graphics card if it can, otherwise in
/// software.
///
///     vfApplication::OffscreenRenderer renderer;
///     vfBase::VfString reason;
///     osg::ref_ptr<osg::Image> image = renderer.render(*scene, view, projection, 1280, 800, reason);
///     if (!image)
///         std::cerr << reason << '\n';
///
/// Each picture has a graphics context of its own. Edges are smoothed except in pictures of more than 64 million pixels.
/// Belongs on one thread.
class VFAPPLICATIONHEADLESS_EXPORT OffscreenRenderer
{
public:
    /// Largest width and height of a picture, in pixels. The implementation may allow less.
    static constexpr int sizeLimit = 16384;

    /// Loads the graphics driver, which the first picture does otherwise: for a program that waits for something else
    /// meanwhile. Does nothing without a driver.
    static void prepare();

    OffscreenRenderer();
    ~OffscreenRenderer();

    OffscreenRenderer(const OffscreenRenderer&) = delete;
    OffscreenRenderer& operator=(const OffscreenRenderer&) = delete;

    /// Sets the colours at the top and the bottom of the background, each part from 0 to 1.
    void setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

    /// Leaves the background out: pixels without a part of the scene are transparent. False by default.
    void setTransparent(bool isTransparent);

    /// Smooths edges. True by default.
    void setSmooth(bool isSmooth);

    /// Draws a scene with a camera. The scene is as before afterwards.
    /// @param view, projection  the matrices of the camera
    /// @param width, height     in pixels, at least 1
    /// @return the picture, RGBA with 8 bits a channel, colours not multiplied by alpha, the bottom row first; null with
    ///         the reason when there is no graphics context, or not one for that size
    osg::ref_ptr<osg::Image> render(osg::Node& scene, const osg::Matrixd& view,
                                    const osg::Matrixd& projection, int width, int height,
                                    vfBase::VfString& reason);

    /// @return the name that the OpenGL driver gives for itself; empty before the first picture
    const vfBase::VfString& getRendererName() const;

private:
    std::unique_ptr<OffscreenRendererPrivate> d;
};

} // namespace vfApplication
