// SPDX-License-Identifier: MIT
#include "model/ModelWriter.h"

#include "reading/FileGate.h"
#include "reading/Quiet.h"
#include "reading/ReadJob.h"
#include "reading/UpAxis.h"

#include <velaforge/base/ReplaceFile.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Node>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>
#include <osgUtil/Optimizer>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
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

/// @return a copy in which transforms are worked into the points, for a writer that passes them over
osg::ref_ptr<osg::Node> flattened(osg::Node& scene)
{
    const osg::ref_ptr<osg::Group> copy = new osg::Group;
    copy->addChild(osg::clone(&scene, osg::CopyOp::DEEP_COPY_ALL & ~osg::CopyOp::DEEP_COPY_IMAGES));
    MakeStatic makeStatic;
    copy->accept(makeStatic);
    osgUtil::Optimizer optimizer;
    optimizer.optimize(copy, osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS_DUPLICATING_SHARED_SUBGRAPHS |
                                 osgUtil::Optimizer::FLATTEN_STATIC_TRANSFORMS);
    return copy;
}

/// @return the scene as the writer of that file's format needs it
osg::ref_ptr<osg::Node> forWriter(osg::Node& scene, const std::string& path)
{
    osg::ref_ptr<osg::Node> turned =
        isWrittenWithYUp(path) ? withYUp(scene) : osg::ref_ptr<osg::Node>(&scene);
    return osgDB::getLowerCaseFileExtension(path) == "ac" ? flattened(*turned) : turned;
}

osg::BoundingBox boundsOf(osg::Node& node)
{
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    return visitor.getBoundingBox();
}

/// Writers do not look at what the system says, so what they wrote is read back: it must be a model in the same place.
bool isWhole(osg::Node& scene, const fs::path& file)
{
    ReadJob job(ReadKind::Model, file.string());
    while (!job.wait(1000)) {
    }
    const ReadOutcome written = job.take();
    const osg::BoundingBox before = boundsOf(scene);
    if (!written.scene || !before.valid())
        return !before.valid();
    const osg::BoundingBox after = boundsOf(*written.scene);
    const float allowed = 0.01f * before.radius(); // formats differ in precision
    return (before._min - after._min).length() <= allowed && (before._max - after._max).length() <= allowed;
}

bool readWhole(const fs::path& path, std::string& contents)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    contents = text.str();
    return file.good() && !contents.empty();
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
