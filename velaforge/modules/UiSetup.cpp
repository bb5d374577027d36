// SPDX-License-Identifier: MIT
#include <velaforge/modules/UiSetup.h>

#include <velaforge/base/CrosswisePair.h>
#include <velaforge/modules/UiSetupPrivate.h>

namespace vfApplication {

UiSetup::UiSetup() : UiSetup(new UiSetupPrivate)
{
    d->setOwner(this);
}

UiSetup::UiSetup(UiSetupPrivate* body) : d(body)
{
    if (d)
        d->ref();
}

UiSetup::~UiSetup()
{
    vfBase::crosswise::endHandle(d, &UiSetupPrivate::owner);
}

UiSetup::DocumentInterfaceMode UiSetup::getDocumentIntefaceMode()
{
    return TabbedDocuments;
}

vfBase::StringList UiSetup::getDocumentViewTemplates() const
{
    return vfBase::StringList();
}

bool UiSetup::showViewTitleButtons() const
{
    return true;
}

bool UiSetup::showViewLogo() const
{
    return false;
}

bool UiSetup::showViewDocumentSlider() const
{
    return false;
}

bool UiSetup::showTitleBarLogo() const
{
    return true;
}

bool UiSetup::showSceneGraphTreeView() const
{
    return true;
}

void UiSetupPrivate::setOwner(UiSetup* setup)
{
    vfBase::crosswise::setOwner(owner, setup);
}

UiSetupPrivate::~UiSetupPrivate()
{
    vfBase::crosswise::endBody(owner, &UiSetup::d);
}

} // namespace vfApplication
