// SPDX-License-Identifier: MIT
// The document operations of Application.
#include <velaforge/application/Application.h>

#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/Require.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>

#include <iostream>

namespace vfApplication {

void Application::openDocuments(vfBase::ArgumentParser* parser)
{
    // First, so that the option is consumed even if no file is named.
    const bool log = parser->readOptionParameter("--log");
    if (parser->getArgumentCount() < 2)
        return;
    for (int i = 1; i < parser->getArgumentCount(); ++i) {
        if (parser->isOption(i))
            continue;
        vfBase::Options options;
        if (log)
            options.setPluginStringData("LOG", "TRUE");
        const vfBase::VfString path(parser->getArgumentAt(i));
        d->getDocManager().findDocumentByPath(path.c_str());
        if (d->getDocManager().createDocument(path, options))
            std::cout << vfBase::ApplicationInfo::instance().getApplicationName() << ": No data loaded for "
                      << path << std::endl;
    }
}

Document* Application::newDocument()
{
    return d->getDocManager().createNewDocument();
}

Document* Application::openDocument(const char* path, const vfBase::Options& options, const char*)
{
    return d->getDocManager().createDocument(vfBase::VfString(path), options);
}

bool Application::closeDocument(Document* document)
{
    if (!document)
        return false;
    // The virtual operation: a derived application may return another manager.
    return getDocManager().closeDocument(document, false);
}

Document* Application::findDocument(const char* path)
{
    return d->getDocManager().findDocumentByPath(path);
}

Document* Application::getActiveDocument() const
{
    return d->getDocManager().getCurrentDocument();
}

void Application::setActiveDocument(Document* document)
{
    VF_REQUIRE(document, "Application::setActiveDocument", "the document is null");
    document->activate();
}

unsigned int Application::getNumDocuments() const
{
    return static_cast<unsigned int>(d->getDocManager().getNumDocuments());
}

void Application::onUpdate()
{
    // By contract every second document is skipped. By index, because an update may close documents.
    const vfBase::Vector<Document*> documents = d->getDocManager().getDocumentList();
    for (unsigned int i = 0; i < documents.size(); i += 2) {
        if (Document* document = documents.at(i))
            document->updateAllViews(nullptr);
    }
}

// Here rather than beside CommandPrivate, because the commands do not include the documents.
void CommandPrivate::invoke(const vfBase::VfVariant& argument)
{
    setArgument(argument);
    const Application* application = Application::instance(false);
    Document* document = application ? application->getActiveDocument() : nullptr;
    if (!document)
        return;
    CommandProcessor* processor = document->getCommandProcessor();
    VF_REQUIRE(processor, "CommandPrivate::invoke", "the active document has no command processor");
    processor->submit(Command(this), true);
}

} // namespace vfApplication
