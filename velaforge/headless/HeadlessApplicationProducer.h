// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// Makes the shell of a program without a screen.
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::HeadlessApplicationProducer::install();
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
struct VFAPPLICATIONHEADLESS_EXPORT HeadlessApplicationProducer : ApplicationProducer
{
    /// Sets the producers of the shell, of dock windows and of the document manager (HeadlessDocManager) for
    /// the process, and opens standard streams that are closed on /dev/null. Call it before the application is
    /// constructed.
    static void install();

    /// Returns the shell, which is made once and never destroyed. If @p destroy is true, resets it for the
    /// next application.
    /// @p application, @p argc and @p argv have no effect.
    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~HeadlessApplicationProducer() override;
};

} // namespace vfApplication
