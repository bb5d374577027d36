// SPDX-License-Identifier: MIT
// A bare window of the peer's, with as many menus and docks.
#include "WindowParts.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1200, 800);
    QList<QAction*> actions;
    for (int i = 0; i < menuCount; ++i) {
        QMenu* menu = window.menuBar()->addMenu(QStringLiteral("Menu %1").arg(i));
        for (int j = 0; j < itemCount; ++j) {
            actions << menu->addAction(QStringLiteral("Item %1 of %2").arg(j).arg(i));
            actions.back()->setToolTip(QStringLiteral("What it does"));
        }
    }
    QToolBar* bar = window.addToolBar(QStringLiteral("Bar"));
    for (int i = 0; i < toolbarItemCount; ++i)
        bar->addAction(actions[i]);
    constexpr Qt::DockWidgetArea areas[] = {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea,
                                            Qt::BottomDockWidgetArea, Qt::LeftDockWidgetArea};
    for (int i = 0; i < dockCount; ++i) {
        auto* dock = new QDockWidget(QStringLiteral("Dock %1").arg(i), &window);
        dock->setWidget(new QLabel(QStringLiteral("contents"), dock));
        window.addDockWidget(areas[i], dock);
    }
    window.statusBar()->showMessage(QString());
    auto* centre = new QLabel(QStringLiteral("centre"), &window);
    window.setCentralWidget(centre);
    EndWhenPainted end(*centre);
    window.show();
    return QApplication::exec();
}
