// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QDockWidget>

namespace vfApplication {

class QtDockWindow;

/// The panel of a dock window, which makes its contents when it is about to be seen.
class VFAPPLICATIONQT_EXPORT DockPanel : public QDockWidget
{
    Q_OBJECT

public:
    DockPanel(QMainWindow& window, QtDockWindow& half);

    /// @return the half of the dock window; null once that has let go of the panel
    QtDockWindow* half() const { return m_half; }
    void forgetHalf() { m_half = nullptr; }

    /// Makes the contents if that was not done before.
    void createContents();

    /// Makes the contents first, where the panel will be seen, and has place for them then.
    void setVisible(bool visible) override;

protected:
    void showEvent(QShowEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void makeRoom();

    QtDockWindow* m_half;
    bool m_hasContents = false;
};

} // namespace vfApplication
