// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/LifeWatch.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vfLife {

/// What a program does in a hook.
enum class Action
{
    None,
    CloseThis,
    CloseAnother,
    Open,
    DeleteView,
    RemoveDockWindow,
    Submit,
    Undo,
    ClearHistory,
    AddModule,
    RemoveModule,
    Update,
    CloseAll,
    Throw,
    CloseWindow,  ///< with a toolkit side that has a window
    RebuildMenus, ///< likewise
};

/// @return the actions that need no window, with the heading of the column of each
const std::vector<std::pair<Action, std::string>>& actions();

/// What Action::Throw throws.
struct Thrown : std::runtime_error
{
    Thrown() : std::runtime_error("thrown by a hook") {}
};

/// Takes one action, the nth time that one hook is reached.
class Actor
{
public:
    static Actor& instance();

    void arm(const std::string& hook, Action action, int nth);

    /// Called by each hook. @param mayThrow  false in destructors
    void reach(const char* hook, vfApplication::Document* document, vfApplication::View* view,
               bool mayThrow = true);

    /// Takes the actions that need a window. @return what came of them
    std::function<std::string(Action)> actOnWindow;

    bool hasActed() const { return m_hasActed; }

    /// @return what came of the action: "done", "refused", or "-" where there was nothing to act on
    const std::string& outcome() const { return m_outcome; }

    /// Returns what an action that is "done" or refused came to.
    static std::string said(bool isDone);

private:
    std::string act(vfApplication::Document* document, vfApplication::View* view);

    std::string m_hook;
    Action m_action = Action::None;
    int m_countdown = 0;
    bool m_hasActed = false;
    std::string m_outcome;
};

/// Reaches a hook of an object that the action may delete.
/// @return whether the object still exists
template <class Watched>
bool reach(const char* hook, const Watched* self, vfApplication::Document* document,
           vfApplication::View* view = nullptr)
{
    const vfBase::LifeWatch<Watched> watch(self);
    Actor::instance().reach(hook, document, view);
    return !watch.isGone();
}

} // namespace vfLife
