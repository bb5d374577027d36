// SPDX-License-Identifier: MIT
#include <velaforge/documents/FileHistorySettings.h>

#include <velaforge/base/SettingsProperties.h>

namespace vfApplication {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

const SettingsProperties FileHistorySettings::s_properties(
    "vfApplication::FileHistorySettings",
    {SettingsProperties::property<FileHistorySettings>(
         "files", [](const FileHistorySettings& settings) -> SettingsValue { return settings.files; },
         [](FileHistorySettings& settings, const SettingsValue& value) {
             return value.read(settings.files);
         }),
     SettingsProperties::property<FileHistorySettings>(
         "maxFiles", [](const FileHistorySettings& settings) -> SettingsValue { return settings.maxFiles; },
         [](FileHistorySettings& settings, const SettingsValue& value) {
             // Rejects 0 in an edited file: at least one entry is required.
             unsigned int maximum = 0;
             if (!value.read(maximum) || maximum == 0)
                 return false;
             settings.maxFiles = maximum;
             return true;
         })});

FileHistorySettings::FileHistorySettings() = default;

FileHistorySettings::FileHistorySettings(const FileHistorySettings& other, const osg::CopyOp& copyop)
    : SettingsBase(other, copyop), files(other.files), maxFiles(other.maxFiles)
{
    if (copyop.getCopyFlags() & osg::CopyOp::DEEP_COPY_OBJECTS)
        files = other.files.clone();
}

FileHistorySettings::~FileHistorySettings() = default;

FileHistorySettings* FileHistorySettings::instance(bool erase)
{
    return singleton(erase);
}

} // namespace vfApplication
