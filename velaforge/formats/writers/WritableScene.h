// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Format.h>

#include <osg/Node>
#include <osg/ref_ptr>

namespace vfFormats {

/// Returns a scene as the writer of a format needs it: without what the format loses, hidden parts shown where it would drop
/// them, y up where the format is read so, and without transforms where the writer passes over them. The scene itself where
/// nothing needs to change.
osg::ref_ptr<osg::Node> writableScene(osg::Node& scene, const Format& format);

} // namespace vfFormats
