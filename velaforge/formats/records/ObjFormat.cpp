// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

#include <cstddef>
#include <map>
#include <sstream>

namespace vfFormats {

namespace {

/// The last statement must have as many parts as its kind needs.
bool isCutOff(std::string_view file)
{
    if (file.back() == '\n')
        return false;
    const std::size_t begin = file.rfind('\n');
    std::istringstream words{std::string(file.substr(begin == std::string_view::npos ? 0 : begin + 1))};
    std::string kind;
    words >> kind;
    std::size_t count = 0;
    bool endsInSlash = false;
    for (std::string word; words >> word; ++count)
        endsInSlash = word.back() == '/' || word.back() == '-' || word.back() == '.';
    static const std::map<std::string, std::size_t> needed = {
        {"v", 3}, {"vn", 3}, {"vt", 1}, {"f", 3}, {"l", 2}};
    const auto found = needed.find(kind);
    return found != needed.end() && (count < found->second || endsInSlash);
}

} // namespace

Format objFormat()
{
    Format format;
    format.extensions = {"obj"};
    format.name = "Wavefront OBJ";
    format.mimeType = "model/obj";
    format.reader = ReadBy::Own;
    format.sideExtensions = {"mtl"};
    format.isCutOff = isCutOff;
    format.isWritten = true;
    format.lost = VertexColors | HiddenParts | Animations;
    format.isWrittenWithYUp = true;
    return format;
}

} // namespace vfFormats
