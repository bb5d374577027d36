// SPDX-License-Identifier: MIT
// The front door for documents: what Application passes on to its manager, and the road from the command line.
#include <velaforge/application/Application.h>

#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/Iterator.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>

#include <cassert>
#include <iostream>

namespace vfApplication {

void Application::openDocuments(vfBase::ArgumentParser* parser)
{
    const bool log = parser->readOptionParameter("--log"); // first: taken off also when no file is named
    if (parser->getArgumentCount() < 2)
        return;
    for (int i = 1; i < parser->getArgumentCount(); ++i) {
        if (parser->isOption(i))
            continue;
        vfBase::Options options;
        if (log)
            options.setPluginStringData("LOG", "TRUE");
        const char* path = parser->getArgumentAt(i);
        d->docManager->findDocumentByPath(path);
        if (d->docManager->createDocument(vfBase::VfString(path), options))
            std::cout << vfBase::ApplicationInfo::instance().getApplicationName() << ": No data loaded for "
                      << path << std::endl;
    }
}

Document* Application::newDocument()
{
    return d->docManager->createNewDocument();
}

Document* Application::openDocument(const char* path, const vfBase::Options& options, const char*)
{
    return d->docManager->createDocument(vfBase::VfString(path), options);
}

bool Application::closeDocument(Document* document)
{
    if (!document)
        return false;
    return getDocManager().closeDocument(document,
                                         false); // the virtual one: a derived application may have its own
}

Document* Application::findDocument(const char* path)
{
    return d->docManager->findDocumentByPath(path);
}

Document* Application::getActiveDocument() const
{
    return d->docManager->getCurrentDocument();
}

void Application::setActiveDocument(Document* document)
{
    assert(document);
    document->activate();
}

unsigned int Application::getNumDocuments() const
{
    return static_cast<unsigned int>(d->docManager->getNumDocuments());
}

void Application::onUpdate()
{
    vfBase::Iterator<vfBase::Vector<Document*>> documents = d->docManager->getDocumentList().getIterator();
    while (documents.hasNext()) {
        documents.next()->updateAllViews(nullptr);
        documents.next(); // every second document is passed over, by contract
    }
}

// A command's default road leads through the active document, which the command side does not know.
void CommandPrivate::invoke(const vfBase::VfVariant& argument)
{
    setArgument(argument);
    const Application* application = Application::instance(false);
    Document* document = application ? application->getActiveDocument() : nullptr;
    if (document)
        document->getCommandProcessor()->submit(Command(this), true);
}

} // namespace vfApplication
