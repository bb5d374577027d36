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
    return QtDocManager::createDocument(path, options);
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
