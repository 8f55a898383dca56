// SPDX-License-Identifier: MIT
#include "Layout/Solver/Tableau.h"

#include <gtest/gtest.h>

#include <random>

namespace Pellarvine::detail {

namespace {

double valueOf(const LinearRow &row, const std::vector<double> &values)
{
    double sum = row.constant;
    for (const auto &[symbol, coefficient] : row.entries)
        sum += coefficient * values[symbol];
    return sum;
}

} // namespace

TEST(Tableau, pivots_keep_the_solutions_and_the_columns)
{
    constexpr int rows = 6;
    constexpr int symbols = 15;
    std::mt19937 random(11);
    Tableau tableau;
    for (int symbol = 0; symbol < symbols; ++symbol)
        tableau.addSymbol();
    std::vector<LinearRow> equations;
    for (int basic = 0; basic < rows; ++basic) {
        LinearRow row;
        row.constant = double(random() % 20);
        for (int i = 0; i < 4; ++i)
            row.add(rows + int(random() % (symbols - rows)), 1.0 + double(random() % 3));
        equations.push_back(row);
        tableau.insert(row, basic);
    }
    for (int step = 0; step < 100; ++step) {
        const int index = int(random() % rows);
        const auto &entries = tableau.row(index).entries;
        const auto [entering, coefficient] = entries[random() % entries.size()];
        if (std::abs(coefficient) > 0.1)
            tableau.pivot(index, entering);

        std::vector<double> values(symbols);
        for (int symbol = 0; symbol < symbols; ++symbol) {
            if (!tableau.isBasic(symbol))
                values[symbol] = double(random() % 50);
        }
        for (int i = 0; i < rows; ++i)
            values[tableau.basic(i)] = valueOf(tableau.row(i), values);
        for (int basic = 0; basic < rows; ++basic)
            ASSERT_NEAR(values[basic], valueOf(equations[basic], values), 1e-6) << step;
        for (int symbol = 0; symbol < symbols; ++symbol) {
            SortedIndices mentioned;
            for (int i = 0; i < rows; ++i) {
                if (tableau.row(i).coefficientOf(symbol) != 0.0)
                    mentioned.push_back(i);
            }
            ASSERT_EQ(tableau.rowsWith(symbol), mentioned) << step;
        }
    }
}

TEST(Tableau, a_shift_moves_what_depends_on_the_symbol)
{
    Tableau tableau;
    for (int symbol = 0; symbol < 3; ++symbol)
        tableau.addSymbol();
    tableau.insert({ { { 2, -2.0 } }, 10.0 }, 0);
    tableau.insert({ { { 2, 1.0 } }, 3.0 }, 1);
    tableau.shift(2, 4.0);
    EXPECT_EQ(tableau.value(0), 2.0);
    EXPECT_EQ(tableau.value(1), 7.0);
    tableau.shift(1, 5.0); // a basic variable, whose value changes by the opposite amount
    EXPECT_EQ(tableau.value(1), 2.0);
    EXPECT_EQ(tableau.value(2), 0.0);
}

} // namespace Pellarvine::detail
