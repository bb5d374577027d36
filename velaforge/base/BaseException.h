// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfObject.h>

#include <exception>
#include <string>

namespace vfBase {

/// The exception of this family of libraries: a message, and the text of what caused it.
///
///     catch (const std::exception& cause) {
///         throw vfBase::BaseException("cannot open the model", cause);  // what(): "cannot open the model: no memory"
///     }
///
/// Each layer that passes an exception on may wrap it once more. what() has the messages of all layers, for a
/// developer; getReason() has the message of the exception that was thrown first, for the user.
class VFBASE_EXPORT BaseException : public std::exception, public VfObject
{
public:
    /// Makes an exception with the message @p message and no cause.
    explicit BaseException(const std::string& message);

    /// Makes an exception with the message @p message and the texts of @p cause, not the exception itself.
    BaseException(const std::string& message, const std::exception& cause);

    /// Copies the texts of @p other.
    BaseException(const BaseException& other);

    /// Copies the texts of @p other.
    BaseException& operator=(const BaseException& other);
    ~BaseException() override;

    /// Returns the message; with a cause, followed by ": " and the text of the cause.
    const char* what() const noexcept override;

    /// Returns the reason of the innermost cause, as describe() returns it; the message if there is no cause.
    /// The pointer is valid as long as this exception.
    const char* getReason() const noexcept;

    /// Replaces the reason, for an exception whose message is not for the user. Does not change what().
    void setReason(const std::string& reason);

    /// Returns the text for the user about @p problem: the reason of a BaseException, "not enough memory" for
    /// std::bad_alloc, otherwise its text; "an unknown error" if that is empty.
    static std::string describe(const std::exception& problem);

    /// Returns the text for the user about the exception that is being handled, of any type. Call it in a
    /// catch block.
    static std::string describeCurrent();

    /// "an unknown error", the reason of an exception without a text.
    static const char* const unknownReason;

private:
    std::string m_text;
    std::string m_reason;
};

} // namespace vfBase
