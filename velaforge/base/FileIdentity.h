// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <string>

namespace vfBase {

/// The file that a path named at one time, and its state: device, inode, size and time of the last change. Tells whether the
/// file was changed or replaced since.
class VFBASE_EXPORT FileIdentity
{
public:
    /// The identity of no file.
    FileIdentity() = default;

    /// Returns the identity that a file has now; that of no file when there is none.
    static FileIdentity of(const std::string& path);

    /// Returns whether this is the identity of a file.
    bool isOfFile() const { return !m_text.empty(); }

    /// Returns the identity as text without zero bytes and line ends; empty for that of no file.
    const std::string& text() const { return m_text; }

    /// Returns the identity whose text() was kept, in this run of a program or an earlier one.
    static FileIdentity fromText(const std::string& text);

    /// Returns whether it is the same file in the same state.
    bool operator==(const FileIdentity& other) const { return m_text == other.m_text; }
    /// Returns whether it is another file, or has changed.
    bool operator!=(const FileIdentity& other) const { return !(*this == other); }

private:
    std::string m_text;
};

} // namespace vfBase
