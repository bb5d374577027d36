// SPDX-License-Identifier: MIT
#include <velaforge/base/BaseException.h>

#include <new>

namespace vfBase {

const char* const BaseException::unknownReason = "an unknown error";

BaseException::BaseException(const std::string& message) : m_text(message), m_reason(message) {}

BaseException::BaseException(const std::string& message, const std::exception& cause)
    : m_text(message + ": " + cause.what()), m_reason(describe(cause))
{}

BaseException::BaseException(const BaseException& other) = default;

BaseException& BaseException::operator=(const BaseException& other) = default;

BaseException::~BaseException() = default;

const char* BaseException::what() const noexcept
{
    return m_text.c_str();
}

const char* BaseException::getReason() const noexcept
{
    return m_reason.c_str();
}

void BaseException::setReason(const std::string& reason)
{
    m_reason = reason;
}

std::string BaseException::describe(const std::exception& problem)
{
    if (dynamic_cast<const std::bad_alloc*>(&problem))
        return "not enough memory";
    const auto* known = dynamic_cast<const BaseException*>(&problem);
    const std::string reason = known ? known->getReason() : problem.what();
    return reason.empty() ? unknownReason : reason;
}

std::string BaseException::describeCurrent()
{
    try {
        throw;
    } catch (const std::exception& problem) {
        return describe(problem);
    } catch (...) {
        return unknownReason;
    }
}

} // namespace vfBase
