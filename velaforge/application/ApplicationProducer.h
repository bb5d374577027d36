// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;
class ApplicationInterface;

/// Makes and releases the shell. A toolkit side derives from it, makes one and stores it in Realizer before
/// the application is constructed. This library neither assigns nor deletes a producer.
struct VFAPPLICATION_EXPORT ApplicationProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static ApplicationProducer* Realizer;

    /// Makes a producer that is not in use.
    ApplicationProducer() = default;

    /// Copies nothing: the class has no fields.
    ApplicationProducer(const ApplicationProducer&) = default;

    /// Copies nothing: the class has no fields.
    ApplicationProducer& operator=(const ApplicationProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Makes the shell if @p destroy is false, which happens once in a process; releases it if @p destroy is
    /// true. This library keeps the pointer for the process, and a later Application uses the same shell.
    /// @param application  the current application; null to release the shell
    /// @param argc         number of arguments; 0 to release the shell
    /// @param argv         arguments; null to release the shell
    /// @param destroy      whether to release the shell
    /// @return the shell, owned by the toolkit side and never null; ignored if @p destroy is true
    virtual ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) = 0;

    /// Calls create of Realizer with true, if there is a Realizer. The destructor of the application calls
    /// this.
    virtual void destroy();

protected:
    virtual ~ApplicationProducer();
};

} // namespace vfApplication
