// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfObject.h>

namespace vfApplication {

/// The base class of the pages of the options dialog.
///
///     class ColorsPage : public vfApplication::UiOptionsPage
///     {
///     public:
///         static const vfBase::ClassInfo s_classInfo;  // with a creator: the page is made by name
///         void loadOptions() override;                 // shows the settings
///     };
///     vfApplication::Registry::instance().getOptionsPageManager().addOptionsPageId("solar::ColorsPage");
///
/// When the toolkit side opens the dialog, it makes a page for each id, sorts the pages by group and order,
/// and calls loadOptions. When the user accepts the dialog, it calls applyOptions of all pages, then
/// saveOptions of all pages.
class VFAPPLICATION_EXPORT UiOptionsPage : public vfBase::VfObject
{
public:
    /// The class record, without a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a page.
    UiOptionsPage();

    /// Makes a new page: copies nothing.
    UiOptionsPage(const UiOptionsPage& other);

    /// Changes nothing.
    UiOptionsPage& operator=(const UiOptionsPage& other);
    ~UiOptionsPage() override;

    const vfBase::ClassInfo* getClassInfo() const override;

    // In the order of their slots, which is part of the binary interface.

    /// Returns the name of the group that the page belongs to; "General" here.
    virtual const char* getGroupName();

    /// Returns the name of the group's icon; "OptionsGeneral" here. On the Qt side, see
    /// ApplicationInfo::getApplicationIconName for how an icon is found by its name.
    virtual const char* getGroupIconName();

    /// Returns the number by which the groups are sorted, lowest first; 0 here.
    virtual int getGroupOrder();

    /// Returns the number by which the pages of a group are sorted, lowest first; 0 here.
    virtual int getTabOrder();

    /// Reads the settings into the page; does nothing here.
    virtual void loadOptions();

    /// Saves the settings; does nothing here.
    virtual void saveOptions();

    /// Writes the values of the page into the settings, so that they take effect; does nothing here.
    virtual void applyOptions();

    /// Returns "vfApplication::UiOptionsPage".
    static const char* classId();
};

} // namespace vfApplication
