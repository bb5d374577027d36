// SPDX-License-Identifier: MIT
#pragma once

namespace osg {
class Node;
}

namespace vfFormats {

/// Updates and culls a scene once, hidden parts too, as a frame does before it draws, at the time 0. A process that reads
/// files calls it, so that a scene on which that crashes ends this process and not the program.
void runTrialFrame(osg::Node& scene);

} // namespace vfFormats
