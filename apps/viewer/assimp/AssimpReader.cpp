// SPDX-License-Identifier: MIT
#include "assimp/AssimpReader.h"

#include "assimp/AssimpAnimations.h"
#include "assimp/AssimpGeometry.h"
#include "assimp/AssimpMaterials.h"
#include "assimp/AssimpSkeleton.h"
#include "reading/FileGate.h"
#include "reading/ReadProgress.h"

#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osgAnimation/UpdateMatrixTransform>
#include <osgDB/FileNameUtils>
#include <osgUtil/UpdateVisitor>

#include <assimp/DefaultIOSystem.h>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace vfViewer {

namespace {

/// Nodes may be nested so deep and no deeper: whoever walks through the scene does so by recursion.
constexpr int deepestNode = 500;

/// Opens regular files only: others need not come to an end, which is why they do not even exist.
class RegularFiles : public Assimp::DefaultIOSystem
{
public:
    bool Exists(const char* file) const override { return FileGate::whyUnreadable(file).empty(); }

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

class Builder
{
public:
    Builder(const aiScene& scene, const std::string& path)
        : m_scene(scene), m_materials(scene, osgDB::getFilePath(path)), m_animations(scene), m_skeleton(scene)
    {}

    osg::ref_ptr<osg::Node> build()
    {
        osg::ref_ptr<osg::Node> scene = makeNode(*m_scene.mRootNode, 0);
        if (!m_skeleton.isEmpty())
            scene = layOnBones(*scene);
        if (scene && m_animations.getManager())
            scene = played(*scene);
        return scene;
    }

private:
    osg::ref_ptr<osg::Node> makeNode(const aiNode& node, int depth)
    {
        const osg::ref_ptr<osg::Group> group = makeGroup(node);
        group->setName(node.mName.C_Str());
        addMeshes(node, *group);
        for (unsigned int i = 0; i < node.mNumChildren && depth < deepestNode; ++i) {
            if (const osg::ref_ptr<osg::Node> child = makeNode(*node.mChildren[i], depth + 1))
                group->addChild(child);
        }
        // What leads to nothing that is drawn is a camera or a lamp.
        return group->getNumChildren() > 0 || m_skeleton.isBone(node) ? group : nullptr;
    }

    osg::ref_ptr<osg::Group> makeGroup(const aiNode& node)
    {
        if (m_skeleton.isBone(node))
            return m_skeleton.makeBone(node);
        const std::string name = node.mName.C_Str();
        const osg::Matrixd matrix = toOsg(node.mTransformation);
        if (m_animations.moves(name)) {
            osg::ref_ptr<osg::MatrixTransform> transform = new osg::MatrixTransform(matrix);
            const osg::ref_ptr<osgAnimation::UpdateMatrixTransform> callback =
                new osgAnimation::UpdateMatrixTransform(name);
            AssimpAnimations::follow(*callback, node.mTransformation);
            transform->setUpdateCallback(callback);
            transform->setDataVariance(osg::Object::DYNAMIC);
            return transform;
        }
        return matrix.isIdentity() ? new osg::Group : new osg::MatrixTransform(matrix);
    }

    void addMeshes(const aiNode& node, osg::Group& group)
    {
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        for (unsigned int i = 0; i < node.mNumMeshes; ++i) {
            const unsigned int number = node.mMeshes[i];
            if (number >= m_scene.mNumMeshes)
                continue;
            if (!m_skeleton.isEmpty() && m_scene.mMeshes[number]->HasBones())
                m_skins.emplace(number, &node);
            else if (const osg::ref_ptr<osg::Geometry> geometry = geometryOf(number))
                geode->addDrawable(geometry);
        }
        if (geode->getNumDrawables() == 0)
            return;
        geode->setName(node.mName.C_Str());
        group.addChild(geode);
    }

    /// Adds the skins to what has been made, in which all bones are.
    osg::ref_ptr<osg::Node> layOnBones(osg::Node& bones)
    {
        osgAnimation::Skeleton& root = m_skeleton.getRoot();
        root.addChild(&bones);
        std::vector<osg::ref_ptr<osg::Geode>>
            geodes; // which come after all bones: these are to be in place first
        for (const auto& [number, node] : m_skins) {
            const osg::ref_ptr<osg::Geometry> geometry = geometryOf(number);
            if (!geometry)
                continue;
            geodes.emplace_back(new osg::Geode);
            geodes.back()->setName(node->mName.C_Str());
            const osg::ref_ptr<osg::Geometry> skin =
                m_skeleton.makeSkin(*m_scene.mMeshes[number], *geometry, *node);
            skin->setStateSet(geometry->getStateSet());
            geodes.back()->addDrawable(skin);
        }
        for (const osg::ref_ptr<osg::Geode>& geode : geodes)
            root.addChild(geode);
        osgUtil::UpdateVisitor bend;
        const osg::ref_ptr<osg::FrameStamp> now = new osg::FrameStamp;
        bend.setFrameStamp(now);
        root.accept(bend);
        return &root;
    }

    /// Has the animations move the scene.
    osg::ref_ptr<osg::Node> played(osg::Node& scene)
    {
        osg::ref_ptr<osg::Group> root = scene.asGroup();
        if (!root || root->getUpdateCallback()) { // which moves by itself
            root = new osg::Group;
            root->addChild(&scene);
        }
        root->setUpdateCallback(m_animations.getManager());
        return root;
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
    AssimpSkeleton m_skeleton;
    std::map<unsigned int, const aiNode*>
        m_skins; ///< the meshes that bones carry, and the first place of each
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
