// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsBase.h>
#include <velaforge/base/StringList.h>

namespace vfBase {
class SettingsProperties;
}

namespace vfApplication {

/// The recently used files, kept between runs; FileHistory works on it.
class VFAPPLICATION_EXPORT FileHistorySettings : public vfBase::SettingsBase<FileHistorySettings>
{
public:
    /// A deep copy (osg::CopyOp::DEEP_COPY_OBJECTS) has a list of its own, any other shares it.
    FileHistorySettings(const FileHistorySettings& other, const osg::CopyOp& copyop);

    /// @param erase  releases the object for good
    /// @return the one object; null once it was released, by erasing or at exit
    static FileHistorySettings* instance(bool erase);

    /// Most entries that the history keeps, at least 1; 9 unless set.
    unsigned int getMaxFiles() const { return maxFiles; }
    void setMaxFiles(unsigned int maximum) { maxFiles = maximum; }

protected:
    ~FileHistorySettings() override;

private:
    friend class FileHistory;
    friend vfBase::SettingsBase<FileHistorySettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "FileHistorySettings";

    static const vfBase::SettingsProperties s_properties; ///< what the store keeps

    FileHistorySettings();

    vfBase::StringList files{0}; ///< newest first, each path as it was given
    unsigned int maxFiles = 9;
};

} // namespace vfApplication
