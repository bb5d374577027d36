// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Options.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

class DocManager;
class Document;
class View;

/// Declares one kind of document: its file extensions, the classes of its documents and views, and the
/// directory of its files. Makes the documents and views of that kind.
///
///     new vfApplication::DocTemplate(&manager, "Wavefront models", "obj", "", "obj", "solar::Drawing", "solar::Canvas",
///                                    nullptr, nullptr, vfApplication::DocTemplate::Visible, 0, vfBase::Options());
///
/// A program makes its templates in ApplicationSetup::onRegisterDocumentType. The manager owns its templates.
class VFAPPLICATION_EXPORT DocTemplate : public vfBase::VfObject
{
public:
    /// The bits of the flags that this library reads; an application may use all others.
    enum Flag : int
    {
        Visible = 1, ///< offered where the user chooses a kind of document
        Native = 2   ///< the application's own format
    };

    /// Makes a template and registers it with @p manager.
    /// @param manager           owns the template from now on; with null, call setDocumentManager before the
    ///                          template is destroyed
    /// @param description       text that the user sees for this kind of document
    /// @param fileFilter        extensions in lower or upper case, separated by commas, without dots or
    ///                          blanks; "*" for all files
    /// @param directory         directory that a save dialog shows first; may be empty
    /// @param defaultExtension  extension in lower case, without a dot
    /// @param documentTypeName  registered name of the document class; used to make documents if @p
    ///                          docClassInfo is null
    /// @param viewTypeName      registered name of the view class; used to make views if @p viewClassInfo is
    ///                          null
    /// @param docClassInfo      class record that makes the documents; may be null
    /// @param viewClassInfo     class record that makes the views; may be null
    /// @param flags             bits of Flag and of the application
    /// @param extraFlags        stored for the application; this library does not read them
    /// @param options           returned by getCreateDocumentOptions; shared, not copied
    DocTemplate(DocManager* manager, const char* description, const char* fileFilter, const char* directory,
                const char* defaultExtension, const char* documentTypeName, const char* viewTypeName,
                const vfBase::ClassInfo* docClassInfo, const vfBase::ClassInfo* viewClassInfo, int flags,
                int extraFlags, const vfBase::Options& options);

    /// Copies the fields. The copy is not registered with the manager.
    DocTemplate(const DocTemplate& other);

    /// Copies the fields. Registers nothing.
    DocTemplate& operator=(const DocTemplate& other);

    // In the order of their slots, which is part of the binary interface.

    /// Unregisters the template with its manager, which must not be null.
    ~DocTemplate() override;

    /// Makes a document with the file name @p path and its first view, and adds it to the manager. Loads
    /// nothing.
    /// @p options go to the view.
    /// @return the document, which deletes itself with its last view; null if the document or its view
    ///         refused
    /// @throws vfBase::BaseException if the type name names no document class
    virtual Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Makes a view with @p options and links it to @p document.
    /// @return the view, which the document owns; null if View::onCreate returned false
    /// @throws vfBase::BaseException if the type name names no view class, and any exception that the view
    ///         throws
    virtual View* createView(Document* document, const vfBase::Options& options);

    /// Returns whether the name @p path belongs to this kind of document: an item of the filter is "*" or
    /// equals the extension without regard to case, or the extension in lower case equals the default
    /// extension exactly. Does not look at the file.
    virtual bool fileMatchesTemplate(const vfBase::VfString& path);

    /// Returns the type name of the document class.
    virtual vfBase::VfString getDocumentName() const;

    /// Returns the type name of the view class.
    virtual vfBase::VfString getViewName() const;

    /// Gives the new @p document the file name @p path, this template and its first view, and adds it to the
    /// manager.
    /// @p options go to the view.
    /// @return false if a step failed or threw; the caller then deletes the document
    virtual bool initDocument(Document* document, const vfBase::VfString& path,
                              const vfBase::Options& options);

    /// Returns the default extension, without a dot.
    vfBase::VfString getDefaultExtension() const { return m_defaultExtension; }

    /// Sets the default extension: in lower case, without a dot.
    void setDefaultExtension(const vfBase::VfString& extension) { m_defaultExtension = extension; }

    /// Returns the text that the user sees for this kind of document.
    vfBase::VfString getDescription() const { return m_description; }

    /// Sets the text that the user sees for this kind of document.
    void setDescription(const vfBase::VfString& description) { m_description = description; }

    /// Returns the directory that a save dialog shows first; empty for that of the file.
    vfBase::VfString getDirectory() const { return m_directory; }

    /// Sets the directory that a save dialog shows first.
    void setDirectory(const vfBase::VfString& directory) { m_directory = directory; }

    /// Returns the extensions, separated by commas, without dots.
    vfBase::VfString getFileFilter() const { return m_fileFilter; }

    /// Sets the extensions: separated by commas, without dots or blanks; "*" for all files.
    void setFileFilter(const vfBase::VfString& filter) { m_fileFilter = filter; }

    /// Returns a text for the application to use; empty unless set. This library does not read it.
    vfBase::VfString getSupportedImageExtensions() const { return m_supportedImageExtensions; }

    /// Sets that text.
    void setSupportedImageExtensions(const vfBase::VfString& extensions)
    {
        m_supportedImageExtensions = extensions;
    }

    /// Returns the manager, null if none was set.
    DocManager* getDocumentManager() const { return m_documentManager; }

    /// Sets the pointer to the manager. Neither registers nor unregisters the template.
    void setDocumentManager(DocManager* manager) { m_documentManager = manager; }

    /// Returns the class record that makes the documents; null before the first document unless the
    /// constructor got one.
    const vfBase::ClassInfo* getDocClassInfo() const { return m_docClassInfo; }

    /// Returns the class record that makes the views; null before the first view unless the constructor got
    /// one.
    const vfBase::ClassInfo* getViewClassInfo() const { return m_viewClassInfo; }

    /// Returns the bits of Flag and of the application.
    int getFlags() const { return m_flags; }

    /// Returns the bits that the constructor stored for the application.
    int getExtraFlags() const { return m_extraFlags; }

    /// Returns whether the flag Visible is set.
    bool isVisible() const { return (m_flags & Visible) != 0; }

    /// Returns whether the flag Native is set.
    bool isNative() const { return (m_flags & Native) != 0; }

    /// Returns the options that the constructor got. This library does not read them.
    const vfBase::Options& getCreateDocumentOptions() const { return m_createDocumentOptions; }

protected:
    /// Makes a document of the class. Stores its class record, which makes the next documents. @p options
    /// have no effect.
    /// @return the document, owned by the caller; null if the class record makes another class
    /// @throws vfBase::BaseException if the type name names no document class
    virtual Document* doCreateDocument(const vfBase::Options& options);

    /// Makes a view of the class and gives it @p options. Stores its class record, which makes the next
    /// views.
    /// @return the view, owned by the caller; null if the class record makes another class
    /// @throws vfBase::BaseException if the type name names no view class
    virtual View* doCreateView(const vfBase::Options& options);

private:
    vfBase::VfString m_defaultExtension;
    vfBase::VfString m_description;
    vfBase::VfString m_directory;
    vfBase::VfString m_fileFilter;
    int m_flags;
    int m_extraFlags;
    vfBase::VfString m_supportedImageExtensions;
    vfBase::VfString m_viewName;
    vfBase::VfString m_documentName;
    DocManager* m_documentManager;
    const vfBase::ClassInfo* m_docClassInfo;
    const vfBase::ClassInfo* m_viewClassInfo;
    vfBase::Options m_createDocumentOptions;
};

} // namespace vfApplication
