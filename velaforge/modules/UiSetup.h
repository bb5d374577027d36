// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/StringList.h>

namespace vfApplication {

class CommandItem;
class UiSetupPrivate;

/// Declares the user interface of an application or a module, without a widget.
///
///     class Setup : public vfApplication::MinimalUiSetup
///     {
///     public:
///         void setupMenus(vfApplication::CommandItem* root) override;  // MinimalUiSetup's "&File", and more
///     };
///
/// The toolkit side calls these operations and builds menus, toolbars and decorations; this library calls
/// none of them. Handle and body own each other and either may be destroyed first: releasing the last
/// reference on the body deletes the handle. Modules share the body.
class VFAPPLICATION_EXPORT UiSetup
{
public:
    /// How open documents are arranged.
    enum DocumentInterfaceMode : int
    {
        TabbedDocuments = 0, ///< one at a time, each with a tab
        SubWindows = 1,      ///< windows inside the main window
        SeparateWindows = 2  ///< each in a top-level window
    };

    /// Makes a declaration with a body of its own.
    UiSetup();
    UiSetup(const UiSetup&) = delete;
    UiSetup& operator=(const UiSetup&) = delete;

    // In the order of their slots, which is part of the binary interface.
    virtual ~UiSetup();

    /// Returns how open documents are arranged; TabbedDocuments here.
    virtual DocumentInterfaceMode getDocumentIntefaceMode();

    /// Returns the names of the kinds of document and view that the user interface offers; an empty list
    /// here.
    virtual vfBase::StringList getDocumentViewTemplates() const;

    /// Appends the menus of the main window to the children of @p root.
    virtual void setupMenus(CommandItem* root) = 0;

    /// Appends the menus of the views named @p viewName, which must not be null, to the children of @p root.
    virtual void setupViewMenus(const char* viewName, CommandItem* root) = 0;

    /// Returns whether the title of a view has buttons; true here.
    virtual bool showViewTitleButtons() const;

    /// Returns whether a view shows the application's logo; false here.
    virtual bool showViewLogo() const;

    /// Returns whether a view has a slider that switches between the open documents; false here.
    virtual bool showViewDocumentSlider() const;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraA() = 0;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraB() = 0;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraC() = 0;

    /// Appends the toolbars of the main window to the children of @p root.
    virtual void setupToolbars(CommandItem* root) = 0;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraD() = 0;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraE() = 0;

    /// Returns whether the title bar shows the application's logo; true here.
    virtual bool showTitleBarLogo() const;

    /// Returns whether the main window has a tree view of the scene graph; true here.
    virtual bool showSceneGraphTreeView() const;

    /// A declaration whose meaning the toolkit side defines. This library does not call it.
    virtual void declareExtraF() = 0;

    /// Returns the body, which modules share.
    UiSetupPrivate* getUiSetupPrivate() const { return d; }

protected:
    /// Makes a handle on @p body, which may be null. Does not change the body's owner.
    explicit UiSetup(UiSetupPrivate* body);

private:
    friend class UiSetupPrivate;

    UiSetupPrivate* d;
};

} // namespace vfApplication
