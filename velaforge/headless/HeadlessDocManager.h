// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/DocManager.h>
#include <velaforge/headless/Export.h>

#include <memory>

namespace vfApplication {

struct HeadlessDocManagerPrivate;

/// The document manager of a program without a screen: writes only files that a command saves, and reports
/// each failure in one line on standard error.
///
/// HeadlessApplicationProducer::install() sets it for each application, and a program uses it as any document
/// manager:
///
///     void MySetup::onRegisterDocumentType() const
///     {
///         vfApplication::DocManager& manager = vfApplication::Application::instance(false)->getDocManager();
///         new vfApplication::DocTemplate(&manager, ...);
///     }
///
/// Closing a document discards its changes, also at the end of the program. Paths are made absolute first, so
/// "a.txt" and "./a.txt" are one document. The line on standard error has the path as the caller wrote it.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDocManager : public DocManager
{
public:
    /// Makes a manager without templates and documents.
    HeadlessDocManager();

    /// Closes the documents. Reports a document that throws, destroys it and goes on with the next.
    ~HeadlessDocManager() override;

    HeadlessDocManager(const HeadlessDocManager&) = delete;
    HeadlessDocManager& operator=(const HeadlessDocManager&) = delete;

    /// Opens or makes a document as DocManager does. Does not throw: on a failure it calls reportFailure()
    /// with the reason of setReadError(), of the exception or of the file system.
    /// @return the document; null after a failure
    Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

    /// Loads another file into @p document as DocManager does. Reports a failure as createDocument() does and
    /// restores the file name then.
    bool updateDocument(Document* document, const vfBase::VfString& path,
                        const vfBase::Options& options) override;

    /// Returns 2: a document that closes discards its changes.
    int askForUserConfirmation() override;

    /// Reports that no path can be chosen without a window.
    /// @return the empty path
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    // --- beyond the contract

    /// Writes one line with @p path and @p reason to standard error and counts a failure. Commands may call
    /// it for files that they cannot open or save.
    virtual void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason);

    /// Returns the number of failures. If it is not 0, HeadlessApplication::runEventLoop() returns
    /// requestFailed.
    unsigned int getFailureCount() const;

protected:
    /// Closes all documents as the destructor does. The destructor of a derived manager calls this if the
    /// documents use its members.
    void closeAll();

    /// Counts a failure that a derived manager reports itself.
    void noteFailure();

private:
    std::unique_ptr<HeadlessDocManagerPrivate> d;
};

} // namespace vfApplication
