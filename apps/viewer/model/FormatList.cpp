// SPDX-License-Identifier: MIT
#include "model/FormatList.h"

#include "model/ModelWriter.h"
#include "reading/AssimpLibrary.h"
#include "reading/FileGate.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <sstream>
#include <vector>

namespace vfViewer {

namespace {

bool isListed(const std::vector<std::string>& formats, const std::string& format)
{
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

} // namespace

std::string formatName(const std::string& format)
{
    static const std::map<std::string, std::string> names = {
        {"3ds", "3D Studio"},
        {"3mf", "3D Manufacturing Format"},
        {"ac", "AC3D"},
        {"amf", "Additive Manufacturing File"},
        {"ase", "3ds Max ASCII export"},
        {"dae", "Collada"},
        {"dxf", "Drawing exchange"},
        {"fbx", "Filmbox"},
        {"glb", "glTF in one file"},
        {"gltf", "glTF"},
        {"ive", "OpenSceneGraph, of older versions"},
        {"lwo", "LightWave"},
        {"md5mesh", "MD5"},
        {"nff", "Neutral file format"},
        {"obj", "Wavefront OBJ"},
        {"off", "Object file format"},
        {"osg", "OpenSceneGraph, text of older versions"},
        {"osgb", "OpenSceneGraph, numbers"},
        {"osgt", "OpenSceneGraph, text"},
        {"ply", "Polygon file format"},
        {"stl", "Stereolithography"},
        {"x", "DirectX"},
        {"x3d", "X3D"},
    };
    const auto found = names.find(format);
    return found == names.end() ? format : found->second;
}

std::string listFormats()
{
    std::vector<std::string> writable;
    std::istringstream formats(writableFormats());
    for (std::string format; std::getline(formats, format, ',');)
        writable.push_back(format);

    std::vector<std::string> models = FileGate::modelFormats();
    std::sort(models.begin(), models.end());
    std::ostringstream list;
    const auto add = [&list](const std::string& format, const char* use, const std::string& name) {
        list << std::left << std::setw(10) << format << std::setw(16) << use << name << '\n';
    };
    for (const std::string& format : models) {
        const bool isRead = hasAssimp() || !isListed(FileGate::assimpFormats(), format);
        if (isRead)
            add(format, isListed(writable, format) ? "read, written" : "read", formatName(format));
    }
    for (const std::string& format : FileGate::imageFormats())
        add(format, "read", "image");
    return list.str();
}

} // namespace vfViewer
