// SPDX-License-Identifier: MIT
#include <velaforge/modules/UiSetup.h>

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
    if (!d)
        return; // the body went first, and cut us off
    d->owner = nullptr;
    d->unref();
    d = nullptr;
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
    if (owner != setup)
        delete owner;
    owner = setup;
}

UiSetupPrivate::~UiSetupPrivate()
{
    if (!owner)
        return;
    owner->d = nullptr;
    delete owner;
    owner = nullptr;
}

} // namespace vfApplication
