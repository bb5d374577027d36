// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Matrixd>
#include <osg/ref_ptr>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/UpdateMatrixTransform>

#include <assimp/matrix4x4.h>

#include <set>
#include <string>

struct aiScene;

namespace vfFormats {

/// @return the same matrix: the one multiplies columns from the left, the other rows from the right
osg::Matrixd toOsg(const aiMatrix4x4& matrix);

/// What the animations of a file move, and how.
class AssimpAnimations
{
public:
    explicit AssimpAnimations(const aiScene& scene);

    /// @return whether one of them moves the nodes of that name
    bool moves(const std::string& node) const { return m_moved.count(node) > 0; }

    /// @return what plays them, to be called at the root of the scene; null when nothing moves
    osgAnimation::BasicAnimationManager* getManager() const { return m_manager; }

    /// Makes a callback take its node where the animations say, and where they say nothing leave it as it is.
    static void follow(osgAnimation::UpdateMatrixTransform& callback, const aiMatrix4x4& matrix);

private:
    osg::ref_ptr<osgAnimation::BasicAnimationManager> m_manager;
    std::set<std::string> m_moved;
};

} // namespace vfFormats
