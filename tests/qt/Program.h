// SPDX-License-Identifier: MIT
#pragma once

#include "Sheet.h"
#include "support/RecordingShell.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationSetup.h>

#include <QApplication>
#include <QDialog>
#include <QMetaObject>
#include <QPointer>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

/// For failures that a person can read.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace vfApplication {
class MainWindow;
class QtDocManager;
} // namespace vfApplication

namespace vfTest {

/// A program with a window, and the input of a user.
///
///     Program program;
///     program.run([&] {
///         program.ui([&] { program.open(path); });
///         EXPECT_TRUE(program.waitFor([&] { return program.sheet()->reads == 1; }));
///     });
///
/// The script runs on a thread of its own and ends the program when it returns; what touches the program goes through
/// ui() or waitFor(). So it goes on while a dialog waits for an answer.
class Program
{
public:
    /// @param ui  what the application declares
    explicit Program(std::vector<std::string> arguments = {}, std::unique_ptr<SheetUi> ui = nullptr);
    /// A program of another kind. @param setup  read once, here
    Program(std::vector<std::string> arguments, const vfApplication::ApplicationSetup& setup);
    ~Program();

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Called when the shell is there, before the files of the command line are opened. To be set before run().
    std::function<void()> onInitialized;

    /// Whether what is not saved in the end is asked about, as it is in every program, or thrown away.
    bool asksAtTheEnd = false;

    /// @return the exit code
    int run(const std::function<void()>& script);

    /// Does something on the thread of the window, and waits for it.
    template <class Function>
    auto ui(Function function) -> decltype(function())
    {
        using Result = decltype(function());
        if constexpr (std::is_void_v<Result>) {
            QMetaObject::invokeMethod(qApp, function, Qt::BlockingQueuedConnection);
        } else {
            Result result{};
            QMetaObject::invokeMethod(
                qApp, [&] { result = function(); }, Qt::BlockingQueuedConnection);
            return result;
        }
    }

    /// Starts something on the thread of the window that may put questions, and does not wait for it.
    template <class Function>
    void start(Function function)
    {
        QMetaObject::invokeMethod(qApp, function, Qt::QueuedConnection);
    }

    /// Asks on the thread of the window until it is true. @return false when that takes more than a minute, which ends a
    /// test that would wait for ever; a slow machine needs less
    template <class Condition>
    bool waitFor(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!ui(condition)) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            pause(5);
        }
        return true;
    }

    /// Waits for a dialog of that name. @return false when it does not come
    bool waitForDialog(const char* name);

    /// Waits until no dialog waits for an answer.
    bool waitForNoDialog();

    /// Waits for the dialog and presses the button with that text, without regard to its mark.
    bool answer(const char* dialog, const char* button);

    /// Lets the window work for that long, and longer where it is slow: until it has got through what was in its queue
    /// every ten milliseconds of that time.
    static void pause(int milliseconds);

    // --- on the thread of the window

    vfApplication::MainWindow& window() const;
    vfApplication::QtDocManager& manager() const;
    Sheet* open(const std::string& path);

    /// @return the active document
    Sheet* sheet() const;

    /// @return the dialog that waits for an answer, null when there is none
    static QDialog* dialog();

    /// @return the action of that command, null when neither menu nor toolbar shows it
    QAction* action(const char* command) const;

    /// Runs a command as if it was chosen.
    bool invoke(const char* command, const char* argument = nullptr);

    vfApplication::Application& application() const { return *m_application; }
    SheetUi& declaration() const { return *m_ui; }

private:
    void finish();

    struct Setup;
    struct Callback;

    CommandLine m_line;
    std::unique_ptr<SheetUi> m_ui;
    std::unique_ptr<Callback> m_callback;
    std::unique_ptr<vfApplication::Application> m_application;
    std::function<void()> m_script;
    std::atomic<bool> m_isScriptDone{false};
};

} // namespace vfTest
