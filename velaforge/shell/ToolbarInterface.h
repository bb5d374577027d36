// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;

/// The base class of a toolkit side's toolbar. The toolkit side defines what the operations do; this library
/// does not call them. The destructor is not virtual: do not delete a toolbar through a pointer to this
/// class.
class VFAPPLICATION_EXPORT ToolbarInterface
{
public:
    /// Makes a toolbar.
    ToolbarInterface() = default;

    /// Copies nothing: the class has no fields.
    ToolbarInterface(const ToolbarInterface&) {}

    /// Copies nothing: the class has no fields.
    ToolbarInterface& operator=(const ToolbarInterface&) { return *this; }
    ~ToolbarInterface() = default;

    // In the order of their slots, which is part of the binary interface.

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void toolbarOperationA() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void toolbarOperationB() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void toolbarOperationC() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void toolbarOperationD() = 0;

    /// Returns the current application, null if there is none.
    Application* getApplication() const;
};

} // namespace vfApplication
