// SPDX-License-Identifier: MIT
#include <velaforge/base/Printable.h>

#include <velaforge/base/Utf8.h>

#include <cstddef>
#include <string>

namespace vfBase {

namespace {

/// Returns whether the character of @p length bytes at @p pos is a control character: U+0000 to U+001F,
/// U+007F to U+009F.
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
