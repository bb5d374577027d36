// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

/// @return why a scene cannot be shown; empty when it can
std::string whyNotShown(osg::Node& scene);

} // namespace vfFormats
