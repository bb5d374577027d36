// SPDX-License-Identifier: MIT
#pragma once

#include <osg/AnimationPath>
#include <osg/ref_ptr>

#include <map>
#include <string>

struct aiNodeAnim;
struct aiScene;

namespace vfViewer {

/// How the nodes of a scene move, in the first of its animations.
class AssimpAnimations
{
public:
    explicit AssimpAnimations(const aiScene& scene);

    /// @return what moves the node of that name; null when it stands still
    osg::AnimationPathCallback* find(const std::string& node) const;

private:
    std::map<std::string, osg::ref_ptr<osg::AnimationPathCallback>> m_paths;
};

} // namespace vfViewer
