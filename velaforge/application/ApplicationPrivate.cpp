// SPDX-License-Identifier: MIT
#include <velaforge/application/ApplicationPrivate.h>

#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocManagerProducer.h>

#include <osgDB/FileNameUtils>

#include <cassert>
#include <utility>

namespace vfApplication {

Application* ApplicationPrivate::_s_Application = nullptr;

ApplicationPrivate::ApplicationPrivate(int& argc, char** argv)
{
    std::unique_ptr<DocManager> documents(
        DocManagerProducer::Realizer ? DocManagerProducer::Realizer->create() : new DocManager(true));
    docManager = documents.get();
    applicationFilePath = argc >= 1 && argv && argv[0] ? argv[0] : "";
    applicationPath = osgDB::getFilePath(applicationFilePath);
    argumentParser = std::make_unique<vfBase::ArgumentParser>(&argc, argv);
    dockWindowManager.reset(new DockWindowManager);
    static_cast<void>(documents.release()); // nothing throws any more
}

ApplicationPrivate::ApplicationPrivate(ApplicationPrivate& other)
    : argumentParser(std::move(other.argumentParser)),
      applicationPath(other.applicationPath),
      applicationFilePath(other.applicationFilePath),
      lastError(other.lastError),
      dockWindowManager(other.dockWindowManager),
      exitRequested(other.exitRequested),
      exitCode(other.exitCode),
      callback(other.callback),
      docManager(other.docManager)
{}

ApplicationPrivate& ApplicationPrivate::operator=(ApplicationPrivate& other)
{
    if (this == &other)
        return *this;
    argumentParser = std::move(other.argumentParser);
    applicationPath = other.applicationPath;
    applicationFilePath = other.applicationFilePath;
    lastError = other.lastError;
    dockWindowManager = other.dockWindowManager;
    exitRequested = other.exitRequested;
    exitCode = other.exitCode;
    callback = other.callback;
    docManager = other.docManager;
    return *this;
}

ApplicationPrivate::~ApplicationPrivate()
{
    // The dock windows go before the documents that they may show.
    std::shared_ptr<DockWindowManager>(std::move(dockWindowManager)).reset();
    // The manager closes what is open, and closing reaches the shell through the current application.
    delete docManager;
    if (ApplicationProducer::Realizer)
        ApplicationProducer::Realizer->destroy();
    _s_Application = nullptr;
}

ApplicationInterface* ApplicationPrivate::uif()
{
    // Once in the process: a later application gets the shell that was made for the first.
    static ApplicationInterface* shell = [this] {
        assert(ApplicationProducer::Realizer && "a toolkit side must set ApplicationProducer::Realizer");
        return ApplicationProducer::Realizer->create(_s_Application, argumentParser->getArgumentCount(),
                                                     argumentParser->getArgumentVector(), false);
    }();
    return shell;
}

const ApplicationInterface* ApplicationPrivate::uif() const
{
    return const_cast<ApplicationPrivate*>(this)->uif();
}

DocManager& ApplicationPrivate::getDocManager() const
{
    return *docManager;
}

void ApplicationPrivate::setDocManager(DocManager* manager)
{
    if (manager == docManager)
        return;
    delete docManager;
    docManager = manager;
}

void ApplicationPrivate::registerCallback(ApplicationCallback* newCallback)
{
    callback = newCallback;
}

void ApplicationPrivate::removeCallback()
{
    callback = nullptr;
}

void ApplicationPrivate::onApplicationInterfaceCreated()
{
    if (callback)
        callback->onApplicationInterfaceCreated(_s_Application);
}

int ApplicationPrivate::onApplicationInitialized()
{
    return callback ? callback->onApplicationInitialized(_s_Application) : 0;
}

bool ApplicationPrivate::addDocument(const char*, Document* document)
{
    docManager->addDocument(document);
    return true;
}

bool ApplicationPrivate::eraseDocument(const char* path)
{
    Document* document = docManager->findDocumentByPath(path);
    if (!document)
        return false;
    docManager->removeDocument(document);
    return true;
}

Document* ApplicationPrivate::findDocument(const char* path) const
{
    return docManager->findDocumentByPath(path);
}

} // namespace vfApplication
