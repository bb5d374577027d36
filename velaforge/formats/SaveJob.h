// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <velaforge/isolation/Job.h>

#include <osg/Node>
#include <osg/ref_ptr>

#include <memory>
#include <string>

namespace vfFormats {

/// Writes a model to a file in a process of its own, while this one goes on.
///
///     SaveJob job(*scene, path, isMoving);
///     while (!job.wait(100))
///         show(job.progress());
///     std::string reason = job.reason();
///
/// The file, and what belongs to it as an OBJ file's materials, is written in a directory beside it, read again in another
/// process, compared with the model, and then takes its place, all at once. Until then the job can be cancelled.
class VFFORMATS_EXPORT SaveJob : public vfIsolation::Job
{
public:
    /// Begins. The scene may change afterwards.
    /// @param path      in one of writableFormats()
    /// @param isMoving  whether the scene moves by itself
    SaveJob(const osg::Node& scene, const std::string& path, bool isMoving);

    /// @return why the file was not written, and is as it was; empty when it was. To be called when the job is done
    std::string reason() const;

private:
    std::shared_ptr<std::string> m_reason; ///< the thread's until the job is done
};

} // namespace vfFormats
