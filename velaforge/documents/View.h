// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

class DocManager;
class Document;

/// What shows a document. It draws nothing by itself: a derived view overrides the notifications.
///
///     class Canvas : public vfApplication::View
///     {
///     public:
///         bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
///         void onUpdate(vfApplication::View*) override { repaint(); }
///     };
///
/// A derived view must override onCreate, which refuses here. Deleting a view is the whole of its unlinking:
/// it leaves its document and the manager by itself, and the document goes with its last view.
/// Views belong to the thread that calls Application::run.
class VFAPPLICATION_EXPORT View : public vfBase::VfObject
{
public:
    static const vfBase::ClassInfo s_classInfo;

    View();

    /// Copies the fields. A copy is not entered in the document's list.
    View(const View& other);
    View& operator=(const View& other);

    // In the order of their slots, which is part of the binary interface.
    const vfBase::ClassInfo* getClassInfo() const override;
    ~View() override;

    /// Makes this the current view of the manager, or takes that from it; the view hears of it first,
    /// through onActivateView. Nothing without a document that has a manager.
    virtual void activate(bool active);

    /// @return onClose(force)
    virtual bool close(bool force);

    /// @param previous  the current view before the change; null when there was none
    virtual void onActivateView(bool active, View* activated, View* previous);

    /// The document's file name or its modified flag has changed.
    virtual void onChangeFilename();

    /// Whether the view may go. Here it closes the whole document, with the question about unsaved changes.
    /// @param force  not used here
    /// @return false when the document refused; true without a document
    virtual bool onClose(bool force);

    /// The document is closing. Tells the application.
    virtual void onClosingDocument();

    /// Last step of making a view; the document is linked and still empty.
    /// @return true to accept; here false, and the view is deleted
    virtual bool onCreate(Document* document, const vfBase::Options& options);

    /// Links the view to @p document, once; null unlinks nothing.
    virtual void setDocument(Document* document);

    /// The contents have changed. @param sender  the view that changed them, null for none
    virtual void onUpdate(View* sender);

    /// Another view has taken the selection. @param sender  that view, null for none
    virtual void onDeselect(View* sender);

    virtual void redraw();

    virtual void setViewOptions(const vfBase::Options& options);

    /// @return the document shown, null before setDocument
    Document* getDocument() const { return m_document; }

    /// @return the manager of the document, which must be there
    DocManager* getDocumentManager() const;

    /// @return the view name of the template of the document; both must be there
    vfBase::VfString getViewName() const;

    /// Does nothing: the name of a view is that of its template.
    void setViewName(const vfBase::VfString& name);

    const vfBase::Options& getViewOptions() const { return m_viewOptions; }

    /// @return "vfApplication::View"
    static const char* classId();

private:
    friend class Document;

    /// Marks a view whose destructor runs, or is about to.
    static const vfBase::Call s_ending;

    Document* m_document = nullptr;
    vfBase::VfString m_viewName;
    vfBase::Options m_viewOptions;
};

} // namespace vfApplication
