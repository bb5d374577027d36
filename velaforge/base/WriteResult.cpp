// SPDX-License-Identifier: MIT
#include <velaforge/base/WriteResult.h>

namespace vfBase {

WriteResult::WriteResult(WriteStatus status, const VfString& message) : m_status(status), m_message(message)
{}

WriteResult::WriteResult(const WriteResult& other) = default;

WriteResult& WriteResult::operator=(const WriteResult& other) = default;

WriteResult::~WriteResult() = default;

} // namespace vfBase
