// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

#include <string>

namespace vfApplication {

/// The name of a command, in the room of one pointer.
///
/// A history holds thousands of commands of a few names. Equal names that one thread makes one after the other share
/// their text, so that a command costs neither an allocation nor a copy for it. Names may be copied and destroyed on
/// several threads.
class VFAPPLICATION_EXPORT CommandName
{
public:
    CommandName() noexcept : m_text(nullptr) {}
    explicit CommandName(const std::string& text);
    CommandName(const CommandName& other) noexcept;
    ~CommandName();

    CommandName& operator=(CommandName other) noexcept;

    /// @return the text, valid while a name that shares it lives
    const std::string& str() const noexcept;

private:
    struct Text;
    class Recent;

    Text* m_text; ///< null for the empty name
};

} // namespace vfApplication
