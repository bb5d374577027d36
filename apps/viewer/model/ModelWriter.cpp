// SPDX-License-Identifier: MIT
#include "model/ModelWriter.h"

#include "writing/SaveJob.h"

#include <osgDB/FileNameUtils>

namespace vfViewer {

std::string writableFormats()
{
    return "osgb,osgt,ive,obj,stl,3ds,ac,dxf";
}

std::string writeError(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    const bool isWritable = !extension.empty() &&
                            ("," + writableFormats() + ",").find("," + extension + ",") != std::string::npos;
    return isWritable ? std::string() : "models are not written as ." + extension;
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

} // namespace vfViewer
