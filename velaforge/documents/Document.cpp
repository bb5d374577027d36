// SPDX-License-Identifier: MIT
#include <velaforge/documents/Document.h>

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/View.h>

#include <osg/Notify>
#include <osg/Timer>
#include <osgDB/FileNameUtils>

#include <cassert>

namespace vfApplication {

namespace {

constexpr auto saved = static_cast<vfBase::WriteResult::WriteStatus>(1);
constexpr auto noTemplate = static_cast<vfBase::WriteResult::WriteStatus>(2);
constexpr auto noPath = static_cast<vfBase::WriteResult::WriteStatus>(4);

/// @return the shell of the current application, null when there is no application
ApplicationInterface* shell()
{
    Application* application = Application::instance(false);
    return application ? application->getApplicationInterface() : nullptr;
}

} // namespace

const vfBase::ClassInfo Document::s_classInfo("vfApplication", "Document", "vfApplication::Document",
                                              &vfBase::VfObject::s_classInfo, nullptr,
                                              static_cast<int>(sizeof(Document)), nullptr);

Document::Document() : m_commandProcessor(new CommandProcessor(-1)) {}

Document::Document(const Document& other) = default;

Document& Document::operator=(const Document& other) = default;

Document::~Document()
{
    if (m_documentTemplate && m_documentTemplate->getDocumentManager())
        m_documentTemplate->getDocumentManager()->removeDocument(this);
    delete m_commandProcessor;
}

const vfBase::ClassInfo* Document::getClassInfo() const
{
    return &s_classInfo;
}

const char* Document::classId()
{
    return "vfApplication::document";
}

// --- questions

DocTemplate* Document::getDocumentTemplate() const
{
    return m_documentTemplate;
}

DocManager* Document::getDocumentManager() const
{
    return m_documentTemplate ? m_documentTemplate->getDocumentManager() : nullptr;
}

CommandProcessor* Document::getCommandProcessor() const
{
    return m_commandProcessor;
}

vfBase::VfString Document::getUserReadableName() const
{
    if (!m_title.empty())
        return m_title;
    if (!m_filename.empty())
        return osgDB::getSimpleFileName(m_filename);
    return "unnamed";
}

bool Document::isModified() const
{
    return m_modified;
}

bool Document::containsView(View* view) const
{
    return m_viewList.contains(view);
}

const vfBase::Options& Document::getCreateDocumentOptions() const
{
    return m_documentTemplate ? m_documentTemplate->getCreateDocumentOptions() : vfBase::Options::invalid();
}

View* Document::getFirstView() const
{
    return m_viewList.isEmpty() ? nullptr : m_viewList.first();
}

vfBase::Referenced Document::getProject() const
{
    return vfBase::Referenced::invalid();
}

bool Document::confirmRevert() const
{
    return getDocumentManager()->askForConfirmRevert() != 0;
}

// --- views

bool Document::addView(View* view)
{
    if (m_viewList.contains(view))
        return true;
    m_viewList.append(view);
    onChangedViewList(); // last: this document may be gone after it
    return true;
}

bool Document::removeView(View* view)
{
    const unsigned int index = m_viewList.indexOf(view);
    if (index == vfBase::Vector<View*>::npos)
        return false;
    m_viewList.remove(index);
    onChangedViewList(); // last: this document may be gone after it
    return true;
}

void Document::onChangedViewList()
{
    if (m_viewList.isEmpty())
        delete this;
}

bool Document::deleteAllViews()
{
    // The document goes with its last view, so from here on only locals are used: the handle keeps the list alive.
    DocManager* manager = getDocumentManager();
    vfBase::Vector<View*> views = m_viewList;

    for (unsigned int i = 0; i < views.size(); ++i) {
        if (views.at(i) && !views.at(i)->close(true))
            return false;
    }

    if (!views.isEmpty()) {
        for (;;) {
            View* view = views.first();
            const unsigned int count = views.size();
            if (view)
                delete view;
            else
                views.removeFirst();
            if (count == 1)
                break;
        }
    } else if (manager && manager->containsDocument(this)) {
        delete this;
    }
    return true;
}

void Document::activate() const
{
    if (View* view = getFirstView())
        view->activate(true);
}

void Document::onChangeFilename(bool notifyViews)
{
    if (!notifyViews)
        return;
    for (unsigned int i = 0; i < m_viewList.size(); ++i)
        m_viewList.at(i)->onChangeFilename();
}

void Document::updateAllViews(View* sender)
{
    for (unsigned int i = 0; i < m_viewList.size(); ++i) {
        if (m_viewList.at(i) != sender)
            m_viewList.at(i)->onUpdate(sender);
    }
}

void Document::deselectAllViews(View* sender)
{
    for (unsigned int i = 0; i < m_viewList.size(); ++i) {
        if (m_viewList.at(i) != sender)
            m_viewList.at(i)->onDeselect(sender);
    }
}

void Document::notifyClosing()
{
    for (unsigned int i = 0; i < m_viewList.size(); ++i)
        m_viewList.at(i)->onClosingDocument();
}

// --- new, open, revert

bool Document::onCreate(const vfBase::VfString&, const vfBase::Options& options)
{
    return getDocumentTemplate()->createView(this, options) != nullptr;
}

bool Document::onNewDocument()
{
    m_documentSaved = false;
    if (!getTitle().empty())
        return true;
    const vfBase::VfString name = getDocumentManager()->makeNewDocumentName();
    m_title = name;
    m_filename = name;
    m_title = vfBase::getSimpleFileName(name);
    onChangeFilename(true);
    return true;
}

bool Document::onOpenDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    const osg::Timer* timer = osg::Timer::instance();
    const osg::Timer_t begin = timer->tick();
    if (!doOpenDocument(path, options))
        return false;
    if (m_filename.empty())
        setFilename(path, true);
    m_documentSaved = true;
    updateAllViews(nullptr);
    if (ApplicationInterface* watcher = shell())
        watcher->addFileToFileSystemWatcher(path);
    const osg::Timer_t end = timer->tick();
    const double milliseconds = static_cast<double>(end - begin) * timer->getSecondsPerTick() * 1000.0;
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::ALWAYS) << "Model loaded in: " << milliseconds << " ms" << std::endl;
    return true;
}

bool Document::doOpenDocument(const vfBase::VfString&, const vfBase::Options& options)
{
    m_openDocumentOptions = options;
    vfBase::clearMonitor();
    return true;
}

bool Document::revert()
{
    if (!confirmRevert())
        return false;
    // A copy, since doOpenDocument assigns to the field that it is handed.
    const vfBase::Options options = m_openDocumentOptions;
    if (!doOpenDocument(getFilename(), options))
        return false;
    modify(false);
    updateAllViews(nullptr);
    return true;
}

// --- save

vfBase::WriteResult Document::save(const vfBase::Options& options)
{
    if (!m_filename.empty() && m_documentSaved)
        return onSaveDocument(getFilename(), options);
    return saveAs(options);
}

vfBase::WriteResult Document::saveAs(const vfBase::Options& options)
{
    DocTemplate* documentTemplate = getDocumentTemplate();
    if (!documentTemplate)
        return vfBase::WriteResult(noTemplate);

    const vfBase::VfString filter = documentTemplate->getFileFilter();
    vfBase::VfString directory = documentTemplate->getDirectory();
    if (directory.empty())
        directory = osgDB::getFilePath(m_filename);
    if (directory.empty())
        directory = getDocumentManager()->getLastDirectory();

    // The dialog may write to the options, which then reach the writer; the caller's own stay as they are.
    vfBase::Options working = options.isValid() ? options.clone() : vfBase::Options(new osgDB::Options);
    const vfBase::VfString extension = documentTemplate->getDefaultExtension();
    const vfBase::VfString name = vfBase::getNameLessExtension(vfBase::getSimpleFileName(m_filename));
    const vfBase::VfString path = getDocumentManager()->selectDocumentSavePath(
        directory.c_str(), name.c_str(), extension.c_str(), filter.c_str(), working);
    if (path.empty())
        return vfBase::WriteResult(noPath);

    const vfBase::WriteResult result = onSaveDocument(path, working);
    if (result.error())
        return result;
    m_title = osgDB::getSimpleFileName(path);
    setFilename(path, true);
    if (documentTemplate->fileMatchesTemplate(path))
        getDocumentManager()->addFileToHistory(path);
    return result;
}

vfBase::WriteResult Document::onSaveDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    m_savedInternal = true;
    if (path.empty())
        return vfBase::WriteResult(saved);
    const vfBase::WriteResult result = doSaveDocument(path, options);
    if (result.error())
        return result;
    if (m_commandProcessor)
        m_commandProcessor->markAsSaved();
    modify(false);
    setFilename(path, true);
    m_documentSaved = true;
    return result;
}

vfBase::WriteResult Document::doSaveDocument(const vfBase::VfString&, const vfBase::Options& options)
{
    m_saveDocumentOptions = options;
    return vfBase::WriteResult(saved);
}

bool Document::onSaveModified()
{
    if (!isModified())
        return true;
    switch (getDocumentManager()->askForUserConfirmation()) {
    case 0:
        return false;
    case 1:
        return save(vfBase::Options::invalid()).success();
    case 2:
        modify(false);
        return true;
    default:
        return true;
    }
}

// --- close

bool Document::close()
{
    if (!onSaveModified())
        return false;
    if (ApplicationInterface* watcher = shell())
        watcher->removeFileFromFileSystemWatcher(m_filename);
    return onCloseDocument();
}

bool Document::onCloseDocument()
{
    notifyClosing();
    deleteContents();
    modify(false);
    return true;
}

bool Document::deleteContents()
{
    return true;
}

// --- state

CommandProcessor* Document::onCreateCommandProcessor()
{
    return new CommandProcessor(-1);
}

void Document::setCommandProcessor(CommandProcessor* processor)
{
    m_commandProcessor = processor;
}

void Document::setFilename(const vfBase::VfString& path, bool notifyViews)
{
    m_filename = path;
    m_title = vfBase::getSimpleFileName(path);
    onChangeFilename(notifyViews);
}

void Document::modify(bool modified)
{
    if (modified == m_modified)
        return;
    m_modified = modified;
    if (View* view = getFirstView())
        view->onChangeFilename();
}

void Document::updateProject() {}

} // namespace vfApplication
