// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/GradientBackground.h>

#include <osg/Geode>
#include <osg/Geometry>

namespace vfApplication {

osg::ref_ptr<osg::Camera> makeGradientBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
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

} // namespace vfApplication
