// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

#include <osg/Referenced>

namespace vfApplication {

class UiSetup;

/// Body of UiSetup.
class VFAPPLICATION_EXPORT UiSetupPrivate : public osg::Referenced
{
public:
    /// Makes a body without an owner.
    UiSetupPrivate() = default;
    UiSetupPrivate(const UiSetupPrivate&) = delete;
    UiSetupPrivate& operator=(const UiSetupPrivate&) = delete;

    /// Deletes the present owner if it is another one, and sets the owner to @p setup, which has a reference
    /// on this body.
    void setOwner(UiSetup* setup);

    /// The handle that belongs to this body, null after its destruction.
    UiSetup* owner = nullptr;

protected:
    /// Deletes the owner, unless it was destroyed before.
    ~UiSetupPrivate() override;
};

} // namespace vfApplication
