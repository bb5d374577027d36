// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Geometry>
#include <osg/Group>
#include <osg/Image>
#include <osg/ref_ptr>

namespace vfTest {

// Scenes of all classes that are sent from one process to another, with fields that differ from those of new objects.

osg::ref_ptr<osg::Geometry> triangleGeometry();

/// Makes an image in three colors whose bytes differ from one another.
osg::ref_ptr<osg::Image> gradient(int width, int height, int depth);

/// Makes a node of a class with a triangle below it.
template <class T>
osg::ref_ptr<T> withTriangle()
{
    osg::ref_ptr<T> node = new T;
    node->setName(node->className());
    node->addChild(triangleGeometry());
    return node;
}

/// Geometries with arrays of each type, with each kind of primitives, and with each array that a geometry has.
osg::ref_ptr<osg::Group> sceneOfGeometries();

osg::ref_ptr<osg::Group> sceneOfNodes();

/// State attributes of each class, and textures.
osg::ref_ptr<osg::Group> sceneOfStates();

/// A skeleton with a bone and a skin, a shape that changes, and a path.
osg::ref_ptr<osg::Group> movingScene();

osg::ref_ptr<osg::Group> sceneOfEverything();

} // namespace vfTest
