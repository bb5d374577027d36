// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;
class Document;

/// The program's callback: Application calls its operations as it starts and as documents are made and
/// closed.
///
/// A program derives from it and registers an object with Application::registerCallback. The program owns the
/// object and keeps it alive while it is registered.
struct VFAPPLICATION_EXPORT ApplicationCallback
{
    /// Makes a callback that is not registered.
    ApplicationCallback() = default;

    /// Copies nothing: the class has no fields.
    ApplicationCallback(const ApplicationCallback&) = default;

    /// Moves nothing: the class has no fields.
    ApplicationCallback(ApplicationCallback&&) = default;

    /// Copies nothing: the class has no fields.
    ApplicationCallback& operator=(const ApplicationCallback&) = default;

    /// Moves nothing: the class has no fields.
    ApplicationCallback& operator=(ApplicationCallback&&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Called when @p application has a shell, before ApplicationInterface::onBeforeRun. Does nothing here.
    virtual void onApplicationInterfaceCreated(Application* application);

    /// Called when the shell of @p application is prepared and no document is open. The program must have
    /// read its own options from the command line when this returns.
    /// @return 0 to go on; Application::run returns any other value at once
    virtual int onApplicationInitialized(Application* application) = 0;

    /// Called when @p document closes, once for each of its views. The pointer is still valid.
    virtual void onClosingDocument(Document* document) = 0;

    /// Called when @p document was made or has loaded another file.
    virtual void onDocumentCreated(Document* document) = 0;

    /// An operation that the program defines. This library does not call it.
    virtual void callbackExtension() = 0;
};

} // namespace vfApplication
