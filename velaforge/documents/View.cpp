// SPDX-License-Identifier: MIT
#include <velaforge/documents/View.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Require.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>

namespace vfApplication {

const vfBase::ClassInfo View::s_classInfo("vfApplication", "View", View::classId(),
                                          &vfBase::VfObject::s_classInfo, nullptr,
                                          static_cast<int>(sizeof(View)), nullptr);

const vfBase::Call View::s_ending{"View::~View"};

View::View() : m_viewOptions(vfBase::Options::invalid()) {}

View::View(const View& other) = default;

View& View::operator=(const View& other) = default;

View::~View()
{
    vfBase::LifeWatch<View>::end(this);
    const vfBase::RunningCall<View> ending(this, s_ending);
    // First, because the manager is reached through the document, which may be deleted with its last view. An
    // exception of an override must not leave the destructor: the view is removed all the same.
    try {
        if (DocManager* manager = m_document ? m_document->getDocumentManager() : nullptr)
            manager->activateView(this, false);
    } catch (...) {
        if (DocManager* manager = m_document ? m_document->getDocumentManager() : nullptr)
            manager->DocManager::activateView(this, false);
    }
    // From all documents: a document that the view showed before still lists it.
    Document::cutView(this);
}

void View::destroy(View* view)
{
    const vfBase::RunningCall<View> ending(view, s_ending);
    delete view;
}

const vfBase::ClassInfo* View::getClassInfo() const
{
    return &s_classInfo;
}

DocManager* View::getDocumentManager() const
{
    VF_REQUIRE(m_document, "View::getDocumentManager", "the view has no document");
    return m_document->getDocumentManager();
}

vfBase::VfString View::getViewName() const
{
    VF_REQUIRE(m_document && m_document->getDocumentTemplate(), "View::getViewName",
               "the view has no document with a template");
    return m_document->getDocumentTemplate()->getViewName();
}

void View::setViewName(const vfBase::VfString&) {}

void View::activate(bool active)
{
    DocManager* manager = m_document ? m_document->getDocumentManager() : nullptr;
    if (!manager)
        return;
    VF_REQUIRE_APPLICATION_THREAD("View::activate");
    const vfBase::LifeWatch<View> watch(this);
    const vfBase::LifeWatch<DocManager> managerWatch(manager);
    View* previous = manager->getCurrentView();
    // Before the manager changes the current view, so that this view can compare itself with the previous
    // one.
    onActivateView(active, this, previous);
    if (!watch.isGone() && !managerWatch.isGone())
        manager->activateView(this, active);
}

bool View::close(bool force)
{
    return onClose(force);
}

void View::onActivateView(bool, View*, View*) {}

void View::onChangeFilename() {}

bool View::onClose(bool)
{
    return m_document ? m_document->close() : true;
}

void View::onClosingDocument()
{
    if (Application* application = Application::instance(false))
        application->onClosingDocument(m_document);
}

bool View::onCreate(Document*, const vfBase::Options&)
{
    return false;
}

void View::setDocument(Document* document)
{
    m_document = document;
    if (document)
        document->addView(this);
}

void View::onUpdate(View*) {}

void View::onDeselect(View*) {}

void View::redraw() {}

void View::setViewOptions(const vfBase::Options& options)
{
    m_viewOptions = options;
}

const char* View::classId()
{
    return "vfApplication::View";
}

} // namespace vfApplication
