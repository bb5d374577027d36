// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/modules/UiSetupPrivate.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

namespace vfApplication {

class Module;
class ModuleInterface;

/// Body of Module.
class VFAPPLICATION_EXPORT ModulePrivate : public osg::Referenced
{
public:
    /// Makes a body without an owner.
    ModulePrivate() = default;
    ModulePrivate(const ModulePrivate&) = delete;
    ModulePrivate& operator=(const ModulePrivate&) = delete;

    /// Deletes the present owner if it is another one, and sets the owner to @p module, which has a reference
    /// on this body.
    void setOwner(Module* module);

    /// Always null, by contract: the constructor of Module casts to it while the object is no ModuleInterface
    /// yet.
    ModuleInterface* moduleInterface = nullptr;

    /// The body of the declaration, shared with the UiSetup that the module was given.
    osg::ref_ptr<UiSetupPrivate> uiSetup;

    /// The handle that belongs to this body, null after its destruction.
    Module* owner = nullptr;

protected:
    /// Deletes the owner, unless it was destroyed before.
    ~ModulePrivate() override;
};

} // namespace vfApplication
