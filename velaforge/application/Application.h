// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Options.h>

namespace vfBase {
class ArgumentParser;
}

namespace vfApplication {

class ApplicationInterface;
class ApplicationPrivate;
class ApplicationSetup;
struct ApplicationCallback;
class DocManager;
class DockWindowManager;
class Document;
class StatusBar;

/// The root of a program: one object, made in main, whose run() is the program.
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::ApplicationProducer::Realizer = &producer;  // of the toolkit side
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
///
/// It fixes the order of start and stop, owns the documents' manager and reaches the screen only through the
/// shell that the producer makes. Everything belongs to the thread that calls run().
class VFAPPLICATION_EXPORT Application
{
public:
    /// Makes the managers of documents and dock windows, lets @p setup declare the kinds of document, and gives the
    /// module that stands for the application to ModuleRegistry, which looks for further modules when it is used for the
    /// first time. The command line is not looked at and the shell does not exist yet.
    /// @param argc, argv  must live as long as the application
    Application(int& argc, char** argv, const ApplicationSetup& setup);

    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Lets the dock windows go, then closes the documents, while the shell is still there, and has the shell released.
    /// Modules and settings stay until the process ends.
    virtual ~Application();

    /// @return the manager of all documents; a derived application may have one of its own
    virtual DocManager& getDocManager() const;

    /// @param erase  deletes the current application first
    /// @return the current application, the one constructed last; null when there is none. Never makes one.
    static Application* instance(bool erase);

    // --- after construction

    /// Loads the settings, reads the command line, makes the shell, opens the documents named, runs the event loop
    /// and saves the settings.
    /// @return the exit code of the program: 1 help was shown, 2 errors on the command line before the start,
    ///         3 errors on the command line after the documents were opened, otherwise what the shell or the
    ///         callback returned. getLastError() tells the reason where this object found it.
    int run();

    /// @return why run() failed; empty before, and where it did not
    const char* getLastError() const;

    /// Registers the program's callback, instead of the one before; not owned.
    void registerCallback(ApplicationCallback* callback);
    void removeCallback();

    /// The command line, for those who read options of their own.
    vfBase::ArgumentParser& getArgumentParser() const;
    int& getArgumentCount() const;
    char** getArgumentVector() const;

    /// Deletes the manager, with its documents and templates, and takes @p manager over in its place.
    /// Nothing happens when it is the present one.
    void setDocManager(DocManager* manager);

    /// @return the table of the dock windows
    DockWindowManager& getDockWindowManager();
    const DockWindowManager& getDockWindowManager() const;

    ApplicationPrivate* getImp() const { return d; }

    /// @return argv[0] and its directory; empty when there is none
    const char* getApplicationFilePath() const;
    const char* getApplicationPath() const;

    // --- once there is a producer: the first call makes the shell, in the normal case from run()

    /// Asks the shell to leave its event loop.
    void exit(int code);

    /// @return the shell, which stays the same until the process ends; null while the producer makes it
    ApplicationInterface* getApplicationInterface();

    /// @return the shell's status bar
    StatusBar& getStatusBar();
    const StatusBar& getStatusBar() const;

    /// Tells the callback, if there is one.
    void onClosingDocument(Document* document);

    // --- documents

    /// Opens what the command line names, in order, past every option, and takes "--log" off it.
    void openDocuments(vfBase::ArgumentParser* parser);

    /// Makes an empty document, see DocManager::createNewDocument.
    Document* newDocument();

    /// Opens a file, see DocManager::createDocument. @param third  has no effect
    Document* openDocument(const char* path, const vfBase::Options& options, const char* third = nullptr);

    /// Closes a document, with the question about unsaved changes. @return false for null and when it stays open
    bool closeDocument(Document* document);

    /// @return the open document of just this file name, null when there is none
    Document* findDocument(const char* path);

    /// @return the document of the current view, null when there is none
    Document* getActiveDocument() const;

    /// Makes the first view of @p document the current one; must not be null.
    void setActiveDocument(Document* document);

    unsigned int getNumDocuments() const;

    /// Has every other document, beginning with the first, update its views. Only for an even number of documents.
    void onUpdate();

    /// @return the directory that the user works in, or the user's documents while that does not exist
    const char* getWorkingLocation() const;

    /// Keeps @p path if that is an existing directory, and does nothing otherwise.
    void setWorkingLocation(const char* path);

    // --- identity and places; the texts belong to vfBase and stay valid until they are set anew

    const char* getApplicationName() const;
    const char* getApplicationVersion() const;
    const char* getApplicationIconName() const;
    const char* getApplicationUrl() const;
    const char* getApplicationOnlineHelpUrl() const;
    const char* getApplicationVendorName() const;
    const char* getApplicationVendorShortName() const;
    const char* getApplicationVendorUrl() const;
    const char* getApplicationVendorBanner() const;
    const char* getSplashImageName() const;
    const char* getDocumentsLocation() const;
    const char* getTempLocation() const;
    const char* getHomeLocation() const;
    const char* getDataLocation() const;
    const char* getUserSettingsFilePath() const;

    /// The look of the splash screen, for the toolkit side; colours from 0 to 1.
    const char* getSplashHorizontalAlignmet() const;
    const char* getSplashVerticalAlignmet() const;
    void getSplashTextColor(float& r, float& g, float& b) const;

private:
    ApplicationPrivate* d;
};

/// @return "velaFORGE Application Library"
VFAPPLICATION_EXPORT const char* getLibraryName();

/// @return the version of the family, as vfBase::getVersion()
VFAPPLICATION_EXPORT const char* getVersion();

} // namespace vfApplication
