// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/TrialFrame.h>

#include <osg/FrameStamp>
#include <osg/Viewport>
#include <osgUtil/CullVisitor>
#include <osgUtil/RenderStage>
#include <osgUtil/StateGraph>
#include <osgUtil/UpdateVisitor>

namespace vfFormats {

namespace {

void visitAll(osg::NodeVisitor& visitor, osg::FrameStamp& now)
{
    visitor.setFrameStamp(&now);
    visitor.setTraversalNumber(now.getFrameNumber());
    visitor.setTraversalMode(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN);
    visitor.setNodeMaskOverride(~0u);
}

} // namespace

void runTrialFrame(osg::Node& scene)
{
    const osg::ref_ptr<osg::FrameStamp> now = new osg::FrameStamp;
    now->setFrameNumber(1);
    osgUtil::UpdateVisitor update;
    visitAll(update, *now);
    scene.accept(update);

    const osg::ref_ptr<osgUtil::CullVisitor> cull = new osgUtil::CullVisitor;
    visitAll(*cull, *now);
    cull->setCullingMode(osg::CullSettings::NO_CULLING);
    cull->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    const osg::ref_ptr<osgUtil::StateGraph> graph = new osgUtil::StateGraph;
    const osg::ref_ptr<osgUtil::RenderStage> stage = new osgUtil::RenderStage;
    const osg::ref_ptr<osg::Viewport> viewport = new osg::Viewport(0, 0, 1000, 1000);
    stage->setViewport(viewport);
    cull->setStateGraph(graph);
    cull->setRenderStage(stage);
    cull->pushViewport(viewport);
    cull->pushProjectionMatrix(new osg::RefMatrix(osg::Matrix::ortho(-1, 1, -1, 1, -1, 1)));
    cull->pushModelViewMatrix(new osg::RefMatrix, osg::Transform::ABSOLUTE_RF);
    scene.accept(*cull);
    cull->popModelViewMatrix();
    cull->popProjectionMatrix();
    cull->popViewport();
}

} // namespace vfFormats
