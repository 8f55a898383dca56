// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/PageToolBar.h"

#include "View/AccessibleButton.h"

#include <QActionEvent>
#include <QToolButton>

namespace Pellarvine::detail {

namespace {

constexpr QSize leastSize(40, 32);

class AccessiblePageButton : public AccessibleButton
{
public:
    explicit AccessiblePageButton(QToolButton *button)
        : AccessibleButton(button, QAccessible::RadioButton)
    { }

    QAccessible::State state() const override
    {
        QAccessible::State state = AccessibleButton::state();
        state.checkable = true;
        state.checked = button()->isChecked();
        return state;
    }

private:
    QString ownName() const override { return button()->text(); }
};

// Qt's own interface of a tool button that can be checked is that of a check box. Its subclass that
// shows the rest of a narrow tool bar is no page.
QAccessibleInterface *accessiblePageButton(const QString &name, QObject *object)
{
    const bool isOurs = name == QLatin1StringView(QToolButton::staticMetaObject.className())
                        && qobject_cast<PageToolBar *>(object->parent())
                        && object->metaObject() == &QToolButton::staticMetaObject;
    return isOurs ? new AccessiblePageButton(static_cast<QToolButton *>(object)) : nullptr;
}

} // namespace

PageToolBar::PageToolBar(QWidget *parent)
    : QToolBar(parent)
{
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(&accessiblePageButton);
        return true;
    }();
    setIconSize({ 16, 16 });
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PageToolBar::actionEvent(QActionEvent *event)
{
    QToolBar::actionEvent(event);
    if (event->type() != QEvent::ActionAdded)
        return;
    QWidget *const button = widgetForAction(event->action());
    button->setFocusPolicy(Qt::TabFocus);
    button->setMinimumSize(leastSize);
}

void PageToolBar::paintEvent(QPaintEvent *) { }

} // namespace Pellarvine::detail
