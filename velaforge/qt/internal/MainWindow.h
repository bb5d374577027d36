// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>
#include <velaforge/qt/QtStatusBar.h>
#include <velaforge/qt/QtTitleBar.h>
#include <velaforge/qt/QtToolbar.h>
#include <velaforge/qt/internal/ActionTable.h>
#include <velaforge/qt/internal/MenuBuilder.h>

#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

namespace vfApplication {

class Docks;
class Document;
class DocumentArea;
class ProblemsDialog;
class QtView;
class RecentFilesMenu;
class ViewFrame;

/// The window: menus, toolbars, dock windows, views, and what happens to it as a window.
class VFAPPLICATIONQT_EXPORT MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// Has main windows that are made from now on prepared for OpenGL.
    static void prepareOpenGL();

    /// Makes menus and toolbars, and puts everything where it stood. Once, before the window is shown.
    void build();

    /// Shows the window, then what belongs in front of it: dock windows that float, windows of views, problems of the start.
    void present();

    /// Makes menus and toolbars anew. If a command or a declaration has this called while they are being made,
    /// they are made once more afterwards. If a declaration throws, they stay as they are.
    void rebuildMenus();

    ActionTable& actionTable() { return m_actions; }
    Docks& docks() { return *m_docks; }
    DocumentArea& documentArea() { return *m_area; }
    RecentFilesMenu& recentFiles() { return *m_recentFiles; }
    QtStatusBar& shellStatusBar() { return m_statusBar; }
    QtTitleBar& titleBar() { return m_titleBar; }
    const std::vector<std::unique_ptr<QtToolbar>>& toolbars() const { return m_toolbars; }

    void addFrame(ViewFrame& frame);

    /// Takes a frame off the screen. Calls nothing of the program's: activateFront() does, once the view is gone.
    void removeFrame(ViewFrame& frame);

    /// Returns the frame at the front whose view exists; null if there is none.
    ViewFrame* activeFrame() const;

    /// Makes the view at the front the current one, after a frame was removed. Shows what that throws.
    void activateFront();
    void activateFrame(ViewFrame& frame);

    /// Shows name and state of a document in the titles of all its views, and in the window's if it is the
    /// active one.
    void showNames(const Document& document);

    /// Closes what the frame shows: the view, or with the last the document.
    void closeFrame(ViewFrame& frame);

    void showProblem(const QString& subject, const QString& reason);

    /// Opens the menu that a command stands for in the middle of the window.
    void popUp(const std::string& command);

    /// Looks whether anything changed that menus, titles and panels show.
    void refresh();

    /// The same, and shows what the program throws meanwhile; one reason once.
    void refreshGuarded();

    /// How documents were when that was looked at last.
    struct State
    {
        const void* view = nullptr;
        const void* document = nullptr;
        const void* command = nullptr;
        int documents = 0;
        std::string name; ///< of the document
        bool isModified = false;
        bool canUndo = false;
        bool canRedo = false;

        bool operator==(const State& other) const;
    };

Q_SIGNALS:
    /// What menus and panels show may have changed.
    void stateChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QMenu* createPopupMenu() override;

private:
    void retranslate();
    void setLists();
    void makeToolbars(const CommandItem& declared);
    void makeMenus();

    /// Returns whether the view of a frame exists: a frame outlives it by a moment.
    bool hasView(const ViewFrame* frame) const;
    void showPlaceholder();
    void onFrameActivated(ViewFrame* frame);
    void fillDocuments(QMenu& menu);
    void fillLanguages(QMenu& menu);

    ActionTable m_actions;
    MenuBuilder m_builder;
    QtStatusBar m_statusBar;
    QtTitleBar m_titleBar;
    std::vector<std::unique_ptr<QtToolbar>> m_toolbars;
    std::vector<ViewFrame*> m_frames;
    DocumentArea* m_area;
    Docks* m_docks;
    RecentFilesMenu* m_recentFiles;
    ProblemsDialog* m_problems = nullptr;
    std::string m_viewMenus; ///< the name of the views whose menus are shown
    State m_state;
    QString m_lastReason; ///< of refreshGuarded
    bool m_isBuilt = false;
    bool m_isMovingFrames = false;
    bool m_isFrontNew = false; ///< a frame was removed, and the one at the front has not been told
    bool m_isMakingMenus = false;
    bool m_mustMakeMenus = false; ///< once those are made that are being made
};

} // namespace vfApplication
