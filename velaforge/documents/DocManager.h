// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/Vector.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

class DocTemplate;
class Document;
class FileHistory;
class View;

/// All kinds of document and all open documents of an application, and which view is current.
///
///     vfApplication::DocManager& manager = application.getDocManager();
///     vfApplication::Document* document = manager.createDocument("/models/hull.obj", vfBase::Options());
///     manager.closeDocument(document, false);
///
/// It is complete without a toolkit: what would ask the user has a default that answers at once, and a derived
/// manager overrides it with a dialog. The application makes one; see Application::setDocManager for another.
/// Belongs to the thread that calls Application::run.
class VFAPPLICATION_EXPORT DocManager
{
public:
    explicit DocManager(bool = true);

    /// Copy the members as they stand. The lists are shared, so a live manager is not to be copied: the destructor
    /// of either would close the other's documents.
    DocManager(const DocManager& other);
    DocManager& operator=(const DocManager& other);

    // In the order of their slots, which is part of the binary interface.

    /// Closes and deletes the documents, then the templates, then the history.
    virtual ~DocManager();

    /// A hook that nothing here calls. @return true
    virtual bool initialize();

    virtual void addFileToHistory(const vfBase::VfString& path);

    /// @return the recent files, owned by the manager
    virtual FileHistory* getFileHistory();

    /// @return "unnamed1", "unnamed2" and so on; a number is given once only
    virtual vfBase::VfString makeNewDocumentName();

    /// Makes @p view the current one, or takes that from it if it is. Tells nobody: View::activate does.
    virtual void activateView(View* view, bool active);

    /// Opens a file, or makes an empty document with the option "NEWDOC".
    ///
    /// | option | effect when "TRUE" |
    /// |---|---|
    /// | "NEWDOC" | the document is made empty; the kind is chosen by selectDocumentType |
    /// | "SILENT" | nobody is asked: the kind is found from the path, also for "NEWDOC" |
    ///
    /// The value of "OVERRIDE_EXT", with its dot, is appended to the path where the kind is looked for.
    /// @p options stay as they are; the document gets a copy with "BUILD_SCENEGRAPH" added.
    /// A path that is open already gives that document, activated. At the limit of open documents the oldest is
    /// closed first, unless the user refuses.
    /// @return the document, shown and active; null when no kind fits, the oldest document refused to close,
    ///         or the file could not be loaded
    /// @throws vfBase::BaseException around whatever was thrown on the way, and for an empty path
    virtual Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Loads another file into an open document.
    /// @return true when @p document shows @p path now, or another document did and was activated;
    ///         false, with the old file name kept, when no kind fits or the file could not be loaded
    /// @throws whatever the document throws
    virtual bool updateDocument(Document* document, const vfBase::VfString& path,
                                const vfBase::Options& options);

    /// Makes a further view of a document, of the one kind that the visible templates offer.
    /// @return null when they offer none or several, or the view refused
    virtual View* createView(Document* document, const vfBase::Options& options);

    /// @return the current view, null when there is none
    virtual View* getCurrentView() const;

    /// @return the template whose default extension is that of @p path, or else the first that matches it,
    ///         visible or not; null when there is none
    virtual DocTemplate* findTemplateForPath(const char* path);

    /// @return the first template of the application's own format, visible or not; null when there is none
    virtual DocTemplate* getNativeTemplate() const;

    /// Reserved for a dialog that opens a file; nothing here calls it. @return null
    virtual DocTemplate* selectDocumentPath(DocTemplate** templates, int count, vfBase::VfString& path,
                                            bool save);

    /// Chooses among the visible ones of @p templates, taking those with equal document and view names for one.
    /// @param sort  offer them by description
    /// @return the only one, or what selectDocumentTypeUser gives; null when there is none
    virtual DocTemplate* selectDocumentType(DocTemplate** templates, int count, bool sort);

    /// Lets the user choose. @return null here
    /// @param count  of the array; entries behind the last candidate are null
    virtual DocTemplate* selectDocumentTypeUser(DocTemplate** templates, int count);

    /// @return the only visible one of @p templates with a view name, taking those with equal view names for one;
    ///         null when there is none or several
    virtual DocTemplate* selectViewType(DocTemplate** templates, int count, bool sort);

    /// Asks about unsaved changes. @return 0 to cancel, 1 to save, 2 to discard; 1 here
    virtual int askForUserConfirmation();

    /// Asks whether to go back to the file. @return non-zero to do so; 1 here
    virtual int askForConfirmRevert();

    /// Asks where to save. @return the path, empty when cancelled, as here
    /// @param options  for the writer; the dialog may set keys
    virtual vfBase::VfString selectDocumentSavePath(const char* directory, const char* name,
                                                    const char* extension, const char* filter,
                                                    vfBase::Options& options);

    /// Makes an empty document, see createDocument.
    Document* createNewDocument();

    // --- templates

    /// Appends a template, unless it is there already. Its constructor calls this.
    void associateTemplate(DocTemplate* documentTemplate);

    /// Takes a template out without deleting it. Its destructor calls this.
    void disassociateTemplate(DocTemplate* documentTemplate);
    bool containsTemplate(DocTemplate* documentTemplate) const;

    /// @return a handle on the manager's own list
    vfBase::Vector<DocTemplate*> getTemplates() const { return m_templates; }

    /// @return the items of the file filters of all templates with a bit of @p mask, each between @p prefix and
    ///         @p separator, in order; 1 for the visible templates, 2 for the native ones
    vfBase::VfString getNameFilters(int mask, char separator, const char* prefix) const;

    // --- documents

    /// Appends a document, unless it is there already.
    void addDocument(Document* document);

    /// Takes a document out without deleting it; when none is left, the caches of the loaders are cleared.
    void removeDocument(Document* document);
    bool containsDocument(Document* document) const;

    /// @return the first document with just this file name, compared byte by byte; null when there is none
    Document* findDocumentByPath(const char* path) const;

    /// @return a handle on the manager's own list, oldest first; not to be walked while documents close
    vfBase::Vector<Document*> getDocumentList() { return m_documents; }
    int getNumDocuments() const { return static_cast<int>(m_documents.size()); }

    /// The limit of open documents: at least 1, or negative for none.
    int getMaxDocsOpen() const { return m_maxDocsOpen; }
    void setMaxDocsOpen(int maximum) { m_maxDocsOpen = maximum; }

    /// @return the document of the current view, null when there is none
    Document* getCurrentDocument() const;

    /// Closes a document and deletes its views, and with them the document.
    /// @param force  go on even if it refuses; the document is then off the list in any case
    /// @return false when it refused and stays
    bool closeDocument(Document* document, bool force);

    /// Closes all documents, oldest first. @return false at the first refusal; the later ones stay
    bool closeDocuments(bool force);
    bool clear(bool force);

    // --- directories

    /// @return the directory of the last dialog, or else of the newest recent file if it exists, or else the
    ///         user's documents; the answer is kept
    vfBase::VfString getLastDirectory() const;
    void setLastDirectory(const vfBase::VfString& directory) { m_lastDirectory = directory; }

protected:
    /// Appends the visible templates to @p templates, in order.
    void getVisibleTemplates(vfBase::Vector<DocTemplate*>& templates);

private:
    friend class Document;

    /// Marks a manager that closes all its documents: it opens none meanwhile.
    static const vfBase::Call s_closingAll;

    /// Enters a file in the list of recent files, if the template would open it.
    void enterInHistory(DocTemplate& documentTemplate, const vfBase::VfString& path);

    View* m_currentView = nullptr;
    vfBase::VfString m_reservedName;
    mutable vfBase::VfString m_lastDirectory;
    unsigned int m_newDocumentCounter = 1;
    int m_maxDocsOpen = 100;
    vfBase::Vector<DocTemplate*> m_templates;
    vfBase::Vector<Document*> m_documents;
    FileHistory* m_fileHistory;
};

} // namespace vfApplication
