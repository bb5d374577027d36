// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpSkeleton.h>

#include <velaforge/formats/readers/assimp/AssimpAnimations.h>

#include <osgAnimation/RigTransformSoftware>
#include <osgAnimation/UpdateBone>
#include <osgUtil/SmoothingVisitor>

#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <cmath>
#include <vector>

namespace vfFormats {

namespace {

constexpr int deepestBone = 500;

osg::Matrixd inScene(const aiNode& node)
{
    aiMatrix4x4 matrix = node.mTransformation;
    for (const aiNode* above = node.mParent; above; above = above->mParent)
        matrix = above->mTransformation * matrix;
    return toOsg(matrix);
}

} // namespace

AssimpSkeleton::AssimpSkeleton(const aiScene& scene) : m_root(new osgAnimation::Skeleton)
{
    for (unsigned int i = 0; i < scene.mNumMeshes; ++i) {
        const aiMesh& mesh = *scene.mMeshes[i];
        for (unsigned int k = 0; k < mesh.mNumBones; ++k)
            m_names.insert(mesh.mBones[k]->mName.C_Str());
    }
    if (!isEmpty() && !findBones(*scene.mRootNode, 0))
        m_names.clear(); // the file names bones that it does not have
}

bool AssimpSkeleton::findBones(const aiNode& node, int depth)
{
    bool isBone = m_names.count(node.mName.C_Str()) > 0;
    for (unsigned int i = 0; i < node.mNumChildren && depth < deepestBone; ++i)
        isBone = findBones(*node.mChildren[i], depth + 1) || isBone;
    if (isBone)
        m_bones.insert(&node);
    return isBone;
}

osg::ref_ptr<osgAnimation::Bone> AssimpSkeleton::makeBone(const aiNode& node)
{
    const std::string name = node.mName.C_Str();
    osg::ref_ptr<osgAnimation::Bone> bone = new osgAnimation::Bone(name);
    const osg::ref_ptr<osgAnimation::UpdateBone> callback = new osgAnimation::UpdateBone(name);
    AssimpAnimations::follow(*callback, node.mTransformation);
    bone->setUpdateCallback(callback);
    bone->setMatrix(toOsg(node.mTransformation));
    bone->setDataVariance(osg::Object::DYNAMIC);
    if (m_names.count(name))
        m_made.emplace(name, bone);
    return bone;
}

/// A bone knows of one way in which a skin lies on it; another skin that lies otherwise takes a bone of its own, which
/// goes with the first.
osgAnimation::Bone* AssimpSkeleton::carrier(const std::string& name, const osg::Matrixd& fromSkin)
{
    const auto found = m_made.find(name);
    if (found == m_made.end())
        return nullptr;
    osgAnimation::Bone& bone = *found->second;
    if (m_bound.insert(&bone).second)
        bone.setInvBindMatrixInSkeletonSpace(fromSkin);
    if (bone.getInvBindMatrixInSkeletonSpace() == fromSkin)
        return &bone;
    return &addBone(bone, fromSkin);
}

osgAnimation::Bone& AssimpSkeleton::addBone(osg::Group& parent, const osg::Matrixd& fromSkin)
{
    const std::string name = parent.getName() + " #" + std::to_string(m_bound.size());
    const osg::ref_ptr<osgAnimation::Bone> bone = new osgAnimation::Bone(name);
    bone->setUpdateCallback(new osgAnimation::UpdateBone(name));
    bone->setInvBindMatrixInSkeletonSpace(fromSkin);
    bone->setDataVariance(osg::Object::DYNAMIC);
    m_bound.insert(bone);
    parent.addChild(bone);
    return *bone;
}

osg::ref_ptr<osgAnimation::RigGeometry> AssimpSkeleton::makeSkin(const aiMesh& mesh, osg::Geometry& geometry,
                                                                 const aiNode& place)
{
    const osg::ref_ptr<osgAnimation::VertexInfluenceMap> influences = new osgAnimation::VertexInfluenceMap;
    std::vector<bool> isCarried(mesh.mNumVertices);
    for (unsigned int i = 0; i < mesh.mNumBones; ++i) {
        const aiBone& source = *mesh.mBones[i];
        const osgAnimation::Bone* bone = carrier(source.mName.C_Str(), toOsg(source.mOffsetMatrix));
        if (!bone)
            continue;
        osgAnimation::VertexInfluence& influence = (*influences)[bone->getName()];
        influence.setName(bone->getName());
        for (unsigned int k = 0; k < source.mNumWeights; ++k) {
            const aiVertexWeight& weight = source.mWeights[k];
            if (weight.mVertexId >= mesh.mNumVertices || !std::isfinite(weight.mWeight) ||
                weight.mWeight <= 0)
                continue;
            influence.emplace_back(weight.mVertexId, weight.mWeight);
            isCarried[weight.mVertexId] = true;
        }
    }
    osgAnimation::VertexInfluence free;
    for (unsigned int i = 0; i < mesh.mNumVertices; ++i) {
        if (!isCarried[i])
            free.emplace_back(i, 1.0f);
    }
    if (!free.empty()) {
        free.setName(addBone(*m_root, inScene(place)).getName());
        (*influences)[free.getName()] = free;
    }
    influences->normalize(mesh.mNumVertices);
    // A skin is bent with its normals, so it has to have them, one for each point.
    if (!geometry.getNormalArray())
        osgUtil::SmoothingVisitor::smooth(geometry, osg::PI);
    osg::ref_ptr<osgAnimation::RigGeometry> skin = new osgAnimation::RigGeometry;
    skin->setName(geometry.getName());
    skin->setSourceGeometry(&geometry);
    skin->setInfluenceMap(influences);
    skin->setRigTransformImplementation(new osgAnimation::RigTransformSoftware);
    skin->setDataVariance(osg::Object::DYNAMIC);
    return skin;
}

} // namespace vfFormats
