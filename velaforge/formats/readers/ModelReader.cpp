// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ModelReader.h>

#include <velaforge/formats/Format.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/formats/internal/ValidateScene.h>
#include <velaforge/formats/readers/CutPolygons.h>
#include <velaforge/formats/readers/FileCheck.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/FormatReader.h>
#include <velaforge/formats/readers/PassiveScene.h>
#include <velaforge/formats/readers/Quiet.h>
#include <velaforge/formats/readers/ReadProgress.h>
#include <velaforge/formats/readers/SideFiles.h>
#include <velaforge/formats/readers/TrialFrame.h>
#include <velaforge/formats/readers/UpAxis.h>
#include <velaforge/formats/readers/WhyNotShown.h>
#include <velaforge/scene/Lighting.h>
#include <velaforge/scene/Lights.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/Texture2D>
#include <osgDB/ReadFile>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vfFormats {

namespace {

/// @return why a model is not even given to its reader; empty when it is
std::string whyNotRead(const Format* format, const std::string& path)
{
    if (!format || format->isImage)
        return "not a format that can be read";
    std::string reason = FileGate::readError(path);
    if (!reason.empty())
        return reason;
    if (isCutOff(path))
        return "the file is cut off";
    return hasReaderOf(*format) ? "" : noReader;
}

/// @return the files that were read, without the one that was named
std::vector<std::string> otherFiles(const std::string& path)
{
    std::vector<std::string> files = FileGate::takeFiles();
    std::error_code problem;
    const std::string named = std::filesystem::absolute(path, problem).lexically_normal().string();
    files.erase(std::remove(files.begin(), files.end(), named), files.end());
    return files;
}

ReadOutcome readByRule(const std::string& path)
{
    ReadOutcome outcome;
    const Format* format = formatOf(path);
    outcome.reason = whyNotRead(format, path);
    if (!outcome.reason.empty())
        return outcome;

    Quiet quiet;
    FileGate::takeFailures();
    FileGate::takeFiles();
    outcome = readAs(*format, path);
    if (!outcome.scene)
        return outcome;
    ReadProgress::tell(ReadProgress::Preparing);
    if (!makePassive(outcome.scene, outcome.warnings)) {
        outcome.scene = nullptr;
        outcome.reason = "its parts are nested too deeply";
        return outcome;
    }
    const std::size_t invalid = validateScene(*outcome.scene);
    if (invalid > 0)
        outcome.warnings.push_back(std::to_string(invalid) + (invalid == 1 ? " part is" : " parts are") +
                                   " shown without primitives of points that are not there");
    cutPolygons(*outcome.scene);
    outcome.reason = whyNotShown(*outcome.scene);
    if (!outcome.reason.empty()) {
        outcome.scene = nullptr;
        return outcome;
    }
    if (!format->keepsScenes)
        vfScene::brightenShade(*outcome.scene);
    const std::size_t surplus = vfScene::removeSurplusLights(*outcome.scene);
    if (surplus > 0)
        outcome.warnings.push_back(std::to_string(surplus) + (surplus == 1 ? " lamp is" : " lamps are") +
                                   " left out: the viewer has room for " +
                                   std::to_string(vfScene::LightNumbers::ofFile));
    if (!format->hasNormals)
        vfScene::prepareLighting(*outcome.scene);
    if (format->hasYUp)
        outcome.scene = withZUp(*outcome.scene);
    runTrialFrame(*outcome.scene);
    outcome.files = otherFiles(path);
    for (std::string& failure : FileGate::takeFailures())
        outcome.warnings.push_back(std::move(failure));
    for (std::string& line : quiet.stop())
        outcome.details.push_back(std::move(line));
    return outcome;
}

} // namespace

ReadOutcome parseModel(const std::string& path)
{
    return parseModel(path, findSideFiles(path));
}

ReadOutcome parseModel(const std::string& path, const std::vector<std::string>& sideFiles)
{
    const SideFiles rule(path, sideFiles);
    SideFiles::takeMissed();
    ReadOutcome outcome = readByRule(path);
    outcome.missed = SideFiles::takeMissed();
    return outcome;
}

ReadOutcome readImageOnQuad(const std::string& path)
{
    ReadOutcome outcome;
    outcome.reason = isImageFile(path) ? FileGate::readError(path) : "not an image format that can be read";
    if (outcome.reason.empty() && !hasReaderOf(*formatOf(path)))
        outcome.reason = noReader;
    if (!outcome.reason.empty())
        return outcome;

    Quiet quiet;
    FileGate::takeFailures();
    osgDB::ReaderWriter::ReadResult result = osgDB::Registry::instance()->readImage(path, nullptr);
    const osg::ref_ptr<osg::Image> image = result.getImage();
    if (!image || image->s() < 1 || image->t() < 1) {
        outcome.reason = image ? "the image is empty" : reasonOf(result.message());
        return outcome;
    }
    const float width = static_cast<float>(image->s()) / static_cast<float>(image->t());
    const bool isTopFirst = image->getOrigin() == osg::Image::TOP_LEFT;
    const osg::ref_ptr<osg::Geometry> quad = osg::createTexturedQuadGeometry(
        {-0.5f * width, 0, -0.5f}, {width, 0, 0}, {0, 0, 1}, 0, isTopFirst ? 1 : 0, 1, isTopFirst ? 0 : 1);
    const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(quad);
    osg::StateSet* state = geode->getOrCreateStateSet();
    state->setTextureAttributeAndModes(0, texture);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF); // an image has its own colours
    if (image->isImageTranslucent()) {
        state->setMode(GL_BLEND, osg::StateAttribute::ON);
        state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
    outcome.scene = geode;
    outcome.warnings = FileGate::takeFailures();
    outcome.details = quiet.stop();
    return outcome;
}

} // namespace vfFormats
