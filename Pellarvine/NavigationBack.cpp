// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationBack.h"

#include "Pellarvine/NavigationController.h"

#include <QCoreApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

BackAction::BackAction(NavigationController *navigation)
    : QAction(QIcon::fromTheme(u"go-previous"_s), {}, navigation)
{
    retranslate();
    setEnabled(navigation->canGoBack());
    connect(navigation, &NavigationController::canGoBackChanged, this, &QAction::setEnabled);
    connect(this, &QAction::triggered, navigation, &NavigationController::goBack);
    QCoreApplication::instance()->installEventFilter(this);
}

bool BackAction::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && watched == QCoreApplication::instance())
        retranslate();
    return false;
}

void BackAction::retranslate()
{
    setText(NavigationController::tr("Back"));
}

BackInput::BackInput(NavigationController *navigation)
    : m_navigation(navigation)
{
    s_all.append(this);
    QCoreApplication::instance()->installEventFilter(this);
}

BackInput::~BackInput()
{
    s_all.removeOne(this);
}

bool BackInput::eventFilter(QObject *watched, QEvent *event)
{
    const bool isInput = event->type() == QEvent::KeyPress
                         || event->type() == QEvent::ShortcutOverride
                         || event->type() == QEvent::MouseButtonPress;
    if (!isInput || !watched->isWidgetType())
        return false;
    const auto *const widget = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::MouseButtonPress) {
        const bool isBack = static_cast<QMouseEvent *>(event)->button() == Qt::BackButton;
        return isBack && isInnermost(widget) && goBack();
    }
    auto *const press = static_cast<QKeyEvent *>(event);
    const bool isBack = press->matches(QKeySequence::Back) && isInnermost(widget);
    if (event->type() == QEvent::ShortcutOverride) {
        // A shortcut of the window for the same key comes second.
        const bool isTaken = isBack && m_navigation->canGoBack();
        event->setAccepted(isTaken || event->isAccepted());
        return isTaken;
    }
    if (press->isAutoRepeat())
        return false;
    // The view gets the keys that no widget inside accepts.
    if (press->key() == Qt::Key_Escape && press->modifiers() == Qt::NoModifier)
        return widget == view() && goBack();
    return isBack && goBack();
}

// The event is accepted even if canUnwind() refuses: otherwise Esc would close a dialog around it.
bool BackInput::goBack()
{
    const bool isUsed = m_navigation->canGoBack();
    if (isUsed)
        m_navigation->goBack();
    return isUsed;
}

const QWidget *BackInput::view() const
{
    return m_navigation->isViewLoaded() ? m_navigation->view() : nullptr;
}

bool BackInput::isInside(const QWidget *widget) const
{
    const QWidget *const outer = view();
    return outer && (outer == widget || outer->isAncestorOf(widget));
}

bool BackInput::isInnermost(const QWidget *widget) const
{
    const auto isFurtherIn = [&](const BackInput *other) {
        return other != this && other->isInside(widget) && other->m_navigation->canGoBack()
               && view()->isAncestorOf(other->view());
    };
    return isInside(widget) && std::none_of(s_all.cbegin(), s_all.cend(), isFurtherIn);
}

} // namespace Pellarvine::detail
