// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/WriteResult.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/qt/Export.h>

#include <QCoreApplication>

#include <functional>
#include <memory>
#include <vector>

namespace vfApplication {

struct QtDocManagerPrivate;

/// A document manager that asks the user.
///
/// QtApplicationProducer::install() gives it to each application, so a program says nothing of it:
///
///     void MySetup::onRegisterDocumentType() const
///     {
///         vfApplication::DocManager& manager = vfApplication::Application::instance(false)->getDocManager();
///         new vfApplication::DocTemplate(&manager, ...);
///     }
///
/// Every question of DocManager is a dialog, and the window shows which file could not be opened or saved,
/// and why. Without a window it answers as DocManager does, except that it discards unsaved changes. Paths
/// become absolute before the library sees them, so "a.txt" and "./a.txt" are one document.
class VFAPPLICATIONQT_EXPORT QtDocManager : public DocManager
{
    Q_DECLARE_TR_FUNCTIONS(vfApplication::QtDocManager)

public:
    QtDocManager();

    /// Closes the documents while the user can still be asked. Changes that are not saved then are lost. A
    /// document that throws meanwhile is told and destroyed; the others are closed all the same.
    ~QtDocManager() override;

    QtDocManager(const QtDocManager&) = delete;
    QtDocManager& operator=(const QtDocManager&) = delete;

    /// Opens or makes a document as DocManager does, but never throws.
    /// @return null when the user gave up, or after a failure, which reportFailure() was told, with the
    ///         reason of setReadError(), of the exception, or of the file system
    Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

    /// Reads another file into a document, and fails as createDocument() does. The document keeps its name
    /// then.
    bool updateDocument(Document* document, const vfBase::VfString& path,
                        const vfBase::Options& options) override;

    /// Does what DocManager does. When the current view is closed, the one at the front becomes current.
    void activateView(View* view, bool active) override;

    /// Shows a dialog for one file of the kinds of @p templates.
    /// @param templates  the candidates
    /// @param count      number of candidates
    /// @param path       the suggested path; set to the chosen one
    /// @param isSaving   true for a file to write
    /// @return the template for the file; null if the user cancelled
    DocTemplate* selectDocumentPath(DocTemplate** templates, int count, vfBase::VfString& path,
                                    bool isSaving) override;

    DocTemplate* selectDocumentTypeUser(DocTemplate** templates, int count) override;

    /// Save, discard or cancel. @return 1, 2, 0
    int askForUserConfirmation() override;
    int askForConfirmRevert() override;

    /// Shows a dialog that proposes directory and name, and lists the formats of @p filter by describeFormat(), that of
    /// @p extension first. The answer has an extension; an existing file is not replaced without a question.
    /// @return the path; empty if the user cancelled
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    // --- beyond the contract

    /// A dialog for any number of files. @return those chosen, none when the user gave up
    std::vector<vfBase::VfString> selectFilesToOpen();

    /// Closes a document with the question about just this document's changes. Never throws: a document that
    /// does is told and destroyed, unless it still has changes.
    /// @return false when it stays open
    bool closeWithQuestion(Document& document);

    /// Closes all documents. Asks about all unsaved changes, and saves what is to be saved, before it closes the first: if the
    /// user cancels, or one cannot be saved, all stay open.
    /// @return false if a document stays open
    virtual bool closeAllWithQuestions();

    /// Saves a document, and shows the reason if that fails or throws.
    /// @param document  the document
    /// @param path      the file; empty for the document's own file, or one that the user chooses if it has
    ///                  none
    /// @return false if the document was not saved
    bool save(Document& document, const vfBase::VfString& path = vfBase::VfString());

    /// The same to a file that the user chooses.
    bool saveAs(Document& document);

    /// Reads the file again without a question; the user has been asked already. @return false when that
    /// failed
    virtual bool reload(Document& document);

    /// Reads the file again when the user wants it, and shows the reason when that fails. @return false when
    /// it was not read
    bool revertWithQuestion(Document& document);

    /// Returns the number of failures that were reported.
    unsigned int getFailureCount() const;

    /// Shows in the window that a file could not be opened, saved or read again, and why.
    virtual void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason);

protected:
    /// Returns what the dialogs call the files with an extension, such as "Wavefront OBJ" for "obj". By default it is the
    /// description of the template for this extension alone, or else the extension.
    virtual vfBase::VfString describeFormat(const vfBase::VfString& extension);

    /// For a document that asks the user, while it is being opened or read again, whether to go on: who gave
    /// up need not be told that it failed.
    void noteCancelled();

    /// Called before a document is opened, made or read again: shows that work is going on.
    virtual void beginWork(const vfBase::VfString& path);

    /// Called after that work: shows that it has ended.

    virtual void endWork();

private:
    class Work;

    bool askForChangesOfAll();
    bool isDiscarded(const Document* document) const;
    bool saveGuarded(Document& document, const std::function<vfBase::WriteResult()>& write);

    std::unique_ptr<QtDocManagerPrivate> d;
};

} // namespace vfApplication
