// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSColor.h>

#include <QList>
#include <QString>

namespace NS {

/// A list of named colours, such as those of a brand. The colour panel offers all lists of the
/// program:
///
///     NS::ColorList::add({ tr("Harbour Café"), { { tr("Espresso"), espresso },
///                                                { tr("Foam"), foam } } });
///
/// The library's list of nineteen colours is there from the start.
struct PELLARVINE_EXPORT ColorList
{
    /// A colour of the list. Entries are equal if name and colour are.
    struct Entry
    {
        QString name; ///< for people: tooltips and screen readers show it
        Color color; ///< if it is opaque, choosing it keeps the panel's opacity

        friend bool operator==(const Entry &, const Entry &) = default;
    };

    QString name; ///< for people too; unique among the program's lists
    QList<Entry> entries; ///< in the order in which the panel shows them

    /// The program's lists, in the order in which they were added. Main thread only.
    static const QList<ColorList> &availableColorLists();

    /// Adds a list, or replaces the list of the same name. An open colour panel shows it when its
    /// palette page is next opened. Main thread only.
    static void add(const ColorList &list);

    friend bool operator==(const ColorList &, const ColorList &) = default;
};

} // namespace NS
