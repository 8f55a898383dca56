// SPDX-License-Identifier: MIT
// Not API: what a screen reader is told of the widgets that draw themselves.
#pragma once

#include <QAccessibleWidget>
#include <QString>
#include <QWidget>

#include <utility>

namespace Pellarvine::detail {

/// A widget with a role, and a name for when its owner has given none.
class AccessibleControl : public QAccessibleWidget
{
public:
    AccessibleControl(QWidget *widget, QAccessible::Role role, QString name)
        : QAccessibleWidget(widget, role)
        , m_name(std::move(name))
    { }

    QString text(QAccessible::Text text) const override
    {
        const QString given = QAccessibleWidget::text(text);
        return text == QAccessible::Name && given.isEmpty() ? m_name : given;
    }

private:
    QString m_name;
};

/// Presents every `Widget`, and what derives from it, through an `Interface`, which takes the
/// widget. Once a class.
template <typename Widget, typename Interface>
void makeAccessible()
{
    QAccessible::installFactory([](const QString &name, QObject *object) -> QAccessibleInterface * {
        if (name != QLatin1StringView(Widget::staticMetaObject.className()))
            return nullptr;
        return new Interface(static_cast<Widget *>(object));
    });
}

/// The same where the role is all that there is to say. Further calls do nothing.
template <typename Widget, QAccessible::Role viewRole>
void makeAccessible()
{
    class Interface : public QAccessibleWidget
    {
    public:
        explicit Interface(Widget *widget)
            : QAccessibleWidget(widget, viewRole)
        { }
    };
    static const bool isMade = (makeAccessible<Widget, Interface>(), true);
    Q_UNUSED(isMade)
}

} // namespace Pellarvine::detail
