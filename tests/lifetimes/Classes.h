// SPDX-License-Identifier: MIT
// Classes that a program derives: each overridden operation reaches its hook and then does what the base class
// does.
#pragma once

#include "Actor.h"

#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/FileHistory.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/shell/StatusBar.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <functional>
#include <string>

namespace vfLife {

using vfApplication::Command;
using vfBase::Options;
using vfBase::VfString;
using vfBase::VfVariant;
using vfBase::WriteResult;

/// Objects that exist, of the kinds that must be gone once the application is.
struct Population
{
    int documents = 0;
    int views = 0;
    int commands = 0;
};
Population& population();

class Processor : public vfApplication::CommandProcessor
{
public:
    explicit Processor(vfApplication::Document* document) : m_document(document) {}

    bool submit(Command command, bool storeIt) override;
    void store(Command command) override;
    bool undo() override;
    bool redo() override;
    void setMenuStrings() override;
    void clearCommands() override;

protected:
    bool doCommand(Command& command) override;
    bool undoCommand(Command& command) override;

private:
    vfApplication::Document* m_document;
};

class Document : public vfApplication::Document
{
public:
    static const vfBase::ClassInfo s_classInfo;

    Document();
    ~Document() override;

    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    bool addView(vfApplication::View* view) override;
    bool close() override;
    bool deleteAllViews() override;
    bool deleteContents() override;
    bool onCreate(const VfString& path, const Options& options) override;
    bool onNewDocument() override;
    bool onOpenDocument(const VfString& path, const Options& options) override;
    WriteResult onSaveDocument(const VfString& path, const Options& options) override;
    bool onSaveModified() override;
    bool onCloseDocument() override;
    void onChangedViewList() override;
    bool removeView(vfApplication::View* view) override;
    WriteResult save(const Options& options) override;
    WriteResult saveAs(const Options& options) override;
    bool confirmRevert() const override;
    bool revert() override;
    void onChangeFilename(bool notifyViews) override;
    void updateAllViews(vfApplication::View* sender) override;
    void deselectAllViews(vfApplication::View* sender) override;
    void concreteDocumentOperation() override {}

protected:
    bool doOpenDocument(const VfString& path, const Options& options) override;
    WriteResult doSaveDocument(const VfString& path, const Options& options) override;
};

/// The second kind of document, so that there is a choice.
class OtherDocument : public Document
{
public:
    static const vfBase::ClassInfo s_classInfo;
    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
};

class View : public vfApplication::View
{
public:
    static const vfBase::ClassInfo s_classInfo;

    View() { ++population().views; }
    ~View() override;

    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    void activate(bool active) override;
    bool close(bool force) override;
    void onActivateView(bool active, vfApplication::View* activated, vfApplication::View* previous) override;
    void onChangeFilename() override;
    bool onClose(bool force) override;
    void onClosingDocument() override;
    bool onCreate(vfApplication::Document* document, const Options& options) override;
    void setDocument(vfApplication::Document* document) override;
    void onUpdate(vfApplication::View* sender) override;
    void onDeselect(vfApplication::View* sender) override;
    void setViewOptions(const Options& options) override;
};

class Template : public vfApplication::DocTemplate
{
public:
    Template(vfApplication::DocManager* manager, const char* extension, const char* documentName,
             const char* viewName = "life::View");

    vfApplication::Document* createDocument(const VfString& path, const Options& options) override;
    vfApplication::View* createView(vfApplication::Document* document, const Options& options) override;
    bool fileMatchesTemplate(const VfString& path) override;
    bool initDocument(vfApplication::Document* document, const VfString& path,
                      const Options& options) override;

protected:
    vfApplication::Document* doCreateDocument(const Options& options) override;
    vfApplication::View* doCreateView(const Options& options) override;
};

class History : public vfApplication::FileHistory
{
public:
    History() : FileHistory(2) {}
    void addFileToHistory(const VfString& path) override;
    void removeFileFromHistory(int index) override;
};

class Manager : public vfApplication::DocManager
{
public:
    void addFileToHistory(const VfString& path) override;
    vfApplication::FileHistory* getFileHistory() override { return &m_history; }
    VfString makeNewDocumentName() override;
    void activateView(vfApplication::View* view, bool active) override;
    vfApplication::Document* createDocument(const VfString& path, const Options& options) override;
    bool updateDocument(vfApplication::Document* document, const VfString& path,
                        const Options& options) override;
    vfApplication::View* createView(vfApplication::Document* document, const Options& options) override;
    vfApplication::DocTemplate* findTemplateForPath(const char* path) override;
    vfApplication::DocTemplate* selectDocumentType(vfApplication::DocTemplate** templates, int count,
                                                   bool sort) override;
    vfApplication::DocTemplate* selectDocumentTypeUser(vfApplication::DocTemplate** templates,
                                                       int count) override;
    vfApplication::DocTemplate* selectViewType(vfApplication::DocTemplate** templates, int count,
                                               bool sort) override;
    int askForUserConfirmation() override;
    int askForConfirmRevert() override;
    VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                    const char* filter, Options& options) override;

private:
    History m_history;
};

class CommandBody : public vfApplication::CommandPrivate
{
public:
    static const vfBase::ClassInfo s_classInfo;

    CommandBody() { ++population().commands; }

    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    void invoke(const VfVariant& argument) override;
    bool canUndo() const override;
    bool Do(const VfVariant& argument) override;
    bool undo(const VfVariant& argument) override;

protected:
    ~CommandBody() override;
};

Command makeCommand();

class PlainModule : public vfApplication::Module
{
public:
    explicit PlainModule(const char* id) : m_id(id) {}
    const char* getId() const override { return m_id.c_str(); }
    const char* getModuleName() const override { return "module"; }

private:
    std::string m_id;
};

class Module : public PlainModule
{
public:
    Module() : PlainModule("life::Module") {}
    ~Module() override;
    const char* getId() const override;
};

class DockWindow : public vfApplication::DockWindow
{
public:
    explicit DockWindow(const char* id) : vfApplication::DockWindow(id) {}
    ~DockWindow() override;
    const char* getId() const override;
};

/// Stands in the three Realizer pointers.
void installToolkit();

/// Announces the dock window "registered" with the registry. @return its key
const char* announceDockWindow();

class OptionsPage : public vfApplication::UiOptionsPage
{
public:
    static const vfBase::ClassInfo s_classInfo;
    OptionsPage();
};

/// The shell. Its event loop is the scenario.
class Shell : public vfApplication::ApplicationInterface
{
public:
    static std::function<void()> inEventLoop;

    int onBeforeRun() override;
    int onAfterRun() override;
    int runEventLoop() override;
    void exit(int code) override;
    void shellExtensionA() override {}
    vfApplication::StatusBar& getStatusBar() override { return m_statusBar; }
    void shellExtensionB() override {}
    void shellExtensionC() override {}
    void addFileToFileSystemWatcher(VfString path) override;
    void removeFileFromFileSystemWatcher(VfString path) override;

private:
    vfApplication::StatusBar m_statusBar;
};

struct Callback : vfApplication::ApplicationCallback
{
    void onApplicationInterfaceCreated(vfApplication::Application* application) override;
    int onApplicationInitialized(vfApplication::Application* application) override;
    void onClosingDocument(vfApplication::Document* document) override;
    void onDocumentCreated(vfApplication::Document* document) override;
    void callbackExtension() override {}
};

class Setup : public vfApplication::ApplicationSetup
{
public:
    const vfApplication::UiSetup& getUiSetup() const override;
    void onRegisterDocumentType() const override;
};

} // namespace vfLife
