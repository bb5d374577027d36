// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/ConvexHull.h>

#include <osg/Array>
#include <osg/Node>
#include <osg/ref_ptr>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vfFormats {

/// What came of reading a file.
struct ReadOutcome
{
    osg::ref_ptr<osg::Node> scene;     ///< null when the file could not be read
    bool isCancelled = false;          ///< it was given up; there is no reason then
    std::string reason;                ///< why not, in one line
    std::vector<std::string> warnings; ///< files it names that could not be read, a line each
    std::vector<std::string> files;    ///< those that were read beside the one that was named
    std::vector<std::string> missed;   ///< real paths of files it names that the process may not open
    std::vector<std::string> details;  ///< what the reader complained about, a line each

    /// Convex hulls of vertex arrays, computed by the reader process, to place a camera.
    std::vector<std::pair<osg::ref_ptr<const osg::Vec3Array>, std::shared_ptr<const vfScene::ConvexHull>>>
        hulls;
};

} // namespace vfFormats
