// SPDX-License-Identifier: MIT
#pragma once

#include "model/ViewerDocuments.h"

#include <velaforge/qt/QtDocManager.h>

namespace vfViewer {

/// The viewer's document manager with a window: what goes wrong stands on standard error and in the window.
class QtViewerDocManager : public vfApplication::QtDocManager, public FailureLog, public ReadWaiter
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtViewerDocManager)

public:
    QtViewerDocManager();

    vfApplication::Document* createDocument(const vfBase::VfString& path,
                                            const vfBase::Options& options) override;

    /// What is hidden and what is selected stays so.
    bool reload(vfApplication::Document& document) override;

    /// Offers the formats that can be written.
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    /// Goes on with the work of the window, in which a dialog shows how far it has come and takes "Cancel".
    void waitFor(ReadJob& job) override;

    void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;
    void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;

private:
    static void watchFilesOf(vfApplication::Document* document);
};

} // namespace vfViewer
