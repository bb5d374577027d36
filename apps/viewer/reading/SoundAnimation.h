// SPDX-License-Identifier: MIT
#pragma once

namespace osg {
class Node;
}

namespace vfViewer {

/// Takes from a node, not from those below it, what would lead whoever moves it beyond its arrays: bones that carry points
/// that are not there, shapes of other numbers of points, and animations without a moment. What bones bend is as large as
/// its points say from here on.
void makeAnimationSound(osg::Node& node);

} // namespace vfViewer
