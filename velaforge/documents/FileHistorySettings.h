// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsBase.h>
#include <velaforge/base/StringList.h>

namespace vfBase {
class SettingsProperties;
}

namespace vfApplication {

/// Stores the recently used files between runs. FileHistory reads and changes them.
class VFAPPLICATION_EXPORT FileHistorySettings : public vfBase::SettingsBase<FileHistorySettings>
{
public:
    /// Copies the fields. With osg::CopyOp::DEEP_COPY_OBJECTS the copy has a list of its own, otherwise it
    /// shares that of
    /// @p other.
    FileHistorySettings(const FileHistorySettings& other, const osg::CopyOp& copyop);

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released, by @p erase or when the process ends
    static FileHistorySettings* instance(bool erase);

    /// Returns the maximum number of entries; 9 unless set.
    unsigned int getMaxFiles() const { return maxFiles; }

    /// Sets the maximum number of entries, at least 1. Removes none.
    void setMaxFiles(unsigned int maximum) { maxFiles = maximum; }

protected:
    ~FileHistorySettings() override;

private:
    friend class FileHistory;
    friend class vfBase::SettingsBase<FileHistorySettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "FileHistorySettings";

    static const vfBase::SettingsProperties s_properties; ///< what the store saves

    FileHistorySettings();

    vfBase::StringList files{0}; ///< newest first, unchanged paths
    unsigned int maxFiles = 9;
};

} // namespace vfApplication
