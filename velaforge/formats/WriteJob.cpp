// SPDX-License-Identifier: MIT
#include <velaforge/formats/WriteJob.h>

#include <velaforge/base/FileNames.h>
#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/ModelMeasure.h>
#include <velaforge/formats/internal/ReadInProcess.h>
#include <velaforge/formats/internal/ReadRequest.h>
#include <velaforge/formats/internal/SaveDirectory.h>
#include <velaforge/formats/internal/SceneImages.h>
#include <velaforge/formats/internal/SceneSnapshot.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/formats/internal/SideNames.h>
#include <velaforge/formats/internal/WriteRequest.h>
#include <velaforge/isolation/IsolatedJob.h>
#include <velaforge/isolation/SharedMemory.h>

#include <osgDB/FileNameUtils>

#include <cerrno>
#include <cstring>
#include <exception>
#include <limits>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfFormats {

namespace {

constexpr const char* notEnoughMemory = "there is not enough memory";
constexpr const char* notWhole = "the file could not be written whole";

/// A descriptor that is closed at the end.
class OpenFile
{
public:
    explicit OpenFile(int file) : m_file(file) {}
    ~OpenFile()
    {
        if (m_file >= 0)
            close(m_file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    operator int() const { return m_file; }

private:
    int m_file;
};

int makeDraft(const std::string& path)
{
    constexpr mode_t permissions = 0666; // as far as the umask lets
    return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
}

/// Returns the files from which the images of a scene were read: they are copied as they are, where they can be.
std::vector<std::string> imageFilesOf(osg::Node& scene)
{
    FindImages find;
    scene.accept(find);
    std::vector<std::string> files;
    for (const osg::ref_ptr<osg::Image>& image : find.images) {
        if (!image->getFileName().empty() && image->getFileName().front() == '/' &&
            isImageFile(image->getFileName()))
            files.push_back(image->getFileName());
    }
    return files;
}

std::string writeBeside(const std::string& directory, const std::vector<SideFile>& files)
{
    for (const SideFile& one : files) {
        const OpenFile file(makeDraft(directory + "/" + one.name));
        if (file < 0)
            return one.name + ": " + std::strerror(errno);
        CheckedFile checked(file);
        checked.write(one.contents);
        const std::string reason = checked.finish();
        if (!reason.empty())
            return one.name + ": " + reason;
    }
    return std::string();
}

/// @return why a process has not written; empty when it has
std::string reasonOf(const vfIsolation::IsolatedResult& result)
{
    if (result.error == vfIsolation::IsolationError::Ended)
        return "its writer fails";
    return result.reason;
}

/// Has a process write the scene and the files beside it to a directory of drafts. @return why it did not; empty when it did
std::string write(vfIsolation::JobControl& control, const osg::ref_ptr<osg::Node>& scene,
                  const SaveDirectory& drafts)
{
    const OpenFile memory(vfIsolation::makeSharedMemory("scene"));
    ReadOutcome sent;
    sent.scene = scene;
    const long long size = SceneSender(memory).send(sent, SceneSender::LargeArrays::InFile);
    if (size == 0 || !vfIsolation::sealContents(memory))
        return notEnoughMemory;
    WriteRequest request;
    request.directory = drafts.directory();
    request.model = osgDB::getSimpleFileName(drafts.draft());
    request.materials = SideNames(request.directory, request.model).chooseMaterials();
    request.sceneSize = static_cast<std::uint64_t>(size);
    const std::string place = osgDB::getFilePath(drafts.draft());
    const OpenFile model(makeDraft(drafts.draft()));
    const OpenFile materials(makeDraft(place + "/" + request.materials));
    if (model < 0 || materials < 0)
        return std::strerror(errno);

    vfIsolation::IsolatedTask task;
    task.helper = readerProgram();
    task.requiresSandbox = isSandboxRequired();
    task.name = writeTask;
    task.argument = request.argument();
    task.files = {memory, model, materials};
    task.readableFiles = imageFilesOf(*scene);
    // Those beside the model may have the contents of an image already.
    for (const std::string& file : findSideFiles(request.directory + "/" + request.model))
        task.readableFiles.push_back(file);
    task.limits = ReadLimits().forSize(request.sceneSize);
    task.limits.resultSize = std::numeric_limits<std::int64_t>::max();
    const vfIsolation::IsolatedResult result = vfIsolation::runIsolated(control, task);
    std::string reason = reasonOf(result);
    if (!reason.empty())
        return reason;
    std::vector<SideFile> files;
    const std::string_view bytes(reinterpret_cast<const char*>(result.bytes.data()), result.bytes.size());
    if (!unpackSideFiles(bytes, files))
        return "its writer fails";
    struct stat status;
    if (fstat(materials, &status) == 0 && status.st_size == 0)
        unlink((place + "/" + request.materials).c_str());
    return writeBeside(place, files);
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
    std::string reason = writeError(path);
    if (!reason.empty())
        return reason;
    const std::string format = osgDB::getLowerCaseFileExtension(path);
    const unsigned int lost = featuresLostBy(format);
    const ModelMeasure model = measureModel(*scene, lost);
    if (model.isEmpty() && !measureModel(*scene, 0).isEmpty())
        return "there is nothing in the model that ." + format + " files can hold";
    SaveDirectory directory(path);
    if (!directory.reason().empty())
        return directory.reason();
    reason = write(control, scene, directory);
    if (reason.empty())
        reason = compare(control, directory.draft(), model, lost, isMoving && !(lost & Animations));
    if (!reason.empty())
        return reason;
    if (!control.tryCommit())
        return "it was cancelled";
    return directory.commit();
}

} // namespace

WriteJob::WriteJob(const osg::Node& scene, const std::string& path, bool isMoving)
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

WriteOutcome WriteJob::outcome() const
{
    WriteOutcome result;
    result.isCancelled = isCancelled();
    result.reason = result.isCancelled ? "it was cancelled" : *m_reason;
    result.isWritten = result.reason.empty();
    return result;
}

WriteOutcome writeModel(const osg::Node& scene, const std::string& path)
{
    WriteJob job(scene, path);
    while (!job.wait(1000)) {
    }
    return job.outcome();
}

} // namespace vfFormats
