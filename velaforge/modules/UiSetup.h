// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/StringList.h>

namespace vfApplication {

class CommandItem;
class UiSetupPrivate;

/// What an application or a module declares of its user interface, without a widget.
///
///     class Setup : public vfApplication::MinimalUiSetup
///     {
///     public:
///         void setupMenus(vfApplication::CommandItem* root) override;  // MinimalUiSetup's "&File", and more
///     };
///
/// The toolkit side asks for the declarations and builds the real thing; this library calls none of them.
/// Handle and body own each other and either may be destroyed first; modules share the body. An outside release of the
/// last count of the body destroys the handle with delete.
class VFAPPLICATION_EXPORT UiSetup
{
public:
    /// How open documents are arranged.
    enum DocumentInterfaceMode : int
    {
        TabbedDocuments = 0, ///< one at a time, each behind a tab
        SubWindows = 1,      ///< windows within the main window
        SeparateWindows = 2  ///< a window of its own for each
    };

    UiSetup();
    UiSetup(const UiSetup&) = delete;
    UiSetup& operator=(const UiSetup&) = delete;

    // In the order of their slots, which is part of the binary interface.
    virtual ~UiSetup();

    /// @return TabbedDocuments here
    virtual DocumentInterfaceMode getDocumentIntefaceMode();

    /// @return the names of the kinds of document and view on offer; none here
    virtual vfBase::StringList getDocumentViewTemplates() const;

    /// Declares the menus of the main window as children of @p root.
    virtual void setupMenus(CommandItem* root) = 0;

    /// Declares the menus of views of that name. @param viewName  must not be null
    virtual void setupViewMenus(const char* viewName, CommandItem* root) = 0;

    /// What decorates a view: true, false and false here.
    virtual bool showViewTitleButtons() const;
    virtual bool showViewLogo() const;
    virtual bool showViewDocumentSlider() const;

    /// For toolkit sides to give a meaning to; nothing here calls them.
    virtual void declareExtraA() = 0;
    virtual void declareExtraB() = 0;
    virtual void declareExtraC() = 0;

    /// Declares the toolbars as children of @p root.
    virtual void setupToolbars(CommandItem* root) = 0;

    virtual void declareExtraD() = 0;
    virtual void declareExtraE() = 0;

    /// What decorates the main window: true and true here.
    virtual bool showTitleBarLogo() const;
    virtual bool showSceneGraphTreeView() const;

    virtual void declareExtraF() = 0;

    /// @return the body, which modules share
    UiSetupPrivate* getUiSetupPrivate() const { return d; }

protected:
    /// A handle on @p body, which may be null and does not come to know of it.
    explicit UiSetup(UiSetupPrivate* body);

private:
    friend class UiSetupPrivate;

    UiSetupPrivate* d;
};

} // namespace vfApplication
