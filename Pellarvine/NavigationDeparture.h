// SPDX-License-Identifier: MIT
// Not API: removes controllers from a navigation controller.
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

namespace NS {
class ViewController;
}

namespace Pellarvine::detail {

/// Removes controllers one by one. The destructor calls deleteLater() for those that were children
/// and have no QObject parent.
class Departure
{
public:
    /// `container` itself is not deleted, even if its stack contains it.
    explicit Departure(const NS::ViewController *container);
    Departure(const Departure &) = delete;
    Departure &operator=(const Departure &) = delete;
    ~Departure();

    /// Removes the controller from its parent, and its view from the content view. Does nothing for
    /// null, and for a controller that was removed before. Callbacks of the program may delete any
    /// object.
    void takeAway(const QPointer<NS::ViewController> &controller);

    /// Whether takeAway() was called for it.
    bool hasTaken(const NS::ViewController *controller) const;

    /// Whether the controller is being removed: it has no parent any more, and its callbacks may be
    /// running.
    static bool isLeaving(const NS::ViewController *controller);

private:
    const NS::ViewController *m_container;
    QList<QPointer<NS::ViewController>> m_taken;
    QList<QPointer<NS::ViewController>> m_children; // of those, the ones that were children
    static inline QList<const Departure *> s_all;
};

} // namespace Pellarvine::detail
