// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/FormatCode.h>
#include <velaforge/formats/internal/WriteRequest.h>

#include <string>
#include <vector>

namespace vfFormats {

/// Loads what writes a model of that name, before the process is locked down.
void loadWriters(const std::string& model);

/// Writes a scene in the format of the model's name. To be called in a process that does nothing else: writers may crash, and
/// print what they like. Changes the scene.
/// @param directory  where the model will lie
/// @param target     open files
/// @param files      gets what belongs to the model beside it, as the images of an OBJ file, under names that do not take the
///                   place of files of others in the directory
/// @return why it could not be written, in one line; empty when it was
std::string writeFormat(osg::Node& scene, const std::string& directory, const WriteTarget& target,
                        std::vector<SideFile>& files);

} // namespace vfFormats
