// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/GuardedDocuments.h>

#include <velaforge/base/BaseException.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/ReadError.h>
#include <velaforge/documents/View.h>

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace vfApplication {

namespace {

/// Destroys a document without asking it: deletes its views, and the document with the last of them.
void destroy(DocManager& manager, Document& document)
{
    const vfBase::LifeWatch<Document> watch(&document);
    vfBase::Vector<View*> views = document.getViewList(); // keeps the list alive after the document
    for (unsigned int count = views.size(); count > 0 && !views.isEmpty(); --count) {
        if (View* view = views.first())
            View::destroy(view);
        else
            views.removeFirst();
    }
    if (!watch.isGone() && manager.containsDocument(&document))
        delete &document;
}

} // namespace

std::string runReading(const std::function<bool()>& work, const std::string& fallback)
{
    takeReadError(); // clears that of an earlier document
    try {
        if (work())
            return std::string();
    } catch (...) {
        takeReadError();
        return vfBase::BaseException::describeCurrent();
    }
    const std::string reason = takeReadError().str();
    return reason.empty() ? fallback : reason;
}

std::string reasonNotReadable(DocManager& manager, const vfBase::VfString& path,
                              const vfBase::Options& options)
{
    if (path.empty())
        return "there is no file name";
    errno = 0;
    if (access(path.c_str(), R_OK) != 0)
        return std::strerror(errno);
    const vfBase::VfString extension =
        options.isValid() ? options.getPluginStringData("OVERRIDE_EXT") : vfBase::VfString();
    return manager.findTemplateForPath((path + extension).c_str()) ? ""
                                                                   : "not a kind of file that can be opened";
}

bool closeGuarded(DocManager& manager, Document& document, bool force, std::string& problem)
{
    problem.clear();
    const vfBase::LifeWatch<Document> watch(&document);
    try {
        return manager.closeDocument(&document, force);
    } catch (...) {
        problem = vfBase::BaseException::describeCurrent();
    }
    if (watch.isGone() || !manager.containsDocument(&document))
        return true;
    if (document.isModified() && !force)
        return false;
    destroy(manager, document);
    return true;
}

} // namespace vfApplication
