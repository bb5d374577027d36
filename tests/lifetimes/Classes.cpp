// SPDX-License-Identifier: MIT
#include "Classes.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/RegistryObjectProducerInterface.h>
#include <velaforge/commands/Command.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowProducer.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <memory>
#include <vector>

namespace vfLife {

using Base = vfApplication::Document;

namespace {

vfApplication::DocTemplate* first(vfApplication::DocTemplate** templates, int count)
{
    return count > 0 ? templates[0] : nullptr;
}

/// Reaches a hook that no object of the action's belongs to.
void reach(const char* hook, vfApplication::Document* document = nullptr)
{
    Actor::instance().reach(hook, document, nullptr);
}

} // namespace

Population& population()
{
    static Population& all = *new Population;
    return all;
}

// --- history

bool Processor::submit(Command command, bool storeIt)
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::submit", m_document, m_document))
        return true;
    return CommandProcessor::submit(command, storeIt);
}

void Processor::store(Command command)
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::store", m_document, m_document))
        return;
    CommandProcessor::store(command);
}

bool Processor::undo()
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::undo", m_document, m_document))
        return true;
    return CommandProcessor::undo();
}

bool Processor::redo()
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::redo", m_document, m_document))
        return true;
    return CommandProcessor::redo();
}

void Processor::setMenuStrings()
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::setMenuStrings", m_document, m_document))
        return;
    CommandProcessor::setMenuStrings();
}

void Processor::clearCommands()
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::clearCommands", m_document, m_document))
        return;
    CommandProcessor::clearCommands();
}

bool Processor::doCommand(Command& command)
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::doCommand", m_document, m_document))
        return true;
    return CommandProcessor::doCommand(command);
}

bool Processor::undoCommand(Command& command)
{
    if (!vfLife::reach<vfApplication::Document>("CommandProcessor::undoCommand", m_document, m_document))
        return true;
    return CommandProcessor::undoCommand(command);
}

// --- documents

const vfBase::ClassInfo Document::s_classInfo("life", "Document", "life::Document", &Base::s_classInfo,
                                              nullptr, sizeof(Document), []() -> vfBase::VfObject* {
                                                  reach("ClassInfo: creator of a document");
                                                  return new Document;
                                              });

const vfBase::ClassInfo OtherDocument::s_classInfo("life", "OtherDocument", "life::OtherDocument",
                                                   &Document::s_classInfo, nullptr, sizeof(OtherDocument),
                                                   []() -> vfBase::VfObject* { return new OtherDocument; });

Document::Document()
{
    auto* processor = new Processor(this);
    delete getCommandProcessor();
    setCommandProcessor(processor);
    ++population().documents;
}

Document::~Document()
{
    --population().documents;
}

bool Document::addView(vfApplication::View* view)
{
    if (!vfLife::reach<Base>("Document::addView", this, this))
        return true;
    return Base::addView(view);
}

bool Document::close()
{
    if (!vfLife::reach<Base>("Document::close", this, this))
        return true;
    return Base::close();
}

bool Document::deleteAllViews()
{
    if (!vfLife::reach<Base>("Document::deleteAllViews", this, this))
        return true;
    return Base::deleteAllViews();
}

bool Document::deleteContents()
{
    if (!vfLife::reach<Base>("Document::deleteContents", this, this))
        return true;
    return Base::deleteContents();
}

bool Document::onCreate(const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("Document::onCreate", this, this))
        return false;
    return Base::onCreate(path, options);
}

bool Document::onNewDocument()
{
    if (!vfLife::reach<Base>("Document::onNewDocument", this, this))
        return false;
    return Base::onNewDocument();
}

bool Document::onOpenDocument(const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("Document::onOpenDocument", this, this))
        return false;
    return Base::onOpenDocument(path, options);
}

WriteResult Document::onSaveDocument(const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("Document::onSaveDocument", this, this))
        return WriteResult(WriteResult::NoPath);
    return Base::onSaveDocument(path, options);
}

bool Document::onSaveModified()
{
    if (!vfLife::reach<Base>("Document::onSaveModified", this, this))
        return true;
    return Base::onSaveModified();
}

bool Document::onCloseDocument()
{
    if (!vfLife::reach<Base>("Document::onCloseDocument", this, this))
        return true;
    return Base::onCloseDocument();
}

void Document::onChangedViewList()
{
    if (!vfLife::reach<Base>("Document::onChangedViewList", this, this))
        return;
    Base::onChangedViewList();
}

bool Document::removeView(vfApplication::View* view)
{
    if (!vfLife::reach<Base>("Document::removeView", this, this))
        return true;
    return Base::removeView(view);
}

WriteResult Document::save(const Options& options)
{
    if (!vfLife::reach<Base>("Document::save", this, this))
        return WriteResult(WriteResult::NoPath);
    return Base::save(options);
}

WriteResult Document::saveAs(const Options& options)
{
    if (!vfLife::reach<Base>("Document::saveAs", this, this))
        return WriteResult(WriteResult::NoPath);
    return Base::saveAs(options);
}

bool Document::confirmRevert() const
{
    if (!vfLife::reach<Base>("Document::confirmRevert", this, const_cast<Document*>(this)))
        return false;
    return Base::confirmRevert();
}

bool Document::revert()
{
    if (!vfLife::reach<Base>("Document::revert", this, this))
        return false;
    return Base::revert();
}

void Document::onChangeFilename(bool notifyViews)
{
    if (!vfLife::reach<Base>("Document::onChangeFilename", this, this))
        return;
    Base::onChangeFilename(notifyViews);
}

void Document::updateAllViews(vfApplication::View* sender)
{
    if (!vfLife::reach<Base>("Document::updateAllViews", this, this))
        return;
    Base::updateAllViews(sender);
}

void Document::deselectAllViews(vfApplication::View* sender)
{
    if (!vfLife::reach<Base>("Document::deselectAllViews", this, this))
        return;
    Base::deselectAllViews(sender);
}

bool Document::doOpenDocument(const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("Document::doOpenDocument", this, this))
        return true;
    return Base::doOpenDocument(path, options);
}

WriteResult Document::doSaveDocument(const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("Document::doSaveDocument", this, this))
        return WriteResult(WriteResult::Written);
    return Base::doSaveDocument(path, options);
}

// --- views

const vfBase::ClassInfo View::s_classInfo("life", "View", "life::View", &vfApplication::View::s_classInfo,
                                          nullptr, sizeof(View), []() -> vfBase::VfObject* {
                                              reach("ClassInfo: creator of a view");
                                              return new View;
                                          });

View::~View()
{
    --population().views;
    Actor::instance().reach("~View", nullptr, nullptr, false);
}

void View::activate(bool active)
{
    if (!vfLife::reach<vfApplication::View>("View::activate", this, getDocument(), this))
        return;
    vfApplication::View::activate(active);
}

bool View::close(bool force)
{
    if (!vfLife::reach<vfApplication::View>("View::close", this, getDocument(), this))
        return true;
    return vfApplication::View::close(force);
}

void View::onActivateView(bool active, vfApplication::View* activated, vfApplication::View* previous)
{
    if (!vfLife::reach<vfApplication::View>("View::onActivateView", this, getDocument(), this))
        return;
    vfApplication::View::onActivateView(active, activated, previous);
}

void View::onChangeFilename()
{
    if (!vfLife::reach<vfApplication::View>("View::onChangeFilename", this, getDocument(), this))
        return;
    vfApplication::View::onChangeFilename();
}

bool View::onClose(bool force)
{
    if (!vfLife::reach<vfApplication::View>("View::onClose", this, getDocument(), this))
        return true;
    return vfApplication::View::onClose(force);
}

void View::onClosingDocument()
{
    if (!vfLife::reach<vfApplication::View>("View::onClosingDocument", this, getDocument(), this))
        return;
    vfApplication::View::onClosingDocument();
}

bool View::onCreate(vfApplication::Document* document, const Options&)
{
    vfLife::reach<vfApplication::View>("View::onCreate", this, document, this);
    return true;
}

void View::setDocument(vfApplication::Document* document)
{
    if (!vfLife::reach<vfApplication::View>("View::setDocument", this, getDocument(), this))
        return;
    vfApplication::View::setDocument(document);
}

void View::onUpdate(vfApplication::View* sender)
{
    if (!vfLife::reach<vfApplication::View>("View::onUpdate", this, getDocument(), this))
        return;
    vfApplication::View::onUpdate(sender);
}

void View::onDeselect(vfApplication::View* sender)
{
    if (!vfLife::reach<vfApplication::View>("View::onDeselect", this, getDocument(), this))
        return;
    vfApplication::View::onDeselect(sender);
}

void View::setViewOptions(const Options& options)
{
    if (!vfLife::reach<vfApplication::View>("View::setViewOptions", this, getDocument(), this))
        return;
    vfApplication::View::setViewOptions(options);
}

// --- templates

Template::Template(vfApplication::DocManager* manager, const char* extension, const char* documentName,
                   const char* viewName)
    : DocTemplate(manager, documentName, extension, "", extension, documentName, viewName, nullptr, nullptr,
                  Visible, 0, Options())
{}

vfApplication::Document* Template::createDocument(const VfString& path, const Options& options)
{
    reach("DocTemplate::createDocument");
    return DocTemplate::createDocument(path, options);
}

vfApplication::View* Template::createView(vfApplication::Document* document, const Options& options)
{
    if (!vfLife::reach<Base>("DocTemplate::createView", document, document))
        return nullptr;
    return DocTemplate::createView(document, options);
}

bool Template::initDocument(vfApplication::Document* document, const VfString& path, const Options& options)
{
    if (!vfLife::reach<Base>("DocTemplate::initDocument", document, nullptr))
        return false;
    return DocTemplate::initDocument(document, path, options);
}

bool Template::fileMatchesTemplate(const VfString& path)
{
    reach("DocTemplate::fileMatchesTemplate");
    return DocTemplate::fileMatchesTemplate(path);
}

vfApplication::Document* Template::doCreateDocument(const Options& options)
{
    reach("DocTemplate::doCreateDocument");
    return DocTemplate::doCreateDocument(options);
}

vfApplication::View* Template::doCreateView(const Options& options)
{
    reach("DocTemplate::doCreateView");
    return DocTemplate::doCreateView(options);
}

// --- manager

void History::addFileToHistory(const VfString& path)
{
    reach("FileHistory::addFileToHistory");
    FileHistory::addFileToHistory(path);
}

void History::removeFileFromHistory(int index)
{
    reach("FileHistory::removeFileFromHistory");
    FileHistory::removeFileFromHistory(index);
}

void Manager::addFileToHistory(const VfString& path)
{
    reach("DocManager::addFileToHistory");
    DocManager::addFileToHistory(path);
}

VfString Manager::makeNewDocumentName()
{
    reach("DocManager::makeNewDocumentName");
    return DocManager::makeNewDocumentName();
}

void Manager::activateView(vfApplication::View* view, bool active)
{
    const vfBase::LifeWatch<vfApplication::View> watch(view);
    reach("DocManager::activateView");
    if (!watch.isGone())
        DocManager::activateView(view, active);
}

vfApplication::Document* Manager::createDocument(const VfString& path, const Options& options)
{
    reach("DocManager::createDocument");
    return DocManager::createDocument(path, options);
}

bool Manager::updateDocument(vfApplication::Document* document, const VfString& path, const Options& options)
{
    return vfLife::reach<Base>("DocManager::updateDocument", document, document) &&
           DocManager::updateDocument(document, path, options);
}

vfApplication::View* Manager::createView(vfApplication::Document* document, const Options& options)
{
    if (!vfLife::reach<Base>("DocManager::createView", document, document))
        return nullptr;
    return DocManager::createView(document, options);
}

vfApplication::DocTemplate* Manager::findTemplateForPath(const char* path)
{
    reach("DocManager::findTemplateForPath");
    return DocManager::findTemplateForPath(path);
}

vfApplication::DocTemplate* Manager::selectDocumentType(vfApplication::DocTemplate** templates, int count,
                                                        bool sort)
{
    reach("DocManager::selectDocumentType");
    return DocManager::selectDocumentType(templates, count, sort);
}

vfApplication::DocTemplate* Manager::selectDocumentTypeUser(vfApplication::DocTemplate** templates, int count)
{
    reach("DocManager::selectDocumentTypeUser");
    return first(templates, count);
}

vfApplication::DocTemplate* Manager::selectViewType(vfApplication::DocTemplate** templates, int count,
                                                    bool sort)
{
    reach("DocManager::selectViewType");
    return DocManager::selectViewType(templates, count, sort);
}

int Manager::askForUserConfirmation()
{
    reach("DocManager::askForUserConfirmation");
    return 2;
}

int Manager::askForConfirmRevert()
{
    reach("DocManager::askForConfirmRevert");
    return 1;
}

VfString Manager::selectDocumentSavePath(const char*, const char*, const char*, const char*, Options&)
{
    reach("DocManager::selectDocumentSavePath");
    return "saved.obj";
}

// --- commands

const vfBase::ClassInfo CommandBody::s_classInfo("life", "Command", "life::Command",
                                                 &vfApplication::CommandPrivate::s_classInfo, nullptr,
                                                 sizeof(CommandBody), []() -> vfBase::VfObject* {
                                                     reach("ClassInfo: creator of a command");
                                                     return new CommandBody;
                                                 });

CommandBody::~CommandBody()
{
    --population().commands;
    Actor::instance().reach("~Command", nullptr, nullptr, false);
}

void CommandBody::invoke(const VfVariant& argument)
{
    reach("Command::invoke");
    CommandPrivate::invoke(argument);
}

bool CommandBody::canUndo() const
{
    reach("Command::canUndo");
    return true;
}

bool CommandBody::Do(const VfVariant&)
{
    reach("Command::Do");
    return true;
}

bool CommandBody::undo(const VfVariant&)
{
    reach("Command::undo");
    return true;
}

Command makeCommand()
{
    return Command(new CommandBody);
}

// --- modules

Module::~Module()
{
    Actor::instance().reach("~Module", nullptr, nullptr, false);
}

const char* Module::getId() const
{
    reach("Module::getId");
    return "life::Module"; // not of a field: the action may have removed the module
}

// --- dock windows

DockWindow::~DockWindow()
{
    Actor::instance().reach("~DockWindow", nullptr, nullptr, false);
}

const char* DockWindow::getId() const
{
    reach("DockWindow::getId");
    return vfApplication::DockWindow::getId();
}

namespace {

/// The toolkit side of a dock window.
class DockSide : public vfApplication::DockWindowInterface
{
public:
    using DockArea = vfApplication::DockWindow::DockArea;

    void setTitle(const char*, const char*) override { reach("DockWindowInterface::setTitle"); }
    void setAllowedDockingAreas(unsigned int) override {}
    unsigned int getAllowedDockingAreas() const override { return 0; }
    bool isFloating() const override { return false; }
    void setVisible(bool) override { reach("DockWindowInterface::setVisible"); }
    bool getVisible() const override
    {
        reach("DockWindowInterface::getVisible");
        return true;
    }
    void setAllowTabbing(bool) override {}
    bool getAllowTabbing() const override { return false; }
    void setAllowTabbed(bool) override {}
    bool getAllowTabbed() const override { return false; }
    bool isTabbed() const override { return false; }
    void setCloseable(bool) override {}
    bool getCloseable() const override { return false; }
    void setMoveable(bool) override {}
    bool getMoveable() const override { return false; }
    void setFloatable(bool) override {}
    bool getFloatable() const override { return false; }
    void setAutoHide(bool) override {}
    bool getAutoHide() const override
    {
        reach("DockWindowInterface::getAutoHide");
        return false;
    }
    void setArea(DockArea) override {}
    DockArea getArea() const override
    {
        reach("DockWindowInterface::getArea");
        return vfApplication::DockWindow::NoDockArea;
    }
    void onLanguageChange() override { reach("DockWindowInterface::onLanguageChange"); }
};

struct DockProducer : vfApplication::DockWindowProducer
{
    DockProducer() { Realizer = this; }
    vfApplication::DockWindowInterface* create(vfApplication::DockWindow*) override
    {
        reach("DockWindowProducer::create");
        made.push_back(std::make_unique<DockSide>());
        return made.back().get();
    }
    std::vector<std::unique_ptr<DockSide>> made;
};

class ManagerSide : public vfApplication::DockWindowManagerInterface
{
public:
    void dockDockWindowToArea(vfApplication::DockWindow::DockArea, vfApplication::DockWindow*) override
    {
        reach("DockWindowManagerInterface::dockDockWindowToArea");
    }
    vfApplication::DockWindow::DockArea getDockedDockWindowArea(vfApplication::DockWindow*) const override
    {
        return vfApplication::DockWindow::NoDockArea;
    }
};

struct ManagerProducer : vfApplication::DockWindowManagerProducer
{
    ManagerProducer() { Realizer = this; }
    vfApplication::DockWindowManagerInterface* create(vfApplication::DockWindowManager*) override
    {
        reach("DockWindowManagerProducer::create");
        return new ManagerSide;
    }
};

struct ShellProducer : vfApplication::ApplicationProducer
{
    ShellProducer() { Realizer = this; }
    vfApplication::ApplicationInterface* create(vfApplication::Application*, int&, char**,
                                                bool destroy) override
    {
        reach(destroy ? "ApplicationProducer::create, to destroy" : "ApplicationProducer::create");
        static Shell shell;
        return &shell;
    }
};

const char registeredKey[] = "registered";

struct RegisteredProducer
    : vfBase::RegistryObjectProducerInterface<vfApplication::DockWindow, const char*, vfBase::NilType>
{
    const char* getKey() override
    {
        reach("RegistryObjectProducerInterface::getKey");
        return registeredKey;
    }
    vfApplication::DockWindow* create() override
    {
        reach("RegistryObjectProducerInterface::create");
        return new DockWindow(registeredKey);
    }
};

} // namespace

void installToolkit()
{
    static DockProducer dockWindows;
    static ManagerProducer managers;
    static ShellProducer shells;
}

const char* announceDockWindow()
{
    const vfApplication::DockWindowRegistryPrivate::Proxy proxy(new RegisteredProducer);
    return registeredKey;
}

// --- options pages

const vfBase::ClassInfo OptionsPage::s_classInfo("life", "OptionsPage", "life::OptionsPage",
                                                 &vfApplication::UiOptionsPage::s_classInfo, nullptr,
                                                 sizeof(OptionsPage),
                                                 []() -> vfBase::VfObject* { return new OptionsPage; });

OptionsPage::OptionsPage()
{
    reach("UiOptionsPage: constructor");
}

// --- shell, callback and setup

std::function<void()> Shell::inEventLoop;

int Shell::onBeforeRun()
{
    reach("ApplicationInterface::onBeforeRun");
    return 0;
}

int Shell::onAfterRun()
{
    reach("ApplicationInterface::onAfterRun");
    return 0;
}

int Shell::runEventLoop()
{
    reach("ApplicationInterface::runEventLoop");
    inEventLoop();
    return 0;
}

void Shell::exit(int)
{
    reach("ApplicationInterface::exit");
}

void Shell::addFileToFileSystemWatcher(VfString)
{
    reach("ApplicationInterface::addFileToFileSystemWatcher");
}

void Shell::removeFileFromFileSystemWatcher(VfString)
{
    reach("ApplicationInterface::removeFileFromFileSystemWatcher");
}

void Callback::onApplicationInterfaceCreated(vfApplication::Application*)
{
    reach("ApplicationCallback::onApplicationInterfaceCreated");
}

int Callback::onApplicationInitialized(vfApplication::Application*)
{
    reach("ApplicationCallback::onApplicationInitialized");
    return 0;
}

void Callback::onClosingDocument(vfApplication::Document* document)
{
    reach("ApplicationCallback::onClosingDocument", document);
}

void Callback::onDocumentCreated(vfApplication::Document* document)
{
    reach("ApplicationCallback::onDocumentCreated", document);
}

const vfApplication::UiSetup& Setup::getUiSetup() const
{
    static const vfApplication::MinimalUiSetup setup;
    reach("ApplicationSetup::getUiSetup");
    return setup;
}

void Setup::onRegisterDocumentType() const
{
    vfApplication::Application* application = vfApplication::Application::instance(false);
    application->setDocManager(new Manager);
    reach("ApplicationSetup::onRegisterDocumentType");
    new Template(&application->getDocManager(), "obj", "life::Document");
    new Template(&application->getDocManager(), "txt", "life::OtherDocument");
}

} // namespace vfLife
