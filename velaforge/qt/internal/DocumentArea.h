// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/UiSetup.h>
#include <velaforge/qt/Export.h>

#include <QObject>
#include <QString>

class QMainWindow;
class QWidget;

namespace vfApplication {

class ViewFrame;

/// How views are arranged: behind tabs, as windows within the main window, or as windows of their own.
class VFAPPLICATIONQT_EXPORT DocumentArea : public QObject
{
    Q_OBJECT

public:
    /// Fills the centre of the main window.
    /// @param hasButtons  whether views have buttons to close them by
    static DocumentArea* make(UiSetup::DocumentInterfaceMode mode, QMainWindow& window, bool hasButtons);

    /// Shows a view at the front. The frame stays the caller's.
    virtual void add(ViewFrame& frame) = 0;

    /// The frame is without a parent afterwards, or keeps its place until it is deleted, which the caller does
    /// soon.
    virtual void remove(ViewFrame& frame) = 0;

    /// Brings the frame to the front.
    virtual void activate(ViewFrame& frame) = 0;

    /// @return the frame at the front, which may be one that was removed; null when there is none
    virtual ViewFrame* active() const = 0;

    virtual void setTitle(ViewFrame& frame, const QString& title, const QString& toolTip,
                          bool isModified) = 0;

    /// Arranges what was added before the main window was shown, when there was no place for it. Called once.
    virtual void onWindowShown() {}

    /// For menus: put the windows side by side, or one over the other. Nothing where there are none.
    virtual void tile() {}
    virtual void cascade() {}

    /// Has Qt say in the language of the user what it put there itself.
    virtual void retranslate() {}

    /// What there is to see without a view.
    virtual void setPlaceholder(const QString& text) = 0;

Q_SIGNALS:
    /// Another frame is at the front, by whomever.
    void activated(vfApplication::ViewFrame* frame);

    void closeRequested(vfApplication::ViewFrame* frame);

    /// A window of a view's own was made.
    void windowMade(QMainWindow* window, vfApplication::ViewFrame* frame);

protected:
    explicit DocumentArea(QMainWindow& window);
};

} // namespace vfApplication
