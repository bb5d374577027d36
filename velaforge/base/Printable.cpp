// SPDX-License-Identifier: MIT
#include <velaforge/base/Printable.h>

#include <velaforge/base/Utf8.h>

#include <cstddef>
#include <string>

namespace vfBase {

namespace {

/// @return length of the UTF-8 sequence at @p pos, 0 when there is no well-formed one
bool isControl(const std::string& text, std::size_t pos, std::size_t length)
{
    const auto first = static_cast<unsigned char>(text[pos]);
    if (length == 1)
        return first < 0x20 || first == 0x7F;
    return length == 2 && first == 0xC2 && static_cast<unsigned char>(text[pos + 1]) < 0xA0;
}

void appendEscaped(std::string& out, unsigned char byte)
{
    static const char digits[] = "0123456789ABCDEF";
    switch (byte) {
    case '\n':
        out += "\\n";
        return;
    case '\t':
        out += "\\t";
        return;
    case '\r':
        out += "\\r";
        return;
    default:
        out += "\\x";
        out += digits[byte >> 4];
        out += digits[byte & 0xF];
    }
}

} // namespace

std::size_t utf8SequenceLength(const std::string& text, std::size_t pos)
{
    const auto byte = [&](std::size_t i) -> unsigned {
        return pos + i < text.size() ? static_cast<unsigned char>(text[pos + i]) : 0u;
    };
    const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0u) == 0x80u; };
    const unsigned first = byte(0);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool overlong = first == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = first == 0xED && byte(1) > 0x9F;
        return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool overlong = first == 0xF0 && byte(1) < 0x90;
        const bool beyond = first == 0xF4 && byte(1) > 0x8F;
        return follows(1) && follows(2) && follows(3) && !overlong && !beyond ? 4 : 0;
    }
    return 0;
}

VfString printable(const VfString& text)
{
    const std::string& in = text.str();
    std::string out;
    out.reserve(in.size());
    for (std::size_t pos = 0; pos < in.size();) {
        const std::size_t length = utf8SequenceLength(in, pos);
        if (length > 0 && !isControl(in, pos, length)) {
            out.append(in, pos, length);
            pos += length;
        } else {
            for (std::size_t i = 0; i < (length ? length : 1); ++i)
                appendEscaped(out, static_cast<unsigned char>(in[pos + i]));
            pos += length ? length : 1;
        }
    }
    return out;
}

} // namespace vfBase
