// SPDX-License-Identifier: MIT
#include <velaforge/formats/ReadJob.h>

#include <velaforge/base/FileNames.h>
#include <velaforge/base/LaunchPolicy.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/ReadInProcess.h>
#include <velaforge/formats/internal/ReadRequest.h>
#include <velaforge/formats/internal/SceneImages.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/isolation/IsolatedJob.h>
#include <velaforge/scene/ConvexHull.h>
#include <velaforge/scene/MirrorCallback.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <exception>
#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace vfFormats {

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
        drawable.setDrawCallback(vfScene::mirrorCallback());
    }

    void apply(osg::Geometry& geometry) override
    {
        apply(static_cast<osg::Drawable&>(geometry));
        auto* found = dynamic_cast<osg::Vec3Array*>(geometry.getVertexArray());
        if (found && vfScene::isHullKept(*found) && m_seen.insert(found).second)
            points.emplace_back(found);
    }

    std::vector<osg::ref_ptr<osg::Vec3Array>> points; ///< whose hulls are kept

private:
    std::unordered_set<const osg::Array*> m_seen;
};

/// Does what can be done before the scene is shown, on the thread that reads it.
void prepare(ReadOutcome& outcome)
{
    PrepareDrawables prepare;
    outcome.scene->accept(prepare);
    const auto bounds = std::async(vfBase::asyncOrDeferred, [&outcome] { outcome.scene->getBound(); });
    for (const osg::ref_ptr<osg::Vec3Array>& points : prepare.points)
        outcome.hulls.emplace_back(points, vfScene::computeHull(*points)); // which the first look at it needs
    bounds.wait();
}

std::uint64_t sizeOf(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

vfIsolation::IsolatedTask taskFor(ReadKind kind, const ReadRequest& request, const ReadLimits& limits)
{
    vfIsolation::IsolatedTask task;
    task.helper = readerProgram();
    task.name = kind == ReadKind::Image ? imageTask : modelTask;
    task.argument = request.argument();
    task.readableFiles = request.sideFiles;
    task.readableFiles.push_back(request.path);
    task.limits = limits.forSize(sizeOf(request.path));
    task.takesMemory = true;
    task.requiresSandbox = isSandboxRequired();
    return task;
}

LargeArrayOwner ownerOf(const vfIsolation::IsolatedResult& result)
{
    LargeArrayOwner owner;
    if (result.memory) {
        owner.size = result.memory->size();
        owner.copy = [&memory = *result.memory](std::uint64_t address, void* to, std::size_t size) {
            return memory.copy(address, to, size);
        };
    }
    return owner;
}

/// Removes names of files that the process may not have read. A process that its file has taken over can send any, and a writer
/// would copy such an image beside the model that is saved, or the program watch such a file.
void removeForeignNames(ReadOutcome& outcome, const std::string& model)
{
    const ModelPlaces places(model);
    const auto isForeign = [&places](const std::string& name) {
        const std::string real = realPath(name);
        return real.empty() || !(real == places.model || places.admit(real));
    };
    outcome.files.erase(std::remove_if(outcome.files.begin(), outcome.files.end(), isForeign),
                        outcome.files.end());
    if (!outcome.scene)
        return;
    FindImages find;
    outcome.scene->accept(find);
    for (const osg::ref_ptr<osg::Image>& image : find.images) {
        const std::string& name = image->getFileName();
        const bool leadsElsewhere =
            !name.empty() && (name.front() == '/' || name.find("..") != std::string::npos);
        if (leadsElsewhere && isForeign(name))
            image->setFileName(osgDB::getSimpleFileName(name));
    }
}

ReadOutcome readOnce(vfIsolation::JobControl& control, ReadKind kind, const ReadRequest& request,
                     const ReadLimits& limits)
{
    ReadOutcome outcome;
    const vfIsolation::IsolatedResult result =
        vfIsolation::runIsolated(control, taskFor(kind, request, limits));
    if (result.error == vfIsolation::IsolationError::None) {
        outcome =
            receiveScene(result.bytes.data(), result.bytes.size(), ownerOf(result), control.isCancelled);
        if (!result.missingDefences.empty())
            outcome.details.push_back("the sandbox is not complete: " + result.missingDefences);
        return outcome;
    }
    outcome.reason = result.error == vfIsolation::IsolationError::Ended
                         ? "the file is damaged: its reader fails on it"
                         : result.reason;
    return outcome;
}

} // namespace

ReadOutcome readInProcess(vfIsolation::JobControl& control, ReadKind kind, const std::string& path,
                          const ReadLimits& limits)
{
    ReadOutcome outcome;
    try {
        ReadRequest request;
        request.path = vfBase::absolutePath(path).str();
        request.sideFiles = findSideFiles(request.path);
        outcome = readOnce(control, kind, request, limits);
        // It may name files in folders too far away to be listed; those may name others.
        for (int tries = 0; tries < 3 && !outcome.missed.empty(); ++tries) {
            const std::vector<std::string> further = admittedOf(request.path, outcome.missed);
            if (further.empty() || control.isCancelled)
                break;
            request.sideFiles.insert(request.sideFiles.end(), further.begin(), further.end());
            outcome = readOnce(control, kind, request, limits);
        }
        removeForeignNames(outcome, request.path);
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

ReadOutcome readModel(const std::string& path, const ReadLimits& limits)
{
    ReadJob job(path, limits);
    while (!job.wait(1000)) {
    }
    return job.take();
}

void prepareReading()
{
    vfIsolation::prepareHelper(readerProgram());
}

ReadJob::ReadJob(const std::string& path, const ReadLimits& limits)
    : ReadJob(isImageFile(path) ? ReadKind::Image : ReadKind::Model, path, limits)
{}

ReadJob::ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits)
    : vfIsolation::Job(path), m_outcome(std::make_shared<ReadOutcome>())
{
    prepareReading();
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

} // namespace vfFormats
