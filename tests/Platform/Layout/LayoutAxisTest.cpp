// SPDX-License-Identifier: MIT
#include "Layout/LayoutAxis.h"

#include <gtest/gtest.h>

namespace Pellarvine::detail {

namespace {

using Solver = ConstraintSolver;
using Relation = Solver::Relation;

// Two axes in a row that fill a length.
struct Pair
{
    explicit Pair(double length)
    {
        solver.add({ { { one.origin() } }, 0.0 }, Relation::equal);
        solver.add({ { { one.origin() }, { one.extent() }, { other.origin(), -1.0 } }, 0.0 },
                   Relation::equal);
        solver.add({ { { other.origin() }, { other.extent() } }, -length }, Relation::equal);
    }

    std::pair<double, double> lengths()
    {
        solver.solve();
        return { solver.value(one.extent()), solver.value(other.extent()) };
    }

    Solver solver;
    LayoutAxis one { solver, 2.0 };
    LayoutAxis other { solver, 1.0 };
};

} // namespace

TEST(LayoutAxis, lengths_keep_to_their_hints_as_their_policies_say)
{
    struct Row
    {
        QSizePolicy::Policy one;
        QSizePolicy::Policy other;
        double length;
        std::pair<double, double> lengths;
    };
    const Row rows[] = {
        // Both are 100 long. The second one grows or shrinks first.
        { QSizePolicy::Preferred, QSizePolicy::Preferred, 200, { 100, 100 } },
        { QSizePolicy::Preferred, QSizePolicy::Preferred, 260, { 100, 160 } },
        { QSizePolicy::Preferred, QSizePolicy::Preferred, 160, { 100, 60 } },
        { QSizePolicy::Expanding, QSizePolicy::Preferred, 260, { 160, 100 } },
        { QSizePolicy::Preferred, QSizePolicy::Fixed, 260, { 160, 100 } },
        { QSizePolicy::Preferred, QSizePolicy::Minimum, 160, { 60, 100 } },
        { QSizePolicy::Preferred, QSizePolicy::Maximum, 160, { 100, 60 } },
        { QSizePolicy::Ignored, QSizePolicy::Preferred, 130, { 30, 100 } },
        // The second one shrinks to its minimum size hint of 50, then the first one shrinks.
        { QSizePolicy::Preferred, QSizePolicy::Preferred, 120, { 70, 50 } },
    };
    for (const auto &[one, other, length, lengths] : rows) {
        Pair pair(length);
        pair.one.setIntrinsicLength(
                pair.solver, intrinsicLength({ .policy = one, .hint = 100, .minimumHint = 50 }));
        pair.other.setIntrinsicLength(
                pair.solver, intrinsicLength({ .policy = other, .hint = 100, .minimumHint = 50 }));
        EXPECT_EQ(pair.lengths(), lengths) << one << ' ' << other << ' ' << length;
    }
}

TEST(LayoutAxis, another_intrinsic_length_replaces_the_first_with_all_its_limits)
{
    Pair pair(200);
    pair.one.setIntrinsicLength(pair.solver,
                                intrinsicLength({ .hint = 100, .minimum = 90, .maximum = 110 }));
    pair.other.setIntrinsicLength(pair.solver,
                                  intrinsicLength({ .policy = QSizePolicy::Fixed, .hint = 20 }));
    EXPECT_EQ(pair.lengths(), std::pair(110.0, 90.0));
    pair.one.setIntrinsicLength(pair.solver,
                                intrinsicLength({ .hint = 100, .minimum = 90, .maximum = 120 }));
    EXPECT_EQ(pair.lengths(), std::pair(120.0, 80.0));
    pair.one.setIntrinsicLength(pair.solver, intrinsicLength({ .hint = 100 }));
    EXPECT_EQ(pair.lengths(), std::pair(180.0, 20.0));
    pair.other.setIntrinsicLength(pair.solver, intrinsicLength({ .minimum = 130 }));
    EXPECT_EQ(pair.lengths(), std::pair(70.0, 130.0));
}

TEST(LayoutAxis, a_given_place_can_be_moved_and_taken_back)
{
    Solver solver;
    LayoutAxis axis(solver, 1.0);
    const auto origin = [&] {
        solver.solve();
        return solver.value(axis.origin());
    };
    axis.setIntrinsicLength(solver, intrinsicLength({ .hint = 10 }));
    axis.setPlace(solver, 40.0);
    EXPECT_EQ(origin(), 40.0);
    axis.setPlace(solver, 50.0);
    EXPECT_EQ(origin(), 50.0);
    Solver copy = solver;
    EXPECT_TRUE(axis.setTarget(copy, 30.0));
    EXPECT_FALSE(axis.setTarget(copy, 30.0));
    copy.solve();
    EXPECT_EQ(copy.value(axis.extent()), 30.0);
    axis.setPlace(solver, {});
    EXPECT_EQ(origin(), 0.0);
    EXPECT_EQ(solver.value(axis.extent()), 10.0);
}

} // namespace Pellarvine::detail
