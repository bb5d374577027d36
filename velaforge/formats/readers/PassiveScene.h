// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Node>
#include <osg/ref_ptr>

#include <string>
#include <vector>

namespace vfFormats {

/// Removes from a scene what would read files or run foreign code in the program that shows it, and keeps the rest.
///
///     if (!makePassive(scene, warnings))
///         return "its parts are nested too deeply";
///
/// Files that a scene names to be loaded later (osg::ProxyNode, osg::PagedLOD) are read here, a hundred at most, behind the
/// gate. Shaders are removed, and so are callbacks and kinds of nodes and state that no model needs; groups of such kinds
/// become plain groups.
/// @param scene     may become another node; must not be null
/// @param warnings  gets a line for each kind that was left out
/// @return isPassive(); false for a scene that is too deep
bool makePassive(osg::ref_ptr<osg::Node>& scene, std::vector<std::string>& warnings);

/// Returns whether makePassive() has nothing to remove, the scene is at most deepestScene nodes deep, and walking through it
/// visits at most mostVisits nodes: a few nodes that share their children can lead along countless paths.
bool isPassive(osg::Node& scene);

} // namespace vfFormats
