// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSColor.h>

#include <QList>
#include <QString>

namespace NS {

/// Named colours that go together, such as those of a brand. The colour panel offers all that the
/// program has:
///
///     NS::ColorList::add({ tr("Harbour Café"), { { tr("Espresso"), espresso },
///                                                { tr("Foam"), foam } } });
///
/// The library's own list of nineteen is there from the start.
struct PELLARVINE_EXPORT ColorList
{
    /// A colour of the list. Two are equal if name and colour are.
    struct Entry
    {
        QString name; ///< for people: tooltips and screen readers show it
        Color color; ///< if it is opaque, choosing it keeps the panel's opacity

        friend bool operator==(const Entry &, const Entry &) = default;
    };

    QString name; ///< for people too; no two of the program's lists share one
    QList<Entry> entries; ///< in the order in which the panel shows them

    /// The program's lists, in the order in which they were added. Main thread only.
    static const QList<ColorList> &availableColorLists();

    /// Adds a list, or puts it in the place of the one of its name. A colour panel that is open
    /// shows it when its palette page is next opened.
    static void add(const ColorList &list);

    friend bool operator==(const ColorList &, const ColorList &) = default;
};

} // namespace NS
