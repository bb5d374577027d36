// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// The result of writing a document: a status and, on failure, a reason.
///
///     const vfBase::WriteResult result = document->save();
///     if (result.error())
///         show(result.getMessage());
class VFBASE_EXPORT WriteResult
{
public:
    enum WriteStatus : int
    {
        Written = 1,     ///< finished, or there was nothing to do
        NoTemplate = 2,  ///< the document belongs to no template
        WriteFailed = 3, ///< the file could not be written
        NoPath = 4       ///< no path was chosen
    };

    /// A result with that status. Implicit, so that a status can be returned as a result.
    /// @param message  the reason of a failure, for people to read
    WriteResult(WriteStatus status, const VfString& message = VfString());
    WriteResult(const WriteResult& other);
    WriteResult& operator=(const WriteResult& other);
    ~WriteResult();

    /// @return the status
    WriteStatus getStatus() const { return m_status; }

    /// @return the reason of a failure; empty when none was given
    const VfString& getMessage() const { return m_message; }

    /// @return true for every status but Written
    bool error() const { return m_status != Written; }

    /// @return true for Written
    bool success() const { return !error(); }

private:
    WriteStatus m_status;
    VfString m_message;
};

} // namespace vfBase
