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
/// It holds nothing itself: the entries live in FileHistorySettings, survive the run and are the same for every
/// FileHistory. Paths are not tested for existence, and compared byte by byte.
class VFAPPLICATION_EXPORT FileHistory
{
public:
    /// @param maxFiles  most entries to keep, at least 1; stored for all
    explicit FileHistory(int maxFiles);

    // In the order of their slots, which is part of the binary interface.
    virtual ~FileHistory();

    /// Puts @p path in front, takes an older entry for it out, and drops the oldest beyond the maximum.
    virtual void addFileToHistory(const vfBase::VfString& path);

    /// Removes an entry. @param index  0 is the newest; must be in range of the stored entries
    virtual void removeFileFromHistory(int index);

    /// @param index  0 is the newest; must be in range of the stored entries
    virtual vfBase::VfString getHistoryFile(int index) const;

    /// @return the number of entries, and at most the maximum
    virtual int getCount() const;

    unsigned int getMaxFiles() const;

    /// Stored entries beyond a smaller maximum go with the next addFileToHistory. At least 1.
    void setMaxFiles(unsigned int maxFiles);

protected:
    /// The key by which paths are compared; the path itself, at present.
    static vfBase::VfString normalizeFileName(const vfBase::VfString& path);
};

} // namespace vfApplication
