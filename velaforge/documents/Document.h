// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/WriteResult.h>

namespace vfApplication {

class CommandProcessor;
class DocManager;
class DocTemplate;
class View;

/// The base class of documents: opened from a file, shown in views, changed by commands and saved.
///
///     class Drawing : public vfApplication::Document
///     {
///     public:
///         void concreteDocumentOperation() override {}
///         bool deleteContents() override;
///
///     protected:
///         bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
///         vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
///     };
///
/// This class fixes the steps of open, save, save as, revert and close, and has the file name, the title, the
/// flags, the list of views and the undo history. A derived class reads and writes the file. Do not delete a
/// document: call DocManager::closeDocument, and the document deletes itself with its last view. Documents
/// belong to the thread that calls Application::run.
class VFAPPLICATION_EXPORT Document : public vfBase::VfObject
{
public:
    /// The class record, without a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a document without a template, a file name and views, with an empty undo history.
    Document();

    /// Copies the fields: the copy shares the list of views and the undo history with @p other. This library
    /// copies no document.
    Document(const Document& other);

    /// Copies the fields, as the copy constructor does.
    Document& operator=(const Document& other);

    // In the order of their slots, which is part of the binary interface.
    const vfBase::ClassInfo* getClassInfo() const override;

    /// Removes the document from the manager and deletes the undo history. Does not delete views: they have
    /// no document afterwards.
    ~Document() override;

    /// Appends @p view to the views, unless the list has it. View::setDocument calls this.
    /// @return true
    virtual bool addView(View* view);

    /// Asks the user about unsaved changes, has the shell stop watching the file and deletes the contents.
    /// Deletes neither views nor the document.
    /// @return false if the user cancelled, if saving failed, or if the document is being closed already
    virtual bool close();

    /// Closes all views, then deletes them; this document is deleted with the last of them. The caller must
    /// not use the document afterwards.
    /// @return false if a view refused to close; no view is deleted then
    virtual bool deleteAllViews();

    /// Deletes the model; does nothing here. Called when the document closes.
    /// @return true; no caller reads it
    virtual bool deleteContents();

    /// Returns the template that made the document, null before it is set.
    virtual DocTemplate* getDocumentTemplate() const;

    /// Returns the manager of the template, null without a template.
    virtual DocManager* getDocumentManager() const;

    /// Returns the undo history, which the document owns.
    virtual CommandProcessor* getCommandProcessor() const;

    /// Makes an undo history without a limit. A hook for derived classes: this library does not call it.
    /// @return the history, owned by the caller
    virtual CommandProcessor* onCreateCommandProcessor();

    /// Sets the undo history and takes ownership of @p processor. Does not delete the former history: the
    /// caller owns it.
    virtual void setCommandProcessor(CommandProcessor* processor);

    /// Returns the title; if that is empty, the file name without its directory; if that is empty, "unnamed".
    virtual vfBase::VfString getUserReadableName() const;

    /// Returns whether the document has unsaved changes; see modify.
    virtual bool isModified() const;

    /// Makes the first view with @p options. @p path has no effect here. DocTemplate::initDocument calls
    /// this.
    /// @return false if there is no view
    virtual bool onCreate(const vfBase::VfString& path, const vfBase::Options& options);

    /// Prepares an empty document; gives it a name from DocManager::makeNewDocumentName if it has no title.
    /// @return true; false if a view deleted the document meanwhile
    virtual bool onNewDocument();

    /// Loads the file @p path with doOpenDocument, has all views update and has the shell watch the file.
    /// Takes @p path as file name if the document has none. Reports the duration through osg::notify.
    /// @return false if doOpenDocument failed, with file name and flags unchanged, or if the document was
    ///         deleted meanwhile
    virtual bool onOpenDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Writes the file @p path with doSaveDocument. If that succeeded, takes @p path as file name, marks the
    /// undo history as saved and clears the modified flag. Writes nothing for an empty path.
    /// @return the result of doSaveDocument; WriteResult::Written for an empty path. On an error nothing has
    ///         changed except isSavedInternal().
    virtual vfBase::WriteResult onSaveDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Asks the user about unsaved changes, if there are any, and saves or discards them as the user answers.
    /// @return false if the user cancelled or saving failed: the document must stay open
    virtual bool onSaveModified();

    /// Notifies the views, calls deleteContents and clears the modified flag.
    /// @return true
    virtual bool onCloseDocument();

    /// Deletes this document if no view is left. The caller must not use the document afterwards.
    virtual void onChangedViewList();

    /// Removes @p view from the views without deleting it. With the last view this document is deleted.
    /// @return false if the list does not have the view
    virtual bool removeView(View* view);

    /// Saves to the document's file with @p options. Calls saveAs if the document was neither opened from a
    /// file nor saved before.
    /// @return the result of onSaveDocument or saveAs
    virtual vfBase::WriteResult save(const vfBase::Options& options = vfBase::Options::invalid());

    /// Asks the user for a path, saves there and adds the path to the recent files if the template matches
    /// it. The dialog may change a copy of @p options, which the writer gets.
    /// @return WriteResult::NoTemplate without a template, WriteResult::NoPath if the user cancelled,
    ///         otherwise the result of onSaveDocument
    virtual vfBase::WriteResult saveAs(const vfBase::Options& options = vfBase::Options::invalid());

    /// Asks the user whether to load the file again.
    /// @return true to load it
    virtual bool confirmRevert() const;

    /// Asks the user, then loads the file again and has all views update. Leaves the undo history unchanged.
    /// @return false if the user cancelled or the file could not be loaded
    virtual bool revert();

    /// Calls View::onChangeFilename of all views if @p notifyViews is true.
    virtual void onChangeFilename(bool notifyViews);

    /// Calls View::onUpdate of all views except @p sender, which may be null.
    virtual void updateAllViews(View* sender);

    /// Calls View::onDeselect of all views except @p sender, which may be null.
    virtual void deselectAllViews(View* sender);

    /// For the derived document to define; this library does not call it.
    virtual void concreteDocumentOperation() = 0;

    /// Returns the project of the document, in applications that have projects; a handle without a body here.
    /// This library does not call it.
    virtual vfBase::Referenced getProject() const;

    /// Updates the project of the document, in applications that have projects; does nothing here. This
    /// library does not call it.
    virtual void updateProject();

    /// Makes the first view the current view. Does nothing without views.
    void activate() const;

    /// Returns whether the document has a file: it was opened from one or saved at least once.
    bool alreadySaved() const { return m_documentSaved; }

    /// Sets whether the document has a file.
    void setDocumentSaved(bool saved) { m_documentSaved = saved; }

    /// Returns whether onSaveDocument was ever called, even if it failed.
    bool isSavedInternal() const { return m_savedInternal; }

    /// Sets the flag that isSavedInternal returns.
    void setSavedInternal(bool saved) { m_savedInternal = saved; }

    /// Returns whether @p view is among the views.
    bool containsView(View* view) const;

    /// Returns the options that the template was made with; Options::invalid() without a template.
    const vfBase::Options& getCreateDocumentOptions() const;

    /// Returns the options of the last doOpenDocument.
    const vfBase::Options& getOpenDocumentOptions() const { return m_openDocumentOptions; }

    /// Returns the options of the last doSaveDocument.
    const vfBase::Options& getSaveDocumentOptions() const { return m_saveDocumentOptions; }

    /// Returns the path of the file; for a new document, a name that is no file.
    vfBase::VfString getFilename() const { return m_filename; }

    /// Sets the file name to @p path and the title to its last component. Calls View::onChangeFilename of all
    /// views if
    /// @p notifyViews is true.
    void setFilename(const vfBase::VfString& path, bool notifyViews);

    /// Returns the title: the last component of the file name, unless set.
    vfBase::VfString getTitle() const { return m_title; }

    /// Sets the title, until the file name changes. Does not notify the views.
    void setTitle(const vfBase::VfString& title) { m_title = title; }

    /// Stores the document name of the template, which this library does not read.
    void setDocumentName(const vfBase::VfString& name) { m_documentName = name; }

    /// Sets the template. If the template is destroyed first, the document has none.
    void setDocumentTemplate(DocTemplate* documentTemplate) { m_documentTemplate = documentTemplate; }

    /// Returns the first view, null if there is none.
    View* getFirstView() const;

    /// Returns a handle on the document's own list, in order of attachment: no copy.
    vfBase::Vector<View*> getViewList() { return m_viewList; }

    /// Sets the modified flag. If it changes, calls View::onChangeFilename of the first view only.
    void modify(bool modified);

    /// Returns "vfApplication::document"; the class record has "vfApplication::Document".
    static const char* classId();

protected:
    /// Loads the file @p path; called by onOpenDocument and revert. Here it stores @p options, clears the
    /// monitor of diagnostics and returns true. An override may throw ReadError or return setReadError to
    /// give the user a reason.
    /// @return false if the file could not be loaded
    virtual bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Writes the file @p path; called by onSaveDocument. Here it stores @p options and writes nothing.
    /// @return WriteResult::Written here
    virtual vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Calls View::onClosingDocument of all views.
    void notifyClosing();

private:
    friend class DocManager;
    friend class DocTemplate;
    friend class View;

    /// Marks a document while its template makes it. Such a document is not deleted with its last view.
    static const vfBase::Call s_making;

    /// Deletes the views without asking them, then the document. Does nothing for null.
    static void destroy(Document* document);

    /// Clears the template of all documents that @p documentTemplate made. Its destructor calls this.
    static void cutTemplate(const DocTemplate* documentTemplate);

    /// Removes @p view from the lists of all documents. Its destructor calls this.
    static void cutView(View* view);

    /// Deletes @p view, whose destructor removes it from @p views.
    static void deleteView(View* view, const vfBase::Vector<View*>& views,
                           const vfBase::LifeWatch<Document>& watch);

    /// Removes @p view from the list as removeView() does, without calling an override.
    void dropView(View* view);
    void cutViews(DocManager* manager);
    void leaveManager();
    DocManager* requiredManager(const char* operation) const;
    void takeFilename(vfBase::VfString&& filename, vfBase::VfString&& title, bool notifyViews);

    bool m_modified = false;
    bool m_documentSaved = false;
    bool m_savedInternal = false;
    vfBase::VfString m_filename;
    vfBase::VfString m_title;
    vfBase::VfString m_documentName;
    DocTemplate* m_documentTemplate = nullptr;
    CommandProcessor* m_commandProcessor = nullptr;
    vfBase::Vector<View*> m_viewList;
    vfBase::Options m_openDocumentOptions;
    vfBase::Options m_saveDocumentOptions;
};

} // namespace vfApplication
