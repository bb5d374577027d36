// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelDocument.h"

#include <velaforge/headless/HeadlessDocManager.h>

#include <deque>
#include <map>
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

    /// The warnings that follow are of another file, which standard error names as @p typed.
    void beginFile(const vfBase::VfString& typed);

    /// @return the absolute paths of the files that could not be opened or saved, once for each failure
    const std::vector<std::string>& failures() const { return m_failures; }

    /// @return what was told last, up to messageLimit, the oldest first
    const std::deque<Message>& messages() const { return m_messages; }
    void clearMessages() { m_messages.clear(); }

    static constexpr std::size_t messageLimit = 1000;

private:
    void keep(Message::Kind kind, const vfBase::VfString& path, const vfBase::VfString& text);
    void say(const vfBase::VfString& path, const vfBase::VfString& text) const;

    /// What the user typed, by absolute path.
    std::map<std::string, std::string> m_typed;
    std::vector<std::string> m_failures;
    std::deque<Message> m_messages;
    int m_warningCount = 0;
};

/// The viewer's document manager without a window: keeps what is told of files as well.
class ViewerDocManager : public vfApplication::HeadlessDocManager, public FailureLog, public JobWaiter
{
public:
    /// Enters the kinds of document, shown by views of that class.
    explicit ViewerDocManager(const vfBase::ClassInfo& viewClass);

    /// Closes the documents, which use the parts of this class.
    ~ViewerDocManager() override;

    vfApplication::Document* createDocument(const vfBase::VfString& path,
                                            const vfBase::Options& options) override;

    /// Shows on a terminal how far it has come, when it takes a moment.
    void waitFor(vfIsolation::Job& job, bool isSaving) override;

    void onFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;
    void reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason) override;
};

} // namespace vfViewer
