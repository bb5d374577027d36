// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelDocument.h"

#include <velaforge/documents/DocManager.h>

#include <deque>
#include <string>
#include <vector>

namespace vfBase {
class ClassInfo;
}

namespace vfViewer {

/// Enters the kinds of document: models and images, both shown by views of that class.
void addViewerKinds(vfApplication::DocManager& manager, const vfBase::ClassInfo& viewClass);

/// @return why a file need not even be tried; empty when it is there and has a format that can be read
std::string whyNotTried(vfApplication::DocManager& manager, const vfBase::VfString& path);

/// Something that was told about a file.
struct Message
{
    enum Kind
    {
        Failure,
        Warning,
        Detail
    };
    Kind kind;
    std::string path;
    std::string text;
};

/// Tells on standard error, one line a file, what went wrong, and keeps all of it to be looked at.
class FailureLog : public FailureListener
{
public:
    void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;

    /// Of a file only the first few; see beginFile.
    void onWarning(const vfBase::VfString& path, const vfBase::VfString& warning) override;
    void onDetail(const vfBase::VfString& path, const vfBase::VfString& detail) override;

    /// The warnings that follow are of another file.
    void beginFile() { m_warningCount = 0; }

    /// @return the files that could not be opened or saved, as often as that was
    const std::vector<std::string>& failures() const { return m_failures; }

    /// @return what was told last, up to messageLimit, the oldest first
    const std::deque<Message>& messages() const { return m_messages; }
    void clearMessages() { m_messages.clear(); }

    static constexpr std::size_t messageLimit = 1000;

private:
    void keep(Message::Kind kind, const vfBase::VfString& path, const vfBase::VfString& text);

    std::vector<std::string> m_failures;
    std::deque<Message> m_messages;
    int m_warningCount = 0;
};

/// The viewer's document manager without a window: tells why a file could not be opened, and raises nothing.
class ViewerDocManager : public vfApplication::DocManager, public FailureLog, public ReadWaiter
{
public:
    /// Enters the kinds of document, shown by views of that class.
    explicit ViewerDocManager(const vfBase::ClassInfo& viewClass);

    /// Closes the documents, while nobody else can be asked about their changes.
    ~ViewerDocManager() override;

    vfApplication::Document* createDocument(const vfBase::VfString& path,
                                            const vfBase::Options& options) override;

    /// Shows on a terminal how far it has come, when it takes a moment.
    void waitFor(ReadJob& job) override;

    /// Nobody is there to ask: closing discards changes.
    int askForUserConfirmation() override;
};

} // namespace vfViewer
