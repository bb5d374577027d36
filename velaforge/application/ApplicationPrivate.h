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
    ApplicationPrivate(int& argc, char** argv);

    /// Take the parser away from @p other and share its managers. Nobody counts the holders of the document manager:
    /// of the two, one only may be destroyed with it. Assignment to itself changes nothing.
    ApplicationPrivate(ApplicationPrivate& other);
    ApplicationPrivate& operator=(ApplicationPrivate& other);

    virtual ~ApplicationPrivate();

    /// @return the shell of the process, made through ApplicationProducer::Realizer at the first call, which must
    ///         be set by then. The pointer stays the same until the process ends.
    ApplicationInterface* uif();
    const ApplicationInterface* uif() const;

    DocManager& getDocManager() const;

    /// Deletes the present manager and takes over the new one, unless they are the same.
    void setDocManager(DocManager* manager);

    void registerCallback(ApplicationCallback* newCallback);
    void removeCallback();
    void onApplicationInterfaceCreated();
    int onApplicationInitialized();

    /// Enters a document with the manager. @param path  has no effect @return true
    bool addDocument(const char* path, Document* document);

    /// Takes the document of that path off the manager's list, without deleting it. @return false if there is none
    bool eraseDocument(const char* path);

    Document* findDocument(const char* path) const;

    /// The current application, null when there is none.
    static Application* _s_Application;

    // The order decides what is destroyed last: the parser.
    std::unique_ptr<vfBase::ArgumentParser> argumentParser;
    std::string applicationPath;
    std::string applicationFilePath;
    std::string lastError;
    std::shared_ptr<DockWindowManager> dockWindowManager;
    bool exitRequested = false;
    int exitCode; // set by Application::exit
    ApplicationCallback* callback = nullptr;
    DocManager* docManager = nullptr;

private:
    void deleteManager();
};

} // namespace vfApplication
