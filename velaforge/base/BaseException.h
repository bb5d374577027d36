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
class VFBASE_EXPORT BaseException : public std::exception, public VfObject
{
public:
    explicit BaseException(const std::string& message);

    /// Keeps the text of @p cause, not the exception itself.
    BaseException(const std::string& message, const std::exception& cause);
    BaseException(const BaseException& other);
    BaseException& operator=(const BaseException& other);
    ~BaseException() override;

    /// @return the message, and with a cause ": " and the cause's text behind it
    const char* what() const noexcept override;

private:
    std::string m_text;
};

} // namespace vfBase
