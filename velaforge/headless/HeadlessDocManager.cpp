// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessDocManager.h>

#include <velaforge/base/FileNames.h>
#include <velaforge/documents/Document.h>
#include <velaforge/toolkit/GuardedDocuments.h>
#include <velaforge/toolkit/Tell.h>

#include <string>

namespace vfApplication {

namespace {

bool isNew(const vfBase::Options& options)
{
    return options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
}

} // namespace

struct HeadlessDocManagerPrivate
{
    unsigned int failureCount = 0;
};

HeadlessDocManager::HeadlessDocManager() : d(std::make_unique<HeadlessDocManagerPrivate>()) {}

HeadlessDocManager::~HeadlessDocManager()
{
    closeAll();
}

void HeadlessDocManager::closeAll()
{
    while (getNumDocuments() > 0) {
        Document* document = getDocumentList()[0];
        const vfBase::VfString name = document->getUserReadableName();
        std::string problem;
        closeGuarded(*this, *document, true, problem);
        if (!problem.empty())
            tell(name, "could not be closed: " + problem);
    }
}

Document* HeadlessDocManager::createDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    const unsigned int failuresBefore = d->failureCount;
    const vfBase::VfString absolute = vfBase::absolutePath(path);
    Document* document = nullptr;
    std::string reason = runReading(
        [&] { return (document = DocManager::createDocument(absolute, options)) != nullptr; }, std::string());
    if (document)
        return document;
    if (reason.empty() && !isNew(options))
        reason = reasonNotReadable(*this, absolute, options);
    if (reason.empty())
        reason = isNew(options) ? "could not be made" : "could not be opened";
    if (d->failureCount == failuresBefore)
        reportFailure(path.empty() ? vfBase::VfString("a new document") : path, reason);
    return nullptr;
}

bool HeadlessDocManager::updateDocument(Document* document, const vfBase::VfString& path,
                                        const vfBase::Options& options)
{
    if (!document)
        return false;
    const unsigned int failuresBefore = d->failureCount;
    const vfBase::VfString absolute = vfBase::absolutePath(path);
    const vfBase::VfString before = document->getFilename();
    bool isDone = false;
    std::string reason = runReading(
        [&] { return isDone = DocManager::updateDocument(document, absolute, options); }, std::string());
    if (isDone)
        return true;
    if (containsDocument(document) && document->getFilename() != before)
        document->setFilename(before, false); // the base class does not after an exception
    if (reason.empty())
        reason = reasonNotReadable(*this, absolute, options);
    if (d->failureCount == failuresBefore)
        reportFailure(path, reason.empty() ? "could not be opened" : reason);
    return false;
}

int HeadlessDocManager::askForUserConfirmation()
{
    return 2;
}

vfBase::VfString HeadlessDocManager::selectDocumentSavePath(const char*, const char* name, const char*,
                                                            const char*, vfBase::Options&)
{
    reportFailure(name, "not saved: it has no file yet, and without a window none can be chosen");
    return vfBase::VfString();
}

void HeadlessDocManager::reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    noteFailure();
    tell(path, reason);
}

unsigned int HeadlessDocManager::getFailureCount() const
{
    return d->failureCount;
}

void HeadlessDocManager::noteFailure()
{
    ++d->failureCount;
}

} // namespace vfApplication
