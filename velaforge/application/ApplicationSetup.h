// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class UiSetup;

/// What a program declares of itself. Application reads it within its constructor only; a plain one declares nothing.
///
///     class Setup : public vfApplication::ApplicationSetup
///     {
///     public:
///         void onRegisterDocumentType() const override;  // makes the DocTemplates
///     };
class VFAPPLICATION_EXPORT ApplicationSetup
{
public:
    ApplicationSetup() = default;
    ApplicationSetup(const ApplicationSetup&) = default;
    ApplicationSetup& operator=(const ApplicationSetup&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~ApplicationSetup();

    /// The user interface that the application declares of itself, read once.
    /// @return here a MinimalUiSetup that all share, until the process ends
    virtual const UiSetup& getUiSetup() const;

    /// Declares the kinds of document; Application::instance(false)->getDocManager() is there to take them.
    virtual void onRegisterDocumentType() const;
};

} // namespace vfApplication
