// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWindow>

#include <cstdlib>

/// Ends the program once a window has been painted on the screen for the first time, for measuring
/// how long that takes: at once, since taking everything down again is no part of it.
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
            QTimer::singleShot(0, this, [] { std::_Exit(0); }); // painting comes first
        return false;
    }
};
