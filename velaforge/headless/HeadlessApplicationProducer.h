// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// Makes the shell without a screen.
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::HeadlessApplicationProducer::install();
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
struct VFAPPLICATIONHEADLESS_EXPORT HeadlessApplicationProducer : ApplicationProducer
{
    /// Makes this kind of shell, and of dock windows, the one of the process. Before the application is constructed.
    static void install();

    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~HeadlessApplicationProducer() override;
};

} // namespace vfApplication
