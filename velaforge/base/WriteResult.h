// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// What came of writing a document.
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

    /// @param message  the reason of a failure, for a person to read
    WriteResult(WriteStatus status, const VfString& message = VfString());
    WriteResult(const WriteResult& other);
    WriteResult& operator=(const WriteResult& other);
    ~WriteResult();

    WriteStatus getStatus() const { return m_status; }
    const VfString& getMessage() const { return m_message; }

    /// @return true for every status but Written; success() is the opposite
    bool error() const { return m_status != Written; }
    bool success() const { return !error(); }

private:
    WriteStatus m_status;
    VfString m_message;
};

} // namespace vfBase
