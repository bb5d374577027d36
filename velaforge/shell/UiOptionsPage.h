// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfObject.h>

namespace vfApplication {

/// A page of the options dialog.
///
///     class ColorsPage : public vfApplication::UiOptionsPage
///     {
///     public:
///         static const vfBase::ClassInfo s_classInfo;  // with a creator, so that the page can be made by name
///         void loadOptions() override;                 // from the settings into the page
///     };
///     vfApplication::Registry::instance().getOptionsPageManager().addOptionsPageId("solar::ColorsPage");
///
/// The toolkit side makes a page for each id when it opens the dialog, puts it among the others by group and order, and
/// has it load, apply and save.
class VFAPPLICATION_EXPORT UiOptionsPage : public vfBase::VfObject
{
public:
    static const vfBase::ClassInfo s_classInfo;

    UiOptionsPage();

    // A copy is a new page, and assignment changes nothing.
    UiOptionsPage(const UiOptionsPage& other);
    UiOptionsPage& operator=(const UiOptionsPage& other);
    ~UiOptionsPage() override;

    const vfBase::ClassInfo* getClassInfo() const override;

    // In the order of their slots, which is part of the binary interface.

    /// @return the group of pages that it belongs to; "General" here
    virtual const char* getGroupName();

    /// @return the name of the group's icon; "OptionsGeneral" here
    virtual const char* getGroupIconName();

    /// @return where the group stands among the groups, and the page in its group, in rising order; 0 here
    virtual int getGroupOrder();
    virtual int getTabOrder();

    /// Nothing here: take the settings into the page, keep what the page says, let it take effect.
    virtual void loadOptions();
    virtual void saveOptions();
    virtual void applyOptions();

    /// @return "vfApplication::UiOptionsPage"
    static const char* classId();
};

} // namespace vfApplication
