// SPDX-License-Identifier: MIT
// How a path becomes a document with a view: the creating half of DocManager.
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <cassert>
#include <string>

namespace vfApplication {

namespace {

bool isOn(const vfBase::Options& options, const char* key)
{
    return options.isValid() && options.getPluginStringData(key) == vfBase::VfString("TRUE");
}

vfBase::VfString overrideExtension(const vfBase::Options& options)
{
    return options.isValid() ? options.getPluginStringData("OVERRIDE_EXT") : vfBase::VfString();
}

/// @return the caller's options as they go to the document; the caller's own stay as they are
vfBase::Options workingCopy(const vfBase::Options& options)
{
    vfBase::Options working = options.clone();
    working.setPluginStringData("BUILD_SCENEGRAPH", "TRUE");
    return working;
}

void tellApplication(Document* document)
{
    Application* application = Application::instance(false);
    if (application && application->getImp()->callback)
        application->getImp()->callback->onDocumentCreated(document);
}

/// To be called while an exception is handled: throws it on, wrapped with the name of the routine.
[[noreturn]] void throwWrapped()
{
    static const std::string routine = "vfApplication::DocManager::createDocument";
    try {
        throw;
    } catch (const vfBase::BaseException& cause) {
        throw vfBase::BaseException("Exception in " + routine, cause);
    } catch (const std::exception& cause) {
        throw vfBase::BaseException("std::exception in " + routine, cause);
    } catch (...) {
        vfBase::BaseException unknown("Unknown exception in " + routine);
        unknown.setReason(vfBase::BaseException::unknownReason);
        throw unknown;
    }
}

/// Runs a step of a document's making; when it throws, the document goes and the exception is thrown on, wrapped.
template <class Step>
bool guarded(Document* document, Step step)
{
    try {
        return step();
    } catch (...) {
        document->deleteAllViews();
        throwWrapped();
    }
}

} // namespace

Document* DocManager::createDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    try {
        vfBase::Vector<DocTemplate*> visible;
        getVisibleTemplates(visible);
        const int count = static_cast<int>(visible.size());
        if (count == 0)
            return nullptr;

        const vfBase::Options working = workingCopy(options);
        const vfBase::VfString name = path; // a copy: the path may belong to a document that is closed below
        const bool silent = isOn(working, "SILENT");
        const bool newDocument = isOn(working, "NEWDOC");

        // The order is a promise: no template, then nothing is closed; open already, then nothing is closed.
        DocTemplate* documentTemplate = nullptr;
        if (!silent && newDocument)
            documentTemplate = selectDocumentType(visible.data(), count, false);
        else if (name.empty())
            throw vfBase::BaseException("using empty path with SILENT doesn't make sense");
        else
            documentTemplate = findTemplateForPath((name + overrideExtension(working)).c_str());
        if (!documentTemplate)
            return nullptr;

        if (!name.empty()) {
            if (Document* existing = findDocumentByPath(name.c_str())) {
                existing->activate();
                return existing;
            }
        }

        assert(m_maxDocsOpen != 0 && "the limit of open documents is at least 1");
        if (!m_documents.isEmpty() && m_documents.size() >= static_cast<unsigned int>(m_maxDocsOpen) &&
            !closeDocument(m_documents.first(), false))
            return nullptr;

        Document* document = documentTemplate->createDocument(name, working);
        if (!document)
            return nullptr;
        document->setDocumentName(documentTemplate->getDocumentName());

        const bool loaded = guarded(document, [&] {
            return newDocument ? document->onNewDocument() : document->onOpenDocument(name, working);
        });
        if (!loaded) {
            guarded(document, [&] { return document->deleteAllViews(); });
            return nullptr;
        }

        if (!newDocument && documentTemplate->fileMatchesTemplate(name))
            addFileToHistory(name);
        document->activate();
        tellApplication(document);
        return document;
    } catch (...) {
        throwWrapped();
    }
}

Document* DocManager::createNewDocument()
{
    vfBase::Options options;
    options.setPluginStringData("NEWDOC", "TRUE");
    return createDocument(vfBase::VfString(), options);
}

bool DocManager::updateDocument(Document* document, const vfBase::VfString& path,
                                const vfBase::Options& options)
{
    if (!document || path.empty())
        return false;
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    const int count = static_cast<int>(visible.size());
    if (count == 0)
        return false;

    const vfBase::Options working = workingCopy(options);
    DocTemplate* documentTemplate = isOn(working, "SILENT")
                                        ? findTemplateForPath((path + overrideExtension(working)).c_str())
                                        : selectDocumentType(visible.data(), count, false);
    if (!documentTemplate)
        return false;

    if (Document* existing = findDocumentByPath(path.c_str())) {
        existing->activate();
        return true;
    }

    // Without a name the document takes the new one over on loading, and tells its views.
    const vfBase::VfString previous = document->getFilename();
    document->setFilename("", false);
    if (!document->onOpenDocument(path, working)) {
        document->setFilename(previous, false);
        return false;
    }
    document->setDocumentName(documentTemplate->getDocumentName());
    document->modify(false);
    if (documentTemplate->fileMatchesTemplate(path))
        addFileToHistory(path);
    document->activate();
    tellApplication(document);
    return true;
}

View* DocManager::createView(Document* document, const vfBase::Options& options)
{
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    if (visible.isEmpty())
        return nullptr;
    DocTemplate* documentTemplate =
        visible.size() == 1 ? visible.first()
                            : selectViewType(visible.data(), static_cast<int>(visible.size()), false);
    if (!documentTemplate)
        return nullptr;
    View* view = documentTemplate->createView(document, options);
    if (!view)
        return nullptr;
    view->setViewName(documentTemplate->getViewName());
    return view;
}

} // namespace vfApplication
