// SPDX-License-Identifier: MIT
#include "model/ViewerDocuments.h"

#include "reading/FileGate.h"
#include "reading/ReadJob.h"

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Printable.h>
#include <velaforge/base/Version.h>
#include <velaforge/documents/DocTemplate.h>

#include <osgDB/FileNameUtils>

#include <exception>
#include <iostream>
#include <new>

#include <unistd.h>

namespace vfViewer {

namespace {

constexpr int warningLimit = 5; // a file
constexpr int millisecondsUntilProgress = 500;

void say(const vfBase::VfString& path, const vfBase::VfString& text)
{
    std::cerr << vfBase::ApplicationInfo::instance().getApplicationName() << ": " << vfBase::printable(path)
              << ": " << vfBase::printable(text) << std::endl;
}

} // namespace

void addViewerKinds(vfApplication::DocManager& manager, const vfBase::ClassInfo& viewClass)
{
    using vfApplication::DocTemplate;
    new DocTemplate(&manager, "3D models", FileGate::filter(FileGate::modelFormats()).c_str(), "", "osgb",
                    ModelDocument::classId(), "", &ModelDocument::s_classInfo, &viewClass,
                    DocTemplate::Visible | DocTemplate::Native, 0, vfBase::Options());
    new DocTemplate(&manager, "Images", FileGate::filter(FileGate::imageFormats()).c_str(), "", "png",
                    ImageDocument::s_classInfo.getClassId(), "", &ImageDocument::s_classInfo, &viewClass,
                    DocTemplate::Visible, 0, vfBase::Options());
}

std::string whyNotTried(vfApplication::DocManager& manager, const vfBase::VfString& path)
{
    // Whether the file is there comes before what its name says.
    std::string reason = path.empty() ? "this is no file name" : FileGate::whyUnreadable(path);
    if (!reason.empty())
        return reason;
    return manager.findTemplateForPath(path.c_str()) ? "" : "not a format that can be read";
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
    m_failures.push_back(path.str());
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
    closeDocuments(true);
}

vfApplication::Document* ViewerDocManager::createDocument(const vfBase::VfString& path,
                                                          const vfBase::Options& options)
{
    const bool isNew = options.isValid() && options.getPluginStringData("NEWDOC") == "TRUE";
    vfBase::VfString reason = isNew ? "" : whyNotTried(*this, path);
    if (!reason.empty()) {
        onFailure(path, reason);
        return nullptr;
    }
    beginFile();
    const std::size_t failuresBefore = failures().size();
    reason = "it could not be opened";
    try {
        if (vfApplication::Document* document = DocManager::createDocument(path, options))
            return document;
    } catch (const std::bad_alloc&) {
        reason = "not enough memory";
    } catch (const std::exception& problem) {
        reason = problem.what();
    }
    if (failures().size() == failuresBefore)
        onFailure(path, reason);
    return nullptr;
}

void ViewerDocManager::waitFor(ReadJob& job)
{
    if (job.wait(millisecondsUntilProgress) || isatty(STDERR_FILENO) == 0)
        return;
    const std::string name = vfBase::printable(osgDB::getSimpleFileName(job.path()));
    do {
        std::cerr << "\rReading " << name;
        if (job.progress() >= 0)
            std::cerr << ": " << static_cast<int>(job.progress() * 100) << " %";
        std::cerr << std::flush;
    } while (!job.wait(100));
    std::cerr << "\r\033[K" << std::flush; // the line is free again
}

int ViewerDocManager::askForUserConfirmation()
{
    return 2;
}

} // namespace vfViewer
