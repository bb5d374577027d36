// SPDX-License-Identifier: MIT
#include <velaforge/headless/OffscreenRenderer.h>

#include <velaforge/toolkit/GradientBackground.h>
#include <velaforge/toolkit/NoPaging.h>

#include <osg/BlendFunc>
#include <osg/Camera>
#include <osg/FrameBufferObject>
#include <osg/GL>
#include <osg/LineWidth>
#include <osg/NodeVisitor>
#include <osg/Point>
#include <osg/Texture>
#include <osgViewer/Viewer>

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <map>

namespace vfApplication {

namespace {

/// A desktop OpenGL context without a surface, for drawing into frame buffer objects. It is current from its
/// construction to its destruction.
class Context
{
public:
    explicit Context(vfBase::VfString& reason)
    {
        const EGLConfig config = chooseConfig();
        if (config)
            m_context = eglCreateContext(display(), config, EGL_NO_CONTEXT, nullptr);
        if (m_context == EGL_NO_CONTEXT)
            reason = "cannot draw without a display: EGL offers no surfaceless OpenGL context";
        else if (eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, m_context) == EGL_TRUE)
            m_isCurrent = true;
        else
            reason = "the graphics context cannot be used without a surface";
    }

    ~Context()
    {
        if (m_context == EGL_NO_CONTEXT)
            return;
        eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(display(), m_context);
    }

    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    bool isCurrent() const { return m_isCurrent; }

private:
    static EGLDisplay openDisplay()
    {
        const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
        EGLDisplay found = EGL_NO_DISPLAY;
        if (extensions && std::strstr(extensions, "EGL_MESA_platform_surfaceless")) {
            const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
                eglGetProcAddress("eglGetPlatformDisplayEXT"));
            if (getPlatformDisplay)
                found = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        }
        if (found == EGL_NO_DISPLAY)
            found = eglGetDisplay(EGL_DEFAULT_DISPLAY);
        return found != EGL_NO_DISPLAY && eglInitialize(found, nullptr, nullptr) == EGL_TRUE ? found
                                                                                             : EGL_NO_DISPLAY;
    }

    /// Never closed: the process has one EGL display, and closing it would destroy the contexts of other
    /// code.
    static EGLDisplay display()
    {
        static const EGLDisplay opened = openDisplay();
        return opened;
    }

    static EGLConfig chooseConfig()
    {
        const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_DONT_CARE, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                 EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        if (display() == EGL_NO_DISPLAY || eglBindAPI(EGL_OPENGL_API) != EGL_TRUE ||
            eglChooseConfig(display(), wanted, &config, 1, &count) != EGL_TRUE || count < 1)
            return nullptr;
        return config;
    }

    EGLContext m_context = EGL_NO_CONTEXT;
    bool m_isCurrent = false;
};

/// Pictures of more pixels are drawn without smoothed edges.
constexpr long long hugePicture = 64LL * 1024 * 1024;

/// Returns the picture at half its size, each pixel the mean of four. This smooths edges and textures, and
/// takes a software driver less time than several samples per pixel.
osg::ref_ptr<osg::Image> halved(const osg::Image& large)
{
    osg::ref_ptr<osg::Image> small = new osg::Image;
    small->allocateImage(large.s() / 2, large.t() / 2, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    for (int t = 0; t < small->t(); ++t) {
        const unsigned char* lower = large.data(0, static_cast<unsigned int>(2 * t));
        const unsigned char* upper = large.data(0, static_cast<unsigned int>(2 * t + 1));
        unsigned char* target = small->data(0, static_cast<unsigned int>(t));
        for (int s = 0; s < small->s(); ++s, lower += 8, upper += 8, target += 4) {
            for (int i = 0; i < 4; ++i)
                target[i] =
                    static_cast<unsigned char>((lower[i] + lower[i + 4] + upper[i] + upper[i + 4] + 2) / 4);
        }
    }
    return small;
}

/// Divides the colours by their alpha: drawing over an empty background multiplied them by it, and files
/// store them unmultiplied.
void divideByAlpha(osg::Image& image)
{
    unsigned char* pixel = image.data();
    const std::size_t size = image.getTotalSizeInBytes();
    for (std::size_t i = 0; i < size; i += 4, pixel += 4) {
        const int alpha = pixel[3];
        for (int channel = 0; alpha > 0 && alpha < 255 && channel < 3; ++channel)
            pixel[channel] =
                static_cast<unsigned char>(std::min(255, (pixel[channel] * 255 + alpha / 2) / alpha));
    }
}

/// Sets alpha to opaque: transparent surfaces write their own alpha, although the background is behind them.
void makeOpaque(osg::Image& image)
{
    unsigned char* data = image.data();
    const std::size_t size = image.getTotalSizeInBytes();
    for (std::size_t i = 3; i < size; i += 4)
        data[i] = 255;
}

/// Multiplies the widths of the lines and points of a scene, and restores them in its destructor.
class ScaledWidths : public osg::NodeVisitor
{
public:
    ScaledWidths(osg::Node& scene, float factor) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_factor(factor)
    {
        setNodeMaskOverride(~0u);
        scene.accept(*this);
    }
    ~ScaledWidths() override
    {
        for (const auto& [line, width] : m_lines)
            line->setWidth(width);
        for (const auto& [point, size] : m_points)
            point->setSize(size);
    }
    ScaledWidths(const ScaledWidths&) = delete;
    ScaledWidths& operator=(const ScaledWidths&) = delete;

    void apply(osg::Node& node) override
    {
        if (osg::StateSet* state = node.getStateSet()) {
            auto* line = dynamic_cast<osg::LineWidth*>(state->getAttribute(osg::StateAttribute::LINEWIDTH));
            if (line && m_lines.emplace(line, line->getWidth()).second)
                line->setWidth(line->getWidth() * m_factor);
            auto* point = dynamic_cast<osg::Point*>(state->getAttribute(osg::StateAttribute::POINT));
            if (point && m_points.emplace(point, point->getSize()).second)
                point->setSize(point->getSize() * m_factor);
        }
        traverse(node);
    }

private:
    float m_factor;
    std::map<osg::ref_ptr<osg::LineWidth>, float> m_lines;
    std::map<osg::ref_ptr<osg::Point>, float> m_points;
};

/// Returns a group around the scene that sets this width for lines and points without one of their own.
osg::ref_ptr<osg::Group> withWidthsFor(osg::Node& scene, float width)
{
    osg::ref_ptr<osg::Group> group = new osg::Group;
    group->addChild(&scene);
    group->getOrCreateStateSet()->setAttribute(new osg::LineWidth(width));
    group->getOrCreateStateSet()->setAttribute(new osg::Point(width));
    return group;
}

/// The value of each pixel before drawing. If all pixels still have it, the driver has drawn nothing.
constexpr std::array<unsigned char, 4> mark = {17, 34, 51, 0};

void fillWithMark(osg::Image& image)
{
    unsigned char* data = image.data();
    const std::size_t size = image.getTotalSizeInBytes();
    for (std::size_t i = 0; i < size; i += mark.size())
        std::memcpy(data + i, mark.data(), mark.size());
}

bool isMarked(const osg::Image& image)
{
    const unsigned char* data = image.data();
    const std::size_t size = image.getTotalSizeInBytes();
    for (std::size_t i = 0; i < size; i += mark.size()) {
        if (std::memcmp(data + i, mark.data(), mark.size()) != 0)
            return false;
    }
    return true;
}

bool isBlank(const osg::Image& image)
{
    const unsigned char* data = image.data();
    const std::size_t size = image.getTotalSizeInBytes();
    for (std::size_t i = 3; i < size; i += 4) {
        if (data[i] != 0)
            return false;
    }
    return true;
}

} // namespace

struct OffscreenRendererPrivate
{
    osg::Vec3f top{0.86f, 0.90f, 0.95f};
    osg::Vec3f bottom{0.56f, 0.64f, 0.72f};
    bool isTransparent = false;
    bool isSmooth = true;
    vfBase::VfString rendererName;

    /// Draws in a context of its own, so that one picture does not affect the next.
    /// @return null, with the reason set, on failure
    osg::ref_ptr<osg::Image> draw(osg::Node& scene, const osg::Matrixd& view, const osg::Matrixd& projection,
                                  int width, int height, vfBase::VfString& reason);

    /// Returns a group with the scene and the background.
    osg::ref_ptr<osg::Group> withBackground(osg::Node& scene) const;

    /// Makes the camera draw into an image of its size instead of a window.
    void aimAt(osg::Camera& camera, osg::GraphicsContext& context, osg::Image& image) const;

    /// Draws one frame in the current context.
    void drawFrame(osg::Node& scene, const osg::Matrixd& view, const osg::Matrixd& projection,
                   osg::Image& image);

    /// Returns whether the driver drew nothing into an image that was filled with the mark.
    bool isUntouched(const osg::Image& image) const
    {
        return isMarked(image) || (!isTransparent && isBlank(image));
    }
};

namespace {

/// Returns whether the driver can draw a picture of that size; if not, sets @p reason.
bool isSizeSupported(int width, int height, vfBase::VfString& reason)
{
    GLint limit = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &limit);
    if (width <= limit && height <= limit)
        return true;
    reason =
        "the graphics driver draws pictures from 1 to " + std::to_string(limit) + " pixels wide and high";
    return false;
}

} // namespace

osg::ref_ptr<osg::Group> OffscreenRendererPrivate::withBackground(osg::Node& scene) const
{
    osg::ref_ptr<osg::Group> root = new osg::Group;
    if (isTransparent)
        root->getOrCreateStateSet()->setAttribute(
            new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA),
            osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
    else
        root->addChild(makeGradientBackground(top, bottom));
    root->addChild(&scene);
    return root;
}

void OffscreenRendererPrivate::aimAt(osg::Camera& camera, osg::GraphicsContext& context,
                                     osg::Image& image) const
{
    camera.setGraphicsContext(&context);
    camera.setViewport(0, 0, image.s(), image.t());
    camera.setRenderTargetImplementation(osg::Camera::FRAME_BUFFER_OBJECT);
    camera.setDrawBuffer(GL_COLOR_ATTACHMENT0_EXT);
    camera.setReadBuffer(GL_COLOR_ATTACHMENT0_EXT);
    camera.attach(osg::Camera::COLOR_BUFFER, &image);
    camera.setClearColor(isTransparent ? osg::Vec4(0, 0, 0, 0) : osg::Vec4(bottom, 1));
    camera.setClearMask(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    camera.setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
}

void OffscreenRendererPrivate::drawFrame(osg::Node& scene, const osg::Matrixd& view,
                                         const osg::Matrixd& projection, osg::Image& image)
{
    osgViewer::Viewer viewer;
    viewer.setThreadingModel(osgViewer::Viewer::SingleThreaded);
    viewer.setKeyEventSetsDone(0);
    viewer.setReleaseContextAtEndOfFrameHint(false);
    viewer.setLightingMode(osg::View::NO_LIGHT);
    const osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window =
        new osgViewer::GraphicsWindowEmbedded(0, 0, image.s(), image.t());
    aimAt(*viewer.getCamera(), *window, image);
    viewer.getCamera()->setViewMatrix(view);
    viewer.getCamera()->setProjectionMatrix(projection);
    const osg::ref_ptr<osg::Group> root = withBackground(scene);
    viewer.setSceneData(root);
    forbidPaging(viewer);
    viewer.realize();
    viewer.frame();
    if (rendererName.empty()) {
        const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
        rendererName = name ? name : "";
    }
    viewer.setSceneData(nullptr);
    root->removeChildren(0, root->getNumChildren());
    scene.releaseGLObjects(window->getState());
    window->close();
}

osg::ref_ptr<osg::Image> OffscreenRendererPrivate::draw(osg::Node& scene, const osg::Matrixd& view,
                                                        const osg::Matrixd& projection, int width, int height,
                                                        vfBase::VfString& reason)
{
    const Context context(reason);
    if (!context.isCurrent() || !isSizeSupported(width, height, reason))
        return nullptr;
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(width, height, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    fillWithMark(*image);
    drawFrame(scene, view, projection, *image);
    if (isUntouched(*image)) {
        reason = "the graphics driver cannot draw a picture of this size";
        return nullptr;
    }
    return image;
}

void OffscreenRenderer::prepare()
{
    vfBase::VfString reason;
    const Context context(reason);
}

OffscreenRenderer::OffscreenRenderer() : d(std::make_unique<OffscreenRendererPrivate>()) {}

OffscreenRenderer::~OffscreenRenderer() = default;

void OffscreenRenderer::setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
{
    d->top = top;
    d->bottom = bottom;
}

void OffscreenRenderer::setTransparent(bool isTransparent)
{
    d->isTransparent = isTransparent;
}

void OffscreenRenderer::setSmooth(bool isSmooth)
{
    d->isSmooth = isSmooth;
}

osg::ref_ptr<osg::Image> OffscreenRenderer::render(osg::Node& scene, const osg::Matrixd& view,
                                                   const osg::Matrixd& projection, int width, int height,
                                                   vfBase::VfString& reason)
{
    if (width < 1 || height < 1) {
        reason = "a picture must be at least 1 by 1 pixels";
        return nullptr;
    }
    osg::ref_ptr<osg::Image> image;
    // Not for huge pictures, whose edges are fine without it.
    if (d->isSmooth && static_cast<long long>(width) * height <= hugePicture) {
        const ScaledWidths scaled(scene, 2);
        const osg::ref_ptr<osg::Group> thick = withWidthsFor(scene, 2);
        // Ignored: if the driver cannot draw the large picture, the plain one is drawn below.
        vfBase::VfString ignored;
        const osg::ref_ptr<osg::Image> large =
            d->draw(*thick, view, projection, 2 * width, 2 * height, ignored);
        thick->removeChild(&scene);
        if (large)
            image = halved(*large);
    }
    if (!image)
        image = d->draw(scene, view, projection, width, height, reason);
    if (image && d->isTransparent)
        divideByAlpha(*image);
    else if (image)
        makeOpaque(*image);
    return image;
}

const vfBase::VfString& OffscreenRenderer::getRendererName() const
{
    return d->rendererName;
}

} // namespace vfApplication
