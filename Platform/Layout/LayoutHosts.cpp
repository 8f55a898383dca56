// SPDX-License-Identifier: MIT
#include "Layout/LayoutHosts.h"

#include <QWidget>

namespace Pellarvine::detail {

LayoutHosts &LayoutHosts::all()
{
    static LayoutHosts hosts;
    return hosts;
}

void LayoutHosts::remove(const QWidget *host, const LayoutEngine *engine)
{
    m_own.remove(host);
    m_upper.removeIf([&](auto entry) { return entry.value() == engine; });
}

void LayoutHosts::takeOverFrom(const LayoutEngine *lower, LayoutEngine *upper)
{
    for (LayoutEngine *&engine : m_upper) {
        if (engine == lower)
            engine = upper;
    }
}

void LayoutHosts::giveBackStrayed(const LayoutEngine *upper, const QWidget *host)
{
    m_upper.removeIf(
            [&](auto entry) { return entry.value() == upper && !host->isAncestorOf(entry.key()); });
}

} // namespace Pellarvine::detail
