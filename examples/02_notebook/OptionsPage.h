// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/shell/UiOptionsPage.h>

/// What the user chose; loaded and saved with all other settings.
class NotebookSettings : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(notebook, NotebookSettings) NotebookSettings() = default;
    NotebookSettings(const NotebookSettings& other, const osg::CopyOp& copyop)
        : SettingsObjectPrivate(other, copyop), m_showsNumbers(other.m_showsNumbers)
    {}
    static NotebookSettings& instance();

    bool getShowsNumbers() const { return m_showsNumbers; }
    void setShowsNumbers(bool shows) { m_showsNumbers = shows; }

private:
    bool m_showsNumbers = false;
};

/// The page of the options dialog that shows it.
class NotebookPage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;
    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }

    const char* getGroupName() override { return "Notes"; }
    void loadOptions() override { showsNumbers = NotebookSettings::instance().getShowsNumbers(); }
    void applyOptions() override { NotebookSettings::instance().setShowsNumbers(showsNumbers); }

    bool showsNumbers = false; ///< the check box
};
