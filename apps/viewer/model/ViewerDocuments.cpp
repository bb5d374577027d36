// SPDX-License-Identifier: MIT
#include "model/ViewerDocuments.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/Version.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadJob.h>

#include <osgDB/FileNameUtils>

#include <iostream>

#include <unistd.h>

namespace vfViewer {

namespace {

constexpr int warningLimit = 5; // a file
constexpr int millisecondsUntilProgress = 500;

} // namespace

void addViewerKinds(vfApplication::DocManager& manager, const vfBase::ClassInfo& viewClass)
{
    using vfApplication::DocTemplate;
    new DocTemplate(&manager, "3D models", vfFormats::modelFilter().c_str(), "", "osgb",
                    ModelDocument::classId(), "", &ModelDocument::s_classInfo, &viewClass,
                    DocTemplate::Visible | DocTemplate::Native, 0, vfBase::Options());
    new DocTemplate(&manager, "Images", vfFormats::imageFilter().c_str(), "", "png",
                    ImageDocument::s_classInfo.getClassId(), "", &ImageDocument::s_classInfo, &viewClass,
                    DocTemplate::Visible, 0, vfBase::Options());
}

std::string whyNotTried(vfApplication::DocManager& manager, const vfBase::VfString& path)
{
    // Whether the file is there comes before what its name says.
    std::string reason = path.empty() ? "this is no file name" : vfFormats::readError(path);
    if (!reason.empty())
        return reason;
    return manager.findTemplateForPath(path.c_str()) ? "" : "not a format that can be read";
}

void FailureLog::beginFile(const vfBase::VfString& typed)
{
    m_warningCount = 0;
    m_typed[vfBase::absolutePath(typed).str()] = typed.str();
}

void FailureLog::say(const vfBase::VfString& path, const vfBase::VfString& text) const
{
    const auto typed = m_typed.find(path.str());
    std::cerr << vfBase::ApplicationInfo::instance().getApplicationName() << ": "
              << vfBase::printable(typed == m_typed.end() ? path : vfBase::VfString(typed->second)) << ": "
              << vfBase::printable(text) << std::endl;
}

void FailureLog::keep(Message::Kind kind, const vfBase::VfString& path, const vfBase::VfString& text)
{
    m_messages.push_back({kind, path.str(), text.str()});
    if (m_messages.size() > messageLimit)
        m_messages.pop_front();
}

void FailureLog::onFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    keep(Message::Failure, path, reason);
    m_failures.push_back(vfBase::absolutePath(path).str());
    say(path, reason);
}

void FailureLog::onWarning(const vfBase::VfString& path, const vfBase::VfString& warning)
{
    keep(Message::Warning, path, warning);
    if (++m_warningCount <= warningLimit)
        say(path, "warning: " + warning.str());
    else if (m_warningCount == warningLimit + 1)
        say(path, "warning: and more of the kind");
}

void FailureLog::onDetail(const vfBase::VfString& path, const vfBase::VfString& detail)
{
    keep(Message::Detail, path, detail);
    if (vfBase::isVerbose())
        say(path, detail);
}

ViewerDocManager::ViewerDocManager(const vfBase::ClassInfo& viewClass)
{
    addViewerKinds(*this, viewClass);
}

ViewerDocManager::~ViewerDocManager()
{
    closeAll();
}

vfApplication::Document* ViewerDocManager::createDocument(const vfBase::VfString& path,
                                                          const vfBase::Options& options)
{
    const bool isNew = options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
    const std::string reason = isNew ? "" : whyNotTried(*this, path);
    if (!reason.empty()) {
        onFailure(path, reason);
        return nullptr;
    }
    beginFile(path);
    return HeadlessDocManager::createDocument(path, options);
}

void ViewerDocManager::onFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    FailureLog::onFailure(path, reason);
    noteFailure();
}

void ViewerDocManager::reportFailure(const vfBase::VfString& path, const vfBase::VfString& reason)
{
    onFailure(path, reason);
}

void ViewerDocManager::waitFor(vfIsolation::Job& job, bool isSaving)
{
    if (job.wait(millisecondsUntilProgress) || isatty(STDERR_FILENO) == 0)
        return;
    const std::string name = vfBase::printable(osgDB::getSimpleFileName(job.path()));
    do {
        std::cerr << (isSaving ? "\rWriting " : "\rReading ") << name;
        if (job.progress() >= 0)
            std::cerr << ": " << static_cast<int>(job.progress() * 100) << " %";
        std::cerr << std::flush;
    } while (!job.wait(100));
    std::cerr << "\r\033[K" << std::flush; // the line is free again
}

} // namespace vfViewer
