// SPDX-License-Identifier: MIT
#include "reading/FileCheck.h"

#include "formats/Format.h"
#include "reading/MappedFile.h"

namespace vfViewer {

bool isCutOff(const std::string& path)
{
    const Format* format = formatOf(path);
    if (!format || !format->isCutOff)
        return false;
    const MappedFile file(path, MappedFile::Wanted::Places);
    return !file.text().empty() && format->isCutOff(file.text());
}

} // namespace vfViewer
