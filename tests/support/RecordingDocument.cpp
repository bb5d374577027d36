// SPDX-License-Identifier: MIT
#include "RecordingDocument.h"

#include "Recorder.h"

#include <velaforge/base/ClassInfo.h>

namespace vfTest {

using vfApplication::DocTemplate;
using vfApplication::Document;
using vfApplication::View;
using vfBase::Options;
using vfBase::VfString;
using vfBase::WriteResult;

namespace {

int s_documents = 0;
int s_views = 0;

std::string nameOf(const View* view)
{
    const auto* recording = dynamic_cast<const RecordingView*>(view);
    return recording ? recording->name() : "none";
}

} // namespace

const vfBase::ClassInfo
    RecordingDocument::s_classInfo("vfTest", "Document", "vfTest::Document", &Document::s_classInfo, nullptr,
                                   static_cast<int>(sizeof(RecordingDocument)),
                                   []() -> vfBase::VfObject* { return new RecordingDocument; });

const vfBase::ClassInfo RecordingView::s_classInfo("vfTest", "View", "vfTest::View", &View::s_classInfo,
                                                   nullptr, static_cast<int>(sizeof(RecordingView)),
                                                   []() -> vfBase::VfObject* { return new RecordingView; });

bool RecordingDocument::openResult = true;
int RecordingDocument::saveStatus = 1;
std::function<void()> RecordingDocument::inOpen;
std::function<void()> RecordingDocument::inNew;
Options RecordingDocument::lastOpenOptions;
bool RecordingView::closesDocument = true;
bool RecordingView::closeResult = true;
bool RecordingView::createResult = true;

RecordingDocument::RecordingDocument() : m_number(++s_documents)
{
    record(name() + " made");
}

RecordingDocument::~RecordingDocument()
{
    record("~" + name());
}

const vfBase::ClassInfo* RecordingDocument::getClassInfo() const
{
    return &s_classInfo;
}

bool RecordingDocument::close()
{
    record(name() + " close");
    return Document::close();
}

bool RecordingDocument::deleteAllViews()
{
    record(name() + " deleteAllViews");
    return Document::deleteAllViews();
}

bool RecordingDocument::deleteContents()
{
    record(name() + " deleteContents");
    return Document::deleteContents();
}

bool RecordingDocument::onCreate(const VfString& path, const Options& options)
{
    record(name() + " onCreate " + path.str());
    return Document::onCreate(path, options);
}

bool RecordingDocument::onNewDocument()
{
    record(name() + " onNewDocument");
    if (inNew)
        inNew();
    return Document::onNewDocument();
}

bool RecordingDocument::onOpenDocument(const VfString& path, const Options& options)
{
    record(name() + " onOpenDocument " + path.str());
    return Document::onOpenDocument(path, options);
}

WriteResult RecordingDocument::onSaveDocument(const VfString& path, const Options& options)
{
    record(name() + " onSaveDocument " + path.str());
    return Document::onSaveDocument(path, options);
}

bool RecordingDocument::onSaveModified()
{
    record(name() + " onSaveModified");
    return Document::onSaveModified();
}

bool RecordingDocument::onCloseDocument()
{
    record(name() + " onCloseDocument");
    return Document::onCloseDocument();
}

void RecordingDocument::onChangedViewList()
{
    record(name() + " onChangedViewList");
    Document::onChangedViewList();
}

WriteResult RecordingDocument::saveAs(const Options& options)
{
    record(name() + " saveAs");
    return Document::saveAs(options);
}

bool RecordingDocument::doOpenDocument(const VfString& path, const Options& options)
{
    record(name() + " doOpenDocument " + path.str());
    Document::doOpenDocument(path, options);
    lastOpenOptions = options;
    if (inOpen)
        inOpen();
    return openResult;
}

WriteResult RecordingDocument::doSaveDocument(const VfString& path, const Options& options)
{
    record(name() + " doSaveDocument " + path.str());
    Document::doSaveDocument(path, options);
    return WriteResult(static_cast<WriteResult::WriteStatus>(saveStatus));
}

RecordingView::RecordingView() : m_number(++s_views)
{
    record(name() + " made");
}

RecordingView::~RecordingView()
{
    record("~" + name());
}

const vfBase::ClassInfo* RecordingView::getClassInfo() const
{
    return &s_classInfo;
}

void RecordingView::onActivateView(bool active, View* activated, View* previous)
{
    record(name() + (active ? " activated " : " deactivated ") + nameOf(activated) + ", before " +
           nameOf(previous));
}

void RecordingView::onChangeFilename()
{
    record(name() + " onChangeFilename");
}

bool RecordingView::onClose(bool force)
{
    record(name() + (force ? " onClose forced" : " onClose"));
    return closesDocument ? View::onClose(force) : closeResult;
}

void RecordingView::onClosingDocument()
{
    record(name() + " onClosingDocument");
    View::onClosingDocument();
}

bool RecordingView::onCreate(Document*, const Options&)
{
    record(name() + " onCreate");
    return createResult;
}

void RecordingView::onUpdate(View* sender)
{
    record(name() + " onUpdate from " + nameOf(sender));
}

void RecordingView::onDeselect(View* sender)
{
    record(name() + " onDeselect from " + nameOf(sender));
}

void RecordingManager::addFileToHistory(const VfString& path)
{
    record("history " + path.str());
    DocManager::addFileToHistory(path);
}

void RecordingManager::activateView(View* view, bool active)
{
    record(std::string("manager ") + (active ? "activates " : "deactivates ") + nameOf(view));
    DocManager::activateView(view, active);
}

DocTemplate* RecordingManager::findTemplateForPath(const char* path)
{
    record(std::string("findTemplateForPath ") + path);
    return DocManager::findTemplateForPath(path);
}

DocTemplate* RecordingManager::selectDocumentType(DocTemplate** templates, int count, bool sort)
{
    record("selectDocumentType of " + std::to_string(count));
    return DocManager::selectDocumentType(templates, count, sort);
}

DocTemplate* RecordingManager::selectDocumentTypeUser(DocTemplate** templates, int count)
{
    record("selectDocumentTypeUser of " + std::to_string(count));
    return chooses ? templates[typeChoice] : nullptr;
}

int RecordingManager::askForUserConfirmation()
{
    record("askForUserConfirmation");
    return confirmationResult;
}

int RecordingManager::askForConfirmRevert()
{
    record("askForConfirmRevert");
    return revertResult;
}

VfString RecordingManager::selectDocumentSavePath(const char* directory, const char* name,
                                                  const char* extension, const char* filter, Options&)
{
    record(std::string("selectDocumentSavePath ") + directory + "|" + name + "|" + extension + "|" + filter);
    return savePath;
}

DocTemplate* makeTemplate(vfApplication::DocManager& manager, const char* filter, const char* extension,
                          int flags)
{
    return new DocTemplate(&manager, "Recorded", filter, "", extension, "vfTest::Document", "vfTest::View",
                           nullptr, nullptr, flags, 0, Options());
}

} // namespace vfTest
