// SPDX-License-Identifier: MIT
#include <velaforge/base/BaseException.h>

namespace vfBase {

BaseException::BaseException(const std::string& message) : m_text(message) {}

BaseException::BaseException(const std::string& message, const std::exception& cause)
    : m_text(message + ": " + cause.what())
{}

BaseException::BaseException(const BaseException& other) = default;

BaseException& BaseException::operator=(const BaseException& other) = default;

BaseException::~BaseException() = default;

const char* BaseException::what() const noexcept
{
    return m_text.c_str();
}

} // namespace vfBase
