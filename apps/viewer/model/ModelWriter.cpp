// SPDX-License-Identifier: MIT
#include "model/ModelWriter.h"

#include "model/FormatLosses.h"
#include "reading/FileGate.h"
#include "reading/Quiet.h"
#include "reading/ReadJob.h"
#include "reading/UpAxis.h"

#include <velaforge/base/ReplaceFile.h>

#include <osg/Geometry>
#include <osg/Material>
#include <osg/Node>
#include <osg/NodeVisitor>
#include <osg/Transform>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>
#include <osgUtil/Optimizer>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace vfViewer {

namespace {

namespace fs = std::filesystem;

/// A directory beside the file, gone at the end.
class WorkDirectory
{
public:
    explicit WorkDirectory(const fs::path& beside)
    {
        std::string name = (beside / ".vfviewer-save-XXXXXX").string();
        if (mkdtemp(name.data()))
            m_path = name;
    }
    ~WorkDirectory()
    {
        std::error_code ignored;
        if (!m_path.empty())
            fs::remove_all(m_path, ignored);
    }
    WorkDirectory(const WorkDirectory&) = delete;
    WorkDirectory& operator=(const WorkDirectory&) = delete;

    const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

/// Tells the optimizer that nothing will move.
class MakeStatic : public osg::NodeVisitor
{
public:
    MakeStatic() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
    void apply(osg::Node& node) override
    {
        node.setDataVariance(osg::Object::STATIC);
        traverse(node);
    }
};

/// Gives each geometry the material in which it is shown, for a writer that looks nowhere else, and whose files cannot be
/// read when there is none.
class GiveMaterials : public osg::NodeVisitor
{
public:
    GiveMaterials() : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_shown(new osg::Material)
    {
        m_shown->setAmbient(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
        m_shown->setDiffuse(osg::Material::FRONT_AND_BACK, {0.78f, 0.78f, 0.80f, 1});
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        const osg::ref_ptr<osg::Material> above = m_shown;
        if (osg::Material* own = materialOf(node))
            m_shown = own;
        if (node.asGeometry())
            node.getOrCreateStateSet()->setAttribute(m_shown);
        traverse(node);
        m_shown = above;
    }

private:
    static osg::Material* materialOf(osg::Node& node)
    {
        osg::StateSet* state = node.getStateSet();
        osg::StateAttribute* found = state ? state->getAttribute(osg::StateAttribute::MATERIAL) : nullptr;
        return dynamic_cast<osg::Material*>(found);
    }

    osg::ref_ptr<osg::Material> m_shown;
};

/// @return a copy in which transforms are worked into the points, and materials hang at what they colour, for a writer that
/// passes them over elsewhere
osg::ref_ptr<osg::Node> flattened(osg::Node& scene)
{
    const osg::ref_ptr<osg::Group> copy = new osg::Group;
    copy->addChild(osg::clone(&scene, osg::CopyOp::DEEP_COPY_ALL & ~osg::CopyOp::DEEP_COPY_IMAGES));
    MakeStatic makeStatic;
    copy->accept(makeStatic);
    osgUtil::Optimizer optimizer;
    optimizer.optimize(copy, osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS_DUPLICATING_SHARED_SUBGRAPHS |
                                 osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS);
    GiveMaterials give;
    copy->accept(give);
    return copy;
}

/// @return whether a format that loses these features has a place for such primitives
bool isKept(const osg::PrimitiveSet& primitives, unsigned int lost)
{
    const GLenum mode = primitives.getMode();
    if (mode == GL_POINTS)
        return !(lost & Points);
    return mode > GL_LINE_STRIP || !(lost & Lines);
}

/// Shows what is hidden, which writers leave out and which would be lost, and takes away what writers make broken files of.
class Fit : public osg::NodeVisitor
{
public:
    explicit Fit(unsigned int lost) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_lost(lost)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        if (node.getNodeMask() == 0 && (m_lost & HiddenParts))
            node.setNodeMask(~0u);
        traverse(node);
    }

    void apply(osg::Geometry& geometry) override
    {
        osg::Geometry::PrimitiveSetList kept;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            if (isKept(*primitives, m_lost))
                kept.push_back(primitives);
        }
        geometry.setPrimitiveSetList(kept);
        if (kept.empty())
            m_empty.emplace_back(&geometry);
        apply(static_cast<osg::Node&>(geometry));
    }

    void takeEmpty()
    {
        for (const osg::ref_ptr<osg::Node>& node : m_empty) {
            while (node->getNumParents() > 0)
                node->getParent(0)->removeChild(node);
        }
    }

private:
    unsigned int m_lost;
    std::vector<osg::ref_ptr<osg::Node>> m_empty;
};

/// @return a copy with what the format holds; the scene itself when it holds all
osg::ref_ptr<osg::Node> fitFor(osg::Node& scene, const std::string& format)
{
    const unsigned int lost = featuresLostBy(format) & featuresOf(scene);
    if ((lost & (HiddenParts | Lines | Points)) == 0)
        return &scene;
    osg::ref_ptr<osg::Node> copy =
        osg::clone(&scene, osg::CopyOp(osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES));
    Fit fit(lost);
    copy->accept(fit);
    fit.takeEmpty();
    return copy;
}

/// @return the scene as the writer of that file's format needs it
osg::ref_ptr<osg::Node> forWriter(osg::Node& scene, const std::string& path)
{
    const std::string format = osgDB::getLowerCaseFileExtension(path);
    const osg::ref_ptr<osg::Node> fit = fitFor(scene, format);
    osg::ref_ptr<osg::Node> turned = isWrittenWithYUp(path) ? withYUp(*fit) : fit;
    return format == "ac" ? flattened(*turned) : turned;
}

/// Where there is something of a scene that a format keeps.
class KeptBounds : public osg::NodeVisitor
{
public:
    explicit KeptBounds(unsigned int lost) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_lost(lost)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Drawable& drawable) override { add(drawable); }

    void apply(osg::Geometry& geometry) override
    {
        const auto& all = geometry.getPrimitiveSetList();
        if (std::any_of(all.begin(), all.end(), [this](const auto& one) { return isKept(*one, m_lost); }))
            add(geometry);
    }

    osg::BoundingBox box;

private:
    void add(osg::Drawable& drawable)
    {
        const osg::BoundingBox& bounds = drawable.getBoundingBox();
        const osg::Matrixd place = osg::computeLocalToWorld(getNodePath());
        for (unsigned int i = 0; bounds.valid() && i < 8; ++i)
            box.expandBy(bounds.corner(i) * place);
    }

    unsigned int m_lost;
};

/// @return whether a format keeps nothing at all of a scene that is not empty
bool isNothingKept(osg::Node& scene, const std::string& format)
{
    KeptBounds all(0);
    scene.accept(all);
    KeptBounds kept(featuresLostBy(format));
    scene.accept(kept);
    return all.box.valid() && !kept.box.valid();
}

/// Writers do not look at what the system says, so what they wrote is read back: it must be a model in the same place.
bool isWhole(osg::Node& scene, const fs::path& file)
{
    ReadJob job(ReadKind::Model, file.string());
    while (!job.wait(1000)) {
    }
    const ReadOutcome written = job.take();
    const unsigned int lost = featuresLostBy(osgDB::getLowerCaseFileExtension(file.string()));
    KeptBounds before(lost);
    scene.accept(before);
    if (!written.scene || !before.box.valid())
        return !before.box.valid();
    KeptBounds after(0);
    written.scene->accept(after);
    const float allowed = 0.01f * before.box.radius(); // formats differ in precision
    return (before.box._min - after.box._min).length() <= allowed &&
           (before.box._max - after.box._max).length() <= allowed;
}

/// Files beside the model may be empty, such as that of the materials of a model without any.
bool readWhole(const fs::path& path, std::string& contents)
{
    std::ifstream file(path, std::ios::binary);
    contents.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    std::error_code problem;
    return file.is_open() && !file.bad() && contents.size() == fs::file_size(path, problem) && !problem;
}

} // namespace

std::string writableFormats()
{
    return "osgb,osgt,ive,obj,stl,3ds,ac,dxf";
}

bool writeModel(osg::Node& scene, const vfBase::VfString& path, vfBase::VfString& reason)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    osgDB::ReaderWriter* writer = FileGate::isModel(path)
                                      ? osgDB::Registry::instance()->getReaderWriterForExtension(extension)
                                      : nullptr;
    if (!writer) {
        reason = "models are not written as ." + extension;
        return false;
    }
    if (isNothingKept(scene, extension)) {
        reason = "there is nothing in the model that ." + extension + " files can hold";
        return false;
    }
    const fs::path target(path.str());
    const fs::path directory = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const WorkDirectory work(directory);
    if (work.path().empty()) {
        reason = std::strerror(errno);
        return false;
    }
    Quiet quiet;
    const fs::path draft = work.path() / target.filename();
    const osgDB::ReaderWriter::WriteResult result =
        writer->writeNode(*forWriter(scene, path.str()), draft.string(), nullptr);
    const bool whole = result.success() && isWhole(scene, draft);
    quiet.stop();
    if (!whole) {
        reason = result.status() == osgDB::ReaderWriter::WriteResult::NOT_IMPLEMENTED ||
                         result.status() == osgDB::ReaderWriter::WriteResult::FILE_NOT_HANDLED
                     ? "models are not written as ." + extension
                     : "the file could not be written whole";
        return false;
    }
    // The model itself goes last: what it refers to is there by then.
    std::vector<fs::path> files;
    std::error_code problem;
    for (fs::directory_iterator entry(work.path(), problem), end; !problem && entry != end;
         entry.increment(problem))
    {
        if (entry->path() != draft && entry->is_regular_file(problem))
            files.push_back(entry->path());
    }
    if (problem) {
        reason = problem.message();
        return false;
    }
    files.push_back(draft);
    for (const fs::path& file : files) {
        std::string contents;
        if (!readWhole(file, contents)) {
            reason = "the file could not be written whole";
            return false;
        }
        if (!vfBase::replaceFile((directory / file.filename()).string(), contents, reason))
            return false;
    }
    return true;
}

} // namespace vfViewer
