// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelDocument.h"

#include <velaforge/documents/DocManager.h>

namespace vfBase {
class ClassInfo;
}

namespace vfViewer {

/// The viewer's document manager: tells on standard error, one line a file, why a file could not be opened, and raises
/// nothing.
class ViewerDocManager : public vfApplication::DocManager, public FailureListener
{
public:
    /// Enters the kinds of document: models and images, both shown by views of that class.
    explicit ViewerDocManager(const vfBase::ClassInfo& viewClass);

    /// Closes the documents, while nobody else can be asked about their changes.
    ~ViewerDocManager() override;

    vfApplication::Document* createDocument(const vfBase::VfString& path,
                                            const vfBase::Options& options) override;

    /// Nobody is there to ask: closing discards changes.
    int askForUserConfirmation() override;

    void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;
    void onWarning(const vfBase::VfString& path, const vfBase::VfString& warning) override;
    void onDetail(const vfBase::VfString& path, const vfBase::VfString& detail) override;

    /// @return how many files could not be opened or saved
    int failureCount() const { return m_failureCount; }

private:
    int m_failureCount = 0;
    int m_warningCount = 0;
};

} // namespace vfViewer
