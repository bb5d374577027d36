// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/qt/Export.h>

namespace vfApplication {

/// Makes the shell of a program with a window.
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::QtApplicationProducer::install();
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
struct VFAPPLICATIONQT_EXPORT QtApplicationProducer : ApplicationProducer
{
    /// Makes this kind of shell, of dock windows and of document manager (QtDocManager) the ones of the process. Must be
    /// called before the application is constructed. Opens standard streams that are closed on /dev/null.
    static void install();

    /// Returns the shell, which is made once and never destroyed. @param destroy  the application ends: the shell destroys
    /// its window and the QApplication, and serves the next application

    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~QtApplicationProducer() override;
};

} // namespace vfApplication
