// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/PluginPath.h>

#include <velaforge/base/LibraryFolder.h>
#include <velaforge/formats/Format.h>

#include <osg/Version>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <vector>

namespace vfFormats {

namespace {

/// The directory of plug-ins beside the library that is loaded, whatever the environment says.
std::string pluginDirectory()
{
    return vfBase::libraryFolder(&osgDB::getFilePath) + "/osgPlugins-" + osgGetVersion();
}

bool contains(const std::vector<std::string>& list, const std::string& text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// The names in "osgdb_<name>.so" that may be loaded.
bool isListedPlugin(const std::string& name)
{
    if (name.compare(0, 12, "serializers_") == 0 || name.compare(0, 11, "deprecated_") == 0)
        return true;
    return std::any_of(formats().begin(), formats().end(), [&name](const auto& format) {
        return format->reader != ReadBy::Assimp &&
               (contains(format->extensions, name) || contains(format->plugins, name));
    });
}

} // namespace

std::string pluginPath(const std::string& name)
{
    static const std::string directory = pluginDirectory();
    const std::string file = osgDB::getSimpleFileName(name);
    const std::string prefix = "osgdb_";
    const std::string suffix = ".so";
    const bool isPlugin = file.size() > prefix.size() + suffix.size() &&
                          file.compare(0, prefix.size(), prefix) == 0 &&
                          file.compare(file.size() - suffix.size(), suffix.size(), suffix) == 0;
    if (isPlugin && isListedPlugin(file.substr(prefix.size(), file.size() - prefix.size() - suffix.size())))
        return directory + "/" + file;
    // Programs open their modules by themselves, and none from a directory on the library path.
    if (file.compare(0, 10, "vfModules-") == 0)
        return std::string();
    // An empty answer would make OpenSceneGraph open a library of that name itself.
    return directory + "/not-listed/" + file;
}

} // namespace vfFormats
