// SPDX-License-Identifier: MIT
#include <velaforge/documents/DocManager.h>

#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Require.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/View.h>

#include <osg/Notify>
#include <osgDB/Registry>

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <vector>

namespace vfApplication {

namespace {

/// Removes every occurrence of @p item from @p list.
template <class T>
void eraseAll(vfBase::Vector<T>& list, T item)
{
    for (unsigned int i = list.indexOf(item); i != vfBase::Vector<T>::npos; i = list.indexOf(item, i))
        list.remove(i);
}

/// Reports that a document could not be closed, with the text of the exception that is being handled.
void reportClosingFailure(const vfBase::VfString& filename)
{
    if (!vfBase::NotifyHandler::instance().isNotifyEnabled())
        return;
    try {
        throw;
    } catch (const std::exception& problem) {
        osg::notify(osg::WARN) << "Closing " << filename << " failed: " << problem.what() << std::endl;
    } catch (...) {
        osg::notify(osg::WARN) << "Closing " << filename << " failed" << std::endl;
    }
}

} // namespace

const vfBase::Call DocManager::s_closingAll{"DocManager::closeDocuments"};

DocManager::DocManager(bool) : m_fileHistory(new FileHistory(9))
{
    vfBase::CopyGroup::leave(this);
}

DocManager::DocManager(const DocManager& other)
    : m_currentView(other.m_currentView),
      m_reservedName(other.m_reservedName),
      m_lastDirectory(other.m_lastDirectory),
      m_newDocumentCounter(other.m_newDocumentCounter),
      m_maxDocsOpen(other.m_maxDocsOpen),
      m_templates(other.m_templates),
      m_documents(other.m_documents),
      m_fileHistory(other.m_fileHistory)
{
    vfBase::CopyGroup::join(this, &other);
}

DocManager& DocManager::operator=(const DocManager& other)
{
    if (m_fileHistory != other.m_fileHistory) {
        vfBase::CopyGroup::join(this, &other);
        // By contract the former history is not deleted: other managers may use it.
        vfBase::leakForProcess(m_fileHistory);
        m_fileHistory = other.m_fileHistory;
    }
    m_currentView = other.m_currentView;
    m_reservedName = other.m_reservedName;
    m_lastDirectory = other.m_lastDirectory;
    m_newDocumentCounter = other.m_newDocumentCounter;
    m_maxDocsOpen = other.m_maxDocsOpen;
    m_templates.setImp(other.m_templates);
    m_documents.setImp(other.m_documents);
    return *this;
}

DocManager::~DocManager()
{
    vfBase::LifeWatch<DocManager>::end(this);
    const vfBase::RunningCall<DocManager> running(this, s_closingAll);
    // Documents first: they reach the manager through their template. If one throws, the others are closed
    // all the same.
    const vfBase::Vector<Document*> documents = m_documents;
    for (unsigned int kept = 0; kept < documents.size();) {
        Document* document = documents.at(kept);
        const vfBase::LifeWatch<Document> watch(document);
        try {
            if (document)
                closeDocument(document, true);
        } catch (...) {
            reportClosingFailure(watch.isGone() ? vfBase::VfString() : document->getFilename());
        }
        if (kept < documents.size() && documents.at(kept) == document)
            ++kept; // it threw, and is deleted below
    }
    m_currentView = nullptr;
    while (!m_documents.isEmpty()) {
        Document* document = m_documents.first();
        if (document)
            Document::destroy(document);
        eraseAll(m_documents, document);
    }
    while (!m_templates.isEmpty()) {
        DocTemplate* documentTemplate = m_templates.first();
        delete documentTemplate;
        eraseAll(m_templates, documentTemplate);
    }
    if (vfBase::CopyGroup::end(this))
        delete m_fileHistory;
}

// --- state

bool DocManager::initialize()
{
    return true;
}

FileHistory* DocManager::getFileHistory()
{
    return m_fileHistory;
}

View* DocManager::getCurrentView() const
{
    return m_currentView;
}

Document* DocManager::getCurrentDocument() const
{
    if (!getCurrentView())
        return nullptr;
    return m_currentView ? m_currentView->getDocument() : nullptr;
}

bool DocManager::containsTemplate(DocTemplate* documentTemplate) const
{
    return m_templates.contains(documentTemplate);
}

bool DocManager::containsDocument(Document* document) const
{
    return m_documents.contains(document);
}

Document* DocManager::findDocumentByPath(const char* path) const
{
    const vfBase::VfString wanted(path);
    const auto found = std::find_if(m_documents.begin(), m_documents.end(), [&wanted](Document* document) {
        return document && document->getFilename() == wanted;
    });
    return found == m_documents.end() ? nullptr : *found;
}

vfBase::VfString DocManager::getLastDirectory() const
{
    if (!m_lastDirectory.empty())
        return m_lastDirectory;
    if (m_fileHistory && m_fileHistory->getCount() != 0) {
        const vfBase::VfString directory = vfBase::getFilePath(m_fileHistory->getHistoryFile(0));
        if (vfBase::directoryExists(directory))
            m_lastDirectory = directory;
    }
    if (m_lastDirectory.empty())
        m_lastDirectory = vfBase::StandardPaths::standardLocation(vfBase::StandardPaths::Documents);
    return m_lastDirectory;
}

void DocManager::getVisibleTemplates(vfBase::Vector<DocTemplate*>& templates)
{
    for (unsigned int i = 0; i < m_templates.size(); ++i) {
        if (m_templates.at(i)->isVisible())
            templates.append(m_templates.at(i));
    }
}

// --- questions to the user

int DocManager::askForUserConfirmation()
{
    return 1;
}

int DocManager::askForConfirmRevert()
{
    return 1;
}

// --- registers

void DocManager::associateTemplate(DocTemplate* documentTemplate)
{
    if (!m_templates.contains(documentTemplate))
        m_templates.append(documentTemplate);
}

void DocManager::disassociateTemplate(DocTemplate* documentTemplate)
{
    eraseAll(m_templates, documentTemplate);
}

void DocManager::addDocument(Document* document)
{
    if (!m_documents.contains(document))
        m_documents.append(document);
}

void DocManager::removeDocument(Document* document)
{
    eraseAll(m_documents, document);
    if (!m_documents.isEmpty())
        return;
    osgDB::Registry::instance()->clearArchiveCache();
    osgDB::Registry::instance()->clearObjectCache();
}

void DocManager::addFileToHistory(const vfBase::VfString& path)
{
    getFileHistory()->addFileToHistory(path);
}

void DocManager::enterInHistory(DocTemplate& documentTemplate, const vfBase::VfString& path)
{
    const vfBase::LifeWatch<DocManager> watch(this);
    try {
        if (documentTemplate.fileMatchesTemplate(path) && !watch.isGone())
            addFileToHistory(path);
    } catch (const std::bad_alloc&) {
        // Ignored: the file is open or saved, and only the entry in the recent files is missing.
    }
}

vfBase::VfString DocManager::makeNewDocumentName()
{
    return "unnamed" + std::to_string(m_newDocumentCounter++);
}

void DocManager::activateView(View* view, bool active)
{
    if (active)
        m_currentView = view;
    else if (m_currentView == view)
        m_currentView = nullptr;
}

// --- closing

bool DocManager::closeDocument(Document* document, bool force)
{
    VF_REQUIRE_APPLICATION_THREAD("DocManager::closeDocument");
    VF_REQUIRE(document, "DocManager::closeDocument", "the document is null");
    const vfBase::LifeWatch<DocManager> self(this);
    const vfBase::LifeWatch<Document> watch(document);
    const bool isOurs = document->getDocumentManager() == this;
    const bool ok = document->close();
    if (!ok && !force)
        return watch.isGone();
    if (!watch.isGone())
        document->deleteAllViews();
    if (self.isGone())
        return true;
    // The document is normally deleted by now. A document of this manager has then left the list; the pointer
    // to any other is only compared.
    if (!(isOurs && watch.isGone()) && m_documents.contains(document))
        removeDocument(document);
    return true;
}

bool DocManager::closeDocuments(bool force)
{
    const vfBase::RunningCall<DocManager> running(this, s_closingAll);
    while (!running.isGone() && !m_documents.isEmpty()) {
        if (!closeDocument(m_documents.first(), force))
            return false;
    }
    return true;
}

bool DocManager::clear(bool force)
{
    return closeDocuments(force);
}

} // namespace vfApplication
