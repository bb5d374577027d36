// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

/// A title bar that a toolkit side realises. This library calls neither operation: toolkit sides give them a meaning.
/// The destructor is not virtual, so title bars are not to be deleted by a pointer to this class.
class VFAPPLICATION_EXPORT TitleBarInterface
{
public:
    TitleBarInterface() = default;
    TitleBarInterface(const TitleBarInterface&) {}
    TitleBarInterface& operator=(const TitleBarInterface&) { return *this; }
    ~TitleBarInterface() = default;

    // In the order of their slots, which is part of the binary interface.
    virtual void titleBarOperationA() = 0;
    virtual void titleBarOperationB() = 0;
};

} // namespace vfApplication
