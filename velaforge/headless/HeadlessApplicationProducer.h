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
    /// Makes this kind of shell, of dock windows and of document manager (HeadlessDocManager) the ones of the process. Must
    /// be called before the application is constructed. Opens standard streams that are closed on /dev/null.
    static void install();

    /// Returns the shell, which is made once and never destroyed. @param destroy  the application ends: the shell forgets
    /// what belongs to it, and serves the next application

    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~HeadlessApplicationProducer() override;
};

} // namespace vfApplication
