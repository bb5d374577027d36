// SPDX-License-Identifier: MIT
#include <velaforge/formats/ModelWriter.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/SaveJob.h>

#include <osgDB/FileNameUtils>

namespace vfFormats {

std::string writableFormats()
{
    // Those first that keep everything.
    std::string all;
    for (const bool isWhole : {true, false}) {
        for (const auto& format : formats()) {
            if (format->isWritten && format->keepsScenes == isWhole)
                all += (all.empty() ? "" : ",") + format->extensions.front();
        }
    }
    return all;
}

std::string writeError(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    const Format* format = formatNamed(extension);
    return format && format->isWritten ? std::string() : "models are not written as ." + extension;
}

bool writeModel(const osg::Node& scene, const vfBase::VfString& path, vfBase::VfString& reason)
{
    std::string error = writeError(path.str());
    if (error.empty()) {
        SaveJob job(scene, path.str(), true);
        while (!job.wait(1000)) {
        }
        error = job.reason();
    }
    if (!error.empty())
        reason = error;
    return error.empty();
}

} // namespace vfFormats
