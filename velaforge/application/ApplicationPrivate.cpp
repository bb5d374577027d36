// SPDX-License-Identifier: MIT
#include <velaforge/application/ApplicationPrivate.h>

#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Require.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocManagerProducer.h>

#include <osgDB/FileNameUtils>

#include <utility>

namespace vfApplication {

namespace {

const vfBase::Call deletingManager{"Application::setDocManager"};
const vfBase::Call creatingShell{"ApplicationProducer::create"};

} // namespace

Application* ApplicationPrivate::_s_Application = nullptr;

ApplicationPrivate::ApplicationPrivate(int& argc, char** argv)
{
    vfBase::CopyGroup::leave(this);
    std::unique_ptr<DocManager> documents(
        DocManagerProducer::Realizer ? DocManagerProducer::Realizer->create() : new DocManager(true));
    docManager = documents.get();
    applicationFilePath = argc >= 1 && argv && argv[0] ? argv[0] : "";
    applicationPath = osgDB::getFilePath(applicationFilePath);
    argumentParser = std::make_unique<vfBase::ArgumentParser>(&argc, argv);
    dockWindowManager.reset(new DockWindowManager);
    static_cast<void>(documents.release()); // no step below throws
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
{
    vfBase::CopyGroup::join(this, &other);
}

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
    if (docManager != other.docManager) {
        // By contract the former manager is never deleted: other bodies may share it.
        vfBase::CopyGroup::join(this, &other);
        vfBase::leakForProcess(docManager);
        docManager = other.docManager;
    }
    return *this;
}

ApplicationPrivate::~ApplicationPrivate()
{
    // Before the documents, because dock windows may show them.
    std::shared_ptr<DockWindowManager>(std::move(dockWindowManager)).reset();
    // Closes the documents. That calls the shell through the current application, so both must still exist.
    deleteManager();
    if (ApplicationProducer::Realizer)
        ApplicationProducer::Realizer->destroy();
    _s_Application = nullptr;
}

ApplicationInterface* ApplicationPrivate::uif()
{
    // The producer may call this while it makes the shell: there is none yet.
    if (vfBase::RunningCall<ApplicationPrivate>::isRunning(this, creatingShell))
        return nullptr;
    const vfBase::RunningCall<ApplicationPrivate> running(this, creatingShell);
    // Once in the process: a later application uses the same shell.
    static ApplicationInterface* shell = [this] {
        VF_REQUIRE(ApplicationProducer::Realizer, "Application::run",
                   "no toolkit side has set ApplicationProducer::Realizer");
        return ApplicationProducer::Realizer->create(_s_Application, argumentParser->getArgumentCount(),
                                                     argumentParser->getArgumentVector(), false);
    }();
    return shell;
}

const ApplicationInterface* ApplicationPrivate::uif() const
{
    return const_cast<ApplicationPrivate*>(this)->uif();
}

void ApplicationPrivate::deleteManager()
{
    VF_REQUIRE(!vfBase::RunningCall<ApplicationPrivate>::isRunning(this, deletingManager),
               "Application::setDocManager", "called while the present manager is destroyed");
    const vfBase::RunningCall<ApplicationPrivate> running(this, deletingManager);
    // Cleared after the deletion: the documents that the manager closes may call getDocManager.
    if (!docManager)
        vfBase::CopyGroup::leave(this);
    else if (vfBase::CopyGroup::end(this))
        delete docManager;
    docManager = nullptr;
}

DocManager& ApplicationPrivate::getDocManager() const
{
    VF_REQUIRE(docManager, "Application::getDocManager", "there is no document manager");
    return *docManager;
}

void ApplicationPrivate::setDocManager(DocManager* manager)
{
    VF_REQUIRE_APPLICATION_THREAD("Application::setDocManager");
    if (manager == docManager)
        return;
    deleteManager();
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
    getDocManager().addDocument(document);
    return true;
}

bool ApplicationPrivate::eraseDocument(const char* path)
{
    Document* document = getDocManager().findDocumentByPath(path);
    if (!document)
        return false;
    getDocManager().removeDocument(document);
    return true;
}

Document* ApplicationPrivate::findDocument(const char* path) const
{
    return getDocManager().findDocumentByPath(path);
}

} // namespace vfApplication
