// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"

#include <QObject>
#include <QPointer>

QT_FORWARD_DECLARE_CLASS(QCloseEvent)

namespace Pellarvine::detail {

/// Lets a main window work as the content of a window. The content is asked before the window
/// closes, and closes the window when it is closed. The window takes over its title, modified mark,
/// icon and document; both have the same state (full screen, maximised, minimised).
class WindowContent : public QObject
{
    Q_OBJECT

public:
    explicit WindowContent(NS::Window *window);

    QWidget *view() const { return m_view; }
    /// Null ends it. The window's own title, icon and document stay until the view changes its own.
    void setView(QWidget *view);

    /// Whether the view agrees to be closed.
    bool agreesToClose();
    /// The window has closed: deletes a view that wants to be deleted then.
    void windowHasClosed();
    /// Passes the window's state on to the view.
    void takeWindowState();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum Occasion {
        adoption, ///< the window's own values go first
        change
    };

    void viewHasLeft();
    bool closeWindow();
    void passOn(Occasion occasion);
    void passOnState();
    void followFilePaths();

    NS::Window *m_window;
    QPointer<QWidget> m_view;
    QString m_filePath; // the view's, as it was passed on
    bool m_isAsking = false;
    bool m_isPassingOn = false;
    bool m_isPassingState = false;
    bool m_hasTitle = false; // the view gave the window its title once
    bool m_hasDocument = false;
};

} // namespace Pellarvine::detail
