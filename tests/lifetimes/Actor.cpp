// SPDX-License-Identifier: MIT
#include "Actor.h"

#include "Classes.h"

#include <velaforge/application/Application.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/modules/ModuleRegistry.h>

namespace vfLife {

using vfApplication::Application;
using vfApplication::DocManager;

namespace {

const char* const nothing = "-";

/// @return the document that the hook is about, or else the active one, or else the oldest
vfApplication::Document* subject(vfApplication::Document* document)
{
    Application* application = Application::instance(false);
    if (document || !application)
        return document;
    if (vfApplication::Document* active = application->getActiveDocument())
        return active;
    const vfBase::Vector<vfApplication::Document*> all = application->getDocManager().getDocumentList();
    return all.isEmpty() ? nullptr : all.first();
}

vfApplication::Document* another(const vfApplication::Document* document)
{
    Application* application = Application::instance(false);
    if (!application)
        return nullptr;
    for (vfApplication::Document* other : application->getDocManager().getDocumentList()) {
        if (other != document)
            return other;
    }
    return nullptr;
}

std::string close(vfApplication::Document* document)
{
    Application* application = Application::instance(false);
    if (!document || !application)
        return nothing;
    return Actor::said(application->getDocManager().closeDocument(document, false));
}

std::string removeDockWindow()
{
    Application* application = Application::instance(false);
    if (!application || !application->getImp()->dockWindowManager)
        return nothing;
    vfApplication::DockWindowManager& windows = application->getDockWindowManager();
    if (!windows.findDockWindow("tools"))
        return nothing;
    return Actor::said(windows.removeDockWindow("tools"));
}

std::string update(vfApplication::Document* document)
{
    if (document)
        document->updateAllViews(nullptr);
    Application* application = Application::instance(false);
    if (!application || !application->getImp()->dockWindowManager)
        return document ? "done" : nothing;
    application->getDockWindowManager().onLanguageChange();
    return "done";
}

std::string closeAll()
{
    Application* application = Application::instance(false);
    if (!application || !application->getImp()->docManager)
        return nothing;
    const bool areClosed = application->getDocManager().closeDocuments(false);
    application->exit(0);
    return Actor::said(areClosed);
}

} // namespace

const std::vector<std::pair<Action, std::string>>& actions()
{
    static const std::vector<std::pair<Action, std::string>> all{
        {Action::CloseThis, "close this"},
        {Action::CloseAnother, "close another"},
        {Action::Open, "open"},
        {Action::DeleteView, "delete the view"},
        {Action::RemoveDockWindow, "remove a dock window"},
        {Action::Submit, "submit"},
        {Action::Undo, "undo"},
        {Action::ClearHistory, "clear the history"},
        {Action::AddModule, "add a module"},
        {Action::RemoveModule, "remove a module"},
        {Action::Update, "update"},
        {Action::CloseAll, "close all and exit"},
        {Action::Throw, "throw"}};
    return all;
}

Actor& Actor::instance()
{
    static Actor& actor = *new Actor; // hooks are reached until the very end of the process
    return actor;
}

std::string Actor::said(bool isDone)
{
    return isDone ? "done" : "refused";
}

void Actor::arm(const std::string& hook, Action action, int nth)
{
    m_hook = hook;
    m_action = action;
    m_countdown = nth;
    m_hasActed = false;
    m_outcome.clear();
}

void Actor::reach(const char* hook, vfApplication::Document* document, vfApplication::View* view,
                  bool mayThrow)
{
    if (m_hasActed || m_hook != hook || --m_countdown > 0)
        return;
    m_hasActed = true;
    if (m_action == Action::Throw) {
        if (!mayThrow) {
            m_outcome = nothing;
            return;
        }
        m_outcome = "thrown";
        throw Thrown();
    }
    m_outcome = act(document, view);
}

std::string Actor::act(vfApplication::Document* named, vfApplication::View* view)
{
    Application* application = Application::instance(false);
    const bool hasManager = application && application->getImp()->docManager;
    vfApplication::Document* document = hasManager ? subject(named) : named;
    switch (m_action) {
    case Action::CloseThis:
        return hasManager ? close(document) : nothing;
    case Action::CloseAnother:
        return hasManager ? close(another(document)) : nothing;
    case Action::Open:
        return hasManager
                   ? Actor::said(application->getDocManager().createDocument("c.obj", vfBase::Options()))
                   : nothing;
    case Action::DeleteView:
        if (m_hook == "~View" || m_hook == "Document::removeView" || m_hook == "Document::onChangedViewList")
            return nothing; // that view is being deleted
        if (!view && document)
            view = document->getFirstView();
        if (!view)
            return nothing;
        delete view;
        return "done";
    case Action::RemoveDockWindow:
        return removeDockWindow();
    case Action::Submit:
        return document ? Actor::said(document->getCommandProcessor()->submit(makeCommand(), true)) : nothing;
    case Action::Undo:
        return document ? Actor::said(document->getCommandProcessor()->undo()) : nothing;
    case Action::ClearHistory:
        if (!document)
            return nothing;
        document->getCommandProcessor()->clearCommands();
        return "done";
    case Action::AddModule:
    case Action::RemoveModule: {
        vfApplication::ModuleRegistry* registry = vfApplication::ModuleRegistry::instance(false);
        if (!registry)
            return nothing;
        if (m_action == Action::AddModule)
            registry->addModule(new PlainModule("life::Added"));
        else if (vfApplication::Module* present = registry->getModule("life::Module"))
            registry->removeModule(present);
        else
            return nothing;
        return "done";
    }
    case Action::Update:
        return update(document);
    case Action::CloseAll:
        return closeAll();
    case Action::CloseWindow:
    case Action::RebuildMenus:
        return actOnWindow ? actOnWindow(m_action) : nothing;
    case Action::None:
    case Action::Throw:
        break;
    }
    return nothing;
}

} // namespace vfLife
