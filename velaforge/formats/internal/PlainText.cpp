// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/PlainText.h>

#include <algorithm>
#include <cstdint>

namespace vfFormats {

namespace {

void append(std::string& text, std::uint32_t letter)
{
    const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (letter < 0x80) {
        add(letter);
    } else if (letter < 0x800) {
        add(0xc0 | letter >> 6);
        add(0x80 | (letter & 63));
    } else if (letter < 0x10000) {
        add(0xe0 | letter >> 12);
        add(0x80 | (letter >> 6 & 63));
        add(0x80 | (letter & 63));
    } else {
        add(0xf0 | letter >> 18);
        add(0x80 | (letter >> 12 & 63));
        add(0x80 | (letter >> 6 & 63));
        add(0x80 | (letter & 63));
    }
}

std::string fromUtf16(std::string_view contents, bool isBigEndian)
{
    std::string text;
    text.reserve(contents.size() / 2);
    const auto unit = [&](std::size_t at) -> std::uint32_t {
        const auto first = static_cast<unsigned char>(contents[at]);
        const auto second = static_cast<unsigned char>(contents[at + 1]);
        return isBigEndian ? std::uint32_t(first) << 8 | second : std::uint32_t(second) << 8 | first;
    };
    for (std::size_t at = 0; at + 1 < contents.size(); at += 2) {
        std::uint32_t letter = unit(at);
        const bool isHigh = letter >= 0xd800 && letter < 0xdc00 && at + 3 < contents.size();
        const std::uint32_t low = isHigh ? unit(at + 2) : 0;
        if (low >= 0xdc00 && low < 0xe000) {
            letter = 0x10000 + ((letter - 0xd800) << 10) + (low - 0xdc00);
            at += 2;
        }
        append(text, letter);
    }
    return text;
}

} // namespace

PlainText::PlainText(std::string_view contents) : m_text(contents)
{
    const std::string_view mark = contents.substr(0, 2);
    if (contents.substr(0, 3) == "\xef\xbb\xbf") {
        m_text.remove_prefix(3);
    } else if (mark == "\xff\xfe" || mark == "\xfe\xff") {
        m_changed = fromUtf16(contents.substr(2), mark[0] == '\xfe');
        m_text = m_changed;
    }
    // Some programs end lines in CR alone.
    if (m_text.find('\n') == std::string_view::npos && m_text.find('\r') != std::string_view::npos) {
        m_changed = std::string(m_text);
        std::replace(m_changed.begin(), m_changed.end(), '\r', '\n');
        m_text = m_changed;
    }
}

std::string lineOf(const std::string& name)
{
    std::string line = name;
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '_');
    const std::size_t first = line.find_first_not_of(' ');
    const std::size_t last = line.find_last_not_of(' ');
    return first == std::string::npos ? std::string() : line.substr(first, last - first + 1);
}

} // namespace vfFormats
