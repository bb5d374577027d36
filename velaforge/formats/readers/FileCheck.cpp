// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/FileCheck.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/readers/MappedFile.h>

namespace vfFormats {

bool isCutOff(const std::string& path)
{
    const Format* format = formatOf(path);
    if (!format || !format->isCutOff)
        return false;
    const MappedFile file(path, MappedFile::Wanted::Places);
    return !file.text().empty() && format->isCutOff(file.text());
}

} // namespace vfFormats
