// SPDX-License-Identifier: MIT
// Classes that a program with a window derives: each overridden operation reaches its hook and then does what
// the base class does. Documents, commands and modules are those of tests/lifetimes.
#pragma once

#include "lifetimes/Classes.h"

#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/QtDockWindowContents.h>
#include <velaforge/qt/QtOptionsContents.h>
#include <velaforge/qt/QtView.h>

#include <QPointer>
#include <QWidget>

namespace vfLife {

/// Reaches hooks named "<name> is <what happens to it>", in event handlers, which must not throw.
class Widget : public QWidget
{
public:
    Widget(const char* name, QWidget& parent);
    ~Widget() override;

    /// Says which view the hooks are about; null for none.
    void setView(vfApplication::View* view) { m_view = view; }

protected:
    bool event(QEvent* event) override;

private:
    void reachHook(const char* what) const;

    std::string m_name;
    vfApplication::View* m_view = nullptr;
};

class Canvas : public vfApplication::QtView
{
public:
    static const vfBase::ClassInfo s_classInfo;

    Canvas() { ++population().views; }
    ~Canvas() override;

    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    void activate(bool active) override;
    bool close(bool force) override;
    void onActivateView(bool active, vfApplication::View* activated, vfApplication::View* previous) override;
    void onChangeFilename() override;
    bool onClose(bool force) override;
    void onClosingDocument() override;
    bool onCreate(vfApplication::Document* document, const Options& options) override;
    void onUpdate(vfApplication::View* sender) override;

protected:
    QWidget* createWidget(QWidget& parent) override;

private:
    QPointer<Widget> m_widget;
};

class WindowManager : public vfApplication::QtDocManager
{
public:
    void addFileToHistory(const VfString& path) override;
    void activateView(vfApplication::View* view, bool active) override;
    vfApplication::Document* createDocument(const VfString& path, const Options& options) override;
    vfApplication::DocTemplate* selectDocumentTypeUser(vfApplication::DocTemplate** templates,
                                                       int count) override;
    int askForUserConfirmation() override;
    int askForConfirmRevert() override;
    VfString selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                    const char* filter, Options& options) override;
    bool closeAllWithQuestions() override;
    bool reload(vfApplication::Document& document) override;
    void reportFailure(const VfString& path, const VfString& reason) override;

protected:
    void beginWork(const VfString& path) override;
    void endWork() override;
};

/// A command whose argument is asked for by the prompt "life".
class AskingBody : public CommandBody
{
public:
    static const vfBase::ClassInfo s_classInfo;

    AskingBody();
};

/// A dock window that brings its contents along.
class Panel : public DockWindow, public vfApplication::QtDockWindowContents
{
public:
    explicit Panel(const char* id) : DockWindow(id) {}
    bool applyDefaultState() override;
    QWidget* createContents(QWidget& parent) override;
};

/// Has dock windows made as Panels. @return their id, "tools"; another text of these letters names a plain window
const char* announceTools();

/// The same. @return the id "panel"
const char* announcePanel();

class Page : public vfApplication::UiOptionsPage, public vfApplication::QtOptionsContents
{
public:
    static const vfBase::ClassInfo s_classInfo;

    Page();
    ~Page() override;
    const char* getGroupName() override;
    void loadOptions() override;
    void saveOptions() override;
    void applyOptions() override;
    QString getTitle() override;
    QWidget* createWidget(QWidget& parent) override;
};

/// Declares menus and toolbars. The menus have one more command each time they are declared, as when a module came.
class WindowUi : public vfApplication::MinimalUiSetup
{
public:
    DocumentInterfaceMode mode = TabbedDocuments;

    DocumentInterfaceMode getDocumentIntefaceMode() override { return mode; }
    void setupMenus(vfApplication::CommandItem* root) override;
    void setupViewMenus(const char* viewName, vfApplication::CommandItem* root) override;
    void setupToolbars(vfApplication::CommandItem* root) override;

private:
    int m_declared = 0;
};

class WindowSetup : public vfApplication::ApplicationSetup
{
public:
    explicit WindowSetup(WindowUi& ui) : m_ui(ui) {}
    const vfApplication::UiSetup& getUiSetup() const override { return m_ui; }
    void onRegisterDocumentType() const override;

private:
    WindowUi& m_ui;
};

} // namespace vfLife
