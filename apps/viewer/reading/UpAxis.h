// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Node>
#include <osg/ref_ptr>

#include <string>

namespace vfViewer {

// In the viewer z points up. Formats in which y does are turned by their readers, save one, but by no writer.

/// @return whether the reader of that file's format leaves y pointing up
bool isReadWithYUp(const std::string& path);

/// @return whether a file of that format must be written with y pointing up
bool isWrittenWithYUp(const std::string& path);

/// @return a scene that shows @p scene turned by a quarter about the x axis, from y up to z up
osg::ref_ptr<osg::Node> withZUp(osg::Node& scene);

/// The way back: from z up to y up.
osg::ref_ptr<osg::Node> withYUp(osg::Node& scene);

} // namespace vfViewer
