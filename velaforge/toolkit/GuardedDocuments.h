// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Options.h>
#include <velaforge/base/VfString.h>

#include <functional>
#include <string>

namespace vfApplication {

class DocManager;
class Document;

/// Runs @p work, which reads a document, and catches any exception.
/// @param work      the work; returns true on success
/// @param fallback  the reason if @p work returns false without setReadError()
/// @return the reason of a failure, for the user; empty on success
std::string runReading(const std::function<bool()>& work, const std::string& fallback);

/// Returns the reason why no document can be made for a path, if the file system or the templates tell it:
/// the file does not exist or cannot be read, or no template matches it. Empty otherwise.
std::string reasonNotReadable(DocManager& manager, const vfBase::VfString& path,
                              const vfBase::Options& options);

/// Closes a document as DocManager::closeDocument does, and catches any exception. A document that throws is
/// destroyed all the same, unless it has unsaved changes and @p force is false: then it stays open.
/// @param manager   the manager of the document
/// @param document  the document
/// @param force     closes the document even if it refuses
/// @param problem   set to the text of the exception, for the user; empty if there was none
/// @return false if the document stays open
bool closeGuarded(DocManager& manager, Document& document, bool force, std::string& problem);

} // namespace vfApplication
