// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;

/// A toolbar that a toolkit side realises. This library calls none of the operations: toolkit sides give them a meaning.
/// The destructor is not virtual, so toolbars are not to be deleted by a pointer to this class.
class VFAPPLICATION_EXPORT ToolbarInterface
{
public:
    ToolbarInterface() = default;
    ToolbarInterface(const ToolbarInterface&) {}
    ToolbarInterface& operator=(const ToolbarInterface&) { return *this; }
    ~ToolbarInterface() = default;

    // In the order of their slots, which is part of the binary interface.
    virtual void toolbarOperationA() = 0;
    virtual void toolbarOperationB() = 0;
    virtual void toolbarOperationC() = 0;
    virtual void toolbarOperationD() = 0;

    /// @return the current application, null when there is none
    Application* getApplication() const;
};

} // namespace vfApplication
