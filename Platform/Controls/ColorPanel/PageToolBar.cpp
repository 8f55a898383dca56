// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/PageToolBar.h"

#include "View/AccessibleControl.h"

#include <QActionEvent>
#include <QToolButton>

namespace Pellarvine::detail {

namespace {

constexpr QSize leastSize(40, 32);

class AccessiblePageButton : public AccessibleControl
{
public:
    explicit AccessiblePageButton(QToolButton *button)
        : AccessibleControl(button, QAccessible::RadioButton)
    { }

    QAccessible::State state() const override
    {
        QAccessible::State state = AccessibleControl::state();
        state.checkable = true;
        state.checked = button()->isChecked();
        return state;
    }
    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + AccessibleControl::actionNames();
    }
    void doAction(const QString &name) override
    {
        if (name == pressAction())
            button()->click();
        else
            AccessibleControl::doAction(name);
    }

private:
    QString ownName() const override { return button()->text(); }
    QToolButton *button() const { return static_cast<QToolButton *>(widget()); }
};

// Qt's own interface of a tool button that can be checked is that of a check box.
QAccessibleInterface *accessiblePageButton(const QString &name, QObject *object)
{
    const bool isOurs = name == QLatin1StringView(QToolButton::staticMetaObject.className())
                        && qobject_cast<PageToolBar *>(object->parent());
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
