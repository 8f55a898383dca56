// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QHash>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

class LayoutEngine;

/// The table of hosts and the engines that keep their constraints: the host's own one, or one above
/// that has taken over. Does not own the engines, nor call them.
class LayoutHosts
{
public:
    /// The one table.
    static LayoutHosts &all();

    /// The engine of the host, even if its constraints were taken over, or null.
    LayoutEngine *ownEngine(const QWidget *host) const { return m_own.value(host); }
    /// The engine above that has taken over, or null.
    LayoutEngine *upperEngine(const QWidget *host) const { return m_upper.value(host); }
    bool isTakenOver(const QWidget *host) const { return m_upper.contains(host); }

    void insert(const QWidget *host, LayoutEngine *engine) { m_own.insert(host, engine); }
    /// Also gives back the hosts that the engine has taken over.
    void remove(const QWidget *host, const LayoutEngine *engine);

    /// From now on `upper` gets the constraints of that host.
    void takeOver(const QWidget *host, LayoutEngine *upper) { m_upper.insert(host, upper); }
    /// From now on `upper` gets the constraints of all hosts that `lower` has taken over.
    void takeOverFrom(const LayoutEngine *lower, LayoutEngine *upper);
    void giveBack(const QWidget *host) { m_upper.remove(host); }
    /// Gives back those hosts that `upper` has taken over and that are not below its `host`.
    void giveBackStrayed(const LayoutEngine *upper, const QWidget *host);

private:
    QHash<const QWidget *, LayoutEngine *> m_own;
    QHash<const QWidget *, LayoutEngine *> m_upper;
};

} // namespace Pellarvine::detail
