// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Group>
#include <osg/Node>

#include <string>
#include <vector>

namespace vfViewer {

class ModelDocument;

/// Returns what a node is for the user: "Mesh", "Lines", "Points" or, without anything drawn in it, "Group". In English;
/// translated in the context of what the program declares, "vfViewer".
const char* kindOf(const osg::Node& node);

/// Returns the name of a node for the user: its own or, for the model as a whole, the name of the document; empty for other
/// nodes without a name.
std::string nameOf(const osg::Node& node, const ModelDocument& document);

/// Returns the children of @p group that the user knows: a transform that was added because a part was moved is left out, and
/// the part stands in its place.
std::vector<osg::Node*> shownChildren(osg::Group& group);

} // namespace vfViewer
