// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <functional>

class QWidget;

namespace vfApplication {

/// What a dock window is, beside a DockWindow, when it brings its own contents to a window on the screen.
///
///     class Layers : public vfApplication::DockWindow, public vfApplication::QtDockWindowContents
///     {
///         QWidget* createContents(QWidget& parent) override { return new QListWidget(&parent); }
///         ...
///     };
///
/// A dock window that knows nothing of Qt gets its contents from who called setContents for its id.
class VFAPPLICATIONQT_EXPORT QtDockWindowContents
{
public:
    /// A function that makes the contents as a child of parent; null for none.
    using Create = std::function<QWidget*(QWidget& parent)>;

    virtual ~QtDockWindowContents();

    /// Called once, when the window is about to be seen for the first time.
    /// @return a new widget, a child of @p parent; null for none
    virtual QWidget* createContents(QWidget& parent) = 0;

    /// Has windows of that id made from here on filled by @p create, unless they bring their own contents.
    static void setContents(const char* id, Create create);

    /// @return what was set for that id; empty when nothing was
    static Create findContents(const char* id);
};

} // namespace vfApplication
