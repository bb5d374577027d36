// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/FormatWriter.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/CheckedFile.h>
#include <velaforge/formats/internal/SceneImages.h>
#include <velaforge/formats/internal/SideNames.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/Quiet.h>
#include <velaforge/formats/writers/WritableScene.h>

#include <osg/Image>
#include <osg/Node>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace vfFormats {

namespace {

namespace fs = std::filesystem;

constexpr const char* notWhole = "the file could not be written whole";

/// Makes the file of an image: that from which it was read, or PNG. @return false when it cannot be written
bool makeFile(const osg::Image& image, const SideNames& names, SideFile& file)
{
    file.name = osgDB::getSimpleFileName(image.getFileName());
    std::error_code problem;
    if (isImageFile(file.name) && fs::is_regular_file(image.getFileName(), problem)) {
        std::ifstream original(image.getFileName(), std::ios::binary);
        file.contents.assign(std::istreambuf_iterator<char>(original), std::istreambuf_iterator<char>());
        if (original.is_open() && !original.bad())
            return true;
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

std::string writeWithPlugin(osg::Node& scene, int target, const std::string& format)
{
    osgDB::ReaderWriter* writer = osgDB::Registry::instance()->getReaderWriterForExtension(format);
    if (!writer)
        return "models are not written as ." + format;
    CheckedFile file(target);
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

void loadWriters(const std::string& model)
{
    osgDB::Registry::instance()->getReaderWriterForExtension("png");
    const Format* format = formatOf(model);
    if (!format || codeOf(*format).write)
        return;
    osgDB::Registry::instance()->getReaderWriterForExtension(format->extensions.front());
    if (format->keepsScenes)
        FileGate::loadSceneClasses();
}

std::string writeFormat(osg::Node& scene, const std::string& directory, const WriteTarget& target,
                        std::vector<SideFile>& files)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(target.modelName);
    const Format* format = formatNamed(extension);
    if (!format || !format->isWritten)
        return "models are not written as ." + extension;
    Quiet quiet;
    if (format->keepsScenes)
        includeImages(scene);
    else if (!(format->lost & Textures) && !placeImages(scene, SideNames(directory, target.modelName), files))
        return "its images could not be written";
    const osg::ref_ptr<osg::Node> writable = writableScene(scene, *format);
    const FormatCode code = codeOf(*format);
    return code.write ? code.write(*writable, target) : writeWithPlugin(*writable, target.model, extension);
}

} // namespace vfFormats
