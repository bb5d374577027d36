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

/// The result of reading a file: a scene with warnings, or a reason.
struct ReadOutcome
{
    osg::ref_ptr<osg::Node> scene; ///< null when the file could not be read
    bool isCancelled = false; ///< the caller cancelled the job; there is neither a scene nor a reason then
    std::string reason;       ///< why there is no scene, in one line
    std::vector<std::string> warnings; ///< "<file>: <reason>" of what is missing in the scene, a line each
    std::vector<std::string> files;    ///< absolute paths of the other files that were read, such as textures
    std::vector<std::string> missed;   ///< real paths of files it names that the process may not open
    std::vector<std::string> details;  ///< messages of the reader, for a log, a line each

    /// Convex hulls of large vertex arrays; pass them to vfScene::rememberHull() on the thread that shows the scene, so that
    /// they need not be computed again to place a camera.
    std::vector<std::pair<osg::ref_ptr<const osg::Vec3Array>, std::shared_ptr<const vfScene::ConvexHull>>>
        hulls;
};

} // namespace vfFormats
