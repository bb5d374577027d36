// SPDX-License-Identifier: MIT
#include <velaforge/documents/Document.h>

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Require.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/View.h>

#include <osg/Notify>
#include <osg/Timer>
#include <osgDB/FileNameUtils>
#include <osgDB/Options>

#include <memory>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

namespace vfApplication {

using vfBase::LifeWatch;
using vfBase::RunningCall;
using vfBase::WriteResult;
using Views = vfBase::Vector<View*>;

namespace {

const vfBase::Call closing{"Document::close"};

/// Returns the shell of the current application, null if there is no application.
ApplicationInterface* shell()
{
    Application* application = Application::instance(false);
    return application ? application->getApplicationInterface() : nullptr;
}

/// All documents of the process, including those that no manager lists.
class AllDocuments
{
public:
    static AllDocuments& instance()
    {
        // Never destroyed: documents may be destroyed until the process ends.
        static AllDocuments& all = *new AllDocuments;
        return all;
    }

    void add(Document* document)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_documents.insert(document);
    }

    void remove(Document* document)
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_documents.erase(document);
    }

    std::vector<Document*> list() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return {m_documents.begin(), m_documents.end()};
    }

private:
    mutable std::mutex m_mutex;
    std::set<Document*> m_documents;
};

/// Iterates over the views of a document. Stays valid while the notified views close, open and delete views.
/// Allocates nothing, so that a notification cannot fail half-way.
class ViewWalk
{
public:
    explicit ViewWalk(const Views& views) : m_views(views), m_outer(s_innermost) { s_innermost = this; }
    ~ViewWalk() { s_innermost = m_outer; }
    ViewWalk(const ViewWalk&) = delete;
    ViewWalk& operator=(const ViewWalk&) = delete;

    /// Returns the next view in the list, null at its end.
    View* next()
    {
        while (m_next < m_views.size()) {
            if (View* view = m_views.at(m_next++))
                return view;
        }
        return nullptr;
    }

    /// Corrects the positions of all walks over @p views after the view at @p index was removed.
    static void onRemoved(const Views& views, unsigned int index)
    {
        for (ViewWalk* walk = s_innermost; walk; walk = walk->m_outer) {
            if (walk->m_views.getImp() == views.getImp() && index < walk->m_next)
                --walk->m_next;
        }
    }

private:
    static thread_local ViewWalk* s_innermost;

    /// Shares the list and keeps it alive if the document is deleted.
    const Views m_views;
    unsigned int m_next = 0;
    ViewWalk* const m_outer;
};

thread_local ViewWalk* ViewWalk::s_innermost = nullptr;

/// Calls @p tell for each view except @p sender, as long as the document exists.
template <class Tell>
void tellViews(const Document& document, const Views& views, const View* sender, Tell tell)
{
    const LifeWatch<Document> watch(&document);
    ViewWalk walk(views);
    while (View* view = watch.isGone() ? nullptr : walk.next()) {
        if (view != sender)
            tell(*view);
    }
}

} // namespace

void Document::deleteView(View* view, const Views& views, const LifeWatch<Document>& watch)
{
    View::destroy(view);
    // Still listed if the view was added by addView alone: it has no document to remove itself from.
    if (Document* document = watch.get()) {
        if (views.contains(view))
            document->removeView(view);
    }
}

const vfBase::Call Document::s_making{"DocTemplate::initDocument"};

const vfBase::ClassInfo Document::s_classInfo("vfApplication", "Document", "vfApplication::Document",
                                              &vfBase::VfObject::s_classInfo, nullptr,
                                              static_cast<int>(sizeof(Document)), nullptr);

Document::Document()
{
    auto processor = std::make_unique<CommandProcessor>(-1);
    AllDocuments::instance().add(this);
    m_commandProcessor = processor.release();
    vfBase::CopyGroup::leave(this);
}

Document::Document(const Document& other)
    : VfObject(other),
      m_modified(other.m_modified),
      m_documentSaved(other.m_documentSaved),
      m_savedInternal(other.m_savedInternal),
      m_filename(other.m_filename),
      m_title(other.m_title),
      m_documentName(other.m_documentName),
      m_documentTemplate(other.m_documentTemplate),
      m_commandProcessor(other.m_commandProcessor),
      m_viewList(other.m_viewList),
      m_openDocumentOptions(other.m_openDocumentOptions),
      m_saveDocumentOptions(other.m_saveDocumentOptions)
{
    AllDocuments::instance().add(this);
    vfBase::CopyGroup::join(this, &other);
}

Document& Document::operator=(const Document& other)
{
    if (m_commandProcessor != other.m_commandProcessor) {
        vfBase::CopyGroup::join(this, &other);
        // By contract the former processor is not deleted: other documents may use it.
        vfBase::leakForProcess(m_commandProcessor);
        m_commandProcessor = other.m_commandProcessor;
    }
    m_modified = other.m_modified;
    m_documentSaved = other.m_documentSaved;
    m_savedInternal = other.m_savedInternal;
    m_filename = other.m_filename;
    m_title = other.m_title;
    m_documentName = other.m_documentName;
    m_documentTemplate = other.m_documentTemplate;
    m_viewList.setImp(other.m_viewList);
    m_openDocumentOptions = other.m_openDocumentOptions;
    m_saveDocumentOptions = other.m_saveDocumentOptions;
    return *this;
}

Document::~Document()
{
    LifeWatch<Document>::end(this);
    AllDocuments::instance().remove(this);
    DocManager* manager = m_documentTemplate ? m_documentTemplate->getDocumentManager() : nullptr;
    cutViews(manager);
    if (manager)
        manager->removeDocument(this);
    if (vfBase::CopyGroup::end(this))
        delete m_commandProcessor;
}

void Document::cutViews(DocManager* manager)
{
    for (View* view : m_viewList) {
        if (!view || view->m_document != this)
            continue;
        if (manager && manager->getCurrentView() == view)
            manager->activateView(view, false);
        view->m_document = nullptr;
    }
}

void Document::leaveManager()
{
    DocManager* manager = m_documentTemplate ? m_documentTemplate->getDocumentManager() : nullptr;
    if (!manager)
        return;
    if (m_viewList.contains(manager->getCurrentView()))
        manager->activateView(manager->getCurrentView(), false);
    if (manager->containsDocument(this))
        manager->removeDocument(this);
}

void Document::cutTemplate(const DocTemplate* documentTemplate)
{
    for (Document* document : AllDocuments::instance().list()) {
        if (document->m_documentTemplate != documentTemplate)
            continue;
        document->leaveManager();
        document->m_documentTemplate = nullptr;
    }
}

void Document::cutView(View* view)
{
    for (Document* document : AllDocuments::instance().list()) {
        const LifeWatch<Document> watch(document);
        try {
            if (document->m_viewList.contains(view))
                document->removeView(view);
        } catch (...) {
            // An override has thrown, before or after the view was removed from the list.
            if (!watch.isGone())
                document->dropView(view);
        }
    }
}

void Document::dropView(View* view)
{
    const unsigned int index = m_viewList.indexOf(view);
    if (index != Views::npos) {
        m_viewList.remove(index);
        ViewWalk::onRemoved(m_viewList, index);
    }
    if (m_viewList.isEmpty() && !RunningCall<Document>::isRunning(this, s_making))
        delete this;
}

void Document::destroy(Document* document)
{
    if (!document)
        return;
    const LifeWatch<Document> watch(document);
    const Views views = document->m_viewList;
    while (!watch.isGone() && !views.isEmpty()) {
        View* view = views.asStdVector().front();
        if (RunningCall<View>::isRunning(view, View::s_ending))
            return; // this view is being deleted already, and deletes the document
        deleteView(view, views, watch);
    }
    delete watch.get();
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
    return requiredManager("Document::confirmRevert")->askForConfirmRevert() != 0;
}

DocManager* Document::requiredManager(const char* operation) const
{
    DocManager* manager = getDocumentManager();
    VF_REQUIRE(manager, operation, "the document has no template with a manager");
    return manager;
}

// --- views

bool Document::addView(View* view)
{
    if (m_viewList.contains(view))
        return true;
    m_viewList.append(view);
    // Last: it may delete this document.
    onChangedViewList();
    return true;
}

bool Document::removeView(View* view)
{
    const unsigned int index = m_viewList.indexOf(view);
    if (index == vfBase::Vector<View*>::npos)
        return false;
    m_viewList.remove(index);
    ViewWalk::onRemoved(m_viewList, index);
    // Last: it may delete this document.
    onChangedViewList();
    return true;
}

void Document::onChangedViewList()
{
    // While the template makes the document it still uses it, and deletes it if a step fails.
    if (m_viewList.isEmpty() && !RunningCall<Document>::isRunning(this, s_making))
        delete this;
}

bool Document::deleteAllViews()
{
    VF_REQUIRE_APPLICATION_THREAD("Document::deleteAllViews");
    // The document is deleted with its last view, so only locals are used from here on. The handle keeps the
    // list alive.
    const LifeWatch<Document> watch(this);
    DocManager* manager = getDocumentManager();
    const LifeWatch<DocManager> managerWatch(manager);
    const Views views = m_viewList;
    const bool hasNoViews = views.isEmpty();
    {
        ViewWalk walk(views);
        while (View* view = watch.isGone() ? nullptr : walk.next()) {
            if (!view->close(true))
                return watch.isGone();
        }
    }
    if (watch.isGone())
        return true;
    if (hasNoViews && views.isEmpty()) {
        if (manager && !managerWatch.isGone() && manager->containsDocument(this))
            delete this;
        return true;
    }
    // The number is read before the deletion: the document is deleted with the last view.
    while (!watch.isGone() && !views.isEmpty()) {
        View* view = views.asStdVector().front();
        const bool isLast = views.size() == 1;
        if (RunningCall<View>::isRunning(view, View::s_ending))
            return true; // an outer call deletes this view, and then the others
        deleteView(view, views, watch);
        if (isLast)
            break;
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
    if (notifyViews)
        tellViews(*this, m_viewList, nullptr, [](View& view) { view.onChangeFilename(); });
}

void Document::updateAllViews(View* sender)
{
    VF_REQUIRE_APPLICATION_THREAD("Document::updateAllViews");
    const LifeWatch<View> senderWatch(sender);
    tellViews(*this, m_viewList, sender, [&senderWatch](View& view) { view.onUpdate(senderWatch.get()); });
}

void Document::deselectAllViews(View* sender)
{
    VF_REQUIRE_APPLICATION_THREAD("Document::deselectAllViews");
    const LifeWatch<View> senderWatch(sender);
    tellViews(*this, m_viewList, sender, [&senderWatch](View& view) { view.onDeselect(senderWatch.get()); });
}

void Document::notifyClosing()
{
    tellViews(*this, m_viewList, nullptr, [](View& view) { view.onClosingDocument(); });
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
    const LifeWatch<Document> watch(this);
    vfBase::VfString name = requiredManager("Document::onNewDocument")->makeNewDocumentName();
    if (watch.isGone())
        return false;
    vfBase::VfString title = vfBase::getSimpleFileName(name);
    m_filename = std::move(name);
    m_title = std::move(title);
    onChangeFilename(true);
    return !watch.isGone();
}

bool Document::onOpenDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    VF_REQUIRE_APPLICATION_THREAD("Document::onOpenDocument");
    const LifeWatch<Document> watch(this);
    const osg::Timer* timer = osg::Timer::instance();
    const osg::Timer_t begin = timer->tick();
    if (!doOpenDocument(path, options) || watch.isGone())
        return false;
    if (m_filename.empty())
        setFilename(path, true);
    if (watch.isGone())
        return false;
    m_documentSaved = true;
    updateAllViews(nullptr);
    if (watch.isGone())
        return false;
    if (ApplicationInterface* watcher = shell())
        watcher->addFileToFileSystemWatcher(path);
    const osg::Timer_t end = timer->tick();
    const double milliseconds = static_cast<double>(end - begin) * timer->getSecondsPerTick() * 1000.0;
    if (vfBase::NotifyHandler::instance().isNotifyEnabled())
        osg::notify(osg::ALWAYS) << "Model loaded in: " << milliseconds << " ms" << std::endl;
    return !watch.isGone();
}

bool Document::doOpenDocument(const vfBase::VfString&, const vfBase::Options& options)
{
    m_openDocumentOptions = options;
    vfBase::clearMonitor();
    return true;
}

bool Document::revert()
{
    VF_REQUIRE_APPLICATION_THREAD("Document::revert");
    const LifeWatch<Document> watch(this);
    if (!confirmRevert() || watch.isGone())
        return false;
    // A copy: doOpenDocument assigns to this field.
    const vfBase::Options options = m_openDocumentOptions;
    if (!doOpenDocument(getFilename(), options))
        return false;
    if (!watch.isGone())
        modify(false);
    if (!watch.isGone())
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
        return WriteResult(WriteResult::NoTemplate);
    const LifeWatch<Document> watch(this);
    const LifeWatch<DocTemplate> templateWatch(documentTemplate);

    const vfBase::VfString filter = documentTemplate->getFileFilter();
    vfBase::VfString directory = documentTemplate->getDirectory();
    if (directory.empty())
        directory = osgDB::getFilePath(m_filename);
    if (directory.empty())
        directory = requiredManager("Document::saveAs")->getLastDirectory();

    // A copy: the dialog may change the options, which the writer gets. The caller's options are not changed.
    vfBase::Options working = options.isValid() ? options.clone() : vfBase::Options(new osgDB::Options);
    const vfBase::VfString extension = documentTemplate->getDefaultExtension();
    const vfBase::VfString name = vfBase::getNameLessExtension(vfBase::getSimpleFileName(m_filename));
    const vfBase::VfString path = requiredManager("Document::saveAs")
                                      ->selectDocumentSavePath(directory.c_str(), name.c_str(),
                                                               extension.c_str(), filter.c_str(), working);
    if (path.empty() || watch.isGone())
        return WriteResult(WriteResult::NoPath);

    // Copied before the file is written, so that nothing can fail between writing the file and taking its
    // name.
    vfBase::VfString filename(path);
    vfBase::VfString title(osgDB::getSimpleFileName(path));
    const WriteResult result = onSaveDocument(path, working);
    if (result.error() || watch.isGone())
        return result;
    takeFilename(std::move(filename), std::move(title), true);
    if (!watch.isGone() && !templateWatch.isGone())
        requiredManager("Document::saveAs")->enterInHistory(*documentTemplate, path);
    return result;
}

vfBase::WriteResult Document::onSaveDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    VF_REQUIRE_APPLICATION_THREAD("Document::onSaveDocument");
    m_savedInternal = true;
    if (path.empty())
        return WriteResult(WriteResult::Written);
    const LifeWatch<Document> watch(this);
    // Copied before the file is written, so that nothing can fail between writing the file and taking its
    // name.
    vfBase::VfString filename(path);
    vfBase::VfString title(vfBase::getSimpleFileName(path));
    const WriteResult result = doSaveDocument(path, options);
    if (result.error() || watch.isGone())
        return result;
    if (m_commandProcessor)
        m_commandProcessor->markAsSaved();
    modify(false);
    if (!watch.isGone())
        takeFilename(std::move(filename), std::move(title), true);
    if (!watch.isGone())
        m_documentSaved = true;
    return result;
}

vfBase::WriteResult Document::doSaveDocument(const vfBase::VfString&, const vfBase::Options& options)
{
    m_saveDocumentOptions = options;
    return WriteResult(WriteResult::Written);
}

bool Document::onSaveModified()
{
    if (!isModified())
        return true;
    const LifeWatch<Document> watch(this);
    const int answer = requiredManager("Document::onSaveModified")->askForUserConfirmation();
    if (watch.isGone())
        return true;
    switch (answer) {
    case 0: // cancel
        return false;
    case 1: // save
        return save(vfBase::Options::invalid()).success();
    case 2: // discard
        modify(false);
        return true;
    default:
        return true;
    }
}

// --- close

bool Document::close()
{
    VF_REQUIRE_APPLICATION_THREAD("Document::close");
    // A view or a dialog may call this again while it runs: the first call decides.
    if (RunningCall<Document>::isRunning(this, closing))
        return false;
    const RunningCall<Document> running(this, closing);
    const bool isAgreed = onSaveModified();
    if (running.isGone())
        return true;
    if (!isAgreed)
        return false;
    if (ApplicationInterface* watcher = shell())
        watcher->removeFileFromFileSystemWatcher(m_filename);
    return running.isGone() || onCloseDocument();
}

bool Document::onCloseDocument()
{
    const LifeWatch<Document> watch(this);
    notifyClosing();
    if (!watch.isGone())
        deleteContents();
    if (!watch.isGone())
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
    if (processor != m_commandProcessor)
        vfBase::CopyGroup::leave(this);
    m_commandProcessor = processor;
    // The changes so far were made by other commands, which this history cannot revert.
    if (processor && m_modified)
        processor->noteModified(true);
}

void Document::setFilename(const vfBase::VfString& path, bool notifyViews)
{
    vfBase::VfString filename(path);
    vfBase::VfString title(vfBase::getSimpleFileName(path));
    takeFilename(std::move(filename), std::move(title), notifyViews);
}

void Document::takeFilename(vfBase::VfString&& filename, vfBase::VfString&& title, bool notifyViews)
{
    m_filename = std::move(filename);
    m_title = std::move(title);
    onChangeFilename(notifyViews);
}

void Document::modify(bool modified)
{
    VF_REQUIRE_APPLICATION_THREAD("Document::modify");
    if (m_commandProcessor)
        m_commandProcessor->noteModified(modified);
    if (modified == m_modified)
        return;
    m_modified = modified;
    if (View* view = getFirstView())
        view->onChangeFilename();
}

void Document::updateProject() {}

} // namespace vfApplication
