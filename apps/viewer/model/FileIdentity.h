// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfViewer {

/// Which file a path named at a moment, and in which state: device, inode, size and time of the last change. Tells whether
/// the file was changed or replaced since.
class FileIdentity
{
public:
    /// Of no file.
    FileIdentity() = default;

    /// @return the identity of the file now; of no file when there is none
    static FileIdentity of(const std::string& path);

    bool isOfFile() const { return !m_text.empty(); }

    /// @return a text without zero bytes and line ends, empty for no file
    const std::string& text() const { return m_text; }

    /// @param text  what text() returned, in this or an earlier run; another text equals no identity
    static FileIdentity fromText(const std::string& text);

    bool operator==(const FileIdentity& other) const { return m_text == other.m_text; }
    bool operator!=(const FileIdentity& other) const { return !(*this == other); }

private:
    std::string m_text;
};

} // namespace vfViewer
