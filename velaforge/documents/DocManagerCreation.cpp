// SPDX-License-Identifier: MIT
// The part of DocManager that makes, loads and updates documents and makes views.
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

/// Returns a copy of the caller's options for the document, with BUILD_SCENEGRAPH set.
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

/// Throws the exception that is being handled again, wrapped in a BaseException that names the operation.
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

/// Deletes the views of a document that could not be made, and the document with them.
/// @throws any exception that the views throw; the document is deleted all the same
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

/// Runs a step of making a document. If it throws, deletes the document and throws the exception again,
/// wrapped.
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
        // Otherwise a program that opens a document whenever one is closed would never finish closing all.
        if (vfBase::RunningCall<DocManager>::isRunning(this, s_closingAll))
            return nullptr;
        vfBase::Vector<DocTemplate*> visible;
        getVisibleTemplates(visible);
        const int count = static_cast<int>(visible.size());
        if (count == 0)
            return nullptr;

        const vfBase::Options working = workingCopy(options);
        // A copy: the path may belong to a document that is closed below.
        const vfBase::VfString name = path;
        const bool silent = isOn(working, "SILENT");
        const bool newDocument = isOn(working, "NEWDOC");

        // The order is a contract: a call that finds no template, or an open document, closes nothing.
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

        // A limit of 0 counts as 1: otherwise no document could be opened.
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
    // A copy: the path may belong to a document that a callback closes.
    const vfBase::VfString name = path;
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

    // Without a file name onOpenDocument takes the new one and notifies the views.
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
