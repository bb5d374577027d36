// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/DocumentReloader.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/shell/StatusBar.h>

#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace vfApplication {

namespace {

constexpr int quietTime = 250; // milliseconds

Document* findDocument(const QByteArray& path)
{
    Application* application = Application::instance(false);
    return application ? application->findDocument(path.constData()) : nullptr;
}

} // namespace

DocumentReloader::DocumentReloader(QWidget& window) : m_window(window), m_watcher(quietTime, this)
{
    const auto handle = [this](auto happening, void (DocumentReloader::*slot)(const QByteArray&)) {
        connect(&m_watcher, happening, this,
                [this, slot](const QByteArray& path) { showThrown([&] { (this->*slot)(path); }); });
    };
    handle(&FileWatcher::changed, &DocumentReloader::onChanged);
    handle(&FileWatcher::removed, &DocumentReloader::onRemoved);
    handle(&FileWatcher::restored, &DocumentReloader::onRestored);
}

void DocumentReloader::add(const vfBase::VfString& path)
{
    if (m_watcher.contains(path.str()))
        m_watcher.acknowledge(path.str());
    else
        m_watcher.add(path.str());
    Document* document = findDocument(QByteArray::fromStdString(path.str()));
    if (!document)
        return;
    m_paths[document] = path.str();
    // From here on the mark tells of saves that came after.
    document->setSavedInternal(false);
}

void DocumentReloader::remove(const vfBase::VfString& path)
{
    int users = 0;
    Application* application = Application::instance(false);
    if (application) {
        for (const Document* document : application->getDocManager().getDocumentList())
            users += document->getFilename() == path ? 1 : 0;
    }
    if (users > 1)
        return;
    // It is about to close, and no other document has this path.
    std::set<std::string> others;
    for (auto it = m_paths.begin(); it != m_paths.end();) {
        if (it->second != path.str()) {
            ++it;
            continue;
        }
        others.merge(m_others[it->first]);
        m_others.erase(it->first);
        it = m_paths.erase(it);
    }
    m_marked.erase(path.str());
    if (!isOther(path.str()))
        m_watcher.remove(path.str());
    for (const std::string& other : others)
        stopWatching(other);
}

void DocumentReloader::setOtherFiles(const Document& document, const std::vector<vfBase::VfString>& paths)
{
    forgetClosed();
    const std::set<std::string> before = std::exchange(m_others[&document], {});
    for (const vfBase::VfString& path : paths)
        m_others[&document].insert(path.str());
    for (const std::string& path : m_others[&document]) {
        if (m_watcher.contains(path))
            m_watcher.acknowledge(path);
        else
            m_watcher.add(path);
    }
    for (const std::string& path : before)
        stopWatching(path);
}

/// Lets go of what was known of documents that are gone.
void DocumentReloader::forgetClosed()
{
    Application* application = Application::instance(false);
    for (auto it = m_others.begin(); application && it != m_others.end();) {
        const auto& open = application->getDocManager().getDocumentList();
        if (std::find(open.begin(), open.end(), it->first) != open.end()) {
            ++it;
            continue;
        }
        const std::set<std::string> paths = it->second;
        it = m_others.erase(it);
        for (const std::string& path : paths)
            stopWatching(path);
    }
}

/// @return whether a document is read from that file beside its own
bool DocumentReloader::isOther(const std::string& path) const
{
    return std::any_of(m_others.begin(), m_others.end(),
                       [&path](const auto& entry) { return entry.second.count(path) > 0; });
}

/// Stops watching a file that no document is read from.
void DocumentReloader::stopWatching(const std::string& path)
{
    if (!isOther(path) && !findDocument(QByteArray::fromStdString(path)))
        m_watcher.remove(path);
}

void DocumentReloader::onNameChanged(Document& document)
{
    if (!document.alreadySaved() && !document.isSavedInternal())
        return;
    const std::string path = document.getFilename().str();
    std::string& before = m_paths[&document];
    if (before != path) {
        if (!before.empty()) {
            if (!isOther(before))
                m_watcher.remove(before);
            m_marked.erase(before);
        }
        before = path;
        m_watcher.add(path);
    }
    // Named anew without changes after a save began: it was written.
    if (document.isSavedInternal() && !document.isModified()) {
        document.setSavedInternal(false);
        m_watcher.acknowledge(path);
        m_marked.erase(path);
    }
}

bool DocumentReloader::ask(const Document& document, const QString& what)
{
    QMessageBox box(QMessageBox::Question, tr("File changed"), what.arg(toQt(document.getUserReadableName())),
                    QMessageBox::NoButton, &m_window);
    box.setObjectName(QStringLiteral("reloadQuestion"));
    box.setInformativeText(document.isModified()
                               ? tr("Read it again? Your own changes, which are not saved, are lost then.")
                               : tr("Read it again?"));
    usePlainText(box);
    QAbstractButton* reload = box.addButton(tr("&Read again"), QMessageBox::AcceptRole);
    QPushButton* keep = box.addButton(tr("&Keep as it is"), QMessageBox::RejectRole);
    box.setDefaultButton(document.isModified() ? keep : static_cast<QPushButton*>(reload));
    box.setEscapeButton(keep);
    box.exec();
    return box.clickedButton() == reload;
}

void DocumentReloader::onChanged(const QByteArray& path)
{
    offer(path, tr("“%1” was changed by another program."));
    forgetClosed();
    std::vector<const Document*> users;
    for (const auto& [document, others] : m_others) {
        if (others.count(path.toStdString()) > 0)
            users.push_back(document);
    }
    for (const Document* document : users)
        onOtherChanged(document);
}

void DocumentReloader::onOtherChanged(const Document* changed)
{
    // It may have gone while another question stood.
    forgetClosed();
    if (m_others.count(changed) > 0)
        offer(QByteArray::fromStdString(changed->getFilename().str()),
              tr("A file that “%1” is made of was changed by another program."));
}

/// Asks whether the document of that file is to be read again.
/// @param what  happened, with a place for its name
void DocumentReloader::offer(const QByteArray& path, const QString& what)
{
    if (m_asking.contains(path)) {
        m_changedMeanwhile.insert(path);
        return;
    }
    Document* document = findDocument(path);
    if (!document)
        return;
    m_marked.erase(path.toStdString());
    m_asking.insert(path);
    m_changedMeanwhile.remove(path);
    const bool isWanted = ask(*document, what);
    m_asking.remove(path);
    // The document may have gone while the question stood.
    document = findDocument(path);
    if (!document)
        return;
    if (isWanted) {
        // What is read now.
        m_watcher.acknowledge(path.toStdString());
        for (const std::string& other : m_others[document])
            m_watcher.acknowledge(other);
        auto* manager = dynamic_cast<QtDocManager*>(document->getDocumentManager());
        if (manager)
            manager->reload(*document);
        else
            document->revert();
        return;
    }
    if (m_changedMeanwhile.contains(path))
        offer(path, what);
}

void DocumentReloader::onRemoved(const QByteArray& path)
{
    Document* document = findDocument(path);
    if (!document)
        return;
    if (!document->isModified()) {
        const vfBase::LifeWatch<Document> watch(document);
        m_marked[path.toStdString()] = document;
        document->modify(true);
        if (watch.isGone()) {
            m_marked.erase(path.toStdString());
            return;
        }
    }
    Application::instance(false)->getStatusBar().updateStatus(
        StatusBarMessage,
        tr("The file of “%1” is gone; it can be saved again.")
            .arg(toQt(document->getUserReadableName()))
            .toUtf8(),
        0);
}

void DocumentReloader::onRestored(const QByteArray& path)
{
    Document* document = findDocument(path);
    const auto marked = m_marked.find(path.toStdString());
    // It may have been changed since in ways of its own.
    if (document && marked != m_marked.end() && marked->second == document &&
        !document->getCommandProcessor()->isDirty())
        document->modify(false);
    m_marked.erase(path.toStdString());
}

} // namespace vfApplication
