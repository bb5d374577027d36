// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

/// The base class of a toolkit side's title bar. The toolkit side defines what the operations do; this
/// library does not call them. The destructor is not virtual: do not delete a title bar through a pointer to
/// this class.
class VFAPPLICATION_EXPORT TitleBarInterface
{
public:
    /// Makes a title bar.
    TitleBarInterface() = default;

    /// Copies nothing: the class has no fields.
    TitleBarInterface(const TitleBarInterface&) {}

    /// Copies nothing: the class has no fields.
    TitleBarInterface& operator=(const TitleBarInterface&) { return *this; }
    ~TitleBarInterface() = default;

    // In the order of their slots, which is part of the binary interface.

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void titleBarOperationA() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void titleBarOperationB() = 0;
};

} // namespace vfApplication
