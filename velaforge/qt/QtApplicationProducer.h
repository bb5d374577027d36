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
    /// Sets the producers of the shell, of dock windows and of the document manager (QtDocManager) for the
    /// process, and opens standard streams that are closed on /dev/null. Call it before the application is
    /// constructed.
    static void install();

    /// Returns the shell, which is made once and never destroyed. If @p destroy is true, destroys its window
    /// and the QApplication; the next application uses the same shell. @p application, @p argc and @p argv
    /// are those of the application.
    ApplicationInterface* create(Application* application, int& argc, char** argv, bool destroy) override;

protected:
    ~QtApplicationProducer() override;
};

} // namespace vfApplication
