// SPDX-License-Identifier: MIT
// Not API: objects that accompany one widget each.
#pragma once

#include <QHash>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Makes a `T` the companion of a widget for as long as the entry lives:
///
///     class LayoutMark : public QObject // a child of the widget, which deletes it
///     {
///         ...
///         detail::CompanionEntry<LayoutMark> m_entry;
///     };
///
/// The entry is the last member, so that it goes first: code that runs while the other members are
/// destroyed finds no companion. A widget has one companion of a type. Main thread only.
template <typename T>
class CompanionEntry
{
public:
    CompanionEntry(const QWidget *widget, T *companion)
        : m_widget(widget)
    {
        all().insert(widget, companion);
    }
    ~CompanionEntry() { all().remove(m_widget); }
    Q_DISABLE_COPY_MOVE(CompanionEntry)

private:
    template <typename Other>
    friend Other *companionOf(const QWidget *widget);

    static QHash<const QWidget *, T *> &all()
    {
        static QHash<const QWidget *, T *> companions;
        return companions;
    }

    const QWidget *m_widget;
};

/// The widget's companion of that type, or null. Takes constant time.
template <typename T>
T *companionOf(const QWidget *widget)
{
    return CompanionEntry<T>::all().value(widget);
}

} // namespace Pellarvine::detail
