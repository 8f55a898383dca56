// SPDX-License-Identifier: MIT
// Not API: controllers on their way out of a navigation controller.
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

namespace NS {
class ViewController;
}

namespace Pellarvine::detail {

/// Takes controllers away, one by one, and deletes those that were children and that nobody has
/// taken as a QObject child by the end of this, once the event loop has come round.
class Departure
{
public:
    /// `container` itself is not deleted, even if its stack has it.
    explicit Departure(const NS::ViewController *container);
    Departure(const Departure &) = delete;
    Departure &operator=(const Departure &) = delete;
    ~Departure();

    /// Takes the controller from its parent, and its view from where it lies. Does nothing for null
    /// and for one that was taken before. The program is told and may delete what it likes.
    void takeAway(const QPointer<NS::ViewController> &controller);

    /// Whether takeAway() was called for it.
    bool hasTaken(const NS::ViewController *controller) const;

    /// Whether the controller is being taken away at this moment: it has no parent any more, and
    /// its callbacks may be running.
    static bool isLeaving(const NS::ViewController *controller);

private:
    const NS::ViewController *m_container;
    QList<QPointer<NS::ViewController>> m_taken;
    QList<QPointer<NS::ViewController>> m_children; // of those, the ones that were children
    static inline QList<const Departure *> s_all;
};

} // namespace Pellarvine::detail
