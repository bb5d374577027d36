// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpReader.h>

#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/ReadProgress.h>
#include <velaforge/formats/readers/assimp/AssimpAnimations.h>
#include <velaforge/formats/readers/assimp/AssimpGeometry.h>
#include <velaforge/formats/readers/assimp/AssimpLamps.h>
#include <velaforge/formats/readers/assimp/AssimpMaterials.h>
#include <velaforge/formats/readers/assimp/AssimpSkeleton.h>
#include <velaforge/formats/readers/assimp/GltfFile.h>

#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osgAnimation/UpdateMatrixTransform>
#include <osgDB/FileNameUtils>
#include <osgUtil/UpdateVisitor>

#include <assimp/DefaultIOSystem.h>
#include <assimp/Importer.hpp>
#include <assimp/MemoryIOWrapper.h>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace vfFormats {

namespace {

/// The deepest nesting of nodes that is read, since scenes are traversed by recursion.
constexpr int deepestNode = 500;

/// Opens regular files only: others need not come to an end, which is why they do not even exist. Some files stand in
/// memory.
class RegularFiles : public Assimp::DefaultIOSystem
{
public:
    /// @param inMemory  null for none
    RegularFiles(const GltfFile* inMemory, std::string directory)
        : m_inMemory(inMemory), m_directory(std::move(directory))
    {}

    bool Exists(const char* file) const override { return find(file) || FileGate::readError(file).empty(); }

    Assimp::IOStream* Open(const char* file, const char* mode) override
    {
        if (const std::string* contents = find(file))
            return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(contents->data()),
                                              contents->size());
        if (!FileGate::readError(file).empty())
            return nullptr;
        FileGate::noteFile(file);
        return DefaultIOSystem::Open(file, mode);
    }

private:
    const std::string* find(const std::string& file) const
    {
        if (!m_inMemory || osgDB::getFilePath(file) != m_directory)
            return nullptr;
        for (const GltfFile::Replacement& replacement : m_inMemory->getReplacements()) {
            if (osgDB::getSimpleFileName(file) == replacement.name)
                return &replacement.contents;
        }
        return nullptr;
    }

    const GltfFile* m_inMemory;
    std::string m_directory;
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
        : m_scene(scene),
          m_materials(scene, osgDB::getFilePath(path)),
          m_animations(scene),
          m_skeleton(scene),
          m_lamps(scene)
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
        m_lamps.add(node, *group);
        for (unsigned int i = 0; i < node.mNumChildren && depth < deepestNode; ++i) {
            if (const osg::ref_ptr<osg::Node> child = makeNode(*node.mChildren[i], depth + 1))
                group->addChild(child);
        }
        // What leads to nothing is a camera or a place.
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
            geometry = makeGeometry(mesh, m_materials.lookOf(mesh.mMaterialIndex));
            if (geometry)
                geometry->setStateSet(m_materials.find(mesh.mMaterialIndex, hasVertexColors(mesh)));
        }
        return geometry;
    }

    const aiScene& m_scene;
    AssimpMaterials m_materials;
    AssimpAnimations m_animations;
    AssimpSkeleton m_skeleton;
    AssimpLamps m_lamps;
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

/// @return what Assimp does not say of the file; null for one of another format
std::unique_ptr<GltfFile> gltfOf(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    if (extension != "gltf" && extension != "glb")
        return nullptr;
    const MappedFile file(path, MappedFile::Wanted::Places);
    return GltfFile::parse(file.text(), osgDB::getFilePath(path));
}

/// @return one line that names what the file has and the picture lacks; empty when nothing is known
std::string describeMissing(const aiScene& scene, const GltfFile* gltf)
{
    std::vector<std::string> missing;
    if (gltf)
        missing = gltf->getMissing();
    const bool hasShapes = std::any_of(scene.mMeshes, scene.mMeshes + scene.mNumMeshes,
                                       [](const aiMesh* mesh) { return mesh->mNumAnimMeshes > 0; });
    if (!gltf && hasShapes)
        missing.emplace_back("morph targets");
    std::string line;
    for (const std::string& name : missing)
        line += (line.empty() ? "" : ", ") + name;
    return line.empty() ? line : "not shown: " + line;
}

} // namespace

ReadOutcome readWithAssimp(const std::string& path)
{
    ReadOutcome outcome;
    const std::unique_ptr<GltfFile> gltf = gltfOf(path);
    const std::string directory = osgDB::getFilePath(path);
    Assimp::Importer importer;
    importer.SetIOHandler(new RegularFiles(gltf.get(), directory)); // which takes them over
    importer.SetProgressHandler(new TellProgress);
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, 0);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true); // stand-ins where there is nothing
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    unsigned int steps = aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_GenUVCoords |
                         aiProcess_ValidateDataStructure;
    if (!gltf)
        steps |= aiProcess_TransformUVCoords; // which turns those of this format the wrong way
    std::string file = path;
    if (gltf && !gltf->getReplacements().empty()) {
        file = directory + "/" + gltf->getReplacements().front().name;
        FileGate::noteFile(path);
    }
    const aiScene* scene = importer.ReadFile(file, steps);
    if (!scene || !scene->mRootNode) {
        outcome.reason = reasonOf(importer);
        return outcome;
    }
    ReadProgress::tell(ReadProgress::Preparing);
    outcome.scene = Builder(*scene, path).build();
    if (!outcome.scene)
        outcome.reason = "there is nothing in it that could be shown";
    const std::string missing = describeMissing(*scene, gltf.get());
    if (!missing.empty())
        outcome.warnings.push_back(missing);
    return outcome;
}

} // namespace vfFormats

/// Found by name by readWithAssimpLibrary().
extern "C" __attribute__((visibility("default"))) void velaforgeRead(const char* path,
                                                                     vfFormats::ReadOutcome* outcome)
{
    *outcome = vfFormats::readWithAssimp(path);
}
