// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ImageFiles.h>

#include <velaforge/formats/readers/SideFiles.h>

#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>

#include <utility>
#include <vector>

namespace vfFormats {

osg::ref_ptr<osg::Image> readImageFile(const std::string& name, const std::string& directory)
{
    if (name.empty())
        return nullptr;
    const std::string found = SideFiles::find(name, {directory});
    if (!found.empty())
        return osgDB::readRefImageFile(found);
    return osgDB::readRefImageFile(osgDB::isAbsolutePath(name) ? name : directory + "/" + name);
}

std::string imageFormatOf(const std::string& bytes)
{
    using namespace std::string_literals;
    static const std::vector<std::pair<std::string, std::string>> beginnings = {
        {"\x89PNG"s, "png"}, {"\xff\xd8\xff"s, "jpg"}, {"GIF8"s, "gif"},
        {"BM"s, "bmp"},      {"II*\0"s, "tif"},        {"MM\0*"s, "tif"},
        {"DDS "s, "dds"},    {"\x01\xda"s, "sgi"},     {"P6"s, "ppm"}};
    for (const auto& [beginning, format] : beginnings) {
        if (bytes.compare(0, beginning.size(), beginning) == 0)
            return format;
    }
    return {};
}

} // namespace vfFormats
