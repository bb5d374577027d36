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

/// Draws a scene into an image without a window and a display: on the graphics card if possible, otherwise in
/// software.
///
///     vfApplication::OffscreenRenderer renderer;
///     vfBase::VfString reason;
///     osg::ref_ptr<osg::Image> image = renderer.render(*scene, view, projection, 1280, 800, reason);
///     if (!image)
///         std::cerr << reason << '\n';
///
/// Makes a graphics context for each picture. Smooths edges except in pictures of more than 64 million
/// pixels. Use an object on one thread only.
class VFAPPLICATIONHEADLESS_EXPORT OffscreenRenderer
{
public:
    /// Maximum width and height of a picture, in pixels. The graphics driver may allow less.
    static constexpr int sizeLimit = 16384;

    /// Loads the graphics driver in advance; otherwise the first picture loads it. Does nothing without a
    /// driver.
    static void prepare();

    /// Makes a renderer that smooths edges and draws the background.
    OffscreenRenderer();
    ~OffscreenRenderer();

    OffscreenRenderer(const OffscreenRenderer&) = delete;
    OffscreenRenderer& operator=(const OffscreenRenderer&) = delete;

    /// Sets the colours at the top and the bottom of the background: red, green and blue from 0 to 1.
    void setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

    /// Sets whether pixels that show no part of the scene are transparent instead of showing the background.
    /// False by default.
    void setTransparent(bool isTransparent);

    /// Sets whether edges are smoothed. True by default.
    void setSmooth(bool isSmooth);

    /// Draws @p scene with a camera. Restores what it changes in the scene.
    /// @param scene       the scene
    /// @param view        view matrix of the camera
    /// @param projection  projection matrix of the camera
    /// @param width       width in pixels, at least 1
    /// @param height      height in pixels, at least 1
    /// @param reason      set to the reason if the result is null
    /// @return the picture: RGBA, 8 bits per channel, colours not multiplied by alpha, bottom row first; null
    ///         if there is no graphics context or none for that size
    osg::ref_ptr<osg::Image> render(osg::Node& scene, const osg::Matrixd& view,
                                    const osg::Matrixd& projection, int width, int height,
                                    vfBase::VfString& reason);

    /// Returns the GL_RENDERER text of the OpenGL driver; empty before the first picture.
    const vfBase::VfString& getRendererName() const;

private:
    std::unique_ptr<OffscreenRendererPrivate> d;
};

} // namespace vfApplication
