// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;
class ApplicationInterface;

/// Makes the shell. A toolkit side derives from it, makes one and stores it in Realizer before the
/// application is constructed; this library never assigns or deletes it.
struct VFAPPLICATION_EXPORT ApplicationProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static ApplicationProducer* Realizer;

    ApplicationProducer() = default;
    ApplicationProducer(const ApplicationProducer&) = default;
    ApplicationProducer& operator=(const ApplicationProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// With @p destroy false, which comes once in the process: makes the shell.
    /// @return the shell, never null; it stays the producer's, and must live until create is called with
    ///         @p destroy true, which releases it. Then the application and @p argv are null, @p argc
    ///         refers to 0, and the result is ignored.
    virtual ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) = 0;

    /// Has the shell released, when the application is destroyed: calls create on Realizer with true.
    virtual void destroy();

protected:
    virtual ~ApplicationProducer();
};

} // namespace vfApplication
