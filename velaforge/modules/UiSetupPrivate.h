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
    UiSetupPrivate() = default;
    UiSetupPrivate(const UiSetupPrivate&) = delete;
    UiSetupPrivate& operator=(const UiSetupPrivate&) = delete;

    /// Destroys the present owner, if that is another, and takes the new one, which holds a count already.
    void setOwner(UiSetup* setup);

    /// The handle that belongs to this body, null once it is gone.
    UiSetup* owner = nullptr;

protected:
    /// Destroys the owner, unless that has cut itself off before.
    ~UiSetupPrivate() override;
};

} // namespace vfApplication
