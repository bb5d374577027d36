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

/// Holds the document templates, the open documents and the current view of an application.
///
///     vfApplication::DocManager& manager = application.getDocManager();
///     vfApplication::Document* document = manager.createDocument("/models/hull.obj", vfBase::Options());
///     manager.closeDocument(document, false);
///
/// The manager works without a toolkit: each operation that would ask the user has a default that answers at
/// once, and a toolkit side overrides it with a dialog. Application makes a manager and owns it;
/// Application::setDocManager replaces it. Belongs to the thread that calls Application::run.
class VFAPPLICATION_EXPORT DocManager
{
public:
    /// Makes a manager without templates and documents. The argument has no effect.
    explicit DocManager(bool = true);

    /// Copies the fields; both managers then share the lists and the file history. Do not copy a manager that
    /// has documents: the destructor of either manager closes the documents of both.
    DocManager(const DocManager& other);

    /// Copies the fields, as the copy constructor does.
    DocManager& operator=(const DocManager& other);

    // In the order of their slots, which is part of the binary interface.

    /// Closes and deletes the documents without regard to a refusal, then deletes the templates and the file
    /// history. Reports a document that throws as a warning and goes on with the next.
    virtual ~DocManager();

    /// A hook for derived managers; this library does not call it.
    /// @return true here
    virtual bool initialize();

    /// Adds @p path to the recent files, in front.
    virtual void addFileToHistory(const vfBase::VfString& path);

    /// Returns the recent files, which the manager owns.
    virtual FileHistory* getFileHistory();

    /// Returns a name for a new document: "unnamed1", "unnamed2" and so on. No number is used twice.
    virtual vfBase::VfString makeNewDocumentName();

    /// Makes @p view the current view if @p active is true; otherwise, if it is the current view, leaves
    /// none. Does not notify the view: call View::activate for that.
    virtual void activateView(View* view, bool active);

    /// Opens the file @p path, or makes an empty document if @p options hold "NEWDOC".
    ///
    /// | option | effect when "TRUE" |
    /// |---|---|
    /// | "NEWDOC" | makes the document empty; selectDocumentType chooses the template |
    /// | "SILENT" | does not ask the user: findTemplateForPath chooses the template, for "NEWDOC" as well |
    ///
    /// The value of "OVERRIDE_EXT", such as ".obj", is appended to the path for the choice of the template
    /// only.
    /// @p options are not changed; the document gets a copy of them with "BUILD_SCENEGRAPH" set to "TRUE". If
    /// a document with that path is open, activates and returns it. If as many documents are open as
    /// getMaxDocsOpen() allows, closes the oldest first, which asks the user about unsaved changes.
    /// @return the document, with a view and active; null if no template fits, if the oldest document stays
    ///         open, if the document or its view refused, or if the file could not be loaded
    /// @throws vfBase::BaseException for an empty path without "NEWDOC", and around any exception thrown
    ///         while the document is made and loaded
    virtual Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Loads the file @p path into the open document @p document. @p options are read as by createDocument,
    /// except for "NEWDOC". Without "SILENT" selectDocumentType chooses the template.
    /// @return true if @p document now has that file, or if a document with that path was open and is now
    ///         active; false, with the old file name restored, if no template fits or the file could not be
    ///         loaded
    /// @throws any exception that the document throws; the file name is empty then
    virtual bool updateDocument(Document* document, const vfBase::VfString& path,
                                const vfBase::Options& options);

    /// Makes a further view of @p document, of the only view class that the visible templates name, with @p
    /// options.
    /// @return the view; null if the templates name none or several, or if the view refused
    virtual View* createView(Document* document, const vfBase::Options& options);

    /// Returns the current view, null if there is none.
    virtual View* getCurrentView() const;

    /// Returns the first template whose default extension is that of @p path, otherwise the first for which
    /// DocTemplate::fileMatchesTemplate returns true. Invisible templates count.
    /// @return null if there is none
    virtual DocTemplate* findTemplateForPath(const char* path);

    /// Returns the first template with the flag DocTemplate::Native, visible or not; null if there is none.
    virtual DocTemplate* getNativeTemplate() const;

    /// Lets the user choose a file, and the template for it among the @p count @p templates. Reserved for
    /// derived managers: this library does not call it.
    /// @param templates  the candidates
    /// @param count      number of candidates
    /// @param path       receives the path that the user chose
    /// @param save       true for a dialog that saves
    /// @return null here
    virtual DocTemplate* selectDocumentPath(DocTemplate** templates, int count, vfBase::VfString& path,
                                            bool save);

    /// Chooses a template among the visible ones of @p templates. Of templates with equal document name and
    /// view name only the first counts. If several are left, calls selectDocumentTypeUser.
    /// @param templates  the candidates
    /// @param count      number of candidates
    /// @param sort       offers the candidates sorted by description; of those with equal descriptions the
    ///                   last counts, visible or not
    /// @return the chosen template; null if none is visible or the user cancelled
    virtual DocTemplate* selectDocumentType(DocTemplate** templates, int count, bool sort);

    /// Lets the user choose one of @p templates.
    /// @param templates  the candidates, then null entries up to @p count
    /// @param count      size of the array, which may exceed the number of candidates
    /// @return the choice; null, as here, if the user cancelled
    virtual DocTemplate* selectDocumentTypeUser(DocTemplate** templates, int count);

    /// Returns the only template among the visible ones of @p templates that have a view name. Of templates
    /// with equal view names only the first counts. Does not ask the user.
    /// @param templates  the candidates
    /// @param count      number of candidates
    /// @param sort       of templates with equal view names the last counts instead, visible or not
    /// @return null if there is none or more than one
    virtual DocTemplate* selectViewType(DocTemplate** templates, int count, bool sort);

    /// Asks the user about unsaved changes.
    /// @return 0 to cancel, 1 to save, 2 to discard; 1 here
    virtual int askForUserConfirmation();

    /// Asks the user whether to load the file again and lose unsaved changes.
    /// @return non-zero to load it; 1 here
    virtual int askForConfirmRevert();

    /// Asks the user for the path to save to.
    /// @param directory  directory that the dialog shows first
    /// @param name       suggested file name without extension
    /// @param extension  default extension without a dot
    /// @param filter     extensions, separated by commas, without dots
    /// @param options    options for the document's writer; the dialog may set keys
    /// @return the path; empty, as here, if the user cancelled
    virtual vfBase::VfString selectDocumentSavePath(const char* directory, const char* name,
                                                    const char* extension, const char* filter,
                                                    vfBase::Options& options);

    /// Makes an empty document: calls createDocument with an empty path and "NEWDOC".
    /// @return the document, null as for createDocument
    Document* createNewDocument();

    // --- templates

    /// Appends @p documentTemplate to the templates, unless the list has it, and takes ownership. The
    /// constructor of DocTemplate calls this.
    void associateTemplate(DocTemplate* documentTemplate);

    /// Removes @p documentTemplate from the templates without deleting it. The destructor of DocTemplate
    /// calls this.
    void disassociateTemplate(DocTemplate* documentTemplate);

    /// Returns whether @p documentTemplate is among the templates.
    bool containsTemplate(DocTemplate* documentTemplate) const;

    /// Returns a handle on the manager's own list, in order of registration: no copy.
    vfBase::Vector<DocTemplate*> getTemplates() const { return m_templates; }

    /// Returns the text for the filter of a file dialog: the extensions of all templates that have a flag of
    /// @p mask, each between @p prefix and @p separator, in order of registration.
    /// @param mask       bits of DocTemplate::Flag or of the application
    /// @param separator  follows each extension, the last one too
    /// @param prefix     precedes each extension, such as "*."; null counts as the empty text
    vfBase::VfString getNameFilters(int mask, char separator, const char* prefix) const;

    // --- documents

    /// Appends @p document to the open documents, unless the list has it.
    void addDocument(Document* document);

    /// Removes @p document from the open documents without deleting it. If no document is left, clears the
    /// archive and object caches of osgDB.
    void removeDocument(Document* document);

    /// Returns whether @p document is among the open documents.
    bool containsDocument(Document* document) const;

    /// Returns the first document with the file name @p path, compared byte by byte; null if there is none.
    Document* findDocumentByPath(const char* path) const;

    /// Returns a handle on the manager's own list, oldest first: no copy. Do not iterate over it while
    /// documents close.
    vfBase::Vector<Document*> getDocumentList() { return m_documents; }

    /// Returns the number of open documents.
    int getNumDocuments() const { return static_cast<int>(m_documents.size()); }

    /// Returns the maximum number of open documents, 100 unless set; negative for no limit.
    int getMaxDocsOpen() const { return m_maxDocsOpen; }

    /// Sets the maximum number of open documents; 0 counts as 1, a negative number means no limit. Closes
    /// nothing.
    void setMaxDocsOpen(int maximum) { m_maxDocsOpen = maximum; }

    /// Returns the document of the current view, null if there is none.
    Document* getCurrentDocument() const;

    /// Closes @p document, which must not be null, and deletes its views; the document is deleted with the
    /// last of them. Asks the user about unsaved changes.
    /// @param document  the document to close
    /// @param force     removes the document from the list even if it refuses to close
    /// @return false if the document refused and stays open
    bool closeDocument(Document* document, bool force);

    /// Calls closeDocument with @p force for all documents, oldest first. createDocument returns null
    /// meanwhile.
    /// @return false as soon as a document refuses; that document and the later ones stay open
    bool closeDocuments(bool force);

    /// Does the same as closeDocuments.
    bool clear(bool force);

    // --- directories

    /// Returns the directory for the next file dialog: the one set last, otherwise that of the newest recent
    /// file if it exists, otherwise the user's documents directory. Later calls return the same directory.
    vfBase::VfString getLastDirectory() const;

    /// Sets the directory for the next file dialog.
    void setLastDirectory(const vfBase::VfString& directory) { m_lastDirectory = directory; }

protected:
    /// Appends the visible templates to @p templates, in order of registration.
    void getVisibleTemplates(vfBase::Vector<DocTemplate*>& templates);

private:
    friend class Document;

    /// Marks a manager that closes all its documents. It opens none meanwhile.
    static const vfBase::Call s_closingAll;

    /// Adds @p path to the recent files if @p documentTemplate matches it.
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
