// SPDX-License-Identifier: MIT
#include "Window/WindowContent.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QScopedValueRollback>

namespace Pellarvine::detail {

WindowContent::WindowContent(NS::Window *window)
    : QObject(window)
    , m_window(window)
{
    // Qt has neither a signal nor an event for a file path.
    const auto *const dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this,
            &WindowContent::followFilePaths);
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, &WindowContent::followFilePaths);
}

void WindowContent::setView(QWidget *view)
{
    if (m_view)
        m_view->removeEventFilter(this);
    m_view = view;
    m_hasTitle = false;
    m_hasDocument = false;
    if (!view)
        return;
    view->installEventFilter(this);
    passOn(adoption);
}

// Closing

bool WindowContent::agreesToClose()
{
    if (!m_view)
        return true;
    QCloseEvent question;
    const QScopedValueRollback<bool> guard(m_isAsking, true);
    QCoreApplication::sendEvent(m_view, &question);
    return question.isAccepted();
}

void WindowContent::windowHasClosed()
{
    if (m_view && m_view->testAttribute(Qt::WA_DeleteOnClose))
        m_view->deleteLater();
}

// The view closes itself. The window asks it, and then anybody else that it asks.
bool WindowContent::closeWindow()
{
    if (!m_window->close())
        return false;
    // It is about to hide, and belongs to the window's next appearance.
    if (!m_view->testAttribute(Qt::WA_DeleteOnClose))
        QMetaObject::invokeMethod(m_view, &QWidget::show, Qt::QueuedConnection);
    return true;
}

// Passing on

void WindowContent::passOn(Occasion occasion)
{
    if (m_isPassingOn)
        return; // a window tells its children of its icon
    const QScopedValueRollback<bool> guard(m_isPassingOn, true);
    const auto isMine = [&](bool windowHasOne, bool &wasMine) {
        wasMine = wasMine || occasion == change || !windowHasOne;
        return wasMine;
    };
    const QString title = m_view->windowTitle();
    if ((m_hasTitle || !title.isEmpty()) && isMine(!m_window->windowTitle().isEmpty(), m_hasTitle))
        m_window->setWindowTitle(title);
    const QString path = m_view->windowFilePath();
    m_filePath = path;
    if ((m_hasDocument || !path.isEmpty())
        && isMine(!m_window->representedURL().isEmpty(), m_hasDocument))
        m_window->setRepresentedURL(path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path));
    if (m_view->testAttribute(Qt::WA_SetWindowIcon)
        && (occasion == change || !m_window->testAttribute(Qt::WA_SetWindowIcon)))
        m_window->setWindowIcon(m_view->windowIcon());
    if (occasion == change || m_view->isWindowModified())
        m_window->setWindowModified(m_view->isWindowModified());
}

void WindowContent::followFilePaths()
{
    if (m_view && m_view->windowFilePath() != m_filePath)
        passOn(change);
    const QString path = m_window->windowFilePath();
    if (path != m_window->representedURL().toLocalFile())
        m_window->setRepresentedURL(path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path));
}

void WindowContent::takeWindowState()
{
    if (!m_view || m_isPassingState)
        return;
    const QScopedValueRollback<bool> guard(m_isPassingState, true);
    const Qt::WindowStates state = m_window->windowState() & ~Qt::WindowActive;
    if (m_view->windowState() != state)
        m_view->setWindowState(state);
}

void WindowContent::passOnState()
{
    if (!m_view || m_isPassingState)
        return;
    const QScopedValueRollback<bool> guard(m_isPassingState, true);
    const Qt::WindowStates state = m_view->windowState() & ~Qt::WindowActive;
    m_window->setWindowState(state | (m_window->windowState() & Qt::WindowActive));
    if (m_view && m_view->windowState() != state)
        m_view->setWindowState(state); // which it has lost by becoming as large as the screen
}

bool WindowContent::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_view)
        return false;
    switch (event->type()) {
    case QEvent::Close:
        if (m_isAsking)
            return false;
        event->setAccepted(closeWindow());
        return true;
    case QEvent::WindowTitleChange:
    case QEvent::WindowIconChange:
    case QEvent::ModifiedChange:
        passOn(change);
        return false;
    case QEvent::WindowStateChange:
        passOnState();
        return false;
    case QEvent::Move:
    case QEvent::Resize: // with which a widget leaves full screen, where it is not a window
        takeWindowState();
        return false;
    case QEvent::ParentChange:
        if (m_view->parentWidget() != m_window)
            setView(nullptr);
        return false;
    default:
        return false;
    }
}

} // namespace Pellarvine::detail
