// SPDX-License-Identifier: MIT
#include <velaforge/documents/ReadError.h>

#include <utility>

namespace vfApplication {

namespace {

/// Documents belong to one thread, and so does the reason why one of them cannot be read.
vfBase::VfString& lastReason()
{
    static vfBase::VfString reason;
    return reason;
}

} // namespace

ReadError::ReadError(const std::string& reason) : BaseException(reason) {}

ReadError::~ReadError() = default;

bool setReadError(const vfBase::VfString& reason)
{
    lastReason() = reason;
    return false;
}

vfBase::VfString takeReadError()
{
    return std::exchange(lastReason(), vfBase::VfString());
}

} // namespace vfApplication
