// SPDX-License-Identifier: MIT
#include "Drawing/NSColorList.h"

#include <algorithm>

namespace NS {

namespace {

QList<ColorList> &lists()
{
    static QList<ColorList> all;
    return all;
}

} // namespace

const QList<ColorList> &ColorList::availableColorLists()
{
    return lists();
}

void ColorList::add(const ColorList &list)
{
    const auto place = std::ranges::find(lists(), list.name, &ColorList::name);
    if (place == lists().end())
        lists().append(list);
    else
        *place = list;
}

} // namespace NS
