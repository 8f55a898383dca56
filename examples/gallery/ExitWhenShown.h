// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWindow>

#include <cstdlib>

/// Ends the program when a window has been painted for the first time, to measure how long that
/// takes. It ends without cleaning up, because that is not measured.
class ExitWhenShown : public QObject
{
public:
    explicit ExitWhenShown(QApplication &application)
        : QObject(&application)
    {
        application.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow *>(watched)->isExposed())
            QTimer::singleShot(0, this, [] { std::_Exit(0); }); // after the window is painted
        return false;
    }
};
