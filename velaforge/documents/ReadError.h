// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/VfString.h>

#include <string>

namespace vfApplication {

/// The exception for a document that cannot be read. Document::doOpenDocument may throw it, and the user sees
/// the reason.
///
///     bool Cloud::doOpenDocument(const vfBase::VfString& path, const vfBase::Options&)
///     {
///         std::ifstream file(path.str());
///         if (!file)
///             return vfApplication::setReadError(std::strerror(errno));
///         readPoints(file);  // throws vfApplication::ReadError("line 7: three numbers are expected")
///         return true;
///     }
///
/// The message names neither the program nor the file: the toolkit side adds both.
class VFAPPLICATION_EXPORT ReadError : public vfBase::BaseException
{
public:
    /// Makes an exception with the message @p reason.
    explicit ReadError(const std::string& reason);
    ~ReadError() override;
};

/// Sets the reason why a document cannot be read, for a doOpenDocument or onNewDocument that returns false
/// instead of throwing.
/// @return false, so that the caller can return the result
VFAPPLICATION_EXPORT bool setReadError(const vfBase::VfString& reason);

/// Returns the reason that setReadError set last, and clears it. A document manager calls it before and after
/// it opens a document.
/// @return the empty text if no reason was set
VFAPPLICATION_EXPORT vfBase::VfString takeReadError();

} // namespace vfApplication
