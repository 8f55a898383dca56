// SPDX-License-Identifier: MIT
#include "Layout/Solver/LinearRow.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace Pellarvine::detail {

TEST(LinearRow, sums_cancel_out_and_keep_their_order)
{
    LinearRow row { { { 2, 3.0 }, { 5, 1.0 } }, 4.0 };
    row.add(3, -1.0);
    row.add(5, -1.0);
    EXPECT_EQ(row, (LinearRow { { { 2, 3.0 }, { 3, -1.0 } }, 4.0 }));
    row.add({ { { 1, 1.0 }, { 3, 0.5 } }, 1.0 }, 2.0);
    EXPECT_EQ(row, (LinearRow { { { 1, 2.0 }, { 2, 3.0 } }, 6.0 }));
    EXPECT_EQ(row.coefficientOf(2), 3.0);
    EXPECT_EQ(row.coefficientOf(3), 0.0);
}

TEST(LinearRow, an_equation_solved_for_a_symbol_can_take_its_place)
{
    LinearRow equation { { { 1, 2.0 }, { 4, -1.0 } }, 6.0 }; // 2a - d + 6 = 0
    equation.solveFor(1);
    EXPECT_EQ(equation, (LinearRow { { { 4, 0.5 } }, -3.0 }));
    LinearRow row { { { 1, 4.0 }, { 4, 1.0 } }, 1.0 };
    row.substitute(1, equation);
    EXPECT_EQ(row, (LinearRow { { { 4, 3.0 } }, -11.0 }));
    row.substitute(1, equation);
    EXPECT_EQ(row, (LinearRow { { { 4, 3.0 } }, -11.0 })) << "mentions it no more";
}

// The sums are short and long, because the code for these differs.
TEST(LinearRow, tells_which_symbols_enter_and_leave)
{
    std::mt19937 random(5);
    for (const int length : { 1, 3, 40, 200 }) {
        LinearRow sum;
        std::set<int> symbols;
        for (int step = 0; step < 200; ++step) {
            LinearRow other;
            for (int i = 0; i < (step % 20 == 0 ? length : 2); ++i)
                other.add(int(random() % 200), double(random() % 3) - 1.0);
            LinearRow expected = sum;
            for (const auto &[symbol, coefficient] : other.entries)
                expected.add(symbol, -2.0 * coefficient);
            sum.add(
                    other, -2.0, [&](int symbol) { EXPECT_TRUE(symbols.insert(symbol).second); },
                    [&](int symbol) { EXPECT_EQ(symbols.erase(symbol), 1U); });
            ASSERT_EQ(sum, expected);
            ASSERT_EQ(sum.entries.size(), symbols.size());
        }
    }
}

} // namespace Pellarvine::detail
