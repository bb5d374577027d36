// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>
#include <vector>

namespace vfFormats {

/// Returns the path without links; empty when there is no such file.
VFFORMATS_EXPORT std::string realPath(const std::string& path);

/// The folders in which files of a model may lie.
struct VFFORMATS_EXPORT ModelPlaces
{
    /// @param path  of the model
    explicit ModelPlaces(const std::string& path);

    /// Returns whether a file may be read with the model, by its real path.
    bool admit(const std::string& file) const;

    std::string model;                ///< its real path; empty when it is not there
    std::vector<std::string> folders; ///< of the model, real paths
    std::vector<std::string> above;   ///< those whose other folders are admitted, too
};

/// Lists the files that a model may name, by the rule of SideFiles: the program does, since the process that reads the model
/// can open no folder.
///
/// Folders are looked through that are near: four levels below the model, one below the folders beside it, two hundred folders
/// and twenty thousand entries in all. Files count whose extension is that of a listed format, or one that files of the model's
/// format have beside them. What a link leads to is listed as well as the link.
/// @param model  its absolute path
VFFORMATS_EXPORT std::vector<std::string> findSideFiles(const std::string& model);

/// Returns those of some files that a model may name, however far below those folders they are.
/// @param model  its absolute path
/// @param files  real paths
VFFORMATS_EXPORT std::vector<std::string> admittedOf(const std::string& model,
                                                     const std::vector<std::string>& files);

} // namespace vfFormats
