// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>
#include <osgAnimation/Bone>
#include <osgAnimation/RigGeometry>
#include <osgAnimation/Skeleton>

#include <map>
#include <set>
#include <string>

struct aiMesh;
struct aiNode;
struct aiScene;

namespace vfFormats {

/// The bones of a file, and the skins that they carry.
class AssimpSkeleton
{
public:
    explicit AssimpSkeleton(const aiScene& scene);

    bool isEmpty() const { return m_names.empty(); }

    /// @return whether a node is a bone, or leads to one
    bool isBone(const aiNode& node) const { return m_bones.count(&node) > 0; }

    /// @return the node as a bone, without what is below it
    osg::ref_ptr<osgAnimation::Bone> makeBone(const aiNode& node);

    /// Lays a mesh over the bones, which are there; to be called once for each mesh.
    /// @param mesh      what bones carry which points
    /// @param geometry  the mesh when it is not bent
    /// @param place     the node in which the mesh stands where no bone carries it
    /// @return what is to hang directly below the skeleton, after the bones
    osg::ref_ptr<osgAnimation::RigGeometry> makeSkin(const aiMesh& mesh, osg::Geometry& geometry,
                                                     const aiNode& place);

    /// @return what bones and skins hang below; the same for life
    osgAnimation::Skeleton& getRoot() const { return *m_root; }

private:
    bool findBones(const aiNode& node, int depth);
    osgAnimation::Bone* carrier(const std::string& name, const osg::Matrixd& fromSkin);
    osgAnimation::Bone& addBone(osg::Group& parent, const osg::Matrixd& fromSkin);

    std::set<std::string> m_names;
    std::set<const aiNode*> m_bones;
    std::map<std::string, osgAnimation::Bone*> m_made; ///< of those that carry something
    std::set<const osgAnimation::Bone*> m_bound;       ///< that know how a skin lies on them
    osg::ref_ptr<osgAnimation::Skeleton> m_root;
};

} // namespace vfFormats
