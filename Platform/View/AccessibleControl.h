// SPDX-License-Identifier: MIT
// Not API: the accessibility interface of widgets that draw themselves.
#pragma once

#include <QAccessibleWidget>
#include <QString>
#include <QWidget>

#include <utility>

namespace Pellarvine::detail {

/// The accessible interface of a widget with a role of its own. `name` is its accessible name if
/// the program has not set one.
class AccessibleControl : public QAccessibleWidget
{
public:
    AccessibleControl(QWidget *widget, QAccessible::Role role, QString name = {})
        : QAccessibleWidget(widget, role)
        , m_name(std::move(name))
    { }

    QString text(QAccessible::Text text) const override
    {
        QString given = QAccessibleWidget::text(text);
        return text == QAccessible::Name && given.isEmpty() ? ownName() : given;
    }

protected:
    /// The name if the program has not set one.
    virtual QString ownName() const { return m_name; }

private:
    QString m_name;
};

/// Installs `Interface`, which is constructed with the widget, as the accessible interface of all
/// objects of `Widget` and its subclasses. The constructor of `Widget` calls it; further calls do
/// nothing.
template <typename Widget, typename Interface>
void makeAccessible()
{
    static const bool isMade = [] {
        QAccessible::installFactory(
                [](const QString &name, QObject *object) -> QAccessibleInterface * {
                    if (name != QLatin1StringView(Widget::staticMetaObject.className()))
                        return nullptr;
                    return new Interface(static_cast<Widget *>(object));
                });
        return true;
    }();
    Q_UNUSED(isMade)
}

/// The same where the role is all that there is to say.
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
    makeAccessible<Widget, Interface>();
}

} // namespace Pellarvine::detail
