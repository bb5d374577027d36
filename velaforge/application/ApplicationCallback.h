// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class Application;
class Document;

/// What a program hears of its application's life. Registered with Application::registerCallback, which does
/// not own it: it must outlive its registration.
struct VFAPPLICATION_EXPORT ApplicationCallback
{
    ApplicationCallback() = default;
    ApplicationCallback(const ApplicationCallback&) = default;
    ApplicationCallback(ApplicationCallback&&) = default;
    ApplicationCallback& operator=(const ApplicationCallback&) = default;
    ApplicationCallback& operator=(ApplicationCallback&&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// The shell exists, and has not been prepared. Does nothing here.
    virtual void onApplicationInterfaceCreated(Application* application);

    /// The shell is prepared and no document is open: the last place to take options of the program's own off
    /// the command line. @return 0 to go on; anything else ends Application::run with that value
    virtual int onApplicationInitialized(Application* application) = 0;

    /// A view's document is closing; the pointer is still valid.
    virtual void onClosingDocument(Document* document) = 0;

    /// A document was made, or now shows another file.
    virtual void onDocumentCreated(Document* document) = 0;

    /// For programs to use as they like; never called by this library.
    virtual void callbackExtension() = 0;
};

} // namespace vfApplication
