// SPDX-License-Identifier: MIT
#include "qt/QtViewerDocManager.h"

#include "model/ModelWriter.h"
#include "qt/LoadDialog.h"
#include "qt/QtModelView.h"
#include "reading/ReadJob.h"

#include <velaforge/qt/QtApplication.h>

#include <QMainWindow>

namespace vfViewer {

QtViewerDocManager::QtViewerDocManager()
{
    addViewerKinds(*this, QtModelView::s_classInfo);
}

vfApplication::Document* QtViewerDocManager::createDocument(const vfBase::VfString& path,
                                                            const vfBase::Options& options)
{
    const bool isNew = options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
    const std::string reason = isNew ? "" : whyNotTried(*this, path);
    if (!reason.empty()) {
        onFailure(path, reason);
        return nullptr;
    }
    beginFile();
    const bool isOpen = findDocumentByPath(path.c_str()) != nullptr; // and is not read again
    vfApplication::Document* document = QtDocManager::createDocument(path, options);
    if (!isOpen)
        watchFilesOf(document);
    return document;
}

bool QtViewerDocManager::reload(vfApplication::Document& document)
{
    auto* model = dynamic_cast<ModelDocument*>(&document);
    const ModelDocument::Look look = model ? model->getLook() : ModelDocument::Look();
    const bool isDone = QtDocManager::reload(document);
    if (isDone && model)
        model->restoreLook(look);
    watchFilesOf(&document);
    return isDone;
}

void QtViewerDocManager::watchFilesOf(vfApplication::Document* document)
{
    const auto* model = dynamic_cast<ModelDocument*>(document);
    if (!model || !vfApplication::QtApplication::instance())
        return;
    const std::vector<vfBase::VfString> files(model->getOtherFiles().begin(), model->getOtherFiles().end());
    vfApplication::QtApplication::instance()->setOtherFiles(*document, files);
}

vfBase::VfString QtViewerDocManager::selectDocumentSavePath(const char* directory, const char* name,
                                                            const char* extension, const char*,
                                                            vfBase::Options& options)
{
    return QtDocManager::selectDocumentSavePath(directory, name, extension, writableFormats().c_str(),
                                                options);
}

void QtViewerDocManager::waitFor(ReadJob& job)
{
    if (!vfApplication::QtApplication::instance())
        return;
    LoadDialog::waitFor(job, &vfApplication::QtApplication::instance()->getMainWindow());
    if (job.isCancelled())
        noteCancelled();
}

void QtViewerDocManager::onFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    FailureLog::onFailure(path, reason);
    QtDocManager::reportFailure(path, reason);
}

void QtViewerDocManager::reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    onFailure(path, reason);
}

} // namespace vfViewer
