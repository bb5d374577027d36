// SPDX-License-Identifier: MIT
#include <velaforge/documents/DocTemplate.h>

#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/Require.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <memory>
#include <string>

namespace vfApplication {

namespace {

/// Makes an object by @p classInfo; if that is null, of the class registered under @p typeName.
/// @return null if @p classInfo makes another class
/// @throws vfBase::BaseException with the message @p complaint if the registered class is no Product
template <class Product>
std::unique_ptr<Product> make(const vfBase::ClassInfo*& classInfo, const vfBase::VfString& typeName,
                              const char* complaint)
{
    std::unique_ptr<vfBase::VfObject> object(
        classInfo ? classInfo->create() : vfBase::Registry_::instance().createType(typeName.c_str()));
    auto* product = dynamic_cast<Product*>(object.get());
    if (!product) {
        if (classInfo)
            return nullptr;
        throw vfBase::BaseException(complaint);
    }
    (void)object.release(); // the product is the same object
    // Not for a class without a record of its own: it returns that of its parent, which makes other objects
    // or none.
    const vfBase::ClassInfo* record = product->getClassInfo();
    if (!classInfo && record == vfBase::Registry_::instance().findClass(typeName.c_str()))
        classInfo = record;
    return std::unique_ptr<Product>(product);
}

} // namespace

DocTemplate::DocTemplate(DocManager* manager, const char* description, const char* fileFilter,
                         const char* directory, const char* defaultExtension, const char* documentTypeName,
                         const char* viewTypeName, const vfBase::ClassInfo* docClassInfo,
                         const vfBase::ClassInfo* viewClassInfo, int flags, int extraFlags,
                         const vfBase::Options& options)
    : m_defaultExtension(defaultExtension),
      m_description(description),
      m_directory(directory),
      m_fileFilter(fileFilter),
      m_flags(flags),
      m_extraFlags(extraFlags),
      m_viewName(viewTypeName),
      m_documentName(documentTypeName),
      m_documentManager(manager),
      m_docClassInfo(docClassInfo),
      m_viewClassInfo(viewClassInfo)
{
    m_createDocumentOptions = options;
    if (manager)
        manager->associateTemplate(this);
}

DocTemplate::DocTemplate(const DocTemplate& other) = default;

DocTemplate& DocTemplate::operator=(const DocTemplate& other) = default;

DocTemplate::~DocTemplate()
{
    vfBase::LifeWatch<DocTemplate>::end(this);
    VF_REQUIRE(m_documentManager, "DocTemplate::~DocTemplate", "the template was never given a manager");
    Document::cutTemplate(this);
    m_documentManager->disassociateTemplate(this);
}

bool DocTemplate::fileMatchesTemplate(const vfBase::VfString& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    osgDB::StringList items;
    osgDB::split(m_fileFilter, items, ',');
    for (const std::string& item : items) {
        const std::string folded = osgDB::convertToLowerCase(item);
        if (folded == "*" || folded == extension)
            return true;
    }
    return m_defaultExtension == vfBase::VfString(extension);
}

vfBase::VfString DocTemplate::getDocumentName() const
{
    return m_documentName;
}

vfBase::VfString DocTemplate::getViewName() const
{
    return m_viewName;
}

Document* DocTemplate::createDocument(const vfBase::VfString& path, const vfBase::Options& options)
{
    Document* document = doCreateDocument(options);
    const vfBase::LifeWatch<Document> watch(document);
    bool isMade = false;
    try {
        isMade = initDocument(document, path, options);
    } catch (...) {
        Document::destroy(watch.get());
        throw;
    }
    if (isMade)
        return watch.get();
    // Together with the views that were made before the failure.
    Document::destroy(watch.get());
    return nullptr;
}

bool DocTemplate::initDocument(Document* document, const vfBase::VfString& path,
                               const vfBase::Options& options)
{
    if (!document)
        return false; // the class record makes objects of another class
    // A view that refuses or closes the document must not delete it here: its operations are still running.
    const vfBase::RunningCall<Document> making(document, Document::s_making);
    const vfBase::LifeWatch<DocTemplate> watch(this);
    try {
        document->setFilename(path, false);
        document->setDocumentTemplate(this);
        if (!document->onCreate(path, options))
            throw vfBase::BaseException("Failed to create document!");
        if (making.isGone() || watch.isGone())
            return false;
        m_documentManager->addDocument(document);
        return true;
    } catch (...) {
        // The caller learns only that there is no document. Only a document that was added to the list has
        // views.
        if (!making.isGone() && !watch.isGone() && m_documentManager->containsDocument(document))
            document->deleteAllViews();
        return false;
    }
}

View* DocTemplate::createView(Document* document, const vfBase::Options& options)
{
    View* view = doCreateView(options);
    if (!view)
        return nullptr;
    const vfBase::LifeWatch<View> watch(view);
    const vfBase::LifeWatch<Document> documentWatch(document);
    bool isAccepted = false;
    try {
        view->setDocument(document);
        isAccepted = !watch.isGone() && view->onCreate(document, options);
    } catch (...) {
        delete watch.get();
        throw;
    }
    if (isAccepted && !documentWatch.isGone())
        return watch.get();
    delete watch.get();
    return nullptr;
}

Document* DocTemplate::doCreateDocument(const vfBase::Options&)
{
    return make<Document>(m_docClassInfo, m_documentName,
                          "Doc type name does not represent vfApplication::Document!")
        .release();
}

View* DocTemplate::doCreateView(const vfBase::Options& options)
{
    View* view =
        make<View>(m_viewClassInfo, m_viewName, "View type name does not represent vfApplication::View!")
            .release();
    const vfBase::LifeWatch<View> watch(view);
    try {
        if (view)
            view->setViewOptions(options);
    } catch (...) {
        delete watch.get();
        throw;
    }
    return watch.get();
}

} // namespace vfApplication
