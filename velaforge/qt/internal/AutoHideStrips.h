// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDockWidget>
#include <QFrame>
#include <QObject>
#include <QPointer>

#include <map>

class QMainWindow;
class QToolBar;
class QToolButton;

namespace vfApplication {

/// The buttons at the edges of the main window behind which panels hide, and the one panel that is open for a
/// while.
class VFAPPLICATIONQT_EXPORT AutoHideStrips : public QObject
{
    Q_OBJECT

public:
    explicit AutoHideStrips(QMainWindow& window);

    /// Puts a button for the panel at the edge of the area in which the panel stands. The panel itself is to be
    /// hidden.
    void add(QDockWidget& dock);

    /// Takes the button away and closes the panel.
    void remove(QDockWidget& dock);

    bool contains(const QDockWidget& dock) const { return m_buttons.count(&dock) > 0; }

    /// Opens the panel over its neighbours.
    void open(QDockWidget& dock);
    void close();

    /// @return the panel that is open, null while none is
    QDockWidget* opened() const { return m_opened; }

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QToolBar& strip(Qt::DockWidgetArea area);

    /// @return the contents of the panel that is open, null while none is
    QWidget* contents() const;
    void place();
    bool isInside(const QWidget* widget) const;

    QMainWindow& m_window;
    QFrame* m_frame;
    QPointer<QDockWidget> m_opened;
    std::map<Qt::DockWidgetArea, QToolBar*> m_strips;
    std::map<const QDockWidget*, QPointer<QToolButton>> m_buttons;
};

} // namespace vfApplication
