// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>
#include <string_view>

namespace vfFormats {

/// The contents of a text file as its parser expects them: in UTF-8, without a byte order mark, with LF at least at the
/// end of each line.
class VFFORMATS_EXPORT PlainText
{
public:
    /// @param contents  must outlive this
    explicit PlainText(std::string_view contents);

    std::string_view text() const { return m_text; }

private:
    std::string m_changed; ///< empty where the contents are as expected
    std::string_view m_text;
};

/// Returns a name without control characters and without blanks at its ends, as it can stand on a line.
VFFORMATS_EXPORT std::string lineOf(const std::string& name);

} // namespace vfFormats
