// SPDX-License-Identifier: MIT
#pragma once

namespace osg {
class Node;
}

namespace vfViewer {

/// Has light fall on all that a scene shows: lines and points, which cannot be lit, shine by themselves, surfaces without
/// normals get some, and normals that point away from the side that is seen are turned.
void prepareLighting(osg::Node& scene);

} // namespace vfViewer
