// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

/// The largest rounding error of a coefficient that should be 0, beside others of the order of 1.
inline constexpr double smallestCoefficient = 1e-9;

/// Returns the sum of numbers of that size, or exactly 0 if only a rounding error is left.
/// `rounding` keeps the largest relative error.
inline double roundedSum(double sum, double size, double &rounding)
{
    const double share = std::abs(sum) / std::max(1.0, size);
    if (share > smallestCoefficient)
        return sum;
    rounding = std::max(rounding, share);
    return 0.0;
}

/// A sum: the constant and each entry's symbol times its coefficient.
struct PELLARVINE_INTERNAL_EXPORT LinearRow
{
    /// A variable of the solver, or one that belongs to a constraint. Never negative.
    using Symbol = int;

    struct Entry
    {
        Symbol symbol;
        double coefficient;
        bool operator==(const Entry &) const = default;
    };

    /// Most rows are short.
    class Entries : public QVarLengthArray<Entry, 6>
    {
    public:
        using QVarLengthArray::QVarLengthArray;
        Entries() = default;
        Entries(const Entries &) = default;
        Entries(Entries &&) = default;
        Entries &operator=(const Entries &) = default;
        // Qt 6.4 does not free memory that a move replaces.
        Entries &operator=(Entries &&other) noexcept
        {
            const QVarLengthArray replaced(std::move(static_cast<QVarLengthArray &>(*this)));
            QVarLengthArray::operator=(std::move(other));
            return *this;
        }
        ~Entries() = default;
    };

    Entries entries; ///< in the order of their symbols, none of them 0
    double constant = 0.0;
    /// The largest rounding error of coefficients that cancelled out, relative to their operands. 0
    /// if all were exact. The larger it is, the less precise are the other coefficients.
    double rounding = 0.0;

    bool operator==(const LinearRow &) const = default;

    /// 0 for a symbol that the row does not mention.
    double coefficientOf(Symbol symbol) const;
    /// The size of its largest coefficient.
    double largestCoefficient() const;

    void scale(double factor);
    void erase(Symbol symbol);
    void add(Symbol symbol, double coefficient);
    void add(const LinearRow &other, double factor);

    /// The same, and calls `appears` and `vanishes` with the symbols that enter and leave the row.
    template <typename Appears, typename Vanishes>
    void add(const LinearRow &other, double factor, Appears appears, Vanishes vanishes);

    /// Solves "row = 0" for `symbol`, which it must mention: "symbol = row".
    void solveFor(Symbol symbol);

    /// Replaces `symbol` by `value`.
    void substitute(Symbol symbol, const LinearRow &value);

private:
    double sumOf(double one, double other)
    {
        return roundedSum(one + other, std::abs(one) + std::abs(other), rounding);
    }

    template <typename AnyEntries>
    static auto lowerBound(AnyEntries &entries, Symbol symbol)
    {
        // A linear search is faster for few entries, and for the host's symbols, which come first.
        const auto isBefore = [symbol](const Entry &entry) {
            return entry.symbol < symbol;
        };
        const auto few = entries.begin() + std::min<qsizetype>(entries.size(), 8);
        const auto place = std::find_if_not(entries.begin(), few, isBefore);
        return place != few ? place : std::partition_point(few, entries.end(), isBefore);
    }
};

inline double LinearRow::coefficientOf(Symbol symbol) const
{
    const auto place = lowerBound(entries, symbol);
    return place != entries.end() && place->symbol == symbol ? place->coefficient : 0.0;
}

template <typename Appears, typename Vanishes>
void LinearRow::add(const LinearRow &other, double factor, Appears appears, Vanishes vanishes)
{
    constant += factor * other.constant;
    if (factor == 0.0)
        return;
    // Adds a short sum to a long one entry by entry, so that the rest need not be copied.
    if (other.entries.size() * 16 < entries.size()) {
        for (const auto &[symbol, coefficient] : other.entries) {
            const double share = factor * coefficient;
            const auto place = lowerBound(entries, symbol);
            if (place == entries.end() || place->symbol != symbol) {
                if (std::abs(share) > smallestCoefficient) {
                    entries.emplace(place, Entry { symbol, share });
                    appears(symbol);
                }
            } else if (place->coefficient = sumOf(place->coefficient, share);
                       place->coefficient == 0.0) {
                entries.erase(place);
                vanishes(symbol);
            }
        }
        return;
    }
    QVarLengthArray<Entry, 32> sum;
    sum.reserve(entries.size() + other.entries.size());
    auto mine = entries.cbegin();
    auto theirs = other.entries.cbegin();
    const auto myEnd = entries.cend();
    const auto theirEnd = other.entries.cend();
    while (mine != myEnd || theirs != theirEnd) {
        if (theirs == theirEnd || (mine != myEnd && mine->symbol < theirs->symbol)) {
            sum.push_back(*mine++);
        } else if (mine == myEnd || theirs->symbol < mine->symbol) {
            const double share = factor * theirs->coefficient;
            if (std::abs(share) > smallestCoefficient) {
                sum.push_back({ theirs->symbol, share });
                appears(theirs->symbol);
            }
            ++theirs;
        } else {
            const double coefficient = sumOf(mine->coefficient, factor * theirs->coefficient);
            if (coefficient == 0.0)
                vanishes(mine->symbol);
            else
                sum.push_back({ mine->symbol, coefficient });
            ++mine;
            ++theirs;
        }
    }
    entries.clear();
    entries.append(sum.constData(), sum.size());
}

} // namespace Pellarvine::detail
