// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Group>
#include <osg/Node>

#include <string>
#include <vector>

namespace vfScene {

class ModelScene;

/// Returns the kind of a node as users see it: "Mesh", "Lines", "Points" or, when it draws nothing, "Group". In English; the
/// program translates it.
VFSCENE_EXPORT const char* kindOf(const osg::Node& node);

/// Returns the name of a node as users see it: its own or, for the model as a whole, a title; empty for other nodes without
/// a name.
/// @param node   in the scene
/// @param scene  the model
/// @param title  of the model, such as the name of its file
VFSCENE_EXPORT std::string nameOf(const osg::Node& node, const ModelScene& scene, const std::string& title);

/// Returns the children of a group as users see them: instead of a transform that was added to move a part, the part.
VFSCENE_EXPORT std::vector<osg::Node*> shownChildren(osg::Group& group);

} // namespace vfScene
