// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

namespace vfFormats {

/// Walks through a text of lines and words, in which a backslash at the end of a line continues it.
class VFFORMATS_EXPORT TextScanner
{
public:
    explicit TextScanner(std::string_view text)
        : m_at(text.data()), m_begin(text.data()), m_end(text.data() + text.size())
    {}

    bool isAtEnd() const { return m_at == m_end; }

    /// @return how many bytes have been passed
    std::size_t passed() const { return static_cast<std::size_t>(m_at - m_begin); }

    /// Goes to the beginning of the next line.
    void nextLine()
    {
        while (m_at != m_end && *m_at != '\n')
            m_at += continues() ? skipContinuation() : 1;
        if (m_at != m_end)
            ++m_at;
    }

    /// @return the next word of the line, empty when there is none
    std::string_view word()
    {
        skipSpace();
        const char* begin = m_at;
        finishWord();
        return {begin, static_cast<std::size_t>(m_at - begin)};
    }

    /// Passes over what is left of the word.
    void finishWord()
    {
        while (m_at != m_end && !isSpace(*m_at) && *m_at != '\n' && !continues())
            ++m_at;
    }

    /// @return what is left of the line, without the spaces around it
    std::string_view rest()
    {
        skipSpace();
        const char* begin = m_at;
        while (m_at != m_end && *m_at != '\n')
            ++m_at;
        const char* end = m_at;
        while (end != begin && isSpace(end[-1]))
            --end;
        return {begin, static_cast<std::size_t>(end - begin)};
    }

    /// Takes a number, if the next word begins with one. @return whether it does; a number that no float can hold is 0
    bool number(float& value)
    {
        skipSpace();
        const char* begin = m_at != m_end && *m_at == '+' ? m_at + 1 : m_at;
        value = 0;
        const auto [end, error] = std::from_chars(begin, m_end, value);
        if (error == std::errc::invalid_argument)
            return false;
        m_at = end;
        return true;
    }

    /// Takes an integer that begins right here. @return whether one does
    bool integer(int& value)
    {
        const char* at = m_at;
        const bool isNegative = at != m_end && *at == '-';
        if (isNegative)
            ++at;
        const char* digits = at;
        unsigned int magnitude = 0;
        while (at != m_end && *at >= '0' && *at <= '9' && magnitude < 200000000)
            magnitude = magnitude * 10 + static_cast<unsigned int>(*at++ - '0');
        if (at == digits)
            return false;
        value = isNegative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
        m_at = at;
        return true;
    }

    /// Takes one character, if it is the next. @return whether it is
    bool take(char character)
    {
        if (m_at == m_end || *m_at != character)
            return false;
        ++m_at;
        return true;
    }

    /// @return whether that character is the next
    bool isNext(char character) const { return m_at != m_end && *m_at == character; }

    /// @return whether the line has another word, which is the next then
    bool hasWord()
    {
        skipSpace();
        return m_at != m_end && *m_at != '\n';
    }

private:
    static bool isSpace(char character) { return character == ' ' || character == '\t' || character == '\r'; }

    bool continues() const
    {
        return *m_at == '\\' && m_end - m_at > 1 &&
               (m_at[1] == '\n' || (m_at[1] == '\r' && m_end - m_at > 2 && m_at[2] == '\n'));
    }

    std::ptrdiff_t skipContinuation() const { return m_at[1] == '\n' ? 2 : 3; }

    void skipSpace()
    {
        while (m_at != m_end) {
            if (isSpace(*m_at))
                ++m_at;
            else if (*m_at == '\\' && continues())
                m_at += skipContinuation();
            else
                return;
        }
    }

    const char* m_at;
    const char* m_begin;
    const char* m_end;
};

} // namespace vfFormats
