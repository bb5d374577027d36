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
    ModulePrivate() = default;
    ModulePrivate(const ModulePrivate&) = delete;
    ModulePrivate& operator=(const ModulePrivate&) = delete;

    /// Destroys the present owner, if that is another, and takes the new one, which holds a count already.
    void setOwner(Module* module);

    /// Found by a cast in the constructor of Module, where the object is no ModuleInterface yet: always null.
    ModuleInterface* moduleInterface = nullptr;

    /// What the module declares, shared with the handle that was given.
    osg::ref_ptr<UiSetupPrivate> uiSetup;

    /// The handle that belongs to this body, null once it is gone.
    Module* owner = nullptr;

protected:
    /// Destroys the owner, unless that has cut itself off before.
    ~ModulePrivate() override;
};

} // namespace vfApplication
