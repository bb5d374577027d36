// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <string>
#include <vector>

namespace osg {
class Node;
}

namespace vfScene {

class ModelScene;

/// A property of a part of a model.
struct NodeProperty
{
    const char* name;  ///< in English, a literal; the program translates it
    std::string value; ///< as text
};

/// Returns the properties of a part, in the order in which users see them.
/// @param node   in the scene
/// @param scene  the model
VFSCENE_EXPORT std::vector<NodeProperty> propertiesOf(osg::Node& node, const ModelScene& scene);

} // namespace vfScene
