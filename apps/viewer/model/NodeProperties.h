// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace osg {
class Node;
}

namespace vfViewer {

class ModelScene;

/// What can be said about a part of a model.
struct NodeProperty
{
    const char* name; ///< English, to be translated; lives on
    std::string value;
};

/// @return what there is to be said, in an order for people to read
std::vector<NodeProperty> propertiesOf(osg::Node& node, const ModelScene& scene);

} // namespace vfViewer
