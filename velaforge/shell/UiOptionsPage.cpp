// SPDX-License-Identifier: MIT
#include <velaforge/shell/UiOptionsPage.h>

#include <velaforge/base/ClassInfo.h>

namespace vfApplication {

const vfBase::ClassInfo UiOptionsPage::s_classInfo("vfApplication", "UiOptionsPage",
                                                   "vfApplication::UiOptionsPage",
                                                   &vfBase::VfObject::s_classInfo, nullptr,
                                                   sizeof(UiOptionsPage), nullptr);

UiOptionsPage::UiOptionsPage() = default;

UiOptionsPage::UiOptionsPage(const UiOptionsPage&) : VfObject() {}

UiOptionsPage& UiOptionsPage::operator=(const UiOptionsPage&)
{
    return *this;
}

UiOptionsPage::~UiOptionsPage() = default;

const vfBase::ClassInfo* UiOptionsPage::getClassInfo() const
{
    return &s_classInfo;
}

const char* UiOptionsPage::getGroupName()
{
    return "General";
}

const char* UiOptionsPage::getGroupIconName()
{
    return "OptionsGeneral";
}

int UiOptionsPage::getGroupOrder()
{
    return 0;
}

int UiOptionsPage::getTabOrder()
{
    return 0;
}

void UiOptionsPage::loadOptions() {}

void UiOptionsPage::saveOptions() {}

void UiOptionsPage::applyOptions() {}

const char* UiOptionsPage::classId()
{
    return s_classInfo.getClassId();
}

} // namespace vfApplication
