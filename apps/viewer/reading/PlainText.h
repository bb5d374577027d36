// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vfViewer {

/// The contents of a text file as its parser expects them: in UTF-8, without a byte order mark, with LF at least at the
/// end of each line.
class PlainText
{
public:
    /// @param contents  must outlive this
    explicit PlainText(std::string_view contents);

    std::string_view text() const { return m_text; }

private:
    std::string m_changed; ///< empty where the contents are as expected
    std::string_view m_text;
};

} // namespace vfViewer
