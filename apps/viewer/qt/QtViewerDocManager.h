// SPDX-License-Identifier: MIT
#pragma once

#include "model/ViewerDocuments.h"
#include <velaforge/documents/Recovery.h>

#include <velaforge/qt/QtDocManager.h>

#include <QElapsedTimer>

#include <memory>

class QTimer;

namespace vfViewer {

class StatusSummary;

/// The viewer's document manager with a window: what goes wrong stands on standard error and in the window.
class QtViewerDocManager : public vfApplication::QtDocManager,
                           public FailureLog,
                           public JobWaiter,
                           public TimeKeeper
{
    Q_DECLARE_TR_FUNCTIONS(vfViewer::QtViewerDocManager)

public:
    QtViewerDocManager();
    ~QtViewerDocManager() override;

    /// Copies that were recovered are no files that anybody wants to open again.
    void addFileToHistory(const vfBase::VfString& path) override;

    vfApplication::Document* createDocument(const vfBase::VfString& path,
                                            const vfBase::Options& options) override;

    /// Stores the session, so that the next start can restore it.
    bool closeAllWithQuestions() override;

    /// What is hidden and what is selected stays so.
    bool reload(vfApplication::Document& document) override;

    /// Offers the formats that can be written, that of the model and its folder first.
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    /// Goes on with the work of the window, in which a dialog shows how far it has come and takes "Cancel".
    void waitFor(vfIsolation::Job& job, bool isSaving) override;

    /// As long as a document plays its animation.
    void keepTime() override;

    void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;
    void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;

protected:
    vfBase::VfString describeFormat(const vfBase::VfString& extension) override;

private:
    void begin();
    void keepUnsaved();
    void passTime();
    void openSession();
    void offerLeftBehind();
    void recover(const vfApplication::Recovery::Found& found);
    static bool isWantedIn(const vfBase::VfString& path);
    static void watchFilesOf(vfApplication::Document* document);

    std::unique_ptr<vfApplication::Recovery> m_recovery;
    std::unique_ptr<QTimer> m_timer;
    std::unique_ptr<QTimer> m_clock;
    std::unique_ptr<StatusSummary> m_summary;
    QElapsedTimer m_sinceTick;
    bool m_isReading = false;
};

} // namespace vfViewer
