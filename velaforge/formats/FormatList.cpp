// SPDX-License-Identifier: MIT
#include <velaforge/formats/FormatList.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/internal/InstalledFile.h>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <vector>

#include <unistd.h>

namespace vfFormats {

namespace {

void addLine(std::ostream& list, const std::string& extension, const char* use, const std::string& name)
{
    list << std::left << std::setw(10) << extension << std::setw(16) << use << name << '\n';
}

} // namespace

bool hasAssimp()
{
    return access(assimpLibrary().c_str(), R_OK) == 0;
}

std::string formatName(const std::string& extension)
{
    const Format* format = formatNamed(extension);
    return format && !format->isImage ? format->name : extension;
}

std::string listFormats()
{
    std::vector<std::string> models;
    for (const auto& format : formats()) {
        if (!format->isImage && (hasAssimp() || format->reader != ReadBy::Assimp))
            models.insert(models.end(), format->extensions.begin(), format->extensions.end());
    }
    std::sort(models.begin(), models.end());
    std::ostringstream list;
    for (const std::string& extension : models) {
        const Format& format = *formatNamed(extension);
        addLine(list, extension, format.isWritten ? "read, written" : "read", format.name);
    }
    for (const auto& format : formats()) {
        for (const std::string& extension : format->extensions) {
            if (format->isImage)
                addLine(list, extension, "read", format->name);
        }
    }
    return list.str();
}

} // namespace vfFormats
