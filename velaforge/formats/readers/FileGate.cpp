// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/FileGate.h>

#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/PluginPath.h>
#include <velaforge/formats/readers/ImageFiles.h>
#include <velaforge/formats/readers/SideFiles.h>

#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/Registry>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

namespace vfFormats {

namespace {

using osgDB::ReaderWriter;
using ReadResult = ReaderWriter::ReadResult;

bool isListed(const std::vector<std::string>& formats, const std::string& extension)
{
    return std::find(formats.begin(), formats.end(), extension) != formats.end();
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
        return pluginPath(name);
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
        if (isImageFile(path))
            return readImage(path, options);
        return readNode(path, options);
    }

    ReadResult readImage(const std::string& path, const osgDB::Options* options) override
    {
        if (!isImageFile(path))
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
        if (!isModelFile(path))
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
        return FileGate::readError(found.empty() ? path : found);
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

std::string FileGate::readError(const std::string& path)
{
    std::error_code problem;
    if (std::filesystem::is_regular_file(path, problem) && !SideFiles::isAdmitted(path))
        return "it is not in the folder of the model, nor beside or below it";
    return vfFormats::readError(path);
}

} // namespace vfFormats
