// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

#include <string>

namespace vfApplication {

/// The name of a command, as large as one pointer.
///
/// An undo history holds thousands of commands with a few names. Equal names made one after another on a
/// thread share one text, so that a further command neither allocates nor copies it. Names may be copied and
/// destroyed on several threads.
class VFAPPLICATION_EXPORT CommandName
{
public:
    /// Makes the empty name, without allocating.
    CommandName() noexcept : m_text(nullptr) {}

    /// Makes a name with the text @p text.
    explicit CommandName(const std::string& text);

    /// Shares the text of @p other.
    CommandName(const CommandName& other) noexcept;
    ~CommandName();

    /// Shares the text of @p other.
    CommandName& operator=(CommandName other) noexcept;

    /// Returns the text, which is valid as long as a name that shares it.
    const std::string& str() const noexcept;

private:
    struct Text;
    class Recent;

    Text* m_text; ///< null for the empty name
};

} // namespace vfApplication
