// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsValue.h>

#include <memory>
#include <optional>
#include <string>

namespace vfBase {

/// The contents of a settings file: a JSON object with the number of its format and an entry for each
/// settings object.
///
/// Everything else in a file is kept and written again. A value: copies are deep.
class SettingsDocument
{
public:
    /// Number of the format that is written.
    static constexpr int currentFormat = 1;

    /// Deepest nesting that is read.
    static constexpr int depthLimit = 64;

    SettingsDocument();
    SettingsDocument(const SettingsDocument& other);
    SettingsDocument(SettingsDocument&& other) noexcept;
    SettingsDocument& operator=(SettingsDocument other) noexcept;
    ~SettingsDocument();

    bool operator==(const SettingsDocument& other) const;

    /// Reads the text of a file.
    /// @param reason  gets the reason of a failure in words
    /// @return nothing for a text that is not a settings file
    static std::optional<SettingsDocument> parse(const std::string& text, std::string& reason);

    /// @return the text of a file, indented, with a line end behind it
    std::string text() const;

    /// @return whether this program can read and write the format: its number is missing, or one from 1 to
    ///         currentFormat. Any other number, however large, is that of a newer version
    bool isOfKnownFormat() const;

    /// @return whether there is a value of that name
    bool has(const std::string& entry) const;

    /// @return whether that value is a map, as the entry of a settings object is
    bool isEntry(const std::string& entry) const;

    /// @return nothing when the entry has no such property
    std::optional<SettingsValue> value(const std::string& entry, const std::string& property) const;

    /// Sets a property, and adds the entry where it is missing or not a map.
    void setValue(const std::string& entry, const std::string& property, const SettingsValue& value);

    /// Merges the changes of two programs. Objects merge by key, lists that are ordered sets by element, all
    /// else as one value; docs/settings.md has the rules.
    /// @return @p theirs with everything that @p mine has changed against @p base
    static SettingsDocument merged(const SettingsDocument& base, const SettingsDocument& mine,
                                   const SettingsDocument& theirs);

private:
    struct Json;

    std::unique_ptr<Json> m_json;
};

} // namespace vfBase
