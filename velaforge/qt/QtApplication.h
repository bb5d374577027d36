// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>
#include <velaforge/qt/Export.h>

#include <functional>
#include <memory>
#include <vector>

namespace vfBase {
class ArgumentParser;
}

class QMainWindow;
class QObject;
class QWidget;

namespace vfApplication {

class Document;
class DocumentReloader;
class MainWindow;
class QtTitleBar;
class QtToolbar;
class QtView;
struct QtApplicationPrivate;

/// The shell of a program with a window.
///
/// Menus, toolbars and dock windows are those that the modules declare, documents are shown by their QtViews,
/// and a QtDocManager puts its questions here. The window appears when the event loop begins, as it stood
/// when it was closed; a splash screen shows before, if ApplicationInfo::getSplashImageName names a picture.
/// Everything belongs to the thread of Application::run. QtApplicationProducer makes the shell.
class VFAPPLICATIONQT_EXPORT QtApplication : public ApplicationInterface
{
public:
    /// Makes the QApplication of the process, which takes its own options off the command line.
    QtApplication(int& argc, char** argv);

    /// Does what end() does.
    ~QtApplication() override;

    QtApplication(const QtApplication&) = delete;
    QtApplication& operator=(const QtApplication&) = delete;

    /// @return the shell while it has a window; null before it is made and after end(). For a second
    ///         application it is null until the library calls the shell: in onBeforeRun, or before that for
    ///         its status bar or to exit
    static QtApplication* instance();

    /// Destroys the window and the QApplication, at the end of an application. The shell stays, since the
    /// library keeps a pointer to it: the next application begins with another window.
    void end();

    /// Tests, without opening a window, whether the display that the environment or the command line names
    /// answers. @p argc and @p argv are the command line.
    /// @return the reason why no window can be opened; empty if one can
    static vfBase::VfString displayError(int argc, char** argv);

    /// The exit status of run() if a command of the command line failed.
    static constexpr int requestFailed = 4;

    /// Adds "--invoke" and "--script" to the help: they run commands when the window shows, which stays open then.
    static void declareOptions(vfBase::ArgumentParser& parser);

    /// Takes these options from a command line. onBeforeRun() does so with that of the application; a program that wants to
    /// report mistakes first calls it before Application::run().
    static void readOptions(vfBase::ArgumentParser& parser);

    /// Has the main window prepared for QtViewport and other OpenGL widgets. Without it, Qt makes the window anew, which is
    /// seen, when the first of them is added. To be called before the shell is made.
    static void prepareOpenGL();

    int onBeforeRun() override;

    /// Shows the window and runs until it is closed or exit() is called.
    int runEventLoop() override;
    int onAfterRun() override;

    /// Ends the event loop, also while a dialog is open. It puts no question: documents with changes do when
    /// they close.
    void exit(int code) override;
    void shellExtensionA() override;

    /// @return a QtStatusBar
    StatusBar& getStatusBar() override;
    void shellExtensionB() override;
    void shellExtensionC() override;

    /// Watches a file: when another program changes it, the user is asked whether to read it again.
    void addFileToFileSystemWatcher(vfBase::VfString path) override;

    /// Stops watching the file unless another open document has it.
    void removeFileFromFileSystemWatcher(vfBase::VfString path) override;

    // --- beyond the contract

    /// Returns the main window.
    QMainWindow& getMainWindow() const;

    /// Returns the title bar.

    QtTitleBar& getTitleBar() const;

    /// @return the toolbars as they were declared
    const std::vector<std::unique_ptr<QtToolbar>>& getToolbars() const;

    /// Shows in menus and toolbars what commands say now. The shell does so by itself when a command was run,
    /// a menu opens, or the active document changes.
    void updateActions();

    /// Calls @p listener after a command was run, after another view or document became the active one, and
    /// after the undo history or the name of the active document changed. Stops when @p context is destroyed.
    void addListener(QObject& context, std::function<void()> listener);

    /// Makes menus and toolbars anew, after a module came or went. If a declaration throws, they stay as they
    /// are and the caller gets the exception. While they are being made, as in a declaration, it only has them
    /// made once more afterwards.
    void rebuildMenus();

    /// Runs a command as if it was chosen in a menu. Shows what it throws. @return false when that is known to
    /// have failed
    bool invokeCommand(const char* name, const vfBase::VfVariant& argument = vfBase::VfVariant());

    /// Shows a problem in a window that does not block; later problems are added to that window.
    /// @param subject  what the problem is about, such as a file
    /// @param reason   what happened
    void showProblem(const vfBase::VfString& subject, const vfBase::VfString& reason);

    /// Says which other files a document was read from. When one of them changes, the user is asked whether
    /// the document is to be read again, once for all that changes together. To be called each time it was
    /// read.
    void setOtherFiles(Document& document, const std::vector<vfBase::VfString>& paths);

    /// Shows what is going on, on the splash screen or in the status bar; empty when it is over.
    void showActivity(const vfBase::VfString& text);

    /// Has translations "<name>_<language>.qm" of the program looked for in that directory. Before the shell
    /// is made.
    static void addTranslations(const char* directory, const char* name);

    /// Asks the user for the argument of a command. @return false when the user gave up
    using Prompt = std::function<bool(QWidget& window, const Command::Properties& properties,
                                      vfBase::VfVariant& argument)>;

    /// Has commands with that "promptKind" asked for in a way of the program's own.
    static void setPrompt(const char* kind, const Prompt& prompt);

    /// @return the languages that there are translations for, such as "de", and "en"
    std::vector<vfBase::VfString> getLanguages() const;

    /// @return the language that is shown
    vfBase::VfString getLanguage() const;

    /// Shows every text in that language, now and in later runs; empty for that of the system.
    void setLanguage(const vfBase::VfString& language);

    /// For the parts of this library.
    MainWindow& getImp() const;

    /// For the parts of this library.
    DocumentReloader& getReloader() const;

private:
    void begin(int& argc, char** argv);
    QtApplicationPrivate& parts();
    void runRequestedCommands();

    /// Null after end().
    std::unique_ptr<QtApplicationPrivate> d;
};

} // namespace vfApplication
