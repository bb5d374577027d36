// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

/// What a glTF file says beyond what Assimp takes from it, and the file as Assimp can read it.
///
/// Assimp copies the bytes of small integers as if they were floats, loses "%20" in addresses, and calls nothing by
/// name that it leaves out. Everything else is left to it.
class GltfFile
{
public:
    /// @param directory  that of the file
    /// @return null when these are not the contents of a glTF file of version 2, which Assimp may read all the same
    static std::unique_ptr<GltfFile> parse(std::string_view contents, const std::string& directory);

    /// What the file has and the picture lacks.
    const std::vector<std::string>& getMissing() const { return m_missing; }

    /// A file that Assimp is to read in place of one with that name beside the model.
    struct Replacement
    {
        std::string name;
        std::string contents;
    };

    /// The first is the model itself; empty where Assimp can read the file as it is.
    const std::vector<Replacement>& getReplacements() const { return m_replacements; }

private:
    class Parser;

    std::vector<std::string> m_missing;
    std::vector<Replacement> m_replacements;
};

} // namespace vfFormats
