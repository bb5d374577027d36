// SPDX-License-Identifier: MIT
#include <velaforge/documents/ReadError.h>

#include <utility>

namespace vfApplication {

namespace {

/// The reason set last. Not locked: documents belong to one thread.
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
