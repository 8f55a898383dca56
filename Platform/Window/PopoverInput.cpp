// SPDX-License-Identifier: MIT
#include "Window/PopoverInput.h"

#include "Controls/ColorPanel/PortalColorPicker.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPointerEvent>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

namespace {

// The openers under the click or the key that has just closed their popovers. It forgets them once
// the button or the key is released.
class ClosingClick : public QObject
{
public:
    static ClosingClick &instance()
    {
        static ClosingClick *const click = new ClosingClick;
        return *click;
    }

    void add(QWidget *opener)
    {
        if (m_openers.isEmpty())
            qApp->installEventFilter(this);
        m_openers.append(opener);
    }
    bool isOn(const QWidget *opener) const { return m_openers.contains(opener); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool isOver =
                event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::TouchEnd
                || event->type() == QEvent::TabletRelease || event->type() == QEvent::KeyRelease;
        // The receiver of the release comes after this filter.
        if (isOver)
            QTimer::singleShot(0, this, &ClosingClick::forget);
        return false;
    }

private:
    ClosingClick()
        : QObject(qApp)
    { }

    void forget()
    {
        m_openers.clear();
        qApp->removeEventFilter(this);
    }

    QList<QPointer<QWidget>> m_openers;
};

// The widget that has that window, or null.
QWidget *widgetOf(const QObject *window)
{
    const QWidgetList widgets = QApplication::allWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(), [window](QWidget *widget) {
        return widget->windowHandle() == window;
    });
    return found == widgets.end() ? nullptr : *found;
}

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

PopoverInput::PopoverInput(NS::Popover *popover)
    : m_popover(popover)
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state != Qt::ApplicationActive && !hasKeyJustClosedPopup()
                    && !PortalColorPicker::isPicking()
                    && m_popover->behavior() == NS::Popover::Behavior::transient)
                    m_popover->performClose();
            });
}

void PopoverInput::start()
{
    qApp->installEventFilter(this);
    m_seesInput = false;
    QTimer::singleShot(0, this, [this] { m_seesInput = true; });
}

void PopoverInput::stop()
{
    qApp->removeEventFilter(this);
}

bool PopoverInput::hasJustClosed(const QWidget *opener)
{
    return ClosingClick::instance().isOn(opener);
}

bool PopoverInput::contains(const QWidget *widget) const
{
    while (widget) {
        if (widget == m_bubble)
            return true;
        // A popover in a popover belongs to what it points at; menus and dialogs to their parents.
        const auto *const other = qobject_cast<const PopoverBubble *>(widget);
        widget = other ? other->view() : widget->parentWidget();
    }
    return false;
}

bool PopoverInput::isElsewhere(const QWidget *widget) const
{
    const Qt::WindowType type = widget->window()->windowType();
    const bool isBubble = qobject_cast<const PopoverBubble *>(widget->window());
    if (!isBubble && (type == Qt::Popup || type == Qt::ToolTip))
        return false; // a menu or a list: what opened it counted
    const QWidget *const view = m_popover->positioningView();
    const QWidget *const modal = QApplication::activeModalWidget();
    const bool isBlocked = modal && view && modal != view->window() && modal == widget->window()
                           && !modal->isAncestorOf(view);
    return !isBlocked && !contains(widget);
}

bool PopoverInput::closesFor(const QWidget *widget) const
{
    if (m_popover->behavior() == NS::Popover::Behavior::transient)
        return true;
    const QWidget *const view = m_popover->positioningView();
    return m_popover->behavior() == NS::Popover::Behavior::semitransient && view
           && widget->window() == view->window();
}

bool PopoverInput::hasDialog() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [this](const QWidget *window) {
        const Qt::WindowType type = window->windowType();
        return window->isVisible() && type != Qt::Popup && type != Qt::ToolTip && contains(window);
    });
}

// Since Qt 6.8 a popup gets all presses before the window that they are on, which gets those that
// the popup ignores.
bool PopoverInput::isOutsideOfPopup(const QObject *watched, QPointerEvent *event) const
{
    return m_bubble && m_bubble->windowType() == Qt::Popup && watched == m_bubble->windowHandle()
           && !m_bubble->rect().contains(event->points().constFirst().position().toPoint());
}

// That window would send the press to the popup and, after the popup is hidden, to the widget under
// it. Therefore the popover closes first.
bool PopoverInput::isBesidePopup(const QObject *watched) const
{
    return watched->isWindowType() && m_bubble && m_bubble->windowType() == Qt::Popup
           && QApplication::activePopupWidget() == m_bubble && watched != m_bubble->windowHandle();
}

void PopoverInput::press(QObject *watched, QPointerEvent *event)
{
    QPoint position = event->points().constFirst().position().toPoint();
    if (QWidget *const window = isBesidePopup(watched) ? widgetOf(watched) : nullptr) {
        QWidget *const child = window->childAt(position);
        watched = child ? child : window;
        position = static_cast<QWidget *>(watched)->mapFrom(window, position);
    }
    if (!watched->isWidgetType()) {
        // Windows of widgets hand the event on to the widgets.
        const bool isForeign = watched->isWindowType() && !watched->inherits("QWidgetWindow");
        if (isForeign && m_popover->behavior() == NS::Popover::Behavior::transient)
            m_popover->performClose();
        return;
    }
    auto *const widget = static_cast<QWidget *>(watched);
    if (!isElsewhere(widget) || !closesFor(widget))
        return;
    QWidget *const view = m_popover->positioningView();
    QWidget *const opener = m_popover->opener();
    if (opener && (opener == widget || opener->isAncestorOf(widget))) {
        const bool isInPlace = opener != view
                               || popoverArea(m_popover->positioningRect(), view->size())
                                          .contains(widget->mapTo(view, position));
        if (isInPlace)
            ClosingClick::instance().add(opener);
    }
    m_popover->performClose();
}

// Whether the key is used up.
bool PopoverInput::key(QObject *watched, QKeyEvent *event)
{
    if (!watched->isWidgetType())
        return false;
    auto *const widget = static_cast<QWidget *>(watched);
    if (!isElsewhere(widget) || !closesFor(widget))
        return false;
    if (event->matches(QKeySequence::Cancel)) {
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        else
            m_popover->performClose();
        return true;
    }
    if (event->type() == QEvent::KeyPress
        && m_popover->behavior() == NS::Popover::Behavior::transient && !isModifier(event->key())) {
        if (widget == m_popover->opener() && qobject_cast<QAbstractButton *>(widget))
            ClosingClick::instance().add(widget);
        m_popover->performClose();
    }
    return false;
}

void PopoverInput::clickBehind(QPoint globalPosition)
{
    m_bubble->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPointer<QWidget> target = QApplication::widgetAt(globalPosition);
    m_bubble->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    const QWidget *const view = m_popover->positioningView();
    if (!target || target == m_bubble)
        target = view->window()->childAt(view->window()->mapFromGlobal(globalPosition));
    if (!target || contains(target))
        return;
    for (const auto type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease }) {
        if (!target)
            return;
        const bool isPress = type == QEvent::MouseButtonPress;
        QMouseEvent click(type, target->mapFromGlobal(QPointF(globalPosition)),
                          QPointF(globalPosition), Qt::LeftButton,
                          isPress ? Qt::LeftButton : Qt::NoButton,
                          QApplication::keyboardModifiers());
        QApplication::sendEvent(target, &click);
    }
}

// One key closes one thing. A list or a menu may close before the key press itself is sent, which
// then goes to what lies behind it. And a Wayland compositor then takes the keyboard from the
// program, for a moment or until the next key, which is not the user's leaving. Returns whether the
// key is used up.
bool PopoverInput::watchPopups(QObject *watched, const QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const int key = static_cast<const QKeyEvent *>(event)->key();
        if (m_hasKeyClosedPopup && key == m_key && !m_isPressed) {
            // The same key goes on: from the list to its parents, then as the press.
            m_isPressed = event->type() == QEvent::KeyPress;
            return m_isPressed;
        }
        if (!std::exchange(m_isInKey, true))
            QTimer::singleShot(0, this, [this] { m_isInKey = false; });
        m_key = key;
        m_isPressed = event->type() == QEvent::KeyPress;
        m_hasKeyClosedPopup = false;
        return false;
    }
    case QEvent::MouseButtonPress:
        m_hasKeyClosedPopup = false;
        m_keyboardMayGo = {};
        return false;
    case QEvent::Hide:
        if (m_isInKey && watched->isWidgetType()
            && static_cast<QWidget *>(watched)->windowType() == Qt::Popup) {
            constexpr int longestTrip = 400; // milliseconds, in which the keyboard comes and goes
            m_hasKeyClosedPopup = true;
            m_keyboardMayGo.setRemainingTime(longestTrip);
        }
        return false;
    default:
        return false;
    }
}

bool PopoverInput::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_seesInput)
        return false;
    if (watchPopups(watched, event))
        return true;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        if (isOutsideOfPopup(watched, static_cast<QPointerEvent *>(event))) {
            event->ignore();
            return true;
        }
        press(watched, static_cast<QPointerEvent *>(event));
        return false;
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        return key(watched, static_cast<QKeyEvent *>(event));
    case QEvent::Shortcut: // no key press follows
        if (m_popover->behavior() == NS::Popover::Behavior::transient
            && !contains(QApplication::focusWidget()))
            m_popover->performClose();
        return false;
    default:
        return false;
    }
}

} // namespace Pellarvine::detail
