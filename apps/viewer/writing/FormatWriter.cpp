// SPDX-License-Identifier: MIT
#include "writing/FormatWriter.h"

#include "formats/Format.h"
#include "reading/FileGate.h"
#include "reading/Quiet.h"
#include "reading/SceneImages.h"
#include "writing/CheckedFile.h"
#include "writing/SideNames.h"
#include "writing/WritableScene.h"

#include <osg/Image>
#include <osg/Node>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include <unistd.h>

namespace vfViewer {

namespace {

namespace fs = std::filesystem;

constexpr const char* notWhole = "the file could not be written whole";

/// A file that belongs to a model.
struct SideFile
{
    std::string name;
    std::string contents;
};

/// Makes the file of an image: that from which it was read, or PNG. @return false when it cannot be written
bool makeFile(const osg::Image& image, const SideNames& names, SideFile& file)
{
    file.name = osgDB::getSimpleFileName(image.getFileName());
    std::error_code problem;
    if (FileGate::isImage(file.name) && fs::is_regular_file(image.getFileName(), problem)) {
        std::ifstream original(image.getFileName(), std::ios::binary);
        file.contents.assign(std::istreambuf_iterator<char>(original), std::istreambuf_iterator<char>());
        return !original.bad();
    }
    file.name =
        (file.name.empty() ? names.stem() + "-image" : osgDB::getNameLessExtension(file.name)) + ".png";
    std::ostringstream stream;
    osgDB::ReaderWriter* png = osgDB::Registry::instance()->getReaderWriterForExtension("png");
    if (!png || !png->writeImage(image, stream).success())
        return false;
    file.contents = stream.str();
    return true;
}

/// Has the images of a scene named as they are found from the directory of the model.
/// @param files  gets those that are not found from there
/// @return whether all of them are named
bool placeImages(osg::Node& scene, const SideNames& names, std::vector<SideFile>& files)
{
    FindImages find;
    scene.accept(find);
    std::set<std::string> taken;
    for (const osg::ref_ptr<osg::Image>& image : find.images) {
        if (!image->data())
            continue;
        std::string name = names.relative(image->getFileName());
        if (name.empty()) {
            SideFile file;
            if (!makeFile(*image, names, file))
                return false;
            bool isThere = false;
            name = names.choose(file.name, file.contents, taken, isThere);
            taken.insert(name);
            file.name = name;
            if (!isThere)
                files.push_back(std::move(file));
        }
        image->setFileName(name);
    }
    return true;
}

/// Removes what a writer has put beside the model of its own accord, under names that may be taken where the model is going.
void keepOnly(const std::string& directory, const std::set<std::string>& names)
{
    std::error_code problem;
    std::vector<fs::path> others;
    for (fs::directory_iterator entry(directory, problem), end; !problem && entry != end;
         entry.increment(problem))
    {
        if (names.count(entry->path().filename().string()) == 0)
            others.push_back(entry->path());
    }
    for (const fs::path& other : others)
        fs::remove_all(other, problem);
}

std::string writeFiles(const SideNames& names, const std::vector<SideFile>& files)
{
    for (const SideFile& one : files) {
        CheckedFile file(names.draft(one.name));
        file.write(one.contents);
        const std::string reason = file.finish();
        if (!reason.empty())
            return one.name + ": " + reason;
    }
    return std::string();
}

void includeImages(osg::Node& scene)
{
    FindImages find;
    scene.accept(find);
    for (const osg::ref_ptr<osg::Image>& image : find.images)
        image->setWriteHint(osg::Image::STORE_INLINE);
}

std::string reasonOf(const osgDB::ReaderWriter::WriteResult& result, const std::string& format)
{
    using Result = osgDB::ReaderWriter::WriteResult;
    return result.status() == Result::NOT_IMPLEMENTED || result.status() == Result::FILE_NOT_HANDLED
               ? "models are not written as ." + format
               : notWhole;
}

std::string writeWithPlugin(osg::Node& scene, const std::string& path, const std::string& format)
{
    osgDB::ReaderWriter* writer = osgDB::Registry::instance()->getReaderWriterForExtension(format);
    if (!writer)
        return "models are not written as ." + format;
    // One of them writes images to where the process is.
    if (chdir(osgDB::getFilePath(path).c_str()) != 0)
        return std::strerror(errno);
    CheckedFile file(path);
    std::ostream stream(&file);
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
    options->setPluginStringData("fileType", format == "osgt" ? "Ascii" : "Binary");
    const auto result = writer->writeNode(scene, stream, options);
    std::string reason = file.finish();
    if (reason.empty() && !result.success())
        reason = reasonOf(result, format);
    return reason;
}

} // namespace

std::string writeFormat(osg::Node& scene, const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    const Format* format = formatNamed(extension);
    if (!format || !format->isWritten)
        return "models are not written as ." + extension;
    const SideNames names(path);
    std::vector<SideFile> files;
    Quiet quiet;
    if (format->keepsScenes)
        includeImages(scene);
    else if (!(format->lost & Textures) && !placeImages(scene, names, files))
        return "its images could not be written";
    const osg::ref_ptr<osg::Node> writable = writableScene(scene, *format);
    const std::string materials = names.chooseMaterials();
    const std::string reason = format->write
                                   ? format->write(*writable, {path, names.draft(materials), names.model()})
                                   : writeWithPlugin(*writable, path, extension);
    if (!reason.empty())
        return reason;
    keepOnly(osgDB::getFilePath(path), {names.model(), materials});
    return writeFiles(names, files);
}

} // namespace vfViewer
