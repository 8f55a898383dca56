// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutGuide.h>

#include <QWidget>

#include <concepts>

namespace NS {

/// One side of a constraint: a widget or a layout guide. Pointers to either convert to it:
///
///     const NS::ConstraintItem item = constraint->firstItem();
///     if (item == label)
///         qDebug() << item.widget()->geometry();
///
/// A value as small as a pointer. It does not own the object, which must exist while it is used.
/// Main thread only.
class ConstraintItem
{
public:
    /// No item.
    ConstraintItem() = default;
    /// From a pointer or a QPointer to a widget or a guide, or from nullptr.
    template <std::convertible_to<QObject *> Pointer>
    requires std::convertible_to<Pointer, QWidget *> || std::convertible_to<Pointer, LayoutGuide *>
    ConstraintItem(const Pointer &pointer)
        : m_object(pointer)
    { }

    /// The widget or guide, or null.
    QObject *object() const { return m_object; }
    /// Null if the item is no widget.
    QWidget *widget() const { return isWidget() ? static_cast<QWidget *>(m_object) : nullptr; }
    /// Null if the item is no guide.
    LayoutGuide *guide() const
    {
        return m_object && !isWidget() ? static_cast<LayoutGuide *>(m_object) : nullptr;
    }
    /// The widget, or the view that owns the guide, or null.
    QWidget *view() const { return isWidget() || !m_object ? widget() : guide()->owningView(); }

    /// Whether there is a widget or a guide.
    explicit operator bool() const { return m_object; }
    /// Whether both are the same object.
    bool operator==(const ConstraintItem &other) const = default;

private:
    friend class LayoutConstraint;
    explicit ConstraintItem(QObject *object)
        : m_object(object)
    { }
    bool isWidget() const { return m_object && m_object->isWidgetType(); }

    QObject *m_object = nullptr;
};

} // namespace NS
