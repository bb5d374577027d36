// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/UpAxis.h>

#include <osg/MatrixTransform>

namespace vfFormats {

namespace {

osg::ref_ptr<osg::Node> turned(osg::Node& scene, double angle)
{
    osg::ref_ptr<osg::MatrixTransform> turn =
        new osg::MatrixTransform(osg::Matrix::rotate(angle, osg::Vec3d(1, 0, 0)));
    turn->addChild(&scene);
    return turn;
}

} // namespace

osg::ref_ptr<osg::Node> withZUp(osg::Node& scene)
{
    return turned(scene, osg::PI_2);
}

osg::ref_ptr<osg::Node> withYUp(osg::Node& scene)
{
    return turned(scene, -osg::PI_2);
}

} // namespace vfFormats
