// SPDX-License-Identifier: MIT
#include <velaforge/documents/DocManager.h>

#include <velaforge/base/FileNames.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/documents/View.h>

#include <osgDB/Registry>

#include <string>

namespace vfApplication {

namespace {

/// Takes every occurrence of @p item out.
template <class T>
void eraseAll(vfBase::Vector<T>& list, T item)
{
    for (unsigned int i = list.indexOf(item); i != vfBase::Vector<T>::npos; i = list.indexOf(item, i))
        list.remove(i);
}

} // namespace

DocManager::DocManager(bool) : m_fileHistory(new FileHistory(9)) {}

DocManager::DocManager(const DocManager& other) = default;

DocManager& DocManager::operator=(const DocManager& other) = default;

DocManager::~DocManager()
{
    // A document reaches the manager through its template, so documents go first.
    closeDocuments(true);
    m_currentView = nullptr;
    while (!m_documents.isEmpty()) {
        Document* document = m_documents.first();
        if (document)
            delete document;
        else
            m_documents.removeFirst();
    }
    while (!m_templates.isEmpty()) {
        DocTemplate* documentTemplate = m_templates.first();
        if (documentTemplate)
            delete documentTemplate;
        else
            m_templates.removeFirst();
    }
    delete m_fileHistory;
}

// --- questions

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
    for (unsigned int i = 0; i < m_documents.size(); ++i) {
        if (m_documents.at(i)->getFilename() == wanted)
            return m_documents.at(i);
    }
    return nullptr;
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
        m_lastDirectory =
            vfBase::StandardPaths::standardLocation(static_cast<vfBase::StandardPaths::StandardLocation>(1));
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
    const bool ok = document->close();
    if (!ok && !force)
        return false;
    document->deleteAllViews();
    // The document is normally gone by now and off the list; the pointer is only compared.
    if (m_documents.contains(document))
        removeDocument(document);
    return true;
}

bool DocManager::closeDocuments(bool force)
{
    while (!m_documents.isEmpty()) {
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
