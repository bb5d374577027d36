// SPDX-License-Identifier: MIT
#include "writing/SaveJob.h"

#include "model/FormatLosses.h"
#include "reading/FileGate.h"
#include "reading/ReadJob.h"
#include "reading/SceneTransfer.h"
#include "writing/ModelMeasure.h"
#include "writing/SaveDirectory.h"
#include "writing/SceneSnapshot.h"

#include <velaforge/base/FileNames.h>
#include <velaforge/isolation/SharedMemory.h>

#include <osgDB/FileNameUtils>

#include <exception>
#include <new>
#include <utility>

#include <unistd.h>

namespace vfViewer {

namespace {

constexpr const char* notEnoughMemory = "there is not enough memory";
constexpr const char* notWhole = "the file could not be written whole";

/// A file in memory, closed at the end.
class SceneFile
{
public:
    SceneFile() : m_file(vfIsolation::makeSharedMemory("scene")) {}
    ~SceneFile()
    {
        if (m_file >= 0)
            close(m_file);
    }
    SceneFile(const SceneFile&) = delete;
    SceneFile& operator=(const SceneFile&) = delete;

    operator int() const { return m_file; }

private:
    int m_file;
};

/// Has a process write the scene, which loses its arrays. @return why it did not; empty when it did
std::string write(vfIsolation::JobControl& control, const osg::ref_ptr<osg::Node>& scene,
                  const std::string& draft)
{
    const SceneFile file;
    ReadOutcome sent;
    sent.scene = scene;
    const long long size = SceneSender(file).send(sent, SceneSender::LargeArrays::InFile);
    if (size == 0)
        return notEnoughMemory;
    Reader writer;
    std::string reason = ReaderHost::begin(ReadKind::Write, draft, {}, control, writer, file, size);
    ReaderDone done;
    if (reason.empty())
        reason = writer.waitFor(control, done);
    else
        return "the process to write it could not be started";
    if (reason.empty())
        return done.size > 0 ? std::string() : std::string(done.reason);
    return control.isCancelled ? reason : "its writer fails";
}

/// @return why the file has not everything; empty when it has
std::string compare(vfIsolation::JobControl& control, const std::string& draft, const ModelMeasure& model,
                    unsigned int lost, bool isMoving)
{
    control.progress = 0.75;
    const ReadOutcome written = readInProcess(control, ReadKind::Model, draft);
    if (!written.scene)
        return model.isEmpty() && !control.isCancelled ? std::string()
                                                       : std::string(notWhole) + ": " + written.reason;
    return hasEverything(model, measureModel(*written.scene, lost), isMoving) ? std::string() : notWhole;
}

std::string save(vfIsolation::JobControl& control, const osg::ref_ptr<osg::Node>& scene,
                 const std::string& path, bool isMoving)
{
    const std::string format = osgDB::getLowerCaseFileExtension(path);
    const unsigned int lost = featuresLostBy(format);
    const ModelMeasure model = measureModel(*scene, lost);
    if (model.isEmpty() && !measureModel(*scene, 0).isEmpty())
        return "there is nothing in the model that ." + format + " files can hold";
    SaveDirectory directory(path);
    if (!directory.reason().empty())
        return directory.reason();
    std::string reason = write(control, scene, directory.draft());
    if (reason.empty())
        reason = compare(control, directory.draft(), model, lost, isMoving && !(lost & Animations));
    if (!reason.empty())
        return reason;
    if (!control.tryCommit())
        return "it was cancelled";
    return directory.commit();
}

} // namespace

SaveJob::SaveJob(const osg::Node& scene, const std::string& path, bool isMoving)
    : vfIsolation::Job(path), m_reason(std::make_shared<std::string>(notEnoughMemory))
{
    osg::ref_ptr<osg::Node> snapshot = snapshotOf(scene, isMoving);
    start([reason = m_reason, snapshot = std::move(snapshot), path,
           isMoving](vfIsolation::JobControl& control) {
        try {
            *reason = save(control, snapshot, vfBase::absolutePath(path).str(), isMoving);
        } catch (const std::bad_alloc&) {
            *reason = notEnoughMemory;
        } catch (const std::exception& problem) {
            *reason = problem.what();
        }
    });
}

std::string SaveJob::reason() const
{
    return isCancelled() ? "it was cancelled" : *m_reason;
}

} // namespace vfViewer
