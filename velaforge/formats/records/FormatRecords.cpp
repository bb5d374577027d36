// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

#include <osgDB/FileNameUtils>

#include <algorithm>

namespace vfFormats {

namespace {

using Table = std::vector<std::shared_ptr<const Format>>;

void add(Table& table, const Format& format)
{
    table.push_back(std::make_shared<Format>(format));
}

void add(Table& table, const std::vector<Format>& several)
{
    for (const Format& format : several)
        add(table, format);
}

Table& table()
{
    static Table all = [] {
        Table made;
        add(made, objFormat());
        add(made, stlFormat());
        add(made, plyFormat());
        add(made, threeDsFormat());
        add(made, ac3dFormat());
        add(made, lightWaveFormat());
        add(made, dxfFormat());
        add(made, colladaFormat());
        add(made, directXFormat());
        add(made, sceneFormats());
        add(made, assimpFormats());
        add(made, imageFormats());
        return made;
    }();
    return all;
}

} // namespace

const std::vector<std::shared_ptr<const Format>>& formats()
{
    return table();
}

void addFormat(const Format& format)
{
    add(table(), format);
}

const Format* formatOf(const std::string& path)
{
    return formatNamed(osgDB::getLowerCaseFileExtension(path));
}

const Format* formatNamed(std::string_view extension)
{
    for (const std::shared_ptr<const Format>& format : formats()) {
        const std::vector<std::string>& all = format->extensions;
        if (std::find(all.begin(), all.end(), extension) != all.end())
            return format.get();
    }
    return nullptr;
}

} // namespace vfFormats
