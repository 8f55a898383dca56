// SPDX-License-Identifier: MIT
#include "Layout/Solver/LinearRow.h"

namespace Pellarvine::detail {

double LinearRow::largestCoefficient() const
{
    double largest = 0.0;
    for (const Entry &entry : entries)
        largest = std::max(largest, std::abs(entry.coefficient));
    return largest;
}

void LinearRow::scale(double factor)
{
    constant *= factor;
    for (Entry &entry : entries)
        entry.coefficient *= factor;
}

void LinearRow::erase(Symbol symbol)
{
    const auto place = lowerBound(entries, symbol);
    if (place != entries.end() && place->symbol == symbol)
        entries.erase(place);
}

void LinearRow::add(Symbol symbol, double coefficient)
{
    if (coefficient == 0.0)
        return;
    const auto place = lowerBound(entries, symbol);
    if (place == entries.end() || place->symbol != symbol)
        entries.emplace(place, Entry { symbol, coefficient });
    else if (place->coefficient = sumOf(place->coefficient, coefficient); place->coefficient == 0.0)
        entries.erase(place);
}

void LinearRow::add(const LinearRow &other, double factor)
{
    add(
            other, factor, [](Symbol) {}, [](Symbol) {});
}

void LinearRow::solveFor(Symbol symbol)
{
    const double factor = coefficientOf(symbol);
    erase(symbol);
    scale(-1.0 / factor);
}

void LinearRow::substitute(Symbol symbol, const LinearRow &value)
{
    const auto place = lowerBound(entries, symbol);
    if (place == entries.end() || place->symbol != symbol)
        return;
    const double factor = place->coefficient;
    entries.erase(place);
    add(value, factor);
}

} // namespace Pellarvine::detail
