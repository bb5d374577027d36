// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfObject.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <utility>

namespace vfBase {

class StringList;

/// A text: bytes without an encoding, zero bytes included.
///
///     vfBase::VfString name("hull");
///     name += ".obj";
///     name.split('.').size();  // 2
///
/// Short texts do not allocate. Comparison is byte by byte.
class VFBASE_EXPORT VfString : public VfObject
{
public:
    /// Makes the empty text.
    VfString() = default;

    /// Copies the bytes of @p other.
    VfString(const VfString& other) : VfObject(), m_text(other.m_text) {}

    /// Takes the bytes of @p other.
    VfString(VfString&& other) noexcept : VfObject(), m_text(std::move(other.m_text)) {}

    /// Copies the bytes of @p text, zero bytes too.
    VfString(const std::string& text) : m_text(text) {}

    /// Takes the bytes of @p text, zero bytes too.
    VfString(std::string&& text) noexcept : m_text(std::move(text)) {}

    /// Copies the zero-terminated text @p text; null counts as the empty text.
    VfString(const char* text) : m_text(text ? text : "") {}

    ~VfString() override = default;

    /// Copies the bytes of @p other.
    VfString& operator=(const VfString& other)
    {
        m_text = other.m_text;
        return *this;
    }

    /// Takes the bytes of @p other.
    VfString& operator=(VfString&& other) noexcept
    {
        m_text = std::move(other.m_text);
        return *this;
    }

    /// Copies the zero-terminated text @p text, which may be part of this text; null counts as the empty
    /// text.
    VfString& operator=(const char* text)
    {
        m_text = text ? text : "";
        return *this;
    }

    const ClassInfo* getClassInfo() const override;

    /// Returns whether the bytes are equal.
    bool operator==(const VfString& other) const { return m_text == other.m_text; }

    /// Returns whether the bytes differ.
    bool operator!=(const VfString& other) const { return m_text != other.m_text; }

    /// Compares byte by byte.
    bool operator<(const VfString& other) const { return m_text < other.m_text; }

    /// Returns whether the bytes are equal; null counts as the empty text.
    friend bool operator==(const char* text, const VfString& other)
    {
        return other.m_text == (text ? text : "");
    }

    /// Returns whether the bytes differ; null counts as the empty text.
    friend bool operator!=(const char* text, const VfString& other) { return !(text == other); }

    /// Compares byte by byte; null counts as the empty text.
    friend bool operator<(const char* text, const VfString& other) { return VfString(text) < other; }

    /// Returns a text of the bytes of both.
    VfString operator+(const VfString& other) const { return VfString(m_text + other.m_text); }

    /// Returns a text of the bytes of both; null counts as the empty text.
    VfString operator+(const char* other) const { return VfString(m_text + (other ? other : "")); }

    /// Appends the bytes of @p other.
    VfString& operator+=(const VfString& other)
    {
        m_text += other.m_text;
        return *this;
    }

    /// Returns a copy as std::string.
    operator std::string() const { return m_text; }

    /// Returns the text. The reference is valid until this object changes or is destroyed.
    const std::string& str() const { return m_text; }

    /// Returns the zero-terminated text. The pointer is valid until this object changes or is destroyed.
    const char* c_str() const { return m_text.c_str(); }

    /// Returns whether the text is empty.
    bool empty() const { return m_text.empty(); }

    /// Returns the length in bytes.
    std::size_t size() const { return m_text.size(); }

    /// Returns a new list of the pieces between separators, in order, without empty pieces.
    StringList split(char separator) const;

    /// The class record, with a creator.
    static const ClassInfo s_classInfo;

    /// Returns "vfBase::VfString".
    static const char* classId();

private:
    std::string m_text;
};

/// Writes the bytes of the text.
VFBASE_EXPORT std::ostream& operator<<(std::ostream& stream, const VfString& text);

} // namespace vfBase

namespace std {

/// Hashes the bytes.
template <>
struct hash<vfBase::VfString>
{
    /// Returns the hash of the bytes of @p text.
    size_t operator()(const vfBase::VfString& text) const noexcept { return hash<string>()(text.str()); }
};

} // namespace std
