// SPDX-License-Identifier: MIT
#include <velaforge/documents/FileHistory.h>

#include <velaforge/documents/FileHistorySettings.h>

#include <algorithm>
#include <cassert>

namespace vfApplication {

FileHistory::FileHistory(int maxFiles)
{
    FileHistorySettings::instance(false)->setMaxFiles(static_cast<unsigned int>(maxFiles));
}

FileHistory::~FileHistory() = default;

vfBase::VfString FileHistory::getHistoryFile(int index) const
{
    return FileHistorySettings::instance(false)->files.get(static_cast<unsigned int>(index));
}

int FileHistory::getCount() const
{
    const FileHistorySettings* settings = FileHistorySettings::instance(false);
    return static_cast<int>(std::min(settings->maxFiles, settings->files.size()));
}

unsigned int FileHistory::getMaxFiles() const
{
    return FileHistorySettings::instance(false)->getMaxFiles();
}

void FileHistory::addFileToHistory(const vfBase::VfString& path)
{
    FileHistorySettings* settings = FileHistorySettings::instance(false);
    assert(settings->maxFiles > 0);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the path may be an entry itself
    const vfBase::VfString added = path;
    const vfBase::VfString key = normalizeFileName(added);
    unsigned int n = settings->files.size();
    for (unsigned int i = 0; i < n; ++i) {
        if (normalizeFileName(settings->files.get(i)) == key) {
            removeFileFromHistory(static_cast<int>(i));
            --n;
            break;
        }
    }
    while (n >= settings->maxFiles) {
        --n;
        removeFileFromHistory(static_cast<int>(n));
    }
    settings->files.insert(0, added);
}

void FileHistory::removeFileFromHistory(int index)
{
    FileHistorySettings::instance(false)->files.remove(static_cast<unsigned int>(index));
}

void FileHistory::setMaxFiles(unsigned int maxFiles)
{
    FileHistorySettings::instance(false)->setMaxFiles(maxFiles);
}

vfBase::VfString FileHistory::normalizeFileName(const vfBase::VfString& path)
{
    return path;
}

} // namespace vfApplication
