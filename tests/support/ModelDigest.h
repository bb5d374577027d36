// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelScene.h"

#include <osg/ComputeBoundsVisitor>
#include <osg/Transform>

#include <sstream>
#include <string>

namespace vfTest {

/// @return what there is of the model in one text: the parts, how they hang in the scene, where they stand
inline std::string digestOf(const vfViewer::ModelScene& scene)
{
    std::ostringstream text;
    for (const auto& part : scene.parts()) {
        osg::ComputeBoundsVisitor bounds;
        part->accept(bounds);
        for (const osg::NodePath& path : part->getParentalNodePaths(&scene.root())) {
            for (const osg::Node* node : path)
                text << node->getName() << (node->getNodeMask() ? '+' : '-') << node->getStateSet() << '/';
            const osg::Vec3d center = bounds.getBoundingBox().center() * osg::computeLocalToWorld(path);
            text << center.x() << ' ' << center.y() << ' ' << center.z() << '\n';
        }
    }
    return text.str();
}

} // namespace vfTest
