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

/// What is opened from a file, shown in views, changed by commands and saved.
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
/// This class has the order of open, save, save as, revert and close, the file name, title and flags, the list of
/// views and the undo history. It reads and writes nothing itself. Nobody deletes a document from outside: it deletes
/// itself when its last view goes, and DocManager::closeDocument is the way there.
/// Documents belong to the thread that calls Application::run.
class VFAPPLICATION_EXPORT Document : public vfBase::VfObject
{
public:
    static const vfBase::ClassInfo s_classInfo;

    Document();

    /// Copies the fields as they stand: a copy shares the list of views and the history with its source,
    /// and only one of the two may be destroyed.
    Document(const Document& other);
    Document& operator=(const Document& other);

    // In the order of their slots, which is part of the binary interface.
    const vfBase::ClassInfo* getClassInfo() const override;

    /// Leaves the manager and deletes the history. Does not touch views.
    ~Document() override;

    /// Appends a view, unless it is there already. @return true
    virtual bool addView(View* view);

    /// Asks about unsaved changes, stops watching the file and drops the contents. Views and document stay.
    /// @return false when the user kept it open
    virtual bool close();

    /// Closes and then deletes all views, and with the last of them this document.
    /// @return false when a view refused; nothing is deleted then
    virtual bool deleteAllViews();

    /// Drops the model. @return true, which nobody asks for
    virtual bool deleteContents();

    /// @return the template that made it, null before
    virtual DocTemplate* getDocumentTemplate() const;

    /// @return the manager of the template, null without a template
    virtual DocManager* getDocumentManager() const;

    /// @return the undo history, owned by the document
    virtual CommandProcessor* getCommandProcessor() const;

    /// @return a new history without a limit, owned by the caller; a hook that nothing here calls
    virtual CommandProcessor* onCreateCommandProcessor();

    /// Replaces the history, and takes the new one over. The former one is not deleted: the caller has to take it.
    virtual void setCommandProcessor(CommandProcessor* processor);

    /// @return the title, or else the simple file name, or else "unnamed"
    virtual vfBase::VfString getUserReadableName() const;

    virtual bool isModified() const;

    /// Makes the first view. @return true when that succeeded
    virtual bool onCreate(const vfBase::VfString& path, const vfBase::Options& options);

    /// Prepares an empty document, under a generated name if it has no title. @return true
    virtual bool onNewDocument();

    /// Loads a file, tells the views and has the file watched.
    /// @return false when the file could not be loaded; nothing has changed then
    virtual bool onOpenDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Writes the file and, when that succeeded, takes its name over and counts as unmodified.
    /// @return status 1 too for an empty path, which writes nothing; on an error nothing has changed
    virtual vfBase::WriteResult onSaveDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Asks the user about unsaved changes, if there are any, and saves them if wanted.
    /// @return false to stay open: the user cancelled, or saving failed
    virtual bool onSaveModified();

    /// Tells the views, drops the contents. @return true
    virtual bool onCloseDocument();

    /// Deletes this document when no view is left; the caller must touch nothing of it afterwards.
    virtual void onChangedViewList();

    /// Takes a view out of the list without deleting it. @return false when it is not there
    virtual bool removeView(View* view);

    /// Saves under the known name, or asks for one with saveAs when there is no file behind it yet.
    virtual vfBase::WriteResult save(const vfBase::Options& options = vfBase::Options::invalid());

    /// Asks for a path and saves there.
    /// @return status 2 without a template, 4 when no path was chosen, otherwise that of onSaveDocument
    virtual vfBase::WriteResult saveAs(const vfBase::Options& options = vfBase::Options::invalid());

    /// @return whether the user wants to go back to the file
    virtual bool confirmRevert() const;

    /// Reloads the file after asking. The undo history stays. @return false when not wanted or not loaded
    virtual bool revert();

    /// Tells all views of a new file name if @p notifyViews.
    virtual void onChangeFilename(bool notifyViews);

    /// Tells all views but @p sender, which may be null, that the contents have changed.
    virtual void updateAllViews(View* sender);

    /// Tells all views but @p sender, which may be null, to drop their selection.
    virtual void deselectAllViews(View* sender);

    /// For the concrete document to define as it likes; nothing here calls it.
    virtual void concreteDocumentOperation() = 0;

    /// @return the project that the document belongs to, in applications that have projects; here an invalid handle
    virtual vfBase::Referenced getProject() const;
    virtual void updateProject();

    /// Makes the first view the current one; nothing without views.
    void activate() const;

    /// @return true when there is a file behind the document: opened, or saved at least once
    bool alreadySaved() const { return m_documentSaved; }
    void setDocumentSaved(bool saved) { m_documentSaved = saved; }

    /// @return true once onSaveDocument has been entered, whatever came of it
    bool isSavedInternal() const { return m_savedInternal; }
    void setSavedInternal(bool saved) { m_savedInternal = saved; }

    bool containsView(View* view) const;

    /// @return the options that the template was made with; invalid ones without a template
    const vfBase::Options& getCreateDocumentOptions() const;
    const vfBase::Options& getOpenDocumentOptions() const { return m_openDocumentOptions; }
    const vfBase::Options& getSaveDocumentOptions() const { return m_saveDocumentOptions; }

    vfBase::VfString getFilename() const { return m_filename; }

    /// Sets the file name, and the title to its last component; tells all views if @p notifyViews.
    void setFilename(const vfBase::VfString& path, bool notifyViews);

    vfBase::VfString getTitle() const { return m_title; }
    void setTitle(const vfBase::VfString& title) { m_title = title; }

    /// Keeps the name of the document kind, which nothing reads.
    void setDocumentName(const vfBase::VfString& name) { m_documentName = name; }

    /// Keeps the pointer; the template must outlive the document.
    void setDocumentTemplate(DocTemplate* documentTemplate) { m_documentTemplate = documentTemplate; }

    /// @return the first view, null if there is none
    View* getFirstView() const;

    /// @return a handle on the document's own list, in order of attachment
    vfBase::Vector<View*> getViewList() { return m_viewList; }

    /// Sets the modified flag; the first view alone is told, when the flag changes.
    void modify(bool modified);

    /// @return "vfApplication::document"; the class record says "vfApplication::Document"
    static const char* classId();

protected:
    /// Loads the file. Here it keeps the options, clears the monitor of diagnostics and returns true.
    virtual bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Writes the file. Here it keeps the options, writes nothing and reports status 1.
    virtual vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Tells all views that the document is closing.
    void notifyClosing();

private:
    friend class DocManager;
    friend class DocTemplate;
    friend class View;

    /// Marks a document that its template is making: it stays when it loses its last view.
    static const vfBase::Call s_making;

    /// Deletes the views without asking them, and with them the document.
    static void destroy(Document* document);

    /// Takes a template that is destroyed from the documents that it made.
    static void cutTemplate(const DocTemplate* documentTemplate);

    /// Takes a view that is destroyed out of every list that it still stands in.
    static void cutView(View* view);

    /// Deletes a view, which takes it out of the list.
    static void deleteView(View* view, const vfBase::Vector<View*>& views,
                           const vfBase::LifeWatch<Document>& watch);

    /// Takes a view out of the list as removeView() does, without calling an override.
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
