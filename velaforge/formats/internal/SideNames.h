// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <set>
#include <string>

namespace vfFormats {

/// Names files that are written beside a model so that they take the place of no file of others, and so that moving the model
/// into its place is the one moment at which the former model with its files becomes the new one with its own.
///
/// The model is written in a directory of its own in the directory of the model, and moved there at the end. Until then the
/// former model refers to its own files: a new file whose contents differ gets a name that is free.
class VFFORMATS_EXPORT SideNames
{
public:
    /// @param directory  that of the model
    /// @param model      its file name
    SideNames(std::string directory, const std::string& model);

    /// Returns the file name of the model.
    const std::string& model() const { return m_model; }

    /// Returns that name without its extension.
    const std::string& stem() const { return m_stem; }

    /// Chooses a name for a file of these contents: the wanted one, or with a number.
    /// @param taken    names that were chosen before
    /// @param isThere  set to whether a file of that name with the same contents is there already
    std::string choose(const std::string& wanted, const std::string& contents,
                       const std::set<std::string>& taken, bool& isThere) const;

    /// Chooses a name for the materials of the model: "boat.mtl", unless that is a file of others or the former model refers
    /// to it; then "boat-2.mtl".
    std::string chooseMaterials() const;

    /// Returns the path of a file as it is found from the directory of the model, empty when it is not in it or below it.
    std::string relative(const std::string& path) const;

private:
    std::string m_directory;
    std::string m_model;
    std::string m_stem;
};

/// Returns the first line of the materials that this library writes for the model file of that name.
VFFORMATS_EXPORT std::string materialsOwner(const std::string& modelName);

/// Returns whether a file is one of the materials that this program wrote for the model of that name.
VFFORMATS_EXPORT bool isMaterialsOf(const std::string& path, const std::string& modelName);

/// Returns whether an OBJ file refers to materials of that name, as far as its beginning tells.
VFFORMATS_EXPORT bool refersTo(const std::string& model, const std::string& materials);

} // namespace vfFormats
