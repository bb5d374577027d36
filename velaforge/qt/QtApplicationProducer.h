// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/qt/Export.h>

namespace vfApplication {

/// Makes the shell with a window.
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::QtApplicationProducer::install();
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
struct VFAPPLICATIONQT_EXPORT QtApplicationProducer : ApplicationProducer
{
    /// Makes this kind of shell, and of dock windows, the one of the process. Before the application is constructed.
    static void install();

    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~QtApplicationProducer() override;
};

} // namespace vfApplication
