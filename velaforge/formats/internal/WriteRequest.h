// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

/// What a process is told that writes a model.
struct VFFORMATS_EXPORT WriteRequest
{
    /// The files that it gets.
    enum File : std::size_t
    {
        SceneFile, ///< what SceneSender wrote, sealed
        ModelFile, ///< the others are empty
        MaterialsFile
    };

    std::string directory; ///< where the model and the files beside it will lie
    std::string model;     ///< the name that it will have
    std::string materials; ///< the name that its materials will have
    std::uint64_t sceneSize = 0;

    /// Returns it as the argument of a task.
    std::string argument() const;
    static WriteRequest of(std::string_view argument);
};

/// A file that belongs to a model, beside it.
struct SideFile
{
    std::string name;
    std::string contents;
};

/// Returns files as the result of a task.
VFFORMATS_EXPORT std::string packSideFiles(const std::vector<SideFile>& files);

/// Takes them from bytes that another process sent.
/// @param files  set to what is there
/// @return false when the bytes are no such files, or one of them is none that a model has beside it: those have the names of
///         images, without a path
VFFORMATS_EXPORT bool unpackSideFiles(std::string_view bytes, std::vector<SideFile>& files);

} // namespace vfFormats
