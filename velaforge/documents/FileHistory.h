// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

/// The list of recently used files, newest first.
///
///     vfApplication::FileHistory history(9);
///     history.addFileToHistory("/models/hull.obj");
///     history.getHistoryFile(0);  // that path
///
/// The entries are stored in FileHistorySettings: they survive the run, and all FileHistory objects share
/// them. Paths are compared byte by byte and not tested for existence. Belongs to the thread that calls
/// Application::run.
class VFAPPLICATION_EXPORT FileHistory
{
public:
    /// Sets the maximum number of entries to @p maxFiles, for all FileHistory objects. At least 1.
    explicit FileHistory(int maxFiles);

    // In the order of their slots, which is part of the binary interface.
    virtual ~FileHistory();

    /// Adds @p path in front. Removes an older entry for it, and the oldest entries beyond the maximum.
    virtual void addFileToHistory(const vfBase::VfString& path);

    /// Removes the entry at @p index, which must be less than the number of stored entries. 0 is the newest.
    virtual void removeFileFromHistory(int index);

    /// Returns the path at @p index, which must be less than the number of stored entries. 0 is the newest.
    virtual vfBase::VfString getHistoryFile(int index) const;

    /// Returns the number of stored entries, but at most the maximum.
    virtual int getCount() const;

    /// Returns the maximum number of entries.
    unsigned int getMaxFiles() const;

    /// Sets the maximum number of entries, at least 1. The next addFileToHistory removes the entries beyond
    /// it.
    void setMaxFiles(unsigned int maxFiles);

protected:
    /// Returns the key by which paths are compared: @p path itself.
    static vfBase::VfString normalizeFileName(const vfBase::VfString& path);
};

} // namespace vfApplication
