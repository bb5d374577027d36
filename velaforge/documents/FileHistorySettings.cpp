// SPDX-License-Identifier: MIT
#include <velaforge/documents/FileHistorySettings.h>

#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

namespace vfApplication {

/// What the store reads and writes; the list of files has no accessor for anybody else.
struct FileHistorySettingsProperties
{
    static vfBase::SettingsValue files(const FileHistorySettings& settings) { return settings.files; }

    static bool takeFiles(FileHistorySettings& settings, const vfBase::SettingsValue& value)
    {
        return value.read(settings.files);
    }

    static vfBase::SettingsValue maxFiles(const FileHistorySettings& settings) { return settings.maxFiles; }

    /// A history that keeps nothing cannot be worked with, so an edited file must not ask for one.
    static bool takeMaxFiles(FileHistorySettings& settings, const vfBase::SettingsValue& value)
    {
        unsigned int maximum = 0;
        if (!value.read(maximum) || maximum == 0)
            return false;
        settings.maxFiles = maximum;
        return true;
    }
};

namespace {

const vfBase::SettingsProperties properties(
    "vfApplication::FileHistorySettings",
    {vfBase::SettingsProperties::property<FileHistorySettings>("files", FileHistorySettingsProperties::files,
                                                               FileHistorySettingsProperties::takeFiles),
     vfBase::SettingsProperties::property<FileHistorySettings>("maxFiles",
                                                               FileHistorySettingsProperties::maxFiles,
                                                               FileHistorySettingsProperties::takeMaxFiles)});

} // namespace

FileHistorySettings::FileHistorySettings() = default;

FileHistorySettings::FileHistorySettings(const FileHistorySettings& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), files(other.files), maxFiles(other.maxFiles)
{
    if (copyop.getCopyFlags() & osg::CopyOp::DEEP_COPY_OBJECTS)
        files = other.files.clone();
}

FileHistorySettings::~FileHistorySettings() = default;

FileHistorySettings* FileHistorySettings::instance(bool erase)
{
    static osg::ref_ptr<FileHistorySettings> settings = new FileHistorySettings;
    if (erase)
        settings = nullptr;
    return settings.get();
}

osg::Object* FileHistorySettings::cloneType() const
{
    return new FileHistorySettings;
}

osg::Object* FileHistorySettings::clone(const osg::CopyOp& copyop) const
{
    return new FileHistorySettings(*this, copyop);
}

bool FileHistorySettings::isSameKindAs(const osg::Object* object) const
{
    return dynamic_cast<const FileHistorySettings*>(object) != nullptr;
}

const char* FileHistorySettings::libraryName() const
{
    return "vfApplication";
}

const char* FileHistorySettings::className() const
{
    return "FileHistorySettings";
}

} // namespace vfApplication
