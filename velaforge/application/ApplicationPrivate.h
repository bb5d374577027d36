// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/ArgumentParser.h>

#include <memory>
#include <string>

namespace vfApplication {

class Application;
class ApplicationInterface;
struct ApplicationCallback;
class DocManager;
class DockWindowManager;
class Document;

/// Body of Application.
class VFAPPLICATION_EXPORT ApplicationPrivate
{
public:
    /// Makes the document manager, the parser of @p argc and @p argv, and the dock window manager.
    ApplicationPrivate(int& argc, char** argv);

    /// Takes the parser from @p other, which has none afterwards, shares its managers and copies the other
    /// fields. The last body to be destroyed deletes the document manager.
    ApplicationPrivate(ApplicationPrivate& other);

    /// Does the same. The former document manager is never deleted. Assignment to itself changes nothing.
    ApplicationPrivate& operator=(ApplicationPrivate& other);

    /// Destroys the dock window manager, deletes the document manager, then has the producer release the
    /// shell.
    virtual ~ApplicationPrivate();

    /// Returns the shell of the process. The first call makes it through ApplicationProducer::Realizer, which
    /// must be set. The pointer stays the same until the process ends.
    ApplicationInterface* uif();

    /// Returns the same as the other form.
    const ApplicationInterface* uif() const;

    /// Returns the document manager.
    DocManager& getDocManager() const;

    /// Deletes the present document manager and takes ownership of @p manager, unless they are the same.
    void setDocManager(DocManager* manager);

    /// Sets the callback, which the caller owns.
    void registerCallback(ApplicationCallback* newCallback);

    /// Removes the callback.
    void removeCallback();

    /// Calls the operation of the same name of the callback, if there is one.
    void onApplicationInterfaceCreated();

    /// Calls the operation of the same name of the callback.
    /// @return its result; 0 without a callback
    int onApplicationInitialized();

    /// Adds @p document to the document manager. @p path has no effect.
    /// @return true
    bool addDocument(const char* path, Document* document);

    /// Removes the document with the file name @p path from the document manager, without deleting it.
    /// @return false if there is none
    bool eraseDocument(const char* path);

    /// Returns the open document with the file name @p path, null if there is none.
    Document* findDocument(const char* path) const;

    /// The current application, null if there is none.
    static Application* _s_Application;

    // Destroyed in reverse order: the parser last.

    std::unique_ptr<vfBase::ArgumentParser> argumentParser; ///< the command line
    std::string applicationPath;                            ///< directory of applicationFilePath
    std::string applicationFilePath;                        ///< argv[0], empty without arguments
    std::string lastError;                                  ///< why run() failed
    std::shared_ptr<DockWindowManager> dockWindowManager;   ///< the dock windows
    bool exitRequested = false;                             ///< set by Application::exit
    int exitCode;                                           ///< set by Application::exit, not initialized
    ApplicationCallback* callback = nullptr;                ///< not owned
    DocManager* docManager = nullptr;                       ///< owned

private:
    void deleteManager();
};

} // namespace vfApplication
