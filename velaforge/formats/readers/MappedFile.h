// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vfFormats {

/// A file as it lies in memory, to be read.
class MappedFile
{
public:
    enum class Wanted
    {
        Whole, ///< all of it, one after another: better at once than page by page
        Places ///< some places
    };

    /// An empty text when the file cannot be read.
    explicit MappedFile(const std::string& path, Wanted wanted = Wanted::Whole);
    ~MappedFile();

    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view text() const { return m_text; }

private:
    std::string_view m_text;
};

} // namespace vfFormats
