// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <functional>
#include <string>

namespace vfTest {

/// A document that records each call and answers as the static fields tell it; "vfTest::Document" by name.
///
/// Which document or view a line is about is told by its number, counted from 1 in order of construction.
class RecordingDocument : public vfApplication::Document
{
public:
    static const vfBase::ClassInfo s_classInfo;

    RecordingDocument();
    ~RecordingDocument() override;

    const vfBase::ClassInfo* getClassInfo() const override;
    bool close() override;
    bool deleteAllViews() override;
    bool deleteContents() override;
    bool onCreate(const vfBase::VfString& path, const vfBase::Options& options) override;
    bool onNewDocument() override;
    bool onOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    vfBase::WriteResult onSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    bool onSaveModified() override;
    bool onCloseDocument() override;
    void onChangedViewList() override;
    vfBase::WriteResult saveAs(const vfBase::Options& options) override;
    void concreteDocumentOperation() override {}

    /// What doOpenDocument and doSaveDocument answer.
    static bool openResult;
    static int saveStatus;
    static std::function<void()> inOpen;
    static std::function<void()> inNew;

    /// The options that reached the last doOpenDocument.
    static vfBase::Options lastOpenOptions;

    /// Exposes the hooks that a derived document overrides.
    using Document::doOpenDocument;
    using Document::doSaveDocument;
    using Document::notifyClosing;

    std::string name() const { return "doc" + std::to_string(m_number); }

protected:
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options& options) override;
    vfBase::WriteResult doSaveDocument(const vfBase::VfString& path, const vfBase::Options& options) override;

private:
    int m_number;
};

/// A view that records each call; "vfTest::View" by name. It accepts its creation.
class RecordingView : public vfApplication::View
{
public:
    static const vfBase::ClassInfo s_classInfo;

    RecordingView();
    ~RecordingView() override;

    const vfBase::ClassInfo* getClassInfo() const override;
    void onActivateView(bool active, View* activated, View* previous) override;
    void onChangeFilename() override;
    bool onClose(bool force) override;
    void onClosingDocument() override;
    bool onCreate(vfApplication::Document* document, const vfBase::Options& options) override;
    void onUpdate(View* sender) override;
    void onDeselect(View* sender) override;

    /// When false, closing a view does not ask the user, and does not close the document.
    static bool closesDocument;

    /// What onClose answers, when closesDocument is false.
    static bool closeResult;
    static bool createResult;

    std::string name() const { return "view" + std::to_string(m_number); }

private:
    int m_number;
};

/// A manager that records its questions to the user and answers as it is told.
class RecordingManager : public vfApplication::DocManager
{
public:
    void addFileToHistory(const vfBase::VfString& path) override;
    void activateView(vfApplication::View* view, bool active) override;
    vfApplication::DocTemplate* findTemplateForPath(const char* path) override;
    vfApplication::DocTemplate* selectDocumentType(vfApplication::DocTemplate** templates, int count,
                                                   bool sort) override;
    vfApplication::DocTemplate* selectDocumentTypeUser(vfApplication::DocTemplate** templates,
                                                       int count) override;
    int askForUserConfirmation() override;
    int askForConfirmRevert() override;
    vfBase::VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                            const char* filter, vfBase::Options& options) override;

    using DocManager::getVisibleTemplates;

    int confirmationResult = 1;
    int revertResult = 1;
    std::string savePath;
    unsigned int typeChoice = 0; ///< index into the candidates
    bool chooses = false;        ///< whether selectDocumentTypeUser chooses at all
};

/// @return a template for RecordingDocument and RecordingView, entered with @p manager, which owns it
vfApplication::DocTemplate* makeTemplate(vfApplication::DocManager& manager, const char* filter = "obj",
                                         const char* extension = "obj", int flags = 1);

} // namespace vfTest
