// SPDX-License-Identifier: MIT
#pragma once

#include "Layout/Solver/ConstraintSolver.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>
#include <vector>

/// The library's solver, as Views needs it.
class OwnSolver
{
    using Solver = Pellarvine::detail::ConstraintSolver;

public:
    using Variable = Solver::Variable;
    using Terms = decltype(Solver::Expression::terms);

    Variable addVariable() { return m_solver.addVariable(); }

    /// terms + constant = 0
    void equal(Terms terms, double constant)
    {
        m_solver.add({ std::move(terms), constant }, Solver::Relation::equal);
    }

    /// Rather longer than `length` than shorter.
    void prefer(Variable variable, double length, double weight)
    {
        m_solver.addTarget({ { { variable } }, -length }, { 750.0, weight }, { 250.0, weight });
    }

    /// The length that setLength() changes.
    void addLength(Variable variable, double length)
    {
        const auto added = m_solver.add({ { { variable } }, -length }, Solver::Relation::equal);
        m_length = *added.constraint;
    }
    void setLength(double length) { m_solver.setConstant(m_length, -length); }

    void solve() { m_solver.solve(); }
    double value(Variable variable) const { return m_solver.value(variable); }

private:
    Solver m_solver;
    Solver::Constraint m_length {};
};

/// Views in a row that fill a container, each with its own preferred size, or views in a grid,
/// where all views of a column are as wide as the first one.
template <typename Solver>
class Views
{
    using Variable = typename Solver::Variable;

public:
    static constexpr double spacing = 6.0;
    static constexpr double wanted = 50.0;

    Views(int count, bool isGrid)
        : m_container(m_solver.addVariable())
    {
        m_solver.addLength(m_container, wanted * count);
        const int columns = isGrid ? int(std::sqrt(count)) : count;
        for (int i = 0; i < count; ++i) {
            const View view { m_solver.addVariable(), m_solver.addVariable() };
            m_solver.prefer(view.extent, wanted, 1.0 + 1.0 / (2.0 + i));
            if (i >= columns) {
                const View &first = m_views[i % columns];
                m_solver.equal({ { view.origin }, { first.origin, -1.0 } }, 0.0);
                m_solver.equal({ { view.extent }, { first.extent, -1.0 } }, 0.0);
            } else if (i == 0) {
                m_solver.equal({ { view.origin } }, -spacing);
            } else {
                const View &last = m_views.back();
                m_solver.equal({ { view.origin }, { last.origin, -1.0 }, { last.extent, -1.0 } },
                               -spacing);
            }
            m_views.push_back(view);
        }
        const View &last = m_views[columns - 1];
        m_solver.equal({ { last.origin }, { last.extent }, { m_container, -1.0 } }, spacing);
    }

    void resize(double length)
    {
        m_solver.setLength(length);
        solve();
    }

    void solve()
    {
        m_solver.solve();
        for (const View &view : m_views) {
            benchmark::DoNotOptimize(m_solver.value(view.origin));
            benchmark::DoNotOptimize(m_solver.value(view.extent));
        }
    }

    /// Origin and extent of each view.
    std::vector<double> places() const
    {
        std::vector<double> places;
        for (const View &view : m_views) {
            places.push_back(m_solver.value(view.origin));
            places.push_back(m_solver.value(view.extent));
        }
        return places;
    }

private:
    struct View
    {
        Variable origin;
        Variable extent;
    };

    Solver m_solver;
    Variable m_container;
    std::vector<View> m_views;
};

template <typename Solver, bool isGrid>
void solveViews(benchmark::State &state)
{
    for (auto _ : state) {
        Views<Solver> views(int(state.range(0)), isGrid);
        views.solve();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Solver, bool isGrid>
void resizeViews(benchmark::State &state)
{
    const auto count = double(state.range(0));
    Views<Solver> views(int(count), isGrid);
    double length = Views<Solver>::wanted * count;
    for (auto _ : state) {
        length = length > 60.0 * count ? 40.0 * count : length + 7;
        views.resize(length);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

inline void viewCounts(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
}
