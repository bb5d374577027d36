// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsValue.h>

#include <memory>
#include <optional>
#include <string>

namespace vfBase {

/// The contents of a settings file: a JSON object with a format number and an entry for each settings object.
///
/// Keeps everything else that a file holds and writes it again. Copies are deep.
class SettingsDocument
{
public:
    /// The format number that is written.
    static constexpr int currentFormat = 1;

    /// Maximum depth of nesting that is read.
    static constexpr int depthLimit = 64;

    /// Makes a document of the current format, without entries.
    SettingsDocument();

    /// Copies the whole document.
    SettingsDocument(const SettingsDocument& other);

    /// Takes the document from @p other, which is not usable afterwards except for assignment and
    /// destruction.
    SettingsDocument(SettingsDocument&& other) noexcept;

    /// Takes over the document of @p other.
    SettingsDocument& operator=(SettingsDocument other) noexcept;
    ~SettingsDocument();

    /// Returns whether both documents have the same entries and values.
    bool operator==(const SettingsDocument& other) const;

    /// Parses the text of a file.
    /// @return nothing, with @p reason set, if it is not a settings file
    static std::optional<SettingsDocument> parse(const std::string& text, std::string& reason);

    /// Returns the text of a file, indented, with a line end at the end.
    std::string text() const;

    /// Returns whether this program can read and write the format: the number is missing or from 1 to
    /// currentFormat. Any other number counts as that of a newer version.
    bool isOfKnownFormat() const;

    /// Returns whether the file has anything under the name @p entry.
    bool has(const std::string& entry) const;

    /// Returns whether there is a JSON object under the name @p entry, as each settings object has one.
    bool isEntry(const std::string& entry) const;

    /// Returns the property @p property of the entry @p entry; nothing if the entry does not have it.
    std::optional<SettingsValue> value(const std::string& entry, const std::string& property) const;

    /// Sets the property @p property of the entry @p entry, and makes the entry if needed.
    void setValue(const std::string& entry, const std::string& property, const SettingsValue& value);

    /// Merges the changes of two programs. Objects merge by key, lists that are ordered sets by element,
    /// everything else as one value; docs/settings.md has the rules.
    /// @param base    the common state before the changes
    /// @param mine    the document of this program
    /// @param theirs  the document of the other program
    /// @return @p theirs with all changes from @p base to @p mine
    static SettingsDocument merged(const SettingsDocument& base, const SettingsDocument& mine,
                                   const SettingsDocument& theirs);

private:
    struct Json;

    std::unique_ptr<Json> m_json;
};

} // namespace vfBase
