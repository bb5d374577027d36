// SPDX-License-Identifier: MIT
// OpenSceneGraph's own formats.
#include <velaforge/formats/internal/CutOff.h>
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

namespace {

Format sceneFormat(const char* extension, const char* name)
{
    Format format;
    format.extensions = {extension};
    format.name = name;
    format.mimeType = "model/x-openscenegraph";
    format.plugins = {"osg"};
    format.keepsScenes = true;
    format.holdsImages = true;
    format.isWritten = true;
    format.lost = 0;
    return format;
}

} // namespace

std::vector<Format> sceneFormats()
{
    Format text = sceneFormat("osgt", "OpenSceneGraph, text");
    text.isCutOff = isCutOffInBraces;
    Format oldText = sceneFormat("osg", "OpenSceneGraph, text of older versions");
    oldText.isCutOff = isCutOffInBraces;
    oldText.isWritten = false;
    oldText.lost = allFeatures;
    return {sceneFormat("osgb", "OpenSceneGraph, numbers"), text, oldText,
            sceneFormat("ive", "OpenSceneGraph, of older versions")};
}

} // namespace vfFormats
