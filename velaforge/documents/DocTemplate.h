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

/// One kind of document: the extensions it reads, the classes of its documents and views, and where its files live.
///
///     new vfApplication::DocTemplate(&manager, "Wavefront models", "obj", "", "obj", "solar::Drawing", "solar::Canvas",
///                                    nullptr, nullptr, vfApplication::DocTemplate::Visible, 0, vfBase::Options());
///
/// Made in ApplicationSetup::onRegisterDocumentType. The manager owns the templates that were made with it.
class VFAPPLICATION_EXPORT DocTemplate : public vfBase::VfObject
{
public:
    /// Bits of the flags that this library reads; all others are the application's.
    enum Flag : int
    {
        Visible = 1, ///< takes part where the user chooses a kind of document
        Native = 2   ///< the application's own format
    };

    /// @param manager           takes the template over; null leaves it unregistered, and then setDocumentManager
    ///                          must be called before it is destroyed
    /// @param description       text shown for the kind
    /// @param fileFilter        extensions in lower or upper case, separated by commas, without dots; "*" for all
    /// @param directory         where its files usually are; may be empty
    /// @param defaultExtension  without a dot
    /// @param documentTypeName  registered name of the document class, for a null @p docClassInfo
    /// @param viewTypeName      registered name of the view class, for a null @p viewClassInfo
    /// @param flags             bits of Flag, and of the application's own
    /// @param extraFlags        kept for the application
    /// @param options           shared, not copied
    DocTemplate(DocManager* manager, const char* description, const char* fileFilter, const char* directory,
                const char* defaultExtension, const char* documentTypeName, const char* viewTypeName,
                const vfBase::ClassInfo* docClassInfo, const vfBase::ClassInfo* viewClassInfo, int flags,
                int extraFlags, const vfBase::Options& options);

    /// Copies the fields. A copy is not registered with the manager.
    DocTemplate(const DocTemplate& other);
    DocTemplate& operator=(const DocTemplate& other);

    // In the order of their slots, which is part of the binary interface.

    /// Leaves the manager, which must be set.
    ~DocTemplate() override;

    /// Makes a document with its first view and enters it with the manager; nothing is loaded yet.
    /// @return null when the document or its view refused
    /// @throws vfBase::BaseException when the type name names no document class
    virtual Document* createDocument(const vfBase::VfString& path, const vfBase::Options& options);

    /// Makes a view and links it to @p document.
    /// @return null when the view refused
    /// @throws vfBase::BaseException when the type name names no view class; whatever the view throws
    virtual View* createView(Document* document, const vfBase::Options& options);

    /// @return true when an item of the filter is "*" or the extension of @p path, whatever the case; and when
    ///         the extension in lower case is the default extension as it stands. Only the name is looked at.
    virtual bool fileMatchesTemplate(const vfBase::VfString& path);

    virtual vfBase::VfString getDocumentName() const;
    virtual vfBase::VfString getViewName() const;

    /// Gives a new document its path, its template and its first view, and enters it with the manager.
    /// @return false when any of that failed, also by an exception; the document is then the caller's to delete
    virtual bool initDocument(Document* document, const vfBase::VfString& path,
                              const vfBase::Options& options);

    vfBase::VfString getDefaultExtension() const { return m_defaultExtension; }
    void setDefaultExtension(const vfBase::VfString& extension) { m_defaultExtension = extension; }

    vfBase::VfString getDescription() const { return m_description; }
    void setDescription(const vfBase::VfString& description) { m_description = description; }

    vfBase::VfString getDirectory() const { return m_directory; }
    void setDirectory(const vfBase::VfString& directory) { m_directory = directory; }

    vfBase::VfString getFileFilter() const { return m_fileFilter; }
    void setFileFilter(const vfBase::VfString& filter) { m_fileFilter = filter; }

    /// For applications to use as they see fit; empty unless set.
    vfBase::VfString getSupportedImageExtensions() const { return m_supportedImageExtensions; }
    void setSupportedImageExtensions(const vfBase::VfString& extensions)
    {
        m_supportedImageExtensions = extensions;
    }

    DocManager* getDocumentManager() const { return m_documentManager; }

    /// Replaces the pointer; neither manager is told.
    void setDocumentManager(DocManager* manager) { m_documentManager = manager; }

    /// @return the class record in use; null before the first document, unless one was given
    const vfBase::ClassInfo* getDocClassInfo() const { return m_docClassInfo; }
    const vfBase::ClassInfo* getViewClassInfo() const { return m_viewClassInfo; }

    int getFlags() const { return m_flags; }
    int getExtraFlags() const { return m_extraFlags; }
    bool isVisible() const { return (m_flags & Visible) != 0; }
    bool isNative() const { return (m_flags & Native) != 0; }

    const vfBase::Options& getCreateDocumentOptions() const { return m_createDocumentOptions; }

protected:
    /// Makes a document of the class, and keeps the class record for the next one.
    /// @return null when the class record makes something else
    virtual Document* doCreateDocument(const vfBase::Options& options);

    /// Makes a view of the class and gives it @p options.
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
