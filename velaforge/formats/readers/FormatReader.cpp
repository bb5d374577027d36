// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/FormatReader.h>

#include <velaforge/base/Printable.h>
#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/readers/AssimpLibrary.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/UpAxis.h>
#include <velaforge/formats/readers/WhyNotShown.h>

#include <osgDB/Registry>

namespace vfFormats {

namespace {

constexpr const char* damaged = "the file is damaged, or not of the format that its name says";

bool hasPlugin(const std::string& extension)
{
    return osgDB::Registry::instance()->getReaderWriterForExtension(extension) != nullptr;
}

ReadOutcome readWithOpenSceneGraph(const std::string& path)
{
    ReadOutcome outcome;
    // Making strips of triangles takes time far beyond linear, for nothing on today's hardware.
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("noTriStripPolygons");
    osgDB::ReaderWriter::ReadResult result = osgDB::Registry::instance()->readNode(path, options);
    outcome.scene = result.getNode();
    if (!outcome.scene)
        outcome.reason = reasonOf(result.message());
    return outcome;
}

/// Reads a file of a format that OpenSceneGraph reads as well, but with z up: Assimp leaves y up.
/// @return no scene where there would be nothing in it
ReadOutcome readUprightWithAssimp(const Format& format, const std::string& path)
{
    ReadOutcome outcome = readWithAssimpLibrary(path);
    if (!outcome.scene)
        return outcome;
    outcome.reason = whyNotShown(*outcome.scene);
    if (!outcome.reason.empty())
        outcome.scene = nullptr;
    else if (!format.hasYUp)
        outcome.scene = withZUp(*outcome.scene);
    return outcome;
}

void load(const Format& format)
{
    if (format.reader != ReadBy::Own && format.reader != ReadBy::Assimp)
        hasPlugin(format.extensions.front());
    if (format.reader != ReadBy::Own && format.reader != ReadBy::OpenSceneGraph)
        loadAssimp();
    if (format.keepsScenes)
        FileGate::loadSceneClasses();
}

/// For formats of which Assimp reads more files than OpenSceneGraph does.
ReadOutcome readWithAssimpFirst(const Format& format, const std::string& path)
{
    ReadOutcome outcome = readUprightWithAssimp(format, path);
    if (outcome.scene)
        return outcome;
    FileGate::takeFailures();
    ReadOutcome other = readWithOpenSceneGraph(path);
    return other.scene ? other : outcome;
}

/// For formats of which Assimp knows what OpenSceneGraph's plug-in does not.
ReadOutcome readWithOpenSceneGraphFirst(const Format& format, const std::string& path)
{
    ReadOutcome outcome = readWithOpenSceneGraph(path);
    if (!hasAssimp() || (outcome.scene && whyNotShown(*outcome.scene).empty()))
        return outcome;
    FileGate::takeFailures();
    ReadOutcome other = readUprightWithAssimp(format, path);
    return other.scene ? other : outcome;
}

} // namespace

ReadOutcome readAs(const Format& format, const std::string& path)
{
    switch (format.reader) {
    case ReadBy::Own:
        return codeOf(format).read(path);
    case ReadBy::Assimp:
        return readWithAssimpLibrary(path);
    case ReadBy::AssimpOrOpenSceneGraph:
        return hasAssimp() ? readWithAssimpFirst(format, path) : readWithOpenSceneGraph(path);
    case ReadBy::OpenSceneGraphOrAssimp:
        return readWithOpenSceneGraphFirst(format, path);
    default:
        return readWithOpenSceneGraph(path);
    }
}

void loadReaders(const std::string& path, const std::vector<std::string>& others)
{
    const Format* format = formatOf(path);
    if (!format)
        return;
    load(*format);
    bool hasImages = format->holdsImages;
    for (const std::string& file : others) {
        const Format* other = formatOf(file);
        hasImages = hasImages || (other && other->isImage);
        if (other && !other->isImage && format->keepsScenes)
            hasPlugin(other->extensions.front()); // which reads what a scene names
    }
    if (!hasImages)
        return;
    for (const auto& other : formats()) {
        if (other->isImage)
            load(*other); // each may be under the name of another one
    }
}

bool hasReaderOf(const Format& format)
{
    switch (format.reader) {
    case ReadBy::Own:
        return true;
    case ReadBy::Assimp:
        return hasAssimp();
    case ReadBy::OpenSceneGraph:
        return hasPlugin(format.extensions.front());
    default:
        return hasAssimp() || hasPlugin(format.extensions.front());
    }
}

std::string reasonOf(const std::string& message)
{
    const std::string line = vfBase::printable(message);
    return line.empty() ? damaged : line;
}

} // namespace vfFormats
