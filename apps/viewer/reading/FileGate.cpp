// SPDX-License-Identifier: MIT
#include "reading/FileGate.h"

#include "formats/Format.h"
#include "reading/ImageFiles.h"
#include "reading/SideFiles.h"

#include <osg/Version>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/Registry>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace {

using osgDB::ReaderWriter;
using ReadResult = ReaderWriter::ReadResult;

bool isListed(const std::vector<std::string>& formats, const std::string& extension)
{
    return std::find(formats.begin(), formats.end(), extension) != formats.end();
}

/// The directory of plug-ins beside the library that is loaded, whatever the environment says.
std::string pluginDirectory()
{
    Dl_info info{};
    const auto address = reinterpret_cast<const void*>(&osgDB::getFilePath);
    if (!dladdr(address, &info) || !info.dli_fname || info.dli_fname[0] != '/')
        return "/nonexistent";
    return osgDB::getFilePath(info.dli_fname) + "/osgPlugins-" + osgGetVersion();
}

/// The names in "osgdb_<name>.so" that may be loaded.
bool isListedPlugin(const std::string& name)
{
    if (name.compare(0, 12, "serializers_") == 0 || name.compare(0, 11, "deprecated_") == 0)
        return true;
    return std::any_of(formats().begin(), formats().end(), [&name](const auto& format) {
        return format->reader != ReadBy::Assimp &&
               (isListed(format->extensions, name) || isListed(format->plugins, name));
    });
}

std::vector<std::string> extensionsOf(bool areImages)
{
    std::vector<std::string> all;
    for (const auto& format : formats()) {
        if (format->isImage == areImages)
            all.insert(all.end(), format->extensions.begin(), format->extensions.end());
    }
    return all;
}

std::vector<std::string>& failures()
{
    thread_local std::vector<std::string> kept;
    return kept;
}

std::vector<std::string>& files()
{
    thread_local std::vector<std::string> kept;
    return kept;
}

/// Files that name themselves, or one another, would be read until there is no memory left.
constexpr unsigned int mostModels = 100;
thread_local unsigned int modelsRead = 0;

/// Finds plug-ins by their absolute paths, and while a model is read, the files that it names by the rule of SideFiles.
class FindByRule : public osgDB::FindFileCallback
{
public:
    std::string findDataFile(const std::string& name, const osgDB::Options* options,
                             osgDB::CaseSensitivity sensitivity) override
    {
        if (!SideFiles::isInForce())
            return FindFileCallback::findDataFile(name, options, sensitivity);
        if (!options)
            return SideFiles::find(name);
        const osgDB::FilePathList& directories = options->getDatabasePathList();
        return SideFiles::find(name, {directories.begin(), directories.end()});
    }

    std::string findLibraryFile(const std::string& name, const osgDB::Options*,
                                osgDB::CaseSensitivity) override
    {
        return FileGate::libraryPath(name);
    }
};

/// Stands in front of every read, also of those that a reader plug-in makes for a file named in a file.
class ListedFormatsOnly : public osgDB::ReadFileCallback
{
public:
    ReadResult openArchive(const std::string& path, ReaderWriter::ArchiveStatus, unsigned int,
                           const osgDB::Options*) override
    {
        return refused(path, "archives are not opened");
    }

    ReadResult readObject(const std::string& path, const osgDB::Options* options) override
    {
        if (FileGate::isImage(path))
            return readImage(path, options);
        return readNode(path, options);
    }

    ReadResult readImage(const std::string& path, const osgDB::Options* options) override
    {
        if (!FileGate::isImage(path))
            return refused(path, "not a listed image format");
        const std::string reason = whyNotToRead(path, options);
        if (!reason.empty())
            return refused(path, reason);
        try {
            ReadResult result = decode(path, options);
            return result.validImage() ? result : refused(path, "the image cannot be decoded");
        } catch (const std::bad_alloc&) {
            return refused(path,
                           "there is not enough memory for this image"); // the rest of the model may fit
        }
    }

    ReadResult readHeightField(const std::string& path, const osgDB::Options*) override
    {
        return refused(path, "height fields are not read");
    }

    ReadResult readNode(const std::string& path, const osgDB::Options* options) override
    {
        if (!FileGate::isModel(path))
            return refused(path, "not a listed model format");
        if (SideFiles::isInForce() && ++modelsRead > mostModels)
            return refused(path, "a model may have " + std::to_string(mostModels) + " files");
        const std::string reason = whyNotToRead(path, options);
        return reason.empty() ? ReadFileCallback::readNode(path, options) : refused(path, reason);
    }

    ReadResult readShader(const std::string& path, const osgDB::Options*) override
    {
        // osgText asks for files before it takes the shaders that are built in.
        constexpr const char* ofTexts = "shaders/osgText_";
        if (path.compare(0, std::strlen(ofTexts), ofTexts) == 0)
            return ReadResult::FILE_NOT_FOUND;
        return refused(path, "shaders are not read");
    }

    ReadResult readScript(const std::string& path, const osgDB::Options*) override
    {
        return refused(path, "scripts are not read");
    }

private:
    static ReadResult refused(const std::string& path, const std::string& reason)
    {
        FileGate::noteFailure(path, reason);
        ReadResult result(ReadResult::ERROR_IN_READING_FILE);
        result.message() = reason;
        return result;
    }

    /// Reads an image by the format that its contents have, whatever its name says.
    ReadResult decode(const std::string& path, const osgDB::Options* options)
    {
        // OpenSceneGraph stores images from the bottom up, this format from the top down.
        const osg::ref_ptr<osgDB::Options> flipping =
            options ? osg::clone(options, osg::CopyOp::SHALLOW_COPY) : new osgDB::Options;
        flipping->setOptionString(flipping->getOptionString() + " dds_flip");
        const std::string found = osgDB::findDataFile(path, options);
        std::ifstream file(found.empty() ? path : found, std::ios::binary);
        std::string beginning(4, '\0');
        file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
        const std::string format = imageFormatOf(beginning);
        const std::string named = osgDB::getLowerCaseFileExtension(path);
        osgDB::ReaderWriter* byName = osgDB::Registry::instance()->getReaderWriterForExtension(named);
        osgDB::ReaderWriter* byContent =
            format.empty() ? byName : osgDB::Registry::instance()->getReaderWriterForExtension(format);
        if (byContent == byName || !byContent)
            return ReadFileCallback::readImage(path, flipping);
        file.clear();
        file.seekg(0);
        ReadResult result = byContent->readImage(file, flipping);
        if (result.validImage())
            result.getImage()->setFileName(path);
        return result;
    }

    static std::string whyNotToRead(const std::string& path, const osgDB::Options* options)
    {
        if (osgDB::containsServerAddress(path))
            return "addresses are not fetched";
        const std::string found = osgDB::findDataFile(path, options);
        if (!found.empty())
            FileGate::noteFile(found);
        return FileGate::whyUnreadable(found.empty() ? path : found);
    }
};

} // namespace

void FileGate::install()
{
    static const bool installed = [] {
        osgDB::Registry::instance()->setFindFileCallback(new FindByRule);
        osgDB::Registry::instance()->setReadFileCallback(new ListedFormatsOnly);
        return true;
    }();
    (void)installed;
}

void FileGate::loadSceneClasses()
{
    for (const char* prefix : {"osgdb_serializers_", "osgdb_deprecated_"}) {
        for (const char* library :
             {"osg", "osganimation", "osgfx", "osgparticle", "osgshadow", "osgsim", "osgterrain", "osgtext",
              "osgutil", "osgviewer", "osgvolume", "osgui", "osgga", "osgmanipulator", "osgwidget"})
            osgDB::Registry::instance()->loadLibrary(std::string(prefix) + library + ".so");
    }
}

std::vector<std::string> FileGate::modelFormats()
{
    return extensionsOf(false);
}

std::vector<std::string> FileGate::imageFormats()
{
    return extensionsOf(true);
}

bool FileGate::isModel(const std::string& path)
{
    const Format* format = formatOf(path);
    return format && !format->isImage;
}

bool FileGate::isImage(const std::string& path)
{
    const Format* format = formatOf(path);
    return format && format->isImage;
}

std::string FileGate::filter(const std::vector<std::string>& formats)
{
    std::string all;
    for (const std::string& format : formats)
        all += (all.empty() ? "" : ",") + format;
    return all;
}

std::vector<std::string> FileGate::takeFailures()
{
    std::vector<std::string> taken;
    taken.swap(failures());
    return taken;
}

std::vector<std::string> FileGate::takeFiles()
{
    std::vector<std::string> taken;
    taken.swap(files());
    modelsRead = 0;
    return taken;
}

void FileGate::noteFile(const std::string& path)
{
    std::error_code problem;
    const std::string file = std::filesystem::absolute(path, problem).lexically_normal().string();
    if (!problem && files().size() < 100 && !isListed(files(), file))
        files().push_back(file);
}

void FileGate::noteFailure(const std::string& name, const std::string& reason)
{
    const std::string failure = name + ": " + reason;
    if (failures().size() < 100 && !isListed(failures(), failure))
        failures().push_back(failure);
}

std::string FileGate::whyUnreadable(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return std::strerror(errno);
    if (S_ISDIR(status.st_mode))
        return "it is a directory";
    if (!S_ISREG(status.st_mode))
        return "it is not a regular file";
    if (!SideFiles::isAdmitted(path))
        return "it is not in the folder of the model, nor beside or below it";
    // Without O_NONBLOCK a FIFO that has taken its place would hold the process up for ever.
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return std::strerror(errno);
    close(file);
    return status.st_size == 0 ? "the file is empty" : "";
}

std::string FileGate::libraryPath(const std::string& name)
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
    // The viewer opens its modules by itself, and none from a directory on the library path.
    if (file.compare(0, 10, "vfModules-") == 0)
        return std::string();
    // An empty answer would make OpenSceneGraph open a library of that name itself.
    return directory + "/not-listed/" + file;
}

} // namespace vfViewer
