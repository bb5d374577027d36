// SPDX-License-Identifier: MIT
#include "reading/ReadJob.h"

#include "model/Outline.h"
#include "reading/Mirrored.h"
#include "reading/SceneTransfer.h"
#include "reading/SideBySide.h"

#include <velaforge/base/FileNames.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>

#include <exception>
#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vfViewer {

namespace {

/// Prepares what is drawn. The driver is to keep the points by themselves, which is the fast way; lists of drawing
/// commands copy each point several times before anything is seen.
class PrepareDrawables : public osg::NodeVisitor
{
public:
    PrepareDrawables() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Drawable& drawable) override
    {
        drawable.setUseDisplayList(false);
        drawable.setUseVertexBufferObjects(true);
        drawable.setDrawCallback(mirrorCallback());
    }

    void apply(osg::Geometry& geometry) override
    {
        apply(static_cast<osg::Drawable&>(geometry));
        auto* found = dynamic_cast<osg::Vec3Array*>(geometry.getVertexArray());
        if (found && isOutlineKept(*found) && m_seen.insert(found).second)
            points.emplace_back(found);
    }

    std::vector<osg::ref_ptr<osg::Vec3Array>> points; ///< whose outlines are kept

private:
    std::unordered_set<const osg::Array*> m_seen;
};

/// Does what can be done before the scene is shown, on the thread that reads it.
void prepare(ReadOutcome& outcome)
{
    PrepareDrawables prepare;
    outcome.scene->accept(prepare);
    const auto bounds = std::async(sideBySide, [&outcome] { outcome.scene->getBound(); });
    for (const osg::ref_ptr<osg::Vec3Array>& points : prepare.points)
        outcome.outlines.emplace_back(points, workOutOutline(*points)); // which the first look at it needs
    bounds.wait();
}

} // namespace

ReadOutcome readInProcess(vfIsolation::JobControl& control, ReadKind kind, const std::string& path,
                          const ReadLimits& limits)
{
    ReadOutcome outcome;
    try {
        Reader reader;
        outcome.reason = ReaderHost::begin(kind, vfBase::absolutePath(path).str(), limits, control, reader);
        if (!outcome.reason.empty())
            return outcome;
        ReaderDone done;
        outcome.reason = reader.waitFor(control, done);
        if (!outcome.reason.empty())
            return outcome;
        outcome = receiveScene(reader.scene, done.size, {reader.isReadable ? reader.process : 0},
                               control.isCancelled);
        reader.letGo();
        if (outcome.scene)
            prepare(outcome);
    } catch (const std::bad_alloc&) {
        outcome = ReadOutcome();
        outcome.reason = "there is not enough memory";
    } catch (const std::exception& problem) {
        outcome = ReadOutcome();
        outcome.reason = problem.what();
    }
    return outcome;
}

ReadJob::ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits)
    : vfIsolation::Job(path), m_outcome(std::make_shared<ReadOutcome>())
{
    ReaderHost::start();
    m_outcome->reason = "there is not enough memory";
    start([outcome = m_outcome, kind, path, limits](vfIsolation::JobControl& control) {
        *outcome = readInProcess(control, kind, path, limits);
    });
}

ReadOutcome ReadJob::take()
{
    if (!isCancelled())
        return std::exchange(*m_outcome, ReadOutcome());
    ReadOutcome cancelled;
    cancelled.isCancelled = true;
    return cancelled;
}

} // namespace vfViewer
