// SPDX-License-Identifier: MIT
#pragma once

#include "WindowHooks.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/modules/UiSetup.h>

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vfApplication {
class MainWindow;
}

namespace vfLife {

/// A hook, and what the user or the program does that reaches it.
struct Row
{
    std::string hook;
    std::string when; ///< empty where the hook alone tells
    std::function<void()> step;

    /// Qt calls the hook while it handles an event, and leaks what it holds when an exception passes through it.
    bool leaksWhenThrown = false;

    /// Returns the first cell of the row in the documentation.
    std::string name() const
    {
        const bool isCode = hook.find(" is ") == std::string::npos;
        return (isCode ? "`" + hook + "`" : hook) + (when.empty() ? "" : ", " + when);
    }
};

/// Rows about one subject, which begin alike: with one start of the program.
struct Group
{
    using Mode = vfApplication::UiSetup::DocumentInterfaceMode;

    std::string name;
    std::vector<Row> rows;
    Mode mode = vfApplication::UiSetup::TabbedDocuments;

    friend void PrintTo(const Group& group, std::ostream* out) { *out << group.name; }
};

/// Returns the rows in the order of the table.
const std::vector<Group>& groups();

/// Returns the actions of actions() and those that need a window.
const std::vector<std::pair<Action, std::string>>& windowActions();

/// Runs a program with a window, the documents a.obj and b.obj, which has a history, and the dock window
/// "tools". Calls
/// @p inEventLoop once all of it is shown, while the process has one thread, so that it may fork. The program
/// ends when endProgram() was called.
/// @param directory  gets the files, and becomes the current directory
void runWindow(Group::Mode mode, const vfTest::TemporaryDirectory& directory,
               const std::function<void()>& inEventLoop);

/// Ends the program, and discards changes.
void endProgram();

/// Does the step of a row @p nth times; the hook takes @p action the nth time that it is reached. Then does
/// what programs do, and ends the program. Called in the event loop of runWindow().
void play(const Row& row, Action action, int nth);

/// Returns what came of play(), once runWindow() has returned: "done", "refused" or "-"; for Action::Throw
/// "told" if the user was told, "passes" if the step got the exception, "caught" otherwise; "not reached"; or a
/// complaint that begins with "fault:".
std::string verdict();

// --- for the steps

WindowManager& manager();
vfApplication::MainWindow& window();

/// Does one thing that a program does. What it throws arrives here.
void attempt(const std::function<void()>& step);

/// Has events handled until there is nothing left to do.
void settle();

/// Returns the document of a path, opened if need be and made the active one; null if a hook prevents it.
Document* activate(const char* path);

} // namespace vfLife
