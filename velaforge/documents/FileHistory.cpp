// SPDX-License-Identifier: MIT
#include <velaforge/documents/FileHistory.h>

#include <velaforge/base/Require.h>
#include <velaforge/documents/FileHistorySettings.h>

#include <osg/ref_ptr>

#include <algorithm>
#include <utility>
#include <vector>

namespace vfApplication {

FileHistory::FileHistory(int maxFiles)
{
    setMaxFiles(static_cast<unsigned int>(maxFiles));
}

FileHistory::~FileHistory() = default;

vfBase::VfString FileHistory::getHistoryFile(int index) const
{
    const FileHistorySettings* settings = FileHistorySettings::instance(false);
    return settings ? settings->files.get(static_cast<unsigned int>(index)) : vfBase::VfString();
}

int FileHistory::getCount() const
{
    const FileHistorySettings* settings = FileHistorySettings::instance(false);
    return settings ? static_cast<int>(std::min(settings->maxFiles, settings->files.size())) : 0;
}

unsigned int FileHistory::getMaxFiles() const
{
    const FileHistorySettings* settings = FileHistorySettings::instance(false);
    return settings ? settings->getMaxFiles() : 0;
}

void FileHistory::addFileToHistory(const vfBase::VfString& path)
{
    VF_REQUIRE_APPLICATION_THREAD("FileHistory::addFileToHistory");
    const osg::ref_ptr<FileHistorySettings> settings = FileHistorySettings::instance(false);
    if (!settings)
        return;
    // A copy: the path may be an entry.
    vfBase::VfString added = path;
    const vfBase::VfString key = normalizeFileName(added);
    std::vector<vfBase::VfString>& files = settings->files.getImp()->entries;
    // Reserved now, so that nothing can fail between removing an entry and inserting the new one.
    files.reserve(files.size() + 1);
    unsigned int n = settings->files.size();
    for (unsigned int i = 0; i < n; ++i) {
        if (normalizeFileName(settings->files.get(i)) == key) {
            removeFileFromHistory(static_cast<int>(i));
            --n;
            break;
        }
    }
    while (n > 0 && n >= settings->maxFiles) {
        --n;
        removeFileFromHistory(static_cast<int>(n));
    }
    files.insert(files.begin(), std::move(added));
}

void FileHistory::removeFileFromHistory(int index)
{
    if (FileHistorySettings* settings = FileHistorySettings::instance(false))
        settings->files.remove(static_cast<unsigned int>(index));
}

void FileHistory::setMaxFiles(unsigned int maxFiles)
{
    if (FileHistorySettings* settings = FileHistorySettings::instance(false))
        settings->setMaxFiles(maxFiles);
}

vfBase::VfString FileHistory::normalizeFileName(const vfBase::VfString& path)
{
    return path;
}

} // namespace vfApplication
