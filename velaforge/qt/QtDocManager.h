// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/DocManager.h>
#include <velaforge/qt/Export.h>

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace vfApplication {

struct QtDocManagerPrivate;

/// A document manager that asks the user.
///
///     void MySetup::onRegisterDocumentType() const
///     {
///         auto* manager = new vfApplication::QtDocManager;
///         vfApplication::Application::instance(false)->setDocManager(manager);
///         new vfApplication::DocTemplate(manager, ...);
///     }
///
/// Every question of DocManager is a dialog, and what cannot be opened is told in the window. Without a window it
/// answers as DocManager does, apart from unsaved changes: those it discards rather than writing what nobody saw.
class VFAPPLICATIONQT_EXPORT QtDocManager : public DocManager
{
    Q_DECLARE_TR_FUNCTIONS(vfApplication::QtDocManager)

public:
    QtDocManager();

    /// Closes the documents while questions can still be put. What is not saved then is lost.
    ~QtDocManager() override;

    QtDocManager(const QtDocManager&) = delete;
    QtDocManager& operator=(const QtDocManager&) = delete;

    /// As DocManager::createDocument, but nothing is raised: a failure is told by reportFailure.
    Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

    /// A dialog for one file of the kinds given. @param path  what is proposed, and what was chosen
    /// @param isSaving  for a file to write
    /// @return the kind that opens the file, null when the user gave up
    DocTemplate* selectDocumentPath(DocTemplate** templates, int count, vfBase::VfString& path,
                                    bool isSaving) override;

    DocTemplate* selectDocumentTypeUser(DocTemplate** templates, int count) override;

    /// Save, discard or cancel. @return 1, 2, 0
    int askForUserConfirmation() override;
    int askForConfirmRevert() override;

    /// A dialog that proposes directory and name; the answer has an extension, and a file that is there is not replaced
    /// without a question.
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    // --- beyond the contract

    /// A dialog for any number of files. @return those chosen, none when the user gave up
    std::vector<vfBase::VfString> selectFilesToOpen();

    /// Closes a document with the question about just this document's changes. @return false when it stays
    bool closeWithQuestion(Document& document);

    /// The same for all, the active one first. @return false at the first that stays
    virtual bool closeAllWithQuestions();

    /// Reads the file again without a question; the user has been asked already. @return false when that failed
    virtual bool reload(Document& document);

    /// A file could not be opened, saved or read again. Shows it in the window; the file is named there.
    virtual void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason);

protected:
    /// For a document that asks the user, while it is being opened or read again, whether to go on: who gave up need not
    /// be told that it failed.
    void noteCancelled();

    /// Called before a document is opened, made or read again, and afterwards: shows that work is going on.
    virtual void beginWork(const vfBase::VfString& path);
    virtual void endWork();

private:
    std::unique_ptr<QtDocManagerPrivate> d;
};

} // namespace vfApplication
