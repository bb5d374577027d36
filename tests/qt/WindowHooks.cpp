// SPDX-License-Identifier: MIT
#include "WindowHooks.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/RegistryObjectProducerInterface.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <QEvent>

namespace vfLife {

using vfApplication::QtDocManager;
using vfApplication::QtView;

namespace {

/// Reaches a hook that no object of the action's belongs to.
void reach(const char* hook)
{
    Actor::instance().reach(hook, nullptr, nullptr);
}

} // namespace

// --- widgets

Widget::Widget(const char* name, QWidget& parent) : QWidget(&parent), m_name(name)
{
    setMinimumSize(20, 20);
    setFocusPolicy(Qt::StrongFocus);
}

Widget::~Widget()
{
    reachHook("destroyed");
}

void Widget::reachHook(const char* what) const
{
    Actor::instance().reach((m_name + " is " + what).c_str(), m_view ? m_view->getDocument() : nullptr,
                            m_view, false);
}

bool Widget::event(QEvent* event)
{
    const QPointer<Widget> self(this);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        reachHook("pressed");
        break;
    case QEvent::Show:
        reachHook("shown");
        break;
    case QEvent::Hide:
        reachHook("hidden");
        break;
    case QEvent::FocusIn:
        reachHook("focused");
        break;
    case QEvent::LanguageChange:
        reachHook("translated");
        break;
    default:
        break;
    }
    return self ? QWidget::event(event) : true;
}

// --- views

const vfBase::ClassInfo Canvas::s_classInfo("life", "Canvas", "life::Canvas",
                                            &vfApplication::View::s_classInfo, nullptr, sizeof(Canvas),
                                            []() -> vfBase::VfObject* { return new Canvas; });

Canvas::~Canvas()
{
    --population().views;
    if (m_widget)
        m_widget->setView(nullptr);
    Actor::instance().reach("~View", nullptr, nullptr, false);
}

QWidget* Canvas::createWidget(QWidget& parent)
{
    if (!vfLife::reach<View>("QtView::createWidget", this, getDocument(), this))
        return nullptr;
    m_widget = new Widget("the widget of a view", parent);
    m_widget->setView(this);
    return m_widget;
}

void Canvas::activate(bool active)
{
    if (vfLife::reach<View>("View::activate", this, getDocument(), this))
        QtView::activate(active);
}

bool Canvas::close(bool force)
{
    return !vfLife::reach<View>("View::close", this, getDocument(), this) || QtView::close(force);
}

void Canvas::onActivateView(bool active, View* activated, View* previous)
{
    if (vfLife::reach<View>("View::onActivateView", this, getDocument(), this))
        QtView::onActivateView(active, activated, previous);
}

void Canvas::onChangeFilename()
{
    if (vfLife::reach<View>("View::onChangeFilename", this, getDocument(), this))
        QtView::onChangeFilename();
}

bool Canvas::onClose(bool force)
{
    return !vfLife::reach<View>("View::onClose", this, getDocument(), this) || QtView::onClose(force);
}

void Canvas::onClosingDocument()
{
    if (vfLife::reach<View>("View::onClosingDocument", this, getDocument(), this))
        QtView::onClosingDocument();
}

bool Canvas::onCreate(vfApplication::Document* document, const Options& options)
{
    return vfLife::reach<View>("View::onCreate", this, document, this) && QtView::onCreate(document, options);
}

void Canvas::onUpdate(View* sender)
{
    if (vfLife::reach<View>("View::onUpdate", this, getDocument(), this))
        QtView::onUpdate(sender);
}

// --- manager

void WindowManager::addFileToHistory(const VfString& path)
{
    reach("DocManager::addFileToHistory");
    QtDocManager::addFileToHistory(path);
}

void WindowManager::activateView(vfApplication::View* view, bool active)
{
    const vfBase::LifeWatch<vfApplication::View> watch(view);
    reach("DocManager::activateView");
    if (!watch.isGone())
        QtDocManager::activateView(view, active);
}

vfApplication::Document* WindowManager::createDocument(const VfString& path, const Options& options)
{
    reach("DocManager::createDocument");
    return QtDocManager::createDocument(path, options);
}

vfApplication::DocTemplate* WindowManager::selectDocumentTypeUser(vfApplication::DocTemplate** templates,
                                                                  int count)
{
    reach("DocManager::selectDocumentTypeUser");
    return QtDocManager::selectDocumentTypeUser(templates, count);
}

int WindowManager::askForUserConfirmation()
{
    reach("DocManager::askForUserConfirmation");
    return QtDocManager::askForUserConfirmation();
}

int WindowManager::askForConfirmRevert()
{
    reach("DocManager::askForConfirmRevert");
    return QtDocManager::askForConfirmRevert();
}

VfString WindowManager::selectDocumentSavePath(const char* directory, const char* name, const char* extension,
                                               const char* filter, Options& options)
{
    reach("DocManager::selectDocumentSavePath");
    return QtDocManager::selectDocumentSavePath(directory, name, extension, filter, options);
}

bool WindowManager::closeAllWithQuestions()
{
    reach("QtDocManager::closeAllWithQuestions");
    return QtDocManager::closeAllWithQuestions();
}

bool WindowManager::reload(vfApplication::Document& document)
{
    return vfLife::reach<vfApplication::Document>("QtDocManager::reload", &document, &document) &&
           QtDocManager::reload(document);
}

void WindowManager::reportFailure(const VfString& path, const VfString& reason)
{
    reach("QtDocManager::reportFailure");
    QtDocManager::reportFailure(path, reason);
}

void WindowManager::beginWork(const VfString& path)
{
    reach("QtDocManager::beginWork");
    QtDocManager::beginWork(path);
}

void WindowManager::endWork()
{
    QtDocManager::endWork();
    reach("QtDocManager::endWork");
}

// --- commands

const vfBase::ClassInfo AskingBody::s_classInfo("life", "Asking", "life::Asking", &CommandBody::s_classInfo,
                                                nullptr, sizeof(AskingBody),
                                                []() -> vfBase::VfObject* { return new AskingBody; });

AskingBody::AskingBody()
{
    getProperties()["prompt"] = VfVariant("Which?");
    getProperties()["promptKind"] = VfVariant("life");
}

// --- dock windows

bool Panel::applyDefaultState()
{
    reach("DockWindow::applyDefaultState");
    return false; // as the base class does; this window may be gone
}

QWidget* Panel::createContents(QWidget& parent)
{
    reach("QtDockWindowContents::createContents");
    return new Widget("the widget in a dock window", parent);
}

namespace {

struct PanelProducer
    : vfBase::RegistryObjectProducerInterface<vfApplication::DockWindow, const char*, vfBase::NilType>
{
    explicit PanelProducer(const char* id) : key(id) {}
    const char* getKey() override { return key; }
    vfApplication::DockWindow* create() override { return new Panel(key); }

    const char* key;
};

const char* announce(const char* id)
{
    const vfApplication::DockWindowRegistryPrivate::Proxy proxy(new PanelProducer(id));
    return id;
}

} // namespace

const char* announceTools()
{
    static const char id[] = "tools"; // keys are compared as pointers
    return announce(id);
}

const char* announcePanel()
{
    static const char id[] = "panel";
    return announce(id);
}

// --- options pages

const vfBase::ClassInfo Page::s_classInfo("life", "Page", "life::Page",
                                          &vfApplication::UiOptionsPage::s_classInfo, nullptr, sizeof(Page),
                                          []() -> vfBase::VfObject* { return new Page; });

Page::Page()
{
    reach("UiOptionsPage: constructor");
}

Page::~Page()
{
    Actor::instance().reach("~UiOptionsPage", nullptr, nullptr, false);
}

const char* Page::getGroupName()
{
    reach("UiOptionsPage::getGroupName");
    return "Life";
}

void Page::loadOptions()
{
    reach("UiOptionsPage::loadOptions");
}

void Page::saveOptions()
{
    reach("UiOptionsPage::saveOptions");
}

void Page::applyOptions()
{
    reach("UiOptionsPage::applyOptions");
}

QString Page::getTitle()
{
    reach("QtOptionsContents::getTitle");
    return QStringLiteral("page");
}

QWidget* Page::createWidget(QWidget& parent)
{
    reach("QtOptionsContents::createWidget");
    return new Widget("the widget of an options page", parent);
}

// --- declarations

void WindowUi::setupMenus(vfApplication::CommandItem* root)
{
    vfApplication::CommandItem file(root);
    file.setCommand("File", nullptr);
    for (const char* name : {"ActionNew", "ActionOpen", "ActionSave", "ActionSaveAs", "ActionRevert",
                             "ActionClose", "ActionCloseAll", "ActionOptions", "ActionExit"})
        file << ("vfApplicationQt::" + std::string(name)).c_str();
    vfApplication::CommandItem edit(root);
    edit.setCommand("Edit", nullptr);
    edit << "vfApplicationQt::ActionUndo"
         << "vfApplicationQt::ActionRedo"
         << "vfApplicationQt::ActionCommands"
         << "vfApplicationQt::ActionDocuments"
         << "vfApplicationQt::ActionDockWindows"
         << "life::Asking"
         << "life::Command";
    reach("UiSetup::setupMenus");
    vfApplication::CommandItem another(&edit);
    another.setCommand("life::Command", nullptr);
    another.setProperty("argument", VfVariant(++m_declared), nullptr);
}

void WindowUi::setupViewMenus(const char* viewName, vfApplication::CommandItem* root)
{
    if (std::string(viewName) != "life::Canvas")
        return;
    vfApplication::CommandItem view(root);
    view.setCommand("View", nullptr);
    reach("UiSetup::setupViewMenus");
    view << "vfApplicationQt::ActionNewView";
}

void WindowUi::setupToolbars(vfApplication::CommandItem* root)
{
    vfApplication::CommandItem bar(root);
    bar.setCommand("Standard", nullptr);
    reach("UiSetup::setupToolbars");
    bar << "life::Command"
        << "vfApplicationQt::ActionUndo";
}

void WindowSetup::onRegisterDocumentType() const
{
    auto* manager = new WindowManager;
    vfApplication::Application::instance(false)->setDocManager(manager);
    new Template(manager, "obj", "life::Document", "life::Canvas");
    new Template(manager, "txt", "life::OtherDocument", "life::Canvas");
}

} // namespace vfLife
