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

/// The base class of views, which show a document. It draws nothing: a derived view overrides the
/// notifications.
///
///     class Canvas : public vfApplication::View
///     {
///     public:
///         bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
///         void onUpdate(vfApplication::View*) override { repaint(); }
///     };
///
/// A derived view must override onCreate, which returns false here. The destructor removes the view from its
/// document and from the manager; the document is deleted with its last view. Views belong to the thread that
/// calls Application::run.
class VFAPPLICATION_EXPORT View : public vfBase::VfObject
{
public:
    /// The class record, without a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a view without a document.
    View();

    /// Copies the fields. The copy is not added to the document's list of views.
    View(const View& other);

    /// Copies the fields. Does not change any document's list of views.
    View& operator=(const View& other);

    // In the order of their slots, which is part of the binary interface.
    const vfBase::ClassInfo* getClassInfo() const override;
    ~View() override;

    /// Makes this the manager's current view if @p active is true; otherwise, if it is the current view,
    /// leaves none. Calls onActivateView before that. Does nothing without a document that has a manager.
    virtual void activate(bool active);

    /// Closes the view: calls onClose with @p force.
    /// @return false if the view refused
    virtual bool close(bool force);

    /// Called before the current view changes. Does nothing here.
    /// @param active     true if this view becomes the current view
    /// @param activated  this view
    /// @param previous   the current view before the change, null if there was none
    virtual void onActivateView(bool active, View* activated, View* previous);

    /// Called after the document's file name has changed, and on the first view after its modified flag has
    /// changed. Does nothing here.
    virtual void onChangeFilename();

    /// Decides whether the view may close. Here it closes the document, which asks the user about unsaved
    /// changes; @p force has no effect.
    /// @return false if the document refused; true without a document
    virtual bool onClose(bool force);

    /// Called when the document closes. Here it calls Application::onClosingDocument.
    virtual void onClosingDocument();

    /// Called as the last step of making the view. @p document is linked and, if it is new, still empty; @p
    /// options are those of the view.
    /// @return true to accept; on false, as here, the caller deletes the view
    virtual bool onCreate(Document* document, const vfBase::Options& options);

    /// Links the view to @p document and adds it to the document's list of views. Null clears the pointer
    /// only. Called once, by DocTemplate::createView.
    virtual void setDocument(Document* document);

    /// Called when the contents of the document have changed. Does nothing here. @p sender is the view that
    /// changed them, null if there is none.
    virtual void onUpdate(View* sender);

    /// Called when the view must clear its selection. Does nothing here. @p sender is the view that now has
    /// the selection, null if there is none.
    virtual void onDeselect(View* sender);

    /// Draws the view again; does nothing here. This library does not call it.
    virtual void redraw();

    /// Sets the options of the view. DocTemplate::doCreateView calls this.
    virtual void setViewOptions(const vfBase::Options& options);

    /// Returns the document of the view, null before setDocument.
    Document* getDocument() const { return m_document; }

    /// Returns the manager of the document. The view must have a document.
    DocManager* getDocumentManager() const;

    /// Returns the view name of the document's template. The view must have a document with a template.
    vfBase::VfString getViewName() const;

    /// Does nothing: the name of a view is that of its template.
    void setViewName(const vfBase::VfString& name);

    /// Returns the options of the view; Options::invalid() before they are set.
    const vfBase::Options& getViewOptions() const { return m_viewOptions; }

    /// Deletes @p view, and with its last view the document. In contrast to a plain delete, code of the program
    /// that runs meanwhile may close the document, even in the destructors of derived classes: the view is not
    /// deleted again.
    static void destroy(View* view);

    /// Returns "vfApplication::View".
    static const char* classId();

private:
    friend class Document;

    /// Marks a view that is being deleted.
    static const vfBase::Call s_ending;

    Document* m_document = nullptr;
    vfBase::VfString m_viewName;
    vfBase::Options m_viewOptions;
};

} // namespace vfApplication
