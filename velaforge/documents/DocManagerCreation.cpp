// SPDX-License-Identifier: MIT
// How a path becomes a document with a view: the creating half of DocManager.
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Require.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <algorithm>
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

/// Deletes the views of a document that could not be made, and with them the document.
/// @throws what the views throw; the document is destroyed all the same
void dispose(const vfBase::LifeWatch<Document>& watch, void (*destroy)(Document*))
{
    if (watch.isGone())
        return;
    try {
        watch.get()->deleteAllViews();
    } catch (...) {
        if (!watch.isGone())
            destroy(watch.get());
        throw;
    }
}

/// Runs a step of a document's making. When it throws, the document is destroyed and the exception is thrown on, wrapped.
template <class Step>
bool guarded(const vfBase::LifeWatch<Document>& watch, void (*destroy)(Document*), Step step)
{
    try {
        return step();
    } catch (...) {
        dispose(watch, destroy);
        throwWrapped();
    }
}

} // namespace

Document* DocManager::createDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    VF_REQUIRE_APPLICATION_THREAD("DocManager::createDocument");
    const vfBase::LifeWatch<DocManager> self(this);
    try {
        // A program that opens a document whenever one is closed would never come to an end.
        if (vfBase::RunningCall<DocManager>::isRunning(this, s_closingAll))
            return nullptr;
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
        if (!documentTemplate || self.isGone())
            return nullptr;
        const vfBase::LifeWatch<DocTemplate> templateWatch(documentTemplate);

        if (!name.empty()) {
            if (Document* existing = findDocumentByPath(name.c_str())) {
                const vfBase::LifeWatch<Document> watch(existing);
                existing->activate();
                return watch.get();
            }
        }

        // A limit of 0 counts as 1: a document that is to be opened needs a place.
        const auto limit = std::max(static_cast<unsigned int>(m_maxDocsOpen), 1u);
        if (m_documents.size() >= limit && !closeDocument(m_documents.first(), false))
            return nullptr;
        if (self.isGone() || templateWatch.isGone())
            return nullptr;

        Document* document = documentTemplate->createDocument(name, working);
        if (!document)
            return nullptr;
        const vfBase::LifeWatch<Document> watch(document);
        if (self.isGone() || templateWatch.isGone()) {
            dispose(watch, &Document::destroy);
            return nullptr;
        }
        try {
            document->setDocumentName(documentTemplate->getDocumentName());
        } catch (...) {
            dispose(watch, &Document::destroy);
            throw;
        }

        const bool loaded = guarded(watch, &Document::destroy, [&] {
            return newDocument ? document->onNewDocument() : document->onOpenDocument(name, working);
        });
        if (!loaded) {
            guarded(watch, &Document::destroy, [&] { return watch.isGone() || document->deleteAllViews(); });
            return nullptr;
        }

        if (!newDocument && !watch.isGone() && !self.isGone() && !templateWatch.isGone())
            enterInHistory(*documentTemplate, name);
        if (!watch.isGone())
            document->activate();
        if (!watch.isGone())
            tellApplication(document);
        return watch.get();
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
    VF_REQUIRE_APPLICATION_THREAD("DocManager::updateDocument");
    if (!document || path.empty())
        return false;
    const vfBase::LifeWatch<DocManager> self(this);
    const vfBase::LifeWatch<Document> watch(document);
    const vfBase::VfString name = path; // a copy: the path may belong to a document that a callback closes
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    const int count = static_cast<int>(visible.size());
    if (count == 0)
        return false;

    const vfBase::Options working = workingCopy(options);
    DocTemplate* documentTemplate = isOn(working, "SILENT")
                                        ? findTemplateForPath((name + overrideExtension(working)).c_str())
                                        : selectDocumentType(visible.data(), count, false);
    if (!documentTemplate || self.isGone() || watch.isGone())
        return false;
    const vfBase::LifeWatch<DocTemplate> templateWatch(documentTemplate);

    if (Document* existing = findDocumentByPath(name.c_str())) {
        existing->activate();
        return true;
    }

    // Without a name the document takes the new one over on loading, and tells its views.
    const vfBase::VfString previous = document->getFilename();
    document->setFilename("", false);
    if (!document->onOpenDocument(name, working)) {
        if (!watch.isGone())
            document->setFilename(previous, false);
        return false;
    }
    if (watch.isGone() || self.isGone() || templateWatch.isGone())
        return !watch.isGone();
    document->setDocumentName(documentTemplate->getDocumentName());
    document->modify(false);
    if (!watch.isGone() && !self.isGone() && !templateWatch.isGone())
        enterInHistory(*documentTemplate, name);
    if (!watch.isGone())
        document->activate();
    if (!watch.isGone())
        tellApplication(document);
    return !watch.isGone();
}

View* DocManager::createView(Document* document, const vfBase::Options& options)
{
    VF_REQUIRE_APPLICATION_THREAD("DocManager::createView");
    const vfBase::LifeWatch<Document> watch(document);
    vfBase::Vector<DocTemplate*> visible;
    getVisibleTemplates(visible);
    if (visible.isEmpty())
        return nullptr;
    DocTemplate* documentTemplate =
        visible.size() == 1 ? visible.first()
                            : selectViewType(visible.data(), static_cast<int>(visible.size()), false);
    if (!documentTemplate)
        return nullptr;
    if (watch.isGone())
        return nullptr;
    View* view = documentTemplate->createView(document, options);
    if (!view)
        return nullptr;
    view->setViewName(documentTemplate->getViewName());
    return view;
}

} // namespace vfApplication
