// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace vfFormats {

// Parts of what looks for the end of a file.

inline bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

/// Returns whether something that a brace or a quotation mark opens is not closed; braces in quoted text do not count.
VFFORMATS_EXPORT bool isCutOffInBraces(std::string_view file);

/// Calls @p use for each line, without its line end. A last line without one counts too.
template <class Use>
void forEachLine(std::string_view text, Use use)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        use(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace vfFormats
