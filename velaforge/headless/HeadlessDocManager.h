// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/DocManager.h>
#include <velaforge/headless/Export.h>

#include <memory>

namespace vfApplication {

struct HeadlessDocManagerPrivate;

/// A document manager for a program that nobody watches: it writes only what a command saves, and tells each failure in
/// one line on standard error.
///
/// HeadlessApplicationProducer::install() gives it to each application, so a program says nothing of it:
///
///     void MySetup::onRegisterDocumentType() const
///     {
///         vfApplication::DocManager& manager = vfApplication::Application::instance(false)->getDocManager();
///         new vfApplication::DocTemplate(&manager, ...);
///     }
///
/// Closing a document discards its changes, also at the end of the program. Paths become absolute before the library sees
/// them, so "a.txt" and "./a.txt" are one document. A line names the file as the caller did.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDocManager : public DocManager
{
public:
    HeadlessDocManager();

    /// Closes the documents. One that throws meanwhile is told and destroyed; the others are closed all the same.
    ~HeadlessDocManager() override;

    HeadlessDocManager(const HeadlessDocManager&) = delete;
    HeadlessDocManager& operator=(const HeadlessDocManager&) = delete;

    /// Opens or makes a document as DocManager does, but never throws.
    /// @return null after a failure, which reportFailure() was told, with the reason of setReadError(), of the exception,
    ///         or of the file system
    Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

    /// Reads another file into a document, and fails as createDocument() does. The document keeps its name then.
    bool updateDocument(Document* document, const vfBase::VfString& path,
                        const vfBase::Options& options) override;

    /// @return 2: a document that closes discards its changes
    int askForUserConfirmation() override;

    /// Reports that there is nobody to ask for a path.
    /// @return an empty path
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    // --- beyond the contract

    /// Tells in one line on standard error that a file could not be opened or saved, and counts it. For commands, too.
    virtual void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason);

    /// @return how many failures were counted; with any, HeadlessApplication::runEventLoop() returns 4
    unsigned int getFailureCount() const;

protected:
    /// Closes all documents, as the destructor does; for the destructor of a derived manager whose parts they use.
    void closeAll();

    /// Counts a failure that a derived manager tells in its own way.
    void noteFailure();

private:
    std::unique_ptr<HeadlessDocManagerPrivate> d;
};

} // namespace vfApplication
