// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/isolation/Job.h>

#include <osg/Node>

#include <memory>
#include <string>

namespace vfFormats {

/// The result of writing a file.
struct WriteOutcome
{
    bool isWritten = false;   ///< otherwise the file, and what belongs to it, is as it was
    bool isCancelled = false; ///< the caller cancelled the job
    std::string reason;       ///< why the file was not written, in one line
};

/// Writes a model and waits for it, see WriteJob.
/// @param scene  the model; does not change
/// @param path   of the file; its extension names the format, see writableFormats()
/// @return the outcome; never throws
VFFORMATS_EXPORT WriteOutcome writeModel(const osg::Node& scene, const std::string& path);

/// Writes a model to a file in a process of its own while the caller goes on.
///
///     vfFormats::WriteJob job(*scene, path);
///     while (!job.wait(100))
///         show(job.progress());
///     vfFormats::WriteOutcome outcome = job.outcome();
///
/// The file, and what belongs to it, such as the materials of an OBJ file, is written in a directory beside it, read again in
/// another process, compared with the model, and then moved to its place, all at once. Until then the job can be cancelled,
/// and the former file is whole. Files that this library did not write are not overwritten, but for @p path itself.
class VFFORMATS_EXPORT WriteJob : public vfIsolation::Job
{
public:
    /// Starts to write. The caller may change the scene afterwards, except for the elements of its arrays and images.
    /// @param scene     the model; does not change
    /// @param path      of the file; its extension names the format, see writableFormats()
    /// @param isMoving  whether animations of the scene write to its arrays meanwhile, which are copied then
    WriteJob(const osg::Node& scene, const std::string& path, bool isMoving = true);

    /// Returns the outcome; call it when the job is done.
    WriteOutcome outcome() const;

private:
    std::shared_ptr<std::string> m_reason; ///< written by the thread until the job is done
};

} // namespace vfFormats
