// SPDX-License-Identifier: MIT
#include "assimp/AssimpReader.h"

#include "assimp/AssimpAnimations.h"
#include "assimp/AssimpGeometry.h"
#include "assimp/AssimpMaterials.h"
#include "reading/FileGate.h"
#include "reading/ReadProgress.h"

#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osgDB/FileNameUtils>

#include <assimp/DefaultIOSystem.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>

namespace vfViewer {

namespace {

/// Nodes may be nested so deep and no deeper: whoever walks through the scene does so by recursion.
constexpr int deepestNode = 500;

/// Opens regular files only: others need not come to an end.
class RegularFiles : public Assimp::DefaultIOSystem
{
public:
    Assimp::IOStream* Open(const char* file, const char* mode) override
    {
        if (!FileGate::whyUnreadable(file).empty())
            return nullptr;
        FileGate::noteFile(file);
        return DefaultIOSystem::Open(file, mode);
    }
};

class TellProgress : public Assimp::ProgressHandler
{
public:
    bool Update(float percentage) override
    {
        if (percentage > 0)
            ReadProgress::tell(static_cast<std::uint64_t>(std::min(percentage, 1.0f) * 1000), 1000);
        return true;
    }
};

osg::Matrixd toOsg(const aiMatrix4x4& matrix)
{
    // The one multiplies columns from the left, the other rows from the right.
    return {matrix.a1, matrix.b1, matrix.c1, matrix.d1, matrix.a2, matrix.b2, matrix.c2, matrix.d2,
            matrix.a3, matrix.b3, matrix.c3, matrix.d3, matrix.a4, matrix.b4, matrix.c4, matrix.d4};
}

class Builder
{
public:
    Builder(const aiScene& scene, const std::string& path)
        : m_scene(scene), m_materials(scene, osgDB::getFilePath(path)), m_animations(scene)
    {}

    osg::ref_ptr<osg::Node> build() { return makeNode(*m_scene.mRootNode, 0); }

private:
    osg::ref_ptr<osg::Node> makeNode(const aiNode& node, int depth)
    {
        const osg::Matrixd matrix = toOsg(node.mTransformation);
        const osg::ref_ptr<osg::AnimationPathCallback> animation = m_animations.find(node.mName.C_Str());
        osg::ref_ptr<osg::Group> group;
        if (animation || !matrix.isIdentity()) {
            const osg::ref_ptr<osg::MatrixTransform> transform = new osg::MatrixTransform(matrix);
            transform->setUpdateCallback(animation);
            if (animation)
                transform->setDataVariance(osg::Object::DYNAMIC);
            group = transform;
        } else {
            group = new osg::Group;
        }
        group->setName(node.mName.C_Str());
        addMeshes(node, *group);
        for (unsigned int i = 0; i < node.mNumChildren && depth < deepestNode; ++i) {
            if (const osg::ref_ptr<osg::Node> child = makeNode(*node.mChildren[i], depth + 1))
                group->addChild(child);
        }
        // What leads to nothing that is drawn is a camera, a lamp or a bone.
        return group->getNumChildren() > 0 ? group : nullptr;
    }

    void addMeshes(const aiNode& node, osg::Group& group)
    {
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        for (unsigned int i = 0; i < node.mNumMeshes; ++i) {
            if (node.mMeshes[i] >= m_scene.mNumMeshes)
                continue;
            if (const osg::ref_ptr<osg::Geometry> geometry = geometryOf(node.mMeshes[i]))
                geode->addDrawable(geometry);
        }
        if (geode->getNumDrawables() == 0)
            return;
        geode->setName(node.mName.C_Str());
        group.addChild(geode);
    }

    osg::ref_ptr<osg::Geometry> geometryOf(unsigned int number)
    {
        m_geometries.resize(m_scene.mNumMeshes);
        osg::ref_ptr<osg::Geometry>& geometry = m_geometries[number];
        if (!geometry) {
            const aiMesh& mesh = *m_scene.mMeshes[number];
            geometry = makeGeometry(mesh, m_materials.textureChannel(mesh.mMaterialIndex));
            if (geometry)
                geometry->setStateSet(m_materials.find(mesh.mMaterialIndex));
        }
        return geometry;
    }

    const aiScene& m_scene;
    AssimpMaterials m_materials;
    AssimpAnimations m_animations;
    std::vector<osg::ref_ptr<osg::Geometry>> m_geometries; ///< of the meshes, as far as they are wanted
};

/// @return the first line of what went wrong, without the reader's own name before it
std::string reasonOf(const Assimp::Importer& importer)
{
    std::string text = importer.GetErrorString();
    text = text.substr(0, text.find('\n'));
    return text.empty() ? "the file is damaged, or not of the format that its name says"
                        : "the file is damaged: " + text;
}

} // namespace

ReadOutcome readWithAssimp(const std::string& path)
{
    ReadOutcome outcome;
    Assimp::Importer importer;
    importer.SetIOHandler(new RegularFiles); // which takes them over
    importer.SetProgressHandler(new TellProgress);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, 0);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true); // stand-ins where there is nothing
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    const aiScene* scene =
        importer.ReadFile(path, aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_TransformUVCoords |
                                    aiProcess_GenUVCoords | aiProcess_ValidateDataStructure);
    if (!scene || !scene->mRootNode) {
        outcome.reason = reasonOf(importer);
        return outcome;
    }
    ReadProgress::tell(ReadProgress::Preparing);
    outcome.scene = Builder(*scene, path).build();
    if (!outcome.scene)
        outcome.reason = "there is nothing in it that could be shown";
    return outcome;
}

} // namespace vfViewer

/// What the program looks up in this library.
extern "C" __attribute__((visibility("default"))) void vfviewerRead(const char* path,
                                                                    vfViewer::ReadOutcome* outcome)
{
    *outcome = vfViewer::readWithAssimp(path);
}
