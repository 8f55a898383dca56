// SPDX-License-Identifier: MIT
// The functions of widgets that key-value coding needs. This library sets them when it is loaded.
#include "KeyValue/WidgetAccess.h"

#include <QAbstractSpinBox>
#include <QStyle>
#include <QWidget>

namespace Pellarvine::detail {

namespace {

const QWidget *asWidget(const QObject *object)
{
    return static_cast<const QWidget *>(object);
}

QVariant visible(const QObject *object)
{
    const QWidget *const widget = asWidget(object);
    if (widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
        return !widget->isHidden();
    // It appears with its parent.
    const QWidget *const parent = widget->parentWidget();
    if (widget->isVisible() || (parent && !parent->isVisible() && !widget->isHidden()))
        return true;
    return {};
}

QVariant enabled(const QObject *object)
{
    return !asWidget(object)->testAttribute(Qt::WA_ForceDisabled);
}

void restyle(QObject *object)
{
    auto *const widget = static_cast<QWidget *>(object);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

void finishTyping(QObject *object)
{
    if (auto *const box = qobject_cast<QAbstractSpinBox *>(object))
        box->interpretText();
}

constexpr WidgetAccess access { visible, enabled, restyle, finishTyping };

[[maybe_unused]] const bool isInstalled = (setWidgetAccess(&access), true);

} // namespace

} // namespace Pellarvine::detail
