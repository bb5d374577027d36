// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// The result of writing a document.
///
///     const vfBase::WriteResult result = document->save();
///     if (result.error())
///         show(result.getMessage());
class VFBASE_EXPORT WriteResult
{
public:
    /// The outcome of writing.
    enum WriteStatus : int
    {
        Written = 1,     ///< success, also if there was nothing to write
        NoTemplate = 2,  ///< the document has no template
        WriteFailed = 3, ///< the file could not be written
        NoPath = 4       ///< no path was chosen
    };

    /// Makes a result.
    /// @param status   the outcome
    /// @param message  the reason of a failure, for the user
    WriteResult(WriteStatus status, const VfString& message = VfString());

    /// Copies status and message.
    WriteResult(const WriteResult& other);

    /// Copies status and message.
    WriteResult& operator=(const WriteResult& other);
    ~WriteResult();

    /// Returns the status.
    WriteStatus getStatus() const { return m_status; }

    /// Returns the reason of a failure; empty if there is none.
    const VfString& getMessage() const { return m_message; }

    /// Returns whether the status is any other than Written.
    bool error() const { return m_status != Written; }

    /// Returns whether the status is Written.
    bool success() const { return !error(); }

private:
    WriteStatus m_status;
    VfString m_message;
};

} // namespace vfBase
