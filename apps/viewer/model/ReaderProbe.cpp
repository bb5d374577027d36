// SPDX-License-Identifier: MIT
#include "model/ReaderProbe.h"

#include <velaforge/base/ChildProcess.h>

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

namespace vfViewer {

namespace {

constexpr unsigned int secondsAllowed = 120;

bool isProbed(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension == "osgb" || extension == "ive";
}

} // namespace

ProbeResult probeReading(const std::string& path)
{
    if (!isProbed(path))
        return ProbeResult::NotNeeded;
    const auto read = [&path] { return osgDB::Registry::instance()->readNode(path, nullptr).validNode(); };
    switch (vfBase::tryInChild(read, secondsAllowed)) {
    case vfBase::ChildResult::Succeeded:
        return ProbeResult::Read;
    case vfBase::ChildResult::Failed:
        return ProbeResult::Refused;
    case vfBase::ChildResult::Died:
        return ProbeResult::Crashed;
    case vfBase::ChildResult::NotMade:
        break;
    }
    return ProbeResult::NotNeeded;
}

} // namespace vfViewer
