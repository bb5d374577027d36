// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/MainWindow.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/Document.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/QtView.h>
#include <velaforge/qt/internal/Docks.h>
#include <velaforge/qt/internal/DocumentArea.h>
#include <velaforge/qt/internal/Languages.h>
#include <velaforge/qt/internal/ProblemsDialog.h>
#include <velaforge/qt/internal/Reasons.h>
#include <velaforge/qt/internal/RecentFilesMenu.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/ViewFrame.h>
#include <velaforge/toolkit/Declarations.h>
#include <velaforge/toolkit/ModifiedDocuments.h>

#include <QActionGroup>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QOpenGLWidget>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

#include <algorithm>
#include <tuple>
#include <utility>

namespace vfApplication {

namespace {

bool isForOpenGL = false;

DocManager& documents()
{
    return Application::instance(false)->getDocManager();
}

/// How the application wants its views arranged, and decorated; as UiSetup has it where nothing is declared.
struct Arrangement
{
    UiSetup::DocumentInterfaceMode mode = UiSetup::TabbedDocuments;
    bool hasViewButtons = true;
    bool hasLogo = true;

    Arrangement()
    {
        UiSetup* setup = applicationSetup();
        if (!setup)
            return;
        mode = setup->getDocumentIntefaceMode();
        hasViewButtons = setup->showViewTitleButtons();
        hasLogo = setup->showTitleBarLogo();
    }
};

} // namespace

void MainWindow::prepareOpenGL()
{
    isForOpenGL = true;
}

bool MainWindow::State::operator==(const State& other) const
{
    const auto all = [](const State& state) {
        return std::tie(state.view, state.document, state.command, state.documents, state.name,
                        state.isModified, state.canUndo, state.canRedo);
    };
    return all(*this) == all(other);
}

MainWindow::MainWindow()
    : m_actions(*this),
      m_builder(m_actions),
      m_statusBar(*statusBar()),
      m_titleBar(*this, Arrangement().hasLogo)
{
    const Arrangement arrangement;
    setObjectName(QStringLiteral("mainWindow"));
    // Qt looks for such a widget, be it hidden, when it chooses the kind of the native window.
    if (isForOpenGL)
        (new QOpenGLWidget(this))->hide();
    setAcceptDrops(true);
    resize(QSize(1200, 800).boundedTo(screen()->availableSize() * 9 / 10));
    m_area = DocumentArea::make(arrangement.mode, *this, arrangement.hasViewButtons);
    m_docks = new Docks(*this);
    m_recentFiles = new RecentFilesMenu(
        std::make_unique<FileExistence>(),
        [this](const vfBase::VfString& path) {
            m_actions.run("vfApplicationQt::ActionOpenRecent", vfBase::VfVariant(path));
        },
        this);
    setLists();
    connect(m_area, &DocumentArea::activated, this,
            [this](ViewFrame* frame) { showThrown([&] { onFrameActivated(frame); }); });
    connect(m_area, &DocumentArea::closeRequested, this, [this](ViewFrame* frame) {
        if (hasView(frame))
            showThrown([&] { closeFrame(*frame); });
    });
    connect(m_area, &DocumentArea::windowMade, this, [this](QMainWindow* window, ViewFrame* frame) {
        m_actions.addWindow(*window);
        showThrown([&] {
            m_builder.addMenus(*window->menuBar(), declaredViewMenus(frame->view().getViewName().str()));
        });
    });
    connect(&m_actions, &ActionTable::commandRun, this, [this] {
        showThrown([this] {
            refresh();
            m_actions.refresh();
            Q_EMIT stateChanged();
        });
    });
    connect(&m_actions, &ActionTable::failed, this, [this](const QString& command, const QString& reason) {
        m_statusBar.updateStatus(StatusBarMessage, QStringLiteral("%1: %2").arg(command, reason).toUtf8(),
                                 10000);
    });
}

MainWindow::~MainWindow()
{
    // Signals of parts that are destroyed must not reach a window that is half destroyed.
    disconnect(m_area, nullptr, this, nullptr);
    delete m_docks;
}

void MainWindow::setLists()
{
    m_builder.setList("vfApplicationQt::ActionOpenRecent",
                      [this](QMenu& menu) { showThrown([&] { m_recentFiles->fill(menu); }); });
    m_builder.setList("vfApplicationQt::ActionDockWindows",
                      [this](QMenu& menu) { showThrown([&] { m_docks->fillMenu(menu); }); });
    m_builder.setList("vfApplicationQt::ActionToolbars", [this](QMenu& menu) {
        for (const auto& toolbar : m_toolbars)
            menu.addAction(toolbar->getWidget().toggleViewAction());
    });
    m_builder.setList("vfApplicationQt::ActionDocuments", [this](QMenu& menu) { fillDocuments(menu); });
    m_builder.setList("vfApplicationQt::ActionLanguage", [this](QMenu& menu) { fillLanguages(menu); });
}

void MainWindow::build()
{
    makeToolbars(declaredToolbars());
    rebuildMenus();
    m_docks->restore();
    m_actions.applyKeys();
    showPlaceholder();
    m_isBuilt = true;
}

void MainWindow::present()
{
    show();
    m_docks->showFloating();
    m_area->onWindowShown();
    if (ViewFrame* frame = activeFrame())
        frame->setFocus();
    if (m_problems) {
        m_problems->present();
        m_problems->activateWindow();
    }
}

void MainWindow::showPlaceholder()
{
    m_area->setPlaceholder(tr("Drop a file here, or open one with %1")
                               .arg(QKeySequence(QKeySequence::Open).toString(QKeySequence::NativeText)));
}

void MainWindow::makeToolbars(const CommandItem& declared)
{
    for (const CommandItem& item : declared.getList()) {
        auto* bar = new QToolBar(this);
        // What Qt keeps of where a toolbar stood, it keeps by this name.
        bar->setObjectName(QStringLiteral("toolbar:") + toQt(vfBase::VfString(item.getCommand())));
        addToolBar(bar);
        m_builder.fillToolbar(*bar, item);
        m_toolbars.push_back(std::make_unique<QtToolbar>(*bar, item));
    }
}

void MainWindow::rebuildMenus()
{
    m_mustMakeMenus = true;
    if (m_isMakingMenus)
        return;
    {
        const QScopedValueRollback<bool> making(m_isMakingMenus, true);
        m_mustMakeMenus = false;
        makeMenus();
    }
    // Not at once: a command that asks for it each time must not keep the program from its other events.
    if (m_mustMakeMenus)
        QMetaObject::invokeMethod(this, &MainWindow::rebuildMenus, Qt::QueuedConnection);
}

void MainWindow::makeMenus()
{
    // First what may throw.
    const CommandItem menus = declaredMenus();
    const CommandItem viewMenus = m_viewMenus.empty() ? CommandItem() : declaredViewMenus(m_viewMenus);
    const CommandItem declared = m_isBuilt ? declaredToolbars() : CommandItem();
    const auto shown = menuBar()->actions();
    menuBar()->clear();
    for (const QAction* action : shown) {
        if (action->menu())
            action->menu()->deleteLater();
    }
    if (m_isBuilt) {
        const QByteArray places = saveState();
        for (const auto& toolbar : m_toolbars) {
            removeToolBar(&toolbar->getWidget());
            toolbar->getWidget().setObjectName(QString());
            toolbar->getWidget().deleteLater(); // it may be its own button that led here
        }
        m_toolbars.clear();
        makeToolbars(declared);
        restoreState(places);
    }
    m_actions.refresh(); // menus that are filled when they open are called as their commands
    m_builder.addMenus(*menuBar(), menus);
    m_builder.addMenus(*menuBar(), viewMenus);
    m_actions.applyKeys();
    m_actions.refresh();
}

void MainWindow::addFrame(ViewFrame& frame)
{
    // The document is not complete: it is for the manager to say when the view is the current one.
    const QScopedValueRollback<bool> adding(m_isMovingFrames, true);
    m_frames.push_back(&frame);
    m_area->add(frame);
    if (hasView(&frame)) // a callback may have closed it when it was shown
        frame.setFocus();
}

void MainWindow::removeFrame(ViewFrame& frame)
{
    const QScopedValueRollback<bool> removing(m_isMovingFrames, true);
    m_frames.erase(std::remove(m_frames.begin(), m_frames.end(), &frame), m_frames.end());
    m_area->remove(frame);
    m_isFrontNew = true;
}

bool MainWindow::hasView(const ViewFrame* frame) const
{
    return std::find(m_frames.begin(), m_frames.end(), frame) != m_frames.end();
}

ViewFrame* MainWindow::activeFrame() const
{
    ViewFrame* frame = m_area->active();
    return hasView(frame) ? frame : nullptr;
}

void MainWindow::activateFront()
{
    if (std::exchange(m_isFrontNew, false))
        showThrown([this] { onFrameActivated(m_area->active()); });
}

void MainWindow::activateFrame(ViewFrame& frame)
{
    if (m_area->active() != &frame)
        m_area->activate(frame);
    if (!hasView(&frame))
        return; // its widget had it closed when it was shown
    const std::string name = frame.view().getViewName().str();
    if (name == m_viewMenus)
        return;
    m_viewMenus = name;
    if (m_isBuilt && declaredViewMenus(name).getNumItems() > 0)
        rebuildMenus();
}

void MainWindow::onFrameActivated(ViewFrame* frame)
{
    if (hasView(frame) && !m_isMovingFrames && documents().getCurrentView() != &frame->view())
        frame->view().activate(true);
}

void MainWindow::showNames(const Document& document)
{
    const QString name = toQt(document.getUserReadableName());
    // The names of documents without a file are no absolute paths.
    const QString file = toQt(document.getFilename());
    const QString path = QDir::isAbsolutePath(file) ? file : QString();
    int number = 0;
    for (ViewFrame* frame : m_frames) {
        if (frame->view().getDocument() != &document)
            continue;
        ++number;
        m_area->setTitle(*frame, number == 1 ? name : QStringLiteral("%1:%2").arg(name).arg(number), path,
                         document.isModified());
    }
    m_titleBar.titleBarOperationA();
}

void MainWindow::closeFrame(ViewFrame& frame)
{
    Document* document = frame.view().getDocument();
    if (document->getViewList().size() > 1) {
        const vfBase::LifeWatch<Document> watch(document);
        View::destroy(&frame.view());
        if (!watch.isGone())
            showNames(*document);
    } else if (auto* asking = dynamic_cast<QtDocManager*>(&documents())) {
        asking->closeWithQuestion(*document);
    } else {
        Application::instance(false)->closeDocument(document);
    }
}

void MainWindow::showProblem(const QString& subject, const QString& reason)
{
    if (!m_problems)
        m_problems = new ProblemsDialog(this);
    m_problems->add(subject, reason);
}

void MainWindow::popUp(const std::string& command)
{
    QMenu menu(this);
    m_builder.fillList(menu, command);
    menu.exec(mapToGlobal(rect().center()));
}

void MainWindow::fillDocuments(QMenu& menu)
{
    if (auto* mode = applicationSetup(); mode && mode->getDocumentIntefaceMode() == UiSetup::SubWindows) {
        connect(menu.addAction(tr("&Tile")), &QAction::triggered, m_area, &DocumentArea::tile);
        connect(menu.addAction(tr("&Cascade")), &QAction::triggered, m_area, &DocumentArea::cascade);
        menu.addSeparator();
    }
    const View* current = documents().getCurrentView();
    for (ViewFrame* frame : m_frames) {
        QString name = toQt(frame->view().getDocument()->getUserReadableName());
        QAction* action = menu.addAction(name.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setCheckable(true);
        action->setChecked(&frame->view() == current);
        connect(action, &QAction::triggered, frame, [this, frame] {
            if (hasView(frame))
                showThrown([&] { frame->view().activate(true); });
        });
    }
    if (m_frames.empty())
        menu.addAction(tr("No documents"))->setEnabled(false);
}

void MainWindow::fillLanguages(QMenu& menu)
{
    QtApplication& shell = *QtApplication::instance();
    auto* group = new QActionGroup(&menu);
    for (const vfBase::VfString& language : shell.getLanguages()) {
        QAction* action = menu.addAction(languageName(toQt(language)));
        action->setCheckable(true);
        action->setChecked(language == shell.getLanguage());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [&shell, language] { shell.setLanguage(language); });
    }
}

void MainWindow::refreshGuarded()
{
    // The event loop calls this between two events, where QApplication::notify catches nothing.
    try {
        refresh();
    } catch (...) {
        const QString reason = currentReason();
        if (std::exchange(m_lastReason, reason) != reason)
            showProblem(QString(), reason);
    }
}

void MainWindow::refresh()
{
    const Application* application = Application::instance(false);
    if (!m_isBuilt || !application)
        return;
    activateFront(); // where the manager is none that does so
    m_docks->update();
    followHistories(documents());
    State now;
    now.view = documents().getCurrentView();
    now.documents = documents().getNumDocuments();
    if (const Document* document = application->getActiveDocument()) {
        const vfBase::LifeWatch<Document> watch(document);
        CommandProcessor* history = document->getCommandProcessor();
        now.document = document;
        now.name = document->getUserReadableName().str();
        now.isModified = document->isModified();
        now.command = history ? history->getCurrentCommand().getImp() : nullptr;
        now.canUndo = history && history->canUndo();
        now.canRedo = history && !watch.isGone() && history->canRedo();
        if (watch.isGone())
            return refresh();
    }
    if (now == m_state)
        return;
    m_state = now;
    m_titleBar.titleBarOperationA();
    m_actions.refresh();
    for (ViewFrame* frame : m_frames)
        frame->updateSlider();
    Q_EMIT stateChanged();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bool isClosed = false;
    showThrown([&] {
        // As it stands while everything is open.
        m_docks->save();
        auto* asking = dynamic_cast<QtDocManager*>(&documents());
        isClosed = asking ? asking->closeAllWithQuestions() : documents().closeDocuments(false);
    });
    event->setAccepted(isClosed);
    if (isClosed)
        QtApplication::instance()->exit(0);
}

QMenu* MainWindow::createPopupMenu()
{
    auto* menu = new QMenu(this);
    showThrown([&] { m_docks->fillMenu(*menu); });
    menu->addSeparator();
    for (const auto& toolbar : m_toolbars)
        menu->addAction(toolbar->getWidget().toggleViewAction());
    return menu;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Who dragged them waits until this returns; opening may take long and may ask.
    const QList<QUrl> urls = event->mimeData()->urls();
    QMetaObject::invokeMethod(
        this,
        [this, urls] {
            for (const QUrl& url : urls) {
                if (url.isLocalFile())
                    m_actions.run("vfApplicationQt::ActionOpen",
                                  vfBase::VfVariant(fromQt(url.toLocalFile())));
                else
                    showProblem(url.toDisplayString(), tr("Only files on this machine can be opened."));
            }
        },
        Qt::QueuedConnection);
}

void MainWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_isBuilt) {
        showThrown([this] { rebuildMenus(); });
        showThrown([this] { retranslate(); });
    }
    QMainWindow::changeEvent(event);
}

void MainWindow::retranslate()
{
    for (const auto& toolbar : m_toolbars)
        toolbar->toolbarOperationD();
    showPlaceholder();
    m_area->retranslate();
    Application* application = Application::instance(false);
    application->getDockWindowManager().onLanguageChange();
    for (QtDockWindow* half : Docks::halves())
        half->onLanguageChange();
    for (auto it = ModuleRegistry::instance(false)->getActiveModuleMap(); it.hasNext();)
        it.next().value->onLanguageChange();
}

} // namespace vfApplication
