// SPDX-License-Identifier: MIT
#include "reading/ModelReader.h"

#include "reading/AssimpLibrary.h"
#include "reading/CutPolygons.h"
#include "reading/FileCheck.h"
#include "reading/FileGate.h"
#include "reading/Lamps.h"
#include "reading/Normals.h"
#include "reading/ObjReader.h"
#include "reading/PassiveScene.h"
#include "reading/PlyReader.h"
#include "reading/Quiet.h"
#include "reading/ReadProgress.h"
#include "reading/SideFiles.h"
#include "reading/SoundScene.h"
#include "reading/StlReader.h"
#include "reading/TrialFrame.h"
#include "reading/UpAxis.h"

#include <velaforge/base/Printable.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/MatrixTransform>
#include <osg/Texture2D>
#include <osg/TriangleFunctor>
#include <osg/TriangleIndexFunctor>
#include <osgAnimation/RigGeometry>
#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <set>
#include <system_error>

namespace vfViewer {

namespace {

/// Tells for the triangles of a geometry whether their normals are on the side from which they run counter-clockwise.
struct CompareNormals
{
    const osg::Vec3Array* points = nullptr;
    const osg::Vec3Array* normals = nullptr;
    std::size_t agreeing = 0;
    std::size_t opposed = 0;
    std::size_t useless = 0;

    void operator()(unsigned int a, unsigned int b, unsigned int c)
    {
        const std::size_t count = std::min(points->size(), normals->size());
        if (a >= count || b >= count || c >= count)
            return;
        const osg::Vec3 normal = (*normals)[a] + (*normals)[b] + (*normals)[c];
        const osg::Vec3 side = ((*points)[b] - (*points)[a]) ^ ((*points)[c] - (*points)[a]);
        if (!(normal.length2() > 1e-6f))
            ++useless;
        else if (normal * side < 0)
            ++opposed;
        else
            ++agreeing;
    }
};

/// Where faces meet at less than this they are taken for one that is curved.
constexpr double creaseAngle = 30 * 3.14159265358979 / 180;

class FindGeometry : public osg::NodeVisitor
{
public:
    FindGeometry() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        const osg::Array* vertices = geometry.getVertexArray();
        if (!vertices || vertices->getNumElements() == 0)
            return;
        if (!hasSurface(geometry))
            setSelfLit(geometry, inheritedMaterial());
        else if (!geometry.getNormalArray() || !putNormalsRight(geometry))
            withoutNormals.push_back(&geometry);
        // A skin takes its normals from what it is when it is not bent.
        auto* skin = dynamic_cast<osgAnimation::RigGeometry*>(&geometry);
        if (skin && skin->getSourceGeometry() && skin->getSourceGeometry()->getNormalArray())
            putNormalsRight(*skin->getSourceGeometry());
    }

    std::vector<osg::Geometry*> withoutNormals;

private:
    /// @return the material that the geometry has from the nodes above it; null for none
    const osg::Material* inheritedMaterial() const
    {
        const osg::Material* material = nullptr;
        for (const osg::Node* node : getNodePath()) {
            const osg::StateSet* state = node->getStateSet();
            if (state && node != getNodePath().back()) {
                if (const auto* found = dynamic_cast<const osg::Material*>(
                        state->getAttribute(osg::StateAttribute::MATERIAL)))
                    material = found;
            }
        }
        return material;
    }

    /// Light falls on the side from which a triangle runs counter-clockwise, so normals that point the other way would
    /// leave it black. @return false for normals that are of no use
    bool putNormalsRight(osg::Geometry& geometry)
    {
        auto* normals = dynamic_cast<osg::Vec3Array*>(geometry.getNormalArray());
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!normals || !points || normals->getBinding() != osg::Array::BIND_PER_VERTEX)
            return true;
        if (normals->size() < points->size())
            return false;
        osg::TriangleIndexFunctor<CompareNormals> compare;
        compare.points = points;
        compare.normals = normals;
        geometry.accept(compare);
        if (compare.useless > compare.agreeing + compare.opposed)
            return false;
        if (compare.opposed > compare.agreeing && m_turned.insert(normals).second) {
            for (osg::Vec3& normal : *normals)
                normal = -normal;
            normals->dirty();
        }
        return true;
    }

    std::set<const osg::Array*> m_turned; ///< geometries may share their normals

    static bool hasSurface(const osg::Geometry& geometry)
    {
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            if (geometry.getPrimitiveSet(i)->getMode() >= GL_TRIANGLES)
                return true;
        }
        return false;
    }
};

/// Lines and points cannot be lit; surfaces need normals for it, and not every file has them.
void prepareLighting(osg::Node& scene)
{
    FindGeometry finder;
    scene.accept(finder);
    for (osg::Geometry* geometry : finder.withoutNormals)
        makeNormals(*geometry, creaseAngle);
}

bool isFinite(const osg::BoundingBox& box)
{
    for (unsigned int i = 0; i < 8; ++i) {
        if (!std::isfinite(box.corner(i).length2()))
            return false;
    }
    return true;
}

/// Counts what is drawn: bounds alone may be those of vertices that no face uses.
class CountPrimitives : public osg::NodeVisitor
{
public:
    using NodeVisitor::apply;

    CountPrimitives() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        add(&geometry);
        if (const auto* skin = dynamic_cast<const osgAnimation::RigGeometry*>(&geometry))
            add(skin->getSourceGeometry());
    }

    /// Drawables of other kinds, such as spheres, draw themselves.
    void apply(osg::Drawable& drawable) override { count += drawable.asGeometry() ? 0 : 1; }

    std::size_t count = 0;

private:
    void add(const osg::Geometry* geometry)
    {
        for (unsigned int i = 0; geometry && i < geometry->getNumPrimitiveSets(); ++i)
            count += geometry->getPrimitiveSet(i)->getNumPrimitives();
    }
};

/// @return whether a scene is of geometries with faces, and without points, which may lie in one place
bool hasOnlyFaces(osg::Node& scene)
{
    struct Look : osg::NodeVisitor
    {
        Look() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Drawable&) override { hasOthers = true; }
        void apply(osg::Geometry& geometry) override
        {
            for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList())
                hasOthers = hasOthers || primitives->getMode() == GL_POINTS;
        }
        bool hasOthers = false;
    } look;
    scene.accept(look);
    return !look.hasOthers;
}

/// Looks for a triangle that can be seen.
struct FindArea
{
    void operator()(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c, bool = false)
    {
        isFound = isFound || ((osg::Vec3d(b) - a) ^ (osg::Vec3d(c) - a)).length2() > 0;
    }
    bool isFound = false;
};

/// @return whether a scene is of triangles alone, all of them without an area
bool hasNoArea(osg::Node& scene)
{
    struct Look : osg::NodeVisitor
    {
        using NodeVisitor::apply;

        Look() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Drawable&) override { isSeen = true; }
        void apply(osg::Geometry& geometry) override
        {
            const bool isPlain = !std::strcmp(geometry.className(), "Geometry");
            for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList())
                isSeen = isSeen || primitives->getMode() < GL_TRIANGLES;
            if (!isSeen && isPlain) {
                osg::TriangleFunctor<FindArea> triangles;
                geometry.accept(triangles);
                isSeen = triangles.isFound;
            }
            isSeen = isSeen || !isPlain;
        }
        bool isSeen = false;
    } look;
    scene.accept(look);
    return !look.isSeen;
}

/// @return why the scene cannot be shown; empty when it can
std::string whyNotShown(osg::Node& scene)
{
    CountPrimitives primitives;
    scene.accept(primitives);
    osg::ComputeBoundsVisitor bounds;
    scene.accept(bounds);
    if (primitives.count == 0 || !bounds.getBoundingBox().valid())
        return "there is nothing in it that could be shown";
    if (!isFinite(bounds.getBoundingBox()))
        return "its coordinates are too large";
    if (!(bounds.getBoundingBox().radius2() > 0) && hasOnlyFaces(scene))
        return "all of its faces lie in one point";
    if (hasNoArea(scene))
        return "none of its faces has an area";
    return {};
}

/// @return whether the format is OpenSceneGraph's own, whose materials are meant as they are
bool isSceneFormat(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension.compare(0, 3, "osg") == 0 || extension == "ive";
}

using OwnReader = ReadOutcome (*)(const std::string& path);

ReadOutcome readWithOpenSceneGraph(const std::string& path);

/// Reads a file of a format that OpenSceneGraph reads as well, but with z up: Assimp leaves y up.
/// @return no scene where there would be nothing in it
ReadOutcome readUprightWithAssimp(const std::string& path)
{
    ReadOutcome outcome = readWithAssimpLibrary(path);
    if (!outcome.scene)
        return outcome;
    outcome.reason = whyNotShown(*outcome.scene);
    if (!outcome.reason.empty())
        outcome.scene = nullptr;
    else if (!isReadWithYUp(path))
        outcome.scene = withZUp(*outcome.scene);
    return outcome;
}

/// For formats of which Assimp reads more files than OpenSceneGraph does.
ReadOutcome readWithAssimpFirst(const std::string& path)
{
    ReadOutcome outcome = readUprightWithAssimp(path);
    if (outcome.scene)
        return outcome;
    FileGate::takeFailures();
    ReadOutcome other = readWithOpenSceneGraph(path);
    return other.scene ? other : outcome;
}

/// @return whether Assimp may know what OpenSceneGraph's plug-in for the format does not
bool isKnownToAssimp(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return hasAssimp() && (extension == "3ds" || extension == "ac" || extension == "lwo");
}

/// @return our own reader for the file's format, null where OpenSceneGraph's is good enough
OwnReader ownReader(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    if (extension == "obj")
        return readObj;
    if (extension == "stl")
        return readStl;
    if (extension == "ply")
        return readPly;
    const std::vector<std::string>& foreign = FileGate::assimpFormats();
    if (std::find(foreign.begin(), foreign.end(), extension) != foreign.end())
        return hasAssimp() ? readWithAssimpLibrary : nullptr;
    if (hasAssimp() && (extension == "x" || extension == "dae"))
        return readWithAssimpFirst;
    return nullptr;
}

bool hasReader(const std::string& path)
{
    return osgDB::Registry::instance()->getReaderWriterForExtension(osgDB::getLowerCaseFileExtension(path));
}

constexpr const char* noReader = "no reader for this format is installed";
constexpr const char* damaged = "the file is damaged, or not of the format that its name says";

std::string reasonOf(osgDB::ReaderWriter::ReadResult& result)
{
    const std::string message = vfBase::printable(result.message());
    return message.empty() ? damaged : message;
}

/// @return why a model is not even given to its reader; empty when it is
std::string whyNotRead(const std::string& path)
{
    if (!FileGate::isModel(path))
        return "not a format that can be read";
    std::string reason = FileGate::whyUnreadable(path);
    if (!reason.empty())
        return reason;
    if (isCutOff(path))
        return "the file is cut off";
    return ownReader(path) || hasReader(path) ? "" : noReader;
}

ReadOutcome readWithOpenSceneGraph(const std::string& path)
{
    ReadOutcome outcome;
    // Making strips of triangles takes time far beyond linear, for nothing on today's hardware.
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("noTriStripPolygons");
    osgDB::ReaderWriter::ReadResult result = osgDB::Registry::instance()->readNode(path, options);
    outcome.scene = result.getNode();
    if (!outcome.scene)
        outcome.reason = reasonOf(result);
    return outcome;
}

/// @return the files that were read, without the one that was named
std::vector<std::string> otherFiles(const std::string& path)
{
    std::vector<std::string> files = FileGate::takeFiles();
    std::error_code problem;
    const std::string named = std::filesystem::absolute(path, problem).lexically_normal().string();
    files.erase(std::remove(files.begin(), files.end(), named), files.end());
    return files;
}

} // namespace

ReadOutcome readModel(const std::string& path)
{
    const SideFiles sideFiles(path);
    ReadOutcome outcome;
    outcome.reason = whyNotRead(path);
    if (!outcome.reason.empty())
        return outcome;

    Quiet quiet;
    FileGate::takeFailures();
    FileGate::takeFiles();
    const OwnReader own = ownReader(path);
    outcome = own ? own(path) : readWithOpenSceneGraph(path);
    if (!own && isKnownToAssimp(path) && (!outcome.scene || !whyNotShown(*outcome.scene).empty())) {
        FileGate::takeFailures();
        ReadOutcome other = readUprightWithAssimp(path);
        if (other.scene)
            outcome = std::move(other);
    }
    if (!outcome.scene)
        return outcome;
    ReadProgress::tell(ReadProgress::Preparing);
    if (!makePassive(outcome.scene, outcome.warnings)) {
        outcome.scene = nullptr;
        outcome.reason = "its parts are nested too deeply";
        return outcome;
    }
    const std::size_t unsound = makeSceneSound(*outcome.scene);
    if (unsound > 0)
        outcome.warnings.push_back(std::to_string(unsound) + (unsound == 1 ? " part is" : " parts are") +
                                   " shown without primitives of points that are not there");
    cutPolygons(*outcome.scene);
    outcome.reason = whyNotShown(*outcome.scene);
    if (!outcome.reason.empty()) {
        outcome.scene = nullptr;
        return outcome;
    }
    if (!isSceneFormat(path))
        brightenShade(*outcome.scene);
    const std::size_t surplus = removeSurplusLamps(*outcome.scene);
    if (surplus > 0)
        outcome.warnings.push_back(std::to_string(surplus) + (surplus == 1 ? " lamp is" : " lamps are") +
                                   " left out: the viewer has room for " + std::to_string(Lamps::ofFile));
    if (own != readStl) // which works all normals out itself
        prepareLighting(*outcome.scene);
    if (isReadWithYUp(path))
        outcome.scene = withZUp(*outcome.scene);
    runTrialFrame(*outcome.scene);
    outcome.files = otherFiles(path);
    for (std::string& failure : FileGate::takeFailures())
        outcome.warnings.push_back(std::move(failure));
    for (std::string& line : quiet.stop())
        outcome.details.push_back(std::move(line));
    return outcome;
}

ReadOutcome readImageOnQuad(const std::string& path)
{
    ReadOutcome outcome;
    outcome.reason =
        FileGate::isImage(path) ? FileGate::whyUnreadable(path) : "not an image format that can be read";
    if (outcome.reason.empty() && !hasReader(path))
        outcome.reason = noReader;
    if (!outcome.reason.empty())
        return outcome;

    Quiet quiet;
    FileGate::takeFailures();
    osgDB::ReaderWriter::ReadResult result = osgDB::Registry::instance()->readImage(path, nullptr);
    const osg::ref_ptr<osg::Image> image = result.getImage();
    if (!image || image->s() < 1 || image->t() < 1) {
        outcome.reason = image ? "the image is empty" : reasonOf(result);
        return outcome;
    }
    const float width = static_cast<float>(image->s()) / static_cast<float>(image->t());
    const bool isTopFirst = image->getOrigin() == osg::Image::TOP_LEFT;
    const osg::ref_ptr<osg::Geometry> quad = osg::createTexturedQuadGeometry(
        {-0.5f * width, 0, -0.5f}, {width, 0, 0}, {0, 0, 1}, 0, isTopFirst ? 1 : 0, 1, isTopFirst ? 0 : 1);
    const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(quad);
    osg::StateSet* state = geode->getOrCreateStateSet();
    state->setTextureAttributeAndModes(0, texture);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF); // an image has its own colours
    if (image->isImageTranslucent()) {
        state->setMode(GL_BLEND, osg::StateAttribute::ON);
        state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
    outcome.scene = geode;
    outcome.warnings = FileGate::takeFailures();
    outcome.details = quiet.stop();
    return outcome;
}

} // namespace vfViewer
