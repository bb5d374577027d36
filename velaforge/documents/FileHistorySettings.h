// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/base/StringList.h>

namespace vfApplication {

/// The recently used files, kept between runs; FileHistory works on it.
class VFAPPLICATION_EXPORT FileHistorySettings : public vfBase::SettingsObjectPrivate
{
public:
    /// A deep copy (osg::CopyOp::DEEP_COPY_OBJECTS) has a list of its own, any other shares it.
    FileHistorySettings(const FileHistorySettings& other, const osg::CopyOp& copyop);

    /// @param erase  lets go of the object for good
    /// @return the one object; null once it was erased
    static FileHistorySettings* instance(bool erase);

    /// @return a new object with the defaults
    osg::Object* cloneType() const override;

    /// @return a new object with the present values
    osg::Object* clone(const osg::CopyOp& copyop) const override;
    bool isSameKindAs(const osg::Object* object) const override;
    const char* libraryName() const override;
    const char* className() const override;

    /// Most entries that the history keeps, at least 1; 9 unless set.
    unsigned int getMaxFiles() const { return maxFiles; }
    void setMaxFiles(unsigned int maximum) { maxFiles = maximum; }

protected:
    ~FileHistorySettings() override;

private:
    friend class FileHistory;
    friend struct FileHistorySettingsProperties;

    FileHistorySettings();

    vfBase::StringList files{0}; ///< newest first, each path as it was given
    unsigned int maxFiles = 9;
};

} // namespace vfApplication
