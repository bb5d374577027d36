// SPDX-License-Identifier: MIT
#include <velaforge/headless/OffscreenRenderer.h>

#include <osg/Camera>
#include <osg/FrameBufferObject>
#include <osg/GL>
#include <osg/GLExtensions>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Texture>
#include <osgViewer/Viewer>

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstdlib>
#include <cstring>

namespace vfApplication {

namespace {

/// A desktop OpenGL context that has no surface of its own: all drawing goes to frame buffer objects.
class Context
{
public:
    ~Context()
    {
        if (m_display == EGL_NO_DISPLAY)
            return;
        eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        if (m_context != EGL_NO_CONTEXT)
            eglDestroyContext(m_display, m_context);
        eglTerminate(m_display);
    }

    bool makeCurrent(vfBase::VfString& reason)
    {
        if (m_context == EGL_NO_CONTEXT && !create(reason))
            return false;
        if (eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_context) == EGL_TRUE)
            return true;
        reason = "the graphics context cannot be used without a surface";
        return false;
    }

private:
    static EGLDisplay surfacelessDisplay()
    {
        const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
        if (!extensions || !std::strstr(extensions, "EGL_MESA_platform_surfaceless"))
            return EGL_NO_DISPLAY;
        const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
            reinterpret_cast<void*>(eglGetProcAddress("eglGetPlatformDisplayEXT")));
        if (!getPlatformDisplay)
            return EGL_NO_DISPLAY;
        return getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    }

    bool create(vfBase::VfString& reason)
    {
        reason = "no graphics without a display: EGL offers no surfaceless OpenGL context";
        m_display = surfacelessDisplay();
        if (m_display == EGL_NO_DISPLAY)
            m_display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
        if (m_display == EGL_NO_DISPLAY || eglInitialize(m_display, nullptr, nullptr) != EGL_TRUE ||
            eglBindAPI(EGL_OPENGL_API) != EGL_TRUE)
            return false;
        const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_DONT_CARE, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                 EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        if (eglChooseConfig(m_display, wanted, &config, 1, &count) != EGL_TRUE || count < 1)
            return false;
        m_context = eglCreateContext(m_display, config, EGL_NO_CONTEXT, nullptr);
        return m_context != EGL_NO_CONTEXT;
    }

    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLContext m_context = EGL_NO_CONTEXT;
};

/// A window on that context. It has no default frame buffer, so nothing may ever be drawn into it.
class SurfacelessWindow : public osgViewer::GraphicsWindowEmbedded
{
public:
    SurfacelessWindow(int width, int height) : GraphicsWindowEmbedded(0, 0, width, height) {}
};

/// Two triangles behind everything, from one colour at the bottom to another at the top.
osg::ref_ptr<osg::Camera> makeBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
{
    osg::ref_ptr<osg::Geometry> quad = new osg::Geometry;
    quad->setUseDisplayList(false);
    osg::ref_ptr<osg::Vec3Array> corners = new osg::Vec3Array;
    corners->push_back({0, 0, 0});
    corners->push_back({1, 0, 0});
    corners->push_back({0, 1, 0});
    corners->push_back({1, 1, 0});
    osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array(osg::Array::BIND_PER_VERTEX);
    colors->push_back({bottom, 1});
    colors->push_back({bottom, 1});
    colors->push_back({top, 1});
    colors->push_back({top, 1});
    quad->setVertexArray(corners);
    quad->setColorArray(colors);
    quad->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLE_STRIP, 0, 4));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(quad);
    osg::StateSet* state = geode->getOrCreateStateSet();
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);
    state->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED);

    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    camera->setProjectionMatrixAsOrtho2D(0, 1, 0, 1);
    camera->setViewMatrix(osg::Matrixd());
    camera->setClearMask(0);
    camera->setRenderOrder(osg::Camera::NESTED_RENDER);
    camera->setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
    camera->getOrCreateStateSet()->setRenderBinDetails(-100, "RenderBin");
    camera->addChild(geode);
    return camera;
}

bool isBlank(const osg::Image& image)
{
    const unsigned char* data = image.data();
    for (std::size_t i = 3; i < image.getTotalSizeInBytes(); i += 4) {
        if (data[i] != 0)
            return false;
    }
    return true;
}

} // namespace

struct OffscreenRendererPrivate
{
    Context context;
    osg::Vec3f top{0.86f, 0.90f, 0.95f};
    osg::Vec3f bottom{0.56f, 0.64f, 0.72f};
    vfBase::VfString rendererName;

    osg::ref_ptr<osg::Image> draw(osg::Node& scene, const osg::Matrixd& view, const osg::Matrixd& projection,
                                  int width, int height, int samples);
};

osg::ref_ptr<osg::Image> OffscreenRendererPrivate::draw(osg::Node& scene, const osg::Matrixd& view,
                                                        const osg::Matrixd& projection, int width, int height,
                                                        int samples)
{
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(width, height, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    std::memset(image->data(), 0, image->getTotalSizeInBytes());

    osg::ref_ptr<osg::Group> root = new osg::Group;
    root->addChild(makeBackground(top, bottom));
    root->addChild(&scene);

    osgViewer::Viewer viewer;
    viewer.setThreadingModel(osgViewer::Viewer::SingleThreaded);
    viewer.setKeyEventSetsDone(0);
    viewer.setReleaseContextAtEndOfFrameHint(false);
    viewer.setLightingMode(osg::View::NO_LIGHT);
    osg::ref_ptr<SurfacelessWindow> window = new SurfacelessWindow(width, height);
    osg::Camera* camera = viewer.getCamera();
    camera->setGraphicsContext(window);
    camera->setViewport(0, 0, width, height);
    camera->setRenderTargetImplementation(osg::Camera::FRAME_BUFFER_OBJECT);
    camera->setDrawBuffer(GL_COLOR_ATTACHMENT0_EXT);
    camera->setReadBuffer(GL_COLOR_ATTACHMENT0_EXT);
    camera->attach(osg::Camera::COLOR_BUFFER, image, static_cast<unsigned int>(samples));
    camera->setClearColor({bottom, 1});
    camera->setClearMask(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    camera->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    camera->setViewMatrix(view);
    camera->setProjectionMatrix(projection);
    viewer.setSceneData(root);
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
    return isBlank(*image) ? nullptr : image;
}

OffscreenRenderer::OffscreenRenderer() : d(std::make_unique<OffscreenRendererPrivate>()) {}

OffscreenRenderer::~OffscreenRenderer() = default;

void OffscreenRenderer::setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
{
    d->top = top;
    d->bottom = bottom;
}

osg::ref_ptr<osg::Image> OffscreenRenderer::render(osg::Node& scene, const osg::Matrixd& view,
                                                   const osg::Matrixd& projection, int width, int height,
                                                   vfBase::VfString& reason)
{
    if (!d->context.makeCurrent(reason))
        return nullptr;
    GLint limit = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &limit);
    if (width < 1 || height < 1 || width > limit || height > limit) {
        reason = "a picture can be 1 to " + std::to_string(limit) + " pixels wide and high here";
        return nullptr;
    }
    // Smoothed edges take four times the memory; a huge picture has fine edges by itself.
    const bool isHuge = static_cast<long long>(width) * height > 64LL * 1024 * 1024;
    osg::ref_ptr<osg::Image> image = d->draw(scene, view, projection, width, height, isHuge ? 0 : 4);
    if (!image && !isHuge)
        image = d->draw(scene, view, projection, width, height, 0);
    if (!image)
        reason = "the graphics driver cannot draw a picture of this size";
    return image;
}

const vfBase::VfString& OffscreenRenderer::getRendererName() const
{
    return d->rendererName;
}

} // namespace vfApplication
