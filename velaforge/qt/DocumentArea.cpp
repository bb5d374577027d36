// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/DocumentArea.h>

#include <velaforge/qt/PlainText.h>
#include <velaforge/qt/internal/DocumentTabs.h>
#include <velaforge/qt/internal/Text.h>
#include <velaforge/qt/internal/ViewFrame.h>

#include <QCloseEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStackedWidget>

#include <deque>
#include <functional>
#include <map>
#include <utility>

namespace vfApplication {

namespace {

QLabel* makePlaceholder(QWidget& parent)
{
    auto* label = new QLabel(&parent);
    label->setObjectName(QStringLiteral("placeholder"));
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

/// One view at a time, each behind a tab.
class TabArea : public DocumentArea
{
public:
    TabArea(QMainWindow& window, bool hasButtons) : DocumentArea(window)
    {
        m_stack = new QStackedWidget(&window);
        m_placeholder = makePlaceholder(*m_stack);
        m_tabs = new DocumentTabs(m_stack);
        m_tabs->setObjectName(QStringLiteral("documents"));
        m_tabs->setTabsClosable(hasButtons);
        m_stack->addWidget(m_placeholder);
        m_stack->addWidget(m_tabs);
        window.setCentralWidget(m_stack);
        m_pages = m_tabs->findChild<QStackedWidget*>(QString(), Qt::FindDirectChildrenOnly);
        connect(m_pages, &QStackedWidget::widgetRemoved, this, &TabArea::showPlaceholderWithoutTabs);
        connect(m_tabs, &QTabWidget::currentChanged, this, [this] { Q_EMIT activated(active()); });
        connect(m_tabs, &QTabWidget::tabCloseRequested, this,
                [this](int index) { Q_EMIT closeRequested(static_cast<ViewFrame*>(m_tabs->widget(index))); });
    }

    void add(ViewFrame& frame) override
    {
        change(frame, [this](ViewFrame& added) {
            m_stack->setCurrentWidget(m_tabs);
            m_tabs->setCurrentIndex(m_tabs->addTab(&added, QString()));
        });
    }

    void remove(ViewFrame& frame) override
    {
        change(frame, [this](ViewFrame& removed) {
            const int index = m_tabs->indexOf(&removed);
            if (index >= 0)
                m_tabs->removeTab(index);
            removed.setParent(nullptr);
        });
    }

    void activate(ViewFrame& frame) override
    {
        change(frame, [this](ViewFrame& activated) { m_tabs->setCurrentWidget(&activated); });
    }

    ViewFrame* active() const override { return static_cast<ViewFrame*>(m_tabs->currentWidget()); }

    void setTitle(ViewFrame& frame, const QString& title, const QString& toolTip, bool isModified) override
    {
        change(frame, [this, title, toolTip, isModified](ViewFrame& named) {
            m_tabs->setTitle(named, title, toolTip, isModified);
        });
    }

    void retranslate() override
    {
        if (!m_tabs->tabsClosable())
            return;
        // The buttons get their tool tip when they are made.
        m_tabs->setTabsClosable(false);
        m_tabs->setTabsClosable(true);
    }

    void setPlaceholder(const QString& text) override { m_placeholder->setText(text); }

private:
    using Change = std::function<void(ViewFrame&)>;

    /// Changes the tabs; later if that is not possible now. Qt hides, shows and removes pages in steps, between which
    /// the program hears of it, and goes on with numbers of pages that another change would make wrong.
    void change(ViewFrame& frame, const Change& what)
    {
        m_changes.emplace_back(&frame, what);
        makeChanges();
    }

    void makeChanges()
    {
        while (!m_isChanging && !isSwitching() && !m_changes.empty()) {
            const QScopedValueRollback<bool> changing(m_isChanging, true);
            const auto [frame, what] = m_changes.front();
            m_changes.pop_front();
            if (frame)
                what(*frame);
        }
        if (!m_isChanging && !m_changes.empty())
            QMetaObject::invokeMethod(this, &TabArea::makeChanges, Qt::QueuedConnection);
    }

    /// Returns whether the user has chosen a tab whose page does not show yet.
    bool isSwitching() const { return m_pages->currentIndex() != m_tabs->tabBar()->currentIndex(); }

    void showPlaceholderWithoutTabs()
    {
        if (m_tabs->count() == 0)
            m_stack->setCurrentWidget(m_placeholder);
    }

    QStackedWidget* m_stack;
    QLabel* m_placeholder;
    DocumentTabs* m_tabs;
    QStackedWidget* m_pages; ///< within m_tabs
    std::deque<std::pair<QPointer<ViewFrame>, Change>> m_changes;
    bool m_isChanging = false;
};

/// Asks before it closes.
class SubWindow : public QMdiSubWindow
{
public:
    SubWindow(DocumentArea& area, ViewFrame& frame) : m_area(area), m_frame(frame) { setWidget(&frame); }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        Q_EMIT m_area.closeRequested(&m_frame);
    }

private:
    DocumentArea& m_area;
    ViewFrame& m_frame;
};

/// Windows within the main window.
class SubWindowArea : public DocumentArea
{
public:
    SubWindowArea(QMainWindow& window, bool hasButtons) : DocumentArea(window), m_hasButtons(hasButtons)
    {
        m_mdi = new QMdiArea(&window);
        m_mdi->setObjectName(QStringLiteral("documents"));
        m_mdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_mdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        window.setCentralWidget(m_mdi);
        connect(m_mdi, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* sub) {
            // Another program coming to the front leaves the sub-windows as they are.
            if (sub || m_mdi->subWindowList().isEmpty())
                Q_EMIT activated(active());
        });
    }

    void add(ViewFrame& frame) override
    {
        auto* sub = new SubWindow(*this, frame);
        Qt::WindowFlags flags = Qt::SubWindow;
        if (!m_hasButtons)
            flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
        m_mdi->addSubWindow(sub, flags);
        sub->resize(m_mdi->size() * 2 / 3);
        sub->show();
        m_mdi->setActiveSubWindow(sub);
    }

    void remove(ViewFrame& frame) override
    {
        QMdiSubWindow* sub = subWindow(frame);
        if (!sub)
            return;
        sub->setWidget(nullptr);
        frame.setParent(nullptr);
        m_mdi->removeSubWindow(sub);
        sub->deleteLater();
        if (QMdiSubWindow* next = m_mdi->currentSubWindow())
            m_mdi->setActiveSubWindow(next);
        Q_EMIT activated(active());
    }

    void activate(ViewFrame& frame) override { m_mdi->setActiveSubWindow(subWindow(frame)); }

    ViewFrame* active() const override
    {
        const QMdiSubWindow* sub = m_mdi->currentSubWindow();
        return sub ? static_cast<ViewFrame*>(sub->widget()) : nullptr;
    }

    void setTitle(ViewFrame& frame, const QString& title, const QString& toolTip, bool isModified) override
    {
        QMdiSubWindow* sub = subWindow(frame);
        QString marked = title;
        marked.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
        sub->setWindowTitle(marked + QLatin1String("[*]"));
        sub->setWindowModified(isModified);
        sub->setToolTip(plainToolTip(toolTip));
    }

    /// Only now is there a place to share.
    void onWindowShown() override
    {
        QMdiSubWindow* current = m_mdi->currentSubWindow();
        m_mdi->cascadeSubWindows();
        for (QMdiSubWindow* sub : m_mdi->subWindowList())
            sub->resize(m_mdi->size() * 2 / 3);
        if (current)
            m_mdi->setActiveSubWindow(current);
    }

    void tile() override { m_mdi->tileSubWindows(); }
    void cascade() override { m_mdi->cascadeSubWindows(); }
    void setPlaceholder(const QString&) override {}

private:
    QMdiSubWindow* subWindow(const ViewFrame& frame) const
    {
        for (QMdiSubWindow* sub : m_mdi->subWindowList()) {
            if (sub->widget() == &frame)
                return sub;
        }
        return nullptr;
    }

    QMdiArea* m_mdi;
    bool m_hasButtons;
};

/// A window of a view's own.
class ViewWindow : public QMainWindow
{
public:
    /// @param toldActive  what to do when the user turns to the window
    ViewWindow(DocumentArea& area, ViewFrame& frame, std::function<void()> toldActive)
        : m_area(area), m_frame(frame), m_toldActive(std::move(toldActive))
    {
        setCentralWidget(&frame);
        resize(800, 600);
    }

    /// The view is gone; the window follows as soon as its events are through.
    void forgetView() { m_hasView = false; }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        if (m_hasView)
            Q_EMIT m_area.closeRequested(&m_frame);
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::WindowActivate && m_hasView)
            m_toldActive();
        return QMainWindow::event(event);
    }

private:
    DocumentArea& m_area;
    ViewFrame& m_frame;
    std::function<void()> m_toldActive;
    bool m_hasView = true;
};

/// Windows of their own.
class WindowArea : public DocumentArea
{
public:
    explicit WindowArea(QMainWindow& window) : DocumentArea(window)
    {
        m_placeholder = makePlaceholder(window);
        window.setCentralWidget(m_placeholder);
    }

    void add(ViewFrame& frame) override
    {
        auto* window = new ViewWindow(*this, frame, [this, active = &frame] {
            // Before anybody is told, who would bring it to the front once more.
            m_active = active;
            Q_EMIT activated(active);
        });
        m_windows[&frame] = window;
        m_active = &frame;
        Q_EMIT windowMade(window, &frame);
        window->show();
        Q_EMIT activated(&frame);
    }

    void remove(ViewFrame& frame) override
    {
        const auto found = m_windows.find(&frame);
        if (found == m_windows.end())
            return;
        ViewWindow* window = found->second;
        m_windows.erase(found);
        window->forgetView();
        frame.setParent(nullptr);
        window->hide();
        window->deleteLater();
        if (m_active == &frame)
            m_active = m_windows.empty() ? nullptr : m_windows.begin()->first;
        Q_EMIT activated(m_active);
    }

    void activate(ViewFrame& frame) override
    {
        m_active = &frame;
        QMainWindow* window = m_windows.at(&frame);
        window->raise();
        window->activateWindow();
    }

    void onWindowShown() override
    {
        for (const auto& [frame, window] : m_windows)
            window->raise();
        if (m_active)
            activate(*m_active);
    }

    ViewFrame* active() const override { return m_active; }

    void setTitle(ViewFrame& frame, const QString& title, const QString& toolTip, bool isModified) override
    {
        QMainWindow* window = m_windows.at(&frame);
        QString marked = title;
        marked.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
        window->setWindowTitle(marked + QLatin1String("[*]"));
        window->setWindowModified(isModified);
        window->setWindowFilePath(toolTip);
    }

    void setPlaceholder(const QString& text) override { m_placeholder->setText(text); }

private:
    QLabel* m_placeholder;
    std::map<ViewFrame*, ViewWindow*> m_windows;
    ViewFrame* m_active = nullptr;
};

} // namespace

DocumentArea::DocumentArea(QMainWindow& window) : QObject(&window) {}

DocumentArea* DocumentArea::make(UiSetup::DocumentInterfaceMode mode, QMainWindow& window, bool hasButtons)
{
    switch (mode) {
    case UiSetup::SubWindows:
        return new SubWindowArea(window, hasButtons);
    case UiSetup::SeparateWindows:
        return new WindowArea(window);
    default:
        return new TabArea(window, hasButtons);
    }
}

} // namespace vfApplication
