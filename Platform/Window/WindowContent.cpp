// SPDX-License-Identifier: MIT
#include "Window/WindowContent.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

namespace Pellarvine::detail {

namespace {

// Sets a member of an object that may end in the meantime.
class Flag
{
public:
    Flag(const QObject *owner, bool &flag)
        : m_owner(owner)
        , m_flag(flag)
        , m_former(std::exchange(flag, true))
    { }
    ~Flag()
    {
        if (m_owner)
            m_flag = m_former;
    }
    Q_DISABLE_COPY_MOVE(Flag)

private:
    QPointer<const QObject> m_owner;
    bool &m_flag;
    bool m_former;
};

} // namespace

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
    if (m_view) {
        m_view->removeEventFilter(this);
        m_view->disconnect(this);
    }
    m_view = view;
    m_hasTitle = false;
    m_hasDocument = false;
    if (!view)
        return;
    view->installEventFilter(this);
    connect(view, &QObject::destroyed, this, &WindowContent::viewHasLeft);
    passOn(adoption);
}

void WindowContent::viewHasLeft()
{
    setView(nullptr);
    Q_EMIT m_window->contentViewChanged(nullptr);
}

// Closing

bool WindowContent::agreesToClose()
{
    if (!m_view)
        return true;
    QCloseEvent question;
    const Flag guard(this, m_isAsking);
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
    const QPointer<WindowContent> self(this);
    if (!m_window->close())
        return false;
    // It is about to hide, and belongs to the window's next appearance.
    if (self && m_view && !m_view->testAttribute(Qt::WA_DeleteOnClose))
        QMetaObject::invokeMethod(m_view, &QWidget::show, Qt::QueuedConnection);
    return true;
}

// Passing on

void WindowContent::passOn(Occasion occasion)
{
    if (m_isPassingOn)
        return; // a window tells its children of its icon
    const Flag guard(this, m_isPassingOn);
    // Receivers of the window's signals may replace the view or delete the window.
    const QPointer<WindowContent> self(this);
    const QPointer<QWidget> view = m_view;
    const auto isThere = [&] {
        return self && view && m_view == view;
    };
    const auto isMine = [&](bool windowHasOne, bool &wasMine) {
        wasMine = wasMine || occasion == change || !windowHasOne;
        return wasMine;
    };
    const QString title = m_view->windowTitle();
    if ((m_hasTitle || !title.isEmpty()) && isMine(!m_window->windowTitle().isEmpty(), m_hasTitle))
        m_window->setWindowTitle(title);
    if (!isThere())
        return;
    const QString path = m_view->windowFilePath();
    m_filePath = path;
    if ((m_hasDocument || !path.isEmpty())
        && isMine(!m_window->representedURL().isEmpty(), m_hasDocument))
        m_window->setRepresentedURL(path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path));
    if (!isThere())
        return;
    if (m_view->testAttribute(Qt::WA_SetWindowIcon)
        && (occasion == change || !m_window->testAttribute(Qt::WA_SetWindowIcon)))
        m_window->setWindowIcon(m_view->windowIcon());
    if (!isThere())
        return;
    if (occasion == change || m_view->isWindowModified())
        m_window->setWindowModified(m_view->isWindowModified());
}

void WindowContent::followFilePaths()
{
    const QPointer<WindowContent> self(this);
    if (m_view && m_view->windowFilePath() != m_filePath)
        passOn(change);
    if (!self)
        return;
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
            viewHasLeft();
        return false;
    default:
        return false;
    }
}

} // namespace Pellarvine::detail
