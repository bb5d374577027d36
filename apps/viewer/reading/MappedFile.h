// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vfViewer {

/// A file as it lies in memory, to be read.
class MappedFile
{
public:
    /// An empty text when the file cannot be read.
    explicit MappedFile(const std::string& path);
    ~MappedFile();

    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view text() const { return m_text; }

private:
    std::string_view m_text;
};

} // namespace vfViewer
