// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/CutOff.h>

namespace vfFormats {

bool isCutOffInBraces(std::string_view file)
{
    long depth = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i < file.size(); ++i) {
        const char c = file[i];
        if (isQuoted) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                isQuoted = false;
        } else if (c == '"') {
            isQuoted = true;
        } else if (c == '{') {
            ++depth;
        } else if (c == '}') {
            --depth;
        }
    }
    return depth > 0 || isQuoted;
}

} // namespace vfFormats
