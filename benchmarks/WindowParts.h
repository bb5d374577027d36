// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QMetaObject>
#include <QString>
#include <QWidget>

#include <cstdlib>

/// What both windows have.
constexpr int menuCount = 6;
constexpr int itemCount = 9; // in each menu
constexpr int dockCount = 4;
constexpr int toolbarItemCount = 8;

/// Ends the process when the widget has been painted for the first time.
class EndWhenPainted : public QObject
{
public:
    explicit EndWhenPainted(QWidget& widget) : QObject(&widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        // Behind the paint event, when the picture has been handed over.
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(
                qApp, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return QObject::eventFilter(object, event);
    }
};
