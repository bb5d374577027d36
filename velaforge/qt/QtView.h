// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/documents/View.h>
#include <velaforge/qt/Export.h>

#include <memory>

class QWidget;

namespace vfApplication {

class QtApplication;
struct QtViewPrivate;

/// A view with a widget in the main window, or in a window of its own.
///
///     class Page : public vfApplication::QtView
///     {
///     protected:
///         QWidget* createWidget(QWidget& parent) override { return new QLabel("empty", &parent); }
///     };
///
/// The widget goes with the view. When the user closes one of several views of a document, that view goes
/// alone; with the last the document closes, with the question about unsaved changes.
class VFAPPLICATIONQT_EXPORT QtView : public View
{
public:
    QtView();
    ~QtView() override;

    QtView(const QtView&) = delete;
    QtView& operator=(const QtView&) = delete;

    /// Makes the widget and shows it. @return false without a shell with a window, and when there is no
    /// widget
    bool onCreate(Document* document, const vfBase::Options& options) override;

    /// Brings the widget to the front.
    void onActivateView(bool active, View* activated, View* previous) override;

    /// Shows name and state of the document in all titles.
    void onChangeFilename() override;

    /// @param force  the document is being closed already: the user is not asked
    bool onClose(bool force) override;

    /// Have the widget painted anew.
    void onUpdate(View* sender) override;
    void redraw() override;

    /// @return what createWidget made; null before onCreate
    QWidget* getWidget() const;

protected:
    /// @return a new widget that shows the document, a child of @p parent; null for a view that cannot be
    ///         made
    virtual QWidget* createWidget(QWidget& parent) = 0;

private:
    std::unique_ptr<QtViewPrivate> d;
};

} // namespace vfApplication
