// SPDX-License-Identifier: MIT
#include "reading/UpAxis.h"

#include <osg/MatrixTransform>
#include <osgDB/FileNameUtils>

namespace vfViewer {

namespace {

osg::ref_ptr<osg::Node> turned(osg::Node& scene, double angle)
{
    osg::ref_ptr<osg::MatrixTransform> turn =
        new osg::MatrixTransform(osg::Matrix::rotate(angle, osg::Vec3d(1, 0, 0)));
    turn->addChild(&scene);
    return turn;
}

} // namespace

bool isReadWithYUp(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    for (const char* format : {"ac", "gltf", "glb", "fbx", "x3d", "ase", "md5mesh"}) {
        if (extension == format)
            return true;
    }
    return false;
}

bool isWrittenWithYUp(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension == "obj" || extension == "ac";
}

osg::ref_ptr<osg::Node> withZUp(osg::Node& scene)
{
    return turned(scene, osg::PI_2);
}

osg::ref_ptr<osg::Node> withYUp(osg::Node& scene)
{
    return turned(scene, -osg::PI_2);
}

} // namespace vfViewer
