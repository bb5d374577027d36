// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class UiSetup;

/// Declares the user interface and the kinds of document of a program. The constructor of Application reads
/// it. An object of this class itself declares a MinimalUiSetup and no documents.
///
///     class Setup : public vfApplication::ApplicationSetup
///     {
///     public:
///         void onRegisterDocumentType() const override;  // makes the DocTemplates
///     };
class VFAPPLICATION_EXPORT ApplicationSetup
{
public:
    /// Makes a setup.
    ApplicationSetup() = default;

    /// Copies nothing: the class has no fields.
    ApplicationSetup(const ApplicationSetup&) = default;

    /// Copies nothing: the class has no fields.
    ApplicationSetup& operator=(const ApplicationSetup&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~ApplicationSetup();

    /// Returns the declaration of the application's user interface, which must live as long as the
    /// application. Here it is a MinimalUiSetup that all applications of the process share.
    virtual const UiSetup& getUiSetup() const;

    /// Makes the document templates, with Application::instance(false)->getDocManager() as their manager.
    /// Does nothing here.
    virtual void onRegisterDocumentType() const;
};

} // namespace vfApplication
