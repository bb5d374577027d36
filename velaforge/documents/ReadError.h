// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/VfString.h>

#include <string>

namespace vfApplication {

/// Says why a document cannot be read: Document::doOpenDocument may throw it, and the user is told the reason.
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
/// The message names neither the program nor the file; whoever tells the user does.
class VFAPPLICATION_EXPORT ReadError : public vfBase::BaseException
{
public:
    explicit ReadError(const std::string& reason);
    ~ReadError() override;
};

/// Says why a document cannot be read, for a doOpenDocument or onNewDocument that returns false instead of throwing.
/// @return false
VFAPPLICATION_EXPORT bool setReadError(const vfBase::VfString& reason);

/// Returns the reason that was set last and forgets it; empty when there is none. For a document manager, which calls it
/// before and after it has a document opened.
VFAPPLICATION_EXPORT vfBase::VfString takeReadError();

} // namespace vfApplication
