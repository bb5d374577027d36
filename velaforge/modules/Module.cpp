// SPDX-License-Identifier: MIT
#include <velaforge/modules/Module.h>

#include <velaforge/base/CrosswisePair.h>
#include <velaforge/base/Require.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/ModuleInterface.h>
#include <velaforge/modules/ModulePrivate.h>
#include <velaforge/modules/vfAppModule.h>

namespace vfApplication {

Module::Module() : Module(new ModulePrivate)
{
    const MinimalUiSetup passing;
    fillBody(passing);
}

Module::Module(const UiSetup& uiSetup) : Module(new ModulePrivate)
{
    fillBody(uiSetup);
}

Module::Module(ModulePrivate* body) : d(body)
{
    if (d)
        d->ref();
}

void Module::fillBody(const UiSetup& uiSetup)
{
    d->setOwner(this);
    // Null for every module, by contract: the object is still a plain Module here, even if it will be a
    // ModuleInterface. Do not move this cast to a later point.
    d->moduleInterface = dynamic_cast<ModuleInterface*>(this);
    d->uiSetup = uiSetup.getUiSetupPrivate();
}

Module::~Module()
{
    vfBase::crosswise::endHandle(d, &ModulePrivate::owner);
}

const char* Module::getId() const
{
    return "vfApplication::Module";
}

const char* Module::getModuleName() const
{
    return getId();
}

const char* Module::getModuleDescription() const
{
    return getId();
}

ModuleInterface* Module::getModuleInterface()
{
    return d ? d->moduleInterface : nullptr;
}

bool Module::hasUiSetup() const
{
    return d && d->uiSetup && d->uiSetup->owner;
}

const UiSetup& Module::getUiSetup() const
{
    VF_REQUIRE(hasUiSetup(), "Module::getUiSetup", "the UiSetup that the module was given is destroyed");
    return *d->uiSetup->owner;
}

void Module::onLanguageChange()
{
    if (ModuleInterface* told = getModuleInterface())
        told->languageChanged();
}

void ModulePrivate::setOwner(Module* module)
{
    vfBase::crosswise::setOwner(owner, module);
}

ModulePrivate::~ModulePrivate()
{
    moduleInterface = nullptr;
    vfBase::crosswise::endBody(owner, &Module::d);
}

ModuleInterface::ModuleInterface() = default;

ModuleInterface::~ModuleInterface() = default;

vfAppModule::vfAppModule(const UiSetup& uiSetup) : Module(uiSetup) {}

vfAppModule::~vfAppModule() = default;

const char* vfAppModule::getId() const
{
    return "vfApplication::Application";
}

const char* vfAppModule::getModuleName() const
{
    return "vfAppModule";
}

} // namespace vfApplication
