// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QHash>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

class LayoutEngine;

/// Which engine keeps the constraints of which host: its own one, or one above that has taken over.
/// Owns none of them, and calls none.
class LayoutHosts
{
public:
    /// The table of all hosts.
    static LayoutHosts &all();

    /// Null if there is none. An engine whose constraints were taken over stays the host's own.
    LayoutEngine *ownEngine(const QWidget *host) const { return m_own.value(host); }
    /// The engine above that has taken over, or null.
    LayoutEngine *upperEngine(const QWidget *host) const { return m_upper.value(host); }
    bool isTakenOver(const QWidget *host) const { return m_upper.contains(host); }

    void insert(const QWidget *host, LayoutEngine *engine) { m_own.insert(host, engine); }
    /// Also gives back the hosts that the engine has taken over.
    void remove(const QWidget *host, const LayoutEngine *engine);

    /// From now on constraints of that host go to `upper`, ...
    void takeOver(const QWidget *host, LayoutEngine *upper) { m_upper.insert(host, upper); }
    /// ... and those of all hosts that `lower` has taken over, too.
    void takeOverFrom(const LayoutEngine *lower, LayoutEngine *upper);
    void giveBack(const QWidget *host) { m_upper.remove(host); }
    /// Gives back what `upper` has taken over and is not, or is no longer, below its host.
    void giveBackStrayed(const LayoutEngine *upper, const QWidget *host);

private:
    QHash<const QWidget *, LayoutEngine *> m_own;
    QHash<const QWidget *, LayoutEngine *> m_upper;
};

} // namespace Pellarvine::detail
