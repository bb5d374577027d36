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

/// The root object of a program: main makes one and returns the result of its run().
///
///     int main(int argc, char** argv)
///     {
///         vfApplication::ApplicationProducer::Realizer = &producer;  // of the toolkit side
///         vfApplication::Application application(argc, argv, MySetup());
///         return application.run();
///     }
///
/// It fixes the order of start and stop, owns the document manager and the dock window manager, and reaches
/// the screen only through the shell, an ApplicationInterface that ApplicationProducer::Realizer makes.
/// Everything belongs to the thread that calls run().
class VFAPPLICATION_EXPORT Application
{
public:
    /// Makes the document manager and the dock window manager, calls
    /// ApplicationSetup::onRegisterDocumentType, and adds the application's module to ModuleRegistry, which
    /// searches for modules when it is first used. Does not read the command line and does not make the
    /// shell.
    /// @param argc   number of arguments; must live as long as the application
    /// @param argv   arguments; must live as long as the application
    /// @param setup  read in this constructor only
    Application(int& argc, char** argv, const ApplicationSetup& setup);

    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Destroys the dock window manager, closes the documents while the shell still exists, then has the
    /// producer release the shell. Modules and settings are destroyed when the process ends.
    virtual ~Application();

    /// Returns the document manager. A derived application may return another one.
    virtual DocManager& getDocManager() const;

    /// Returns the current application: the one constructed last, null if there is none. Never makes one. If
    /// @p erase is true, deletes the current application first.
    static Application* instance(bool erase);

    // --- after construction

    /// Loads the settings, reads the command line, makes the shell, opens the documents that the command line
    /// names, runs the event loop and saves the settings.
    /// @return the exit code of the program: 1 if help was shown, 2 for errors on the command line before the
    ///         start, 3 for errors on the command line after the documents were opened, otherwise the value
    ///         that the shell or the callback returned. getLastError() returns the reason for 1, 2, 3 and for
    ///         a failure before the event loop.
    /// @throws any exception of the shell, the callback or DocManager::createDocument
    int run();

    /// Returns the reason why run() failed; empty if it did not.
    const char* getLastError() const;

    /// Sets the program's callback, which replaces the one set before. The caller owns it and keeps it alive
    /// until removeCallback().
    void registerCallback(ApplicationCallback* callback);

    /// Removes the program's callback.
    void removeCallback();

    /// Returns the parser of the command line, from which a shell, callback or module reads its options.
    vfBase::ArgumentParser& getArgumentParser() const;

    /// Returns the number of arguments left on the command line, program name included.
    int& getArgumentCount() const;

    /// Returns the arguments left on the command line.
    char** getArgumentVector() const;

    /// Deletes the document manager, which closes its documents and deletes its templates, and takes
    /// ownership of @p manager. Does nothing if @p manager is the present one.
    void setDocManager(DocManager* manager);

    /// Returns the dock window manager.
    DockWindowManager& getDockWindowManager();

    /// Returns the dock window manager.
    const DockWindowManager& getDockWindowManager() const;

    /// Returns the body, which the application owns.
    ApplicationPrivate* getImp() const { return d; }

    /// Returns argv[0]; empty if there is no argument.
    const char* getApplicationFilePath() const;

    /// Returns the directory of argv[0]; empty if it has none.
    const char* getApplicationPath() const;

    // --- once ApplicationProducer::Realizer is set: the first call makes the shell; normally run() makes
    // that call

    /// Has the shell leave its event loop with the exit code @p code. May be called before run().
    void exit(int code);

    /// Returns the shell, the same for the whole process; null while the producer makes it.
    ApplicationInterface* getApplicationInterface();

    /// Returns the shell's status bar.
    StatusBar& getStatusBar();

    /// Returns the shell's status bar.
    const StatusBar& getStatusBar() const;

    /// Calls ApplicationCallback::onClosingDocument if there is a callback. View::onClosingDocument calls
    /// this.
    void onClosingDocument(Document* document);

    // --- documents

    /// Opens the files that the command line of @p parser names, in order. Skips every option and consumes
    /// "--log", which sets the option "LOG" for the documents. Prints a line to standard output for each
    /// document.
    void openDocuments(vfBase::ArgumentParser* parser);

    /// Makes an empty document, see DocManager::createNewDocument.
    /// @return null if no template was chosen or the document refused
    Document* newDocument();

    /// Opens a file, see DocManager::createDocument.
    /// @param path     path of the file
    /// @param options  options for the document
    /// @param third    has no effect
    /// @return the document; null if the file could not be opened
    Document* openDocument(const char* path, const vfBase::Options& options, const char* third = nullptr);

    /// Closes @p document, after asking the user about unsaved changes.
    /// @return false if the document stays open, and for null
    bool closeDocument(Document* document);

    /// Returns the open document with the file name @p path, compared byte by byte; null if there is none.
    Document* findDocument(const char* path);

    /// Returns the document of the current view, null if there is none.
    Document* getActiveDocument() const;

    /// Makes the first view of @p document, which must not be null, the current view.
    void setActiveDocument(Document* document);

    /// Returns the number of open documents.
    unsigned int getNumDocuments() const;

    /// Updates all views of every second document, beginning with the first. Call it only with an even number
    /// of documents.
    void onUpdate();

    /// Returns the stored working directory if it exists, otherwise the user's documents directory.
    const char* getWorkingLocation() const;

    /// Stores the working directory in ApplicationSettings. Does nothing if @p path is no existing directory.
    void setWorkingLocation(const char* path);

    // --- identity, see vfBase::ApplicationInfo, and locations, see vfBase::StandardPaths. The pointers are
    // valid until the value is set again.

    /// Returns the name of the application.
    const char* getApplicationName() const;

    /// Returns the version of the application.
    const char* getApplicationVersion() const;

    /// Returns the name of the application's icon, see vfBase::ApplicationInfo::setApplicationIconName.
    const char* getApplicationIconName() const;

    /// Returns the address of the application's web site.
    const char* getApplicationUrl() const;

    /// Returns the address of the online help.
    const char* getApplicationOnlineHelpUrl() const;

    /// Returns the name of the vendor.
    const char* getApplicationVendorName() const;

    /// Returns the short name of the vendor, which names the directory of the settings.
    const char* getApplicationVendorShortName() const;

    /// Returns the address of the vendor's web site.
    const char* getApplicationVendorUrl() const;

    /// Returns the vendor's text for the title bar.
    const char* getApplicationVendorBanner() const;

    /// Returns the image of the splash screen, see vfBase::ApplicationInfo::setSplashImageName.
    const char* getSplashImageName() const;

    /// Returns the user's documents directory.
    const char* getDocumentsLocation() const;

    /// Returns the directory for temporary files.
    const char* getTempLocation() const;

    /// Returns the user's home directory.
    const char* getHomeLocation() const;

    /// Returns the directory for the application's data files.
    const char* getDataLocation() const;

    /// Returns the path of the settings file.
    const char* getUserSettingsFilePath() const;

    /// Returns where the splash screen shows its text, see ApplicationSettings::getSplashHorizontalAlignmet.
    const char* getSplashHorizontalAlignmet() const;

    /// Returns where the splash screen shows its text, see ApplicationSettings::getSplashVerticalAlignmet.
    const char* getSplashVerticalAlignmet() const;

    /// Sets @p r, @p g and @p b, each from 0 to 1, to the colour of the text on the splash screen.
    void getSplashTextColor(float& r, float& g, float& b) const;

private:
    ApplicationPrivate* d;
};

/// Returns "velaFORGE Application Library".
VFAPPLICATION_EXPORT const char* getLibraryName();

/// Returns the version of the library: that of vfBase::getVersion().
VFAPPLICATION_EXPORT const char* getVersion();

} // namespace vfApplication
