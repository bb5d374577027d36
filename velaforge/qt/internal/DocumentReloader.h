// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/qt/Export.h>
#include <velaforge/qt/internal/FileWatcher.h>

#include <QObject>
#include <QSet>

#include <map>
#include <set>
#include <string>
#include <vector>

class QWidget;

namespace vfApplication {

class Document;

/// Watches the files of the open documents, and asks whether one that changed is to be read again.
///
/// A document whose file is gone counts as modified, so that it is not closed without a question, until the file is
/// back.
class VFAPPLICATIONQT_EXPORT DocumentReloader : public QObject
{
    Q_OBJECT

public:
    explicit DocumentReloader(QWidget& window);

    void add(const vfBase::VfString& path);

    /// Stops watching unless another document has that file.
    void remove(const vfBase::VfString& path);

    /// Watches further files for a document, in place of those that were named before. Each as it is now is known.
    void setOtherFiles(const Document& document, const std::vector<vfBase::VfString>& paths);

    /// The document has a new name, or was saved: its file as it is now is its own.
    void onNameChanged(Document& document);

private:
    void onChanged(const QByteArray& path);
    void onRemoved(const QByteArray& path);
    void onRestored(const QByteArray& path);
    void onOtherChanged(const Document* changed);
    void offer(const QByteArray& path, const QString& what);
    void forgetClosed();
    bool isOther(const std::string& path) const;
    void stopWatching(const std::string& path);
    bool ask(const Document& document, const QString& what);

    QWidget& m_window;
    FileWatcher m_watcher;
    QSet<QByteArray> m_asking;
    QSet<QByteArray> m_changedMeanwhile;
    std::map<const Document*, std::set<std::string>> m_others; ///< files that they were read from, too
    std::map<const Document*, std::string> m_paths;            ///< under which each document was watched last
    std::map<std::string, const Document*> m_marked;           ///< modified because their file is gone
};

} // namespace vfApplication
