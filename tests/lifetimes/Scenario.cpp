// SPDX-License-Identifier: MIT
#include "Scenario.h"

#include "Classes.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/shell/OptionsPageManager.h>
#include <velaforge/shell/Registry.h>

#include <memory>
#include <optional>

namespace vfLife {

using vfApplication::Application;
using vfApplication::ModuleRegistry;

namespace {

Application& application()
{
    return *Application::instance(false);
}

vfApplication::DocManager& manager()
{
    return application().getDocManager();
}

/// Who got the exception that a hook threw.
std::string& arrival()
{
    static std::string& text = *new std::string("caught");
    return text;
}

/// Does one thing that a program does. What it throws arrives here.
template <class Step>
void attempt(Step step)
{
    try {
        step();
    } catch (const vfBase::BaseException&) {
        arrival() = "wrapped";
    } catch (const Thrown&) {
        arrival() = "passes";
    }
}

/// The document of a path, opened if need be; without one the step is left out.
template <class Step>
void with(const char* path, Step step)
{
    vfApplication::Document* document = manager().findDocumentByPath(path);
    if (!document)
        attempt([&] { document = manager().createDocument(path, Options()); });
    if (document)
        attempt([&] { step(*document); });
}

void workWithDocuments()
{
    with("b.obj", [](vfApplication::Document& document) { document.activate(); });
    with("b.obj", [](vfApplication::Document& document) {
        document.getCommandProcessor()->submit(makeCommand(), true);
    });
    attempt([] {
        const Command command = Command::getCommandByName("life::Command");
        Command(command).invoke(VfVariant(5));
    });
    for (int i = 0; i < 2; ++i)
        with("b.obj", [](vfApplication::Document& document) { document.getCommandProcessor()->undo(); });
    with("b.obj", [](vfApplication::Document& document) { document.getCommandProcessor()->redo(); });
    for (int i = 0; i < 3; ++i)
        with("b.obj", [](vfApplication::Document& document) {
            document.getCommandProcessor()->submit(makeCommand(), true);
        });
    for (int i = 0; i < 3; ++i)
        with("b.obj", [](vfApplication::Document& document) { document.getCommandProcessor()->undo(); });
    with("b.obj", [](vfApplication::Document& document) {
        document.getCommandProcessor()->submit(makeCommand(), true);
    });
    with("b.obj", [](vfApplication::Document& document) { document.modify(true); });
    with("b.obj", [](vfApplication::Document& document) { manager().createView(&document, Options()); });
    with("b.obj", [](vfApplication::Document& document) { document.updateAllViews(nullptr); });
    with("b.obj", [](vfApplication::Document& document) { document.deselectAllViews(nullptr); });
    with("b.obj", [](vfApplication::Document& document) { document.save(Options::invalid()); });
    with("b.obj", [](vfApplication::Document& document) { document.saveAs(Options::invalid()); });
    with("b.obj", [](vfApplication::Document& document) {
        document.modify(true);
        document.revert();
    });
    attempt([] { manager().createNewDocument(); });
    with("b.obj", [](vfApplication::Document& document) {
        Options options;
        options.setPluginStringData("SILENT", "TRUE");
        manager().updateDocument(&document, "d.txt", options);
    });
    attempt([] { application().onUpdate(); });
    with("e.obj", [](vfApplication::Document& document) { document.modify(true); });
    with("e.obj", [](vfApplication::Document& document) { manager().closeDocument(&document, false); });
    with("f.obj", [](vfApplication::Document& document) { document.deleteAllViews(); });
}

void workWithModules()
{
    attempt([] { ModuleRegistry::instance(false)->addModule(new Module); });
    attempt([] {
        if (vfApplication::Module* module = ModuleRegistry::instance(false)->getModule("life::Module"))
            ModuleRegistry::instance(false)->removeModule(module);
    });
    attempt([] { ModuleRegistry::instance(false)->addModule(new Module); });
}

void workWithDockWindows()
{
    vfApplication::DockWindowManager& windows = application().getDockWindowManager();
    const auto area = static_cast<vfApplication::DockWindow::DockArea>(1);
    attempt([&] { windows.addNewOrGetExistingDockWindow("tools", area, true, false, 0, nullptr); });
    attempt(
        [&] { windows.addNewOrGetExistingDockWindow(announceDockWindow(), area, true, false, 0, nullptr); });
    std::unique_ptr<DockWindow> own;
    attempt([&] { own = std::make_unique<DockWindow>("own"); });
    if (own)
        attempt([&] { windows.addDockWindow(own.get()); });
    if (own)
        attempt([&] { own->setTitle("title", nullptr); });
    attempt([&] { windows.onLanguageChange(); });
    attempt([&] { windows.addNewOrGetExistingDockWindow("tools", area, true, false, 0, nullptr); });
    attempt([&] { windows.saveDockWindowsState(); });
    if (own)
        attempt([&] { windows.removeDockWindow(own.get()); });
    attempt([&] { windows.removeDockWindow("registered"); });
}

void workWithOptionsPages()
{
    attempt([] {
        vfApplication::OptionsPageManager& pages =
            vfApplication::Registry::instance().getOptionsPageManager();
        pages.addOptionsPageId("life::OptionsPage");
        for (vfApplication::UiOptionsPage* page : pages.createPages())
            delete page;
    });
}

void eventLoop()
{
    workWithDockWindows();
    workWithDocuments();
    workWithModules();
    workWithDockWindows();
    workWithOptionsPages();
    attempt([] { application().exit(0); });
}

void runProgram()
{
    char name[] = "life";
    char file[] = "a.obj";
    char* arguments[] = {name, file, nullptr};
    int count = 2;
    Callback callback;
    std::optional<Application> program;
    attempt([&] { program.emplace(count, arguments, Setup()); });
    if (!program)
        return;
    program->registerCallback(&callback);
    attempt([] { ModuleRegistry::instance(false)->addModule(new Module); });
    attempt([&] { program->run(); });
}

} // namespace

const std::vector<std::string>& hooks()
{
    static const std::vector<std::string> all{
        "ApplicationSetup::getUiSetup",
        "ApplicationSetup::onRegisterDocumentType",
        "ApplicationProducer::create",
        "ApplicationCallback::onApplicationInterfaceCreated",
        "ApplicationCallback::onApplicationInitialized",
        "ApplicationCallback::onDocumentCreated",
        "ApplicationCallback::onClosingDocument",
        "ApplicationInterface::onBeforeRun",
        "ApplicationInterface::runEventLoop",
        "ApplicationInterface::onAfterRun",
        "ApplicationInterface::exit",
        "ApplicationInterface::addFileToFileSystemWatcher",
        "ApplicationInterface::removeFileFromFileSystemWatcher",
        "ClassInfo: creator of a document",
        "ClassInfo: creator of a view",
        "ClassInfo: creator of a command",
        "Document::onCreate",
        "Document::onNewDocument",
        "Document::onOpenDocument",
        "Document::doOpenDocument",
        "Document::save",
        "Document::saveAs",
        "Document::onSaveDocument",
        "Document::doSaveDocument",
        "Document::onSaveModified",
        "Document::confirmRevert",
        "Document::revert",
        "Document::close",
        "Document::onCloseDocument",
        "Document::deleteContents",
        "Document::deleteAllViews",
        "Document::addView",
        "Document::removeView",
        "Document::onChangedViewList",
        "Document::onChangeFilename",
        "Document::updateAllViews",
        "Document::deselectAllViews",
        "View::setViewOptions",
        "View::setDocument",
        "View::onCreate",
        "View::activate",
        "View::onActivateView",
        "View::onChangeFilename",
        "View::onUpdate",
        "View::onDeselect",
        "View::close",
        "View::onClose",
        "View::onClosingDocument",
        "~View",
        "DocTemplate::createDocument",
        "DocTemplate::initDocument",
        "DocTemplate::doCreateDocument",
        "DocTemplate::createView",
        "DocTemplate::doCreateView",
        "DocTemplate::fileMatchesTemplate",
        "DocManager::createDocument",
        "DocManager::updateDocument",
        "DocManager::createView",
        "DocManager::findTemplateForPath",
        "DocManager::selectDocumentType",
        "DocManager::selectDocumentTypeUser",
        "DocManager::selectViewType",
        "DocManager::activateView",
        "DocManager::makeNewDocumentName",
        "DocManager::addFileToHistory",
        "DocManager::askForUserConfirmation",
        "DocManager::askForConfirmRevert",
        "DocManager::selectDocumentSavePath",
        "FileHistory::addFileToHistory",
        "FileHistory::removeFileFromHistory",
        "CommandProcessor::submit",
        "CommandProcessor::store",
        "CommandProcessor::undo",
        "CommandProcessor::redo",
        "CommandProcessor::doCommand",
        "CommandProcessor::undoCommand",
        "CommandProcessor::clearCommands",
        "CommandProcessor::setMenuStrings",
        "Command::invoke",
        "Command::Do",
        "Command::undo",
        "Command::canUndo",
        "~Command",
        "Module::getId",
        "~Module",
        "DockWindowManagerProducer::create",
        "DockWindowProducer::create",
        "RegistryObjectProducerInterface::getKey",
        "RegistryObjectProducerInterface::create",
        "DockWindow::getId",
        "~DockWindow",
        "DockWindowInterface::setTitle",
        "DockWindowInterface::setVisible",
        "DockWindowInterface::getVisible",
        "DockWindowInterface::getAutoHide",
        "DockWindowInterface::getArea",
        "DockWindowInterface::onLanguageChange",
        "DockWindowManagerInterface::dockDockWindowToArea",
        "UiOptionsPage: constructor",
    };
    return all;
}

std::string play(const std::string& hook, Action action, int nth)
{
    installToolkit();
    Shell::inEventLoop = eventLoop;
    Actor::instance().arm(hook, action, nth);
    runProgram();
    if (!Actor::instance().hasActed())
        return "not reached";
    const Population& left = population();
    if (left.documents != 0 || left.views != 0 || left.commands != 0)
        return "fault: " + std::to_string(left.documents) + " documents, " + std::to_string(left.views) +
               " views and " + std::to_string(left.commands) + " commands are left";
    if (Actor::instance().outcome() == "thrown")
        return arrival();
    return Actor::instance().outcome();
}

} // namespace vfLife
