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

/// Text as a value: bytes without an encoding, which may hold zero bytes too.
///
///     vfBase::VfString name("hull");
///     name += ".obj";
///     name.split('.').size();  // 2
///
/// Short texts need no allocation. Comparison and order are by byte.
class VFBASE_EXPORT VfString : public VfObject
{
public:
    /// The empty text.
    VfString() = default;

    VfString(const VfString& other) : VfObject(), m_text(other.m_text) {}
    VfString(VfString&& other) noexcept : VfObject(), m_text(std::move(other.m_text)) {}

    /// The bytes of @p text, zero bytes included.
    VfString(const std::string& text) : m_text(text) {}
    VfString(std::string&& text) noexcept : m_text(std::move(text)) {}

    /// The bytes of @p text up to its zero byte; null counts as the empty text.
    VfString(const char* text) : m_text(text ? text : "") {}

    ~VfString() override = default;

    VfString& operator=(const VfString& other)
    {
        m_text = other.m_text;
        return *this;
    }
    VfString& operator=(VfString&& other) noexcept
    {
        m_text = std::move(other.m_text);
        return *this;
    }

    /// Assigns the bytes up to the zero byte; null counts as the empty text. @p text may be a part of this
    /// very text.
    VfString& operator=(const char* text)
    {
        m_text = text ? text : "";
        return *this;
    }

    const ClassInfo* getClassInfo() const override;

    /// Comparisons, byte by byte. A null pointer on either side counts as the empty text.
    bool operator==(const VfString& other) const { return m_text == other.m_text; }
    bool operator!=(const VfString& other) const { return m_text != other.m_text; }
    bool operator<(const VfString& other) const { return m_text < other.m_text; }

    friend bool operator==(const char* text, const VfString& other)
    {
        return other.m_text == (text ? text : "");
    }
    friend bool operator!=(const char* text, const VfString& other) { return !(text == other); }

    friend bool operator<(const char* text, const VfString& other) { return VfString(text) < other; }

    /// @return a new text, this one followed by @p other; null counts as the empty text
    VfString operator+(const VfString& other) const { return VfString(m_text + other.m_text); }
    VfString operator+(const char* other) const { return VfString(m_text + (other ? other : "")); }

    /// Appends @p other, which may be this very text.
    VfString& operator+=(const VfString& other)
    {
        m_text += other.m_text;
        return *this;
    }

    /// @return a copy of the text
    operator std::string() const { return m_text; }

    /// @return the text; the reference is valid while this object lives
    const std::string& str() const { return m_text; }

    /// @return zero-terminated text, valid while this object lives and does not change
    const char* c_str() const { return m_text.c_str(); }

    /// @return true when there is no byte
    bool empty() const { return m_text.empty(); }

    /// @return length in bytes
    std::size_t size() const { return m_text.size(); }

    /// @return a new list of the pieces between separators, in their order; empty pieces are left out
    StringList split(char separator) const;

    static const ClassInfo s_classInfo;

    /// @return "vfBase::VfString"
    static const char* classId();

private:
    std::string m_text;
};

/// Writes the bytes of the text.
VFBASE_EXPORT std::ostream& operator<<(std::ostream& stream, const VfString& text);

} // namespace vfBase

namespace std {

template <>
struct hash<vfBase::VfString>
{
    size_t operator()(const vfBase::VfString& text) const noexcept { return hash<string>()(text.str()); }
};

} // namespace std
