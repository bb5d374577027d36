// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/StlKind.h>

#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/internal/TextScanner.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>

namespace vfFormats {

namespace {

/// @return how many triangles the header says that there are
std::uint32_t announcedIn(std::string_view contents)
{
    std::uint32_t count = 0;
    std::memcpy(&count, contents.data() + stlHeaderSize - sizeof(count), sizeof(count));
    return count;
}

} // namespace

bool isStlWord(std::string_view word, std::string_view lower)
{
    return std::equal(word.begin(), word.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

/// Some programs begin files of numbers with the word of those of text: what counts is whether the length is right, and
/// whether there are bytes that no text has.
bool isStlText(std::string_view contents)
{
    if (contents.size() >= stlHeaderSize) {
        const std::uint64_t announced = announcedIn(contents);
        if (contents.size() == stlHeaderSize + announced * stlTriangleSize)
            return false;
    }
    const std::string_view beginning = contents.substr(0, 1000);
    const bool isWide = beginning.substr(0, 2) == "\xff\xfe" || beginning.substr(0, 2) == "\xfe\xff";
    if (isWide)
        return true;
    const PlainText plainText(beginning);
    TextScanner scanner(plainText.text());
    std::string_view word = scanner.word();
    for (; word.empty() && !scanner.isAtEnd(); word = scanner.word())
        scanner.nextLine();
    return (isStlWord(word, "solid") || isStlWord(word, "facet")) &&
           beginning.find('\0') == std::string_view::npos;
}

} // namespace vfFormats
