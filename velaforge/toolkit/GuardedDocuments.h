// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Options.h>
#include <velaforge/base/VfString.h>

#include <functional>
#include <string>

namespace vfApplication {

class DocManager;
class Document;

/// Runs @p work, which reads a document, and catches whatever it throws.
/// @param fallback  the reason when @p work returns false without setReadError()
/// @return why it failed, for the user; empty when it returned true
std::string runReading(const std::function<bool()>& work, const std::string& fallback);

/// Returns why a path gives no document, as far as that can be seen from outside: the file is not there or cannot be read,
/// or no kind of document accepts it. Empty when neither is so.
std::string reasonNotReadable(DocManager& manager, const vfBase::VfString& path,
                              const vfBase::Options& options);

/// Closes a document as DocManager::closeDocument does, and catches whatever that throws. A document that throws is
/// destroyed all the same, unless it still has changes and @p force is false: then it stays open.
/// @param problem  receives what was thrown, for the user; empty otherwise
/// @return false when the document stays open
bool closeGuarded(DocManager& manager, Document& document, bool force, std::string& problem);

} // namespace vfApplication
