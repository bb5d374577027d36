// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsText.h>

#include <velaforge/base/Utf8.h>

namespace vfBase {

namespace {

const std::string bytesMark = "$bytes:";

bool isUtf8(const std::string& text)
{
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t length = utf8SequenceLength(text, pos);
        if (length == 0)
            return false;
        pos += length;
    }
    return true;
}

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

std::string encodedSettingsText(const std::string& text)
{
    if (isUtf8(text) && text.compare(0, bytesMark.size(), bytesMark) != 0)
        return text;
    static const char digits[] = "0123456789abcdef";
    std::string hexadecimal = bytesMark;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        hexadecimal += digits[byte >> 4];
        hexadecimal += digits[byte & 15];
    }
    return hexadecimal;
}

std::string decodedSettingsText(const std::string& text)
{
    if (text.compare(0, bytesMark.size(), bytesMark) != 0 || (text.size() - bytesMark.size()) % 2 != 0)
        return text;
    std::string bytes;
    for (std::size_t i = bytesMark.size(); i < text.size(); i += 2) {
        const int high = digitValue(text[i]);
        const int low = digitValue(text[i + 1]);
        if (high < 0 || low < 0)
            return text;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

} // namespace vfBase
