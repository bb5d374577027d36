// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

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
    CommandName() = default;

    /// Makes a name with the text @p text.
    explicit CommandName(const std::string& text);

    /// Shares the text of @p other.
    CommandName(const CommandName& other) = default;
    ~CommandName() = default;

    /// Shares the text of @p other.
    CommandName& operator=(CommandName other) noexcept
    {
        m_text.swap(other.m_text);
        return *this;
    }

    /// Returns the text, which is valid as long as a name that shares it.
    const std::string& str() const noexcept;

private:
    class Recent;

    struct Text : osg::Referenced
    {
        explicit Text(const std::string& text) : value(text) {}

        const std::string value;

    protected:
        ~Text() override; // in the source file, and the virtual table with it
    };

    osg::ref_ptr<const Text> m_text; // null for the empty name
};

} // namespace vfApplication
