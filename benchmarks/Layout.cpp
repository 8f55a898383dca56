// SPDX-License-Identifier: MIT
// The solver from 10 to 1000 views, whose cost per view should not grow with their number; a window
// with 100 constrained widgets against the same arrangement in Qt's own nested grids.
#include "Goals.h"
#include "Layout/Solver/ConstraintSolver.h"

#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QApplication>
#include <QGridLayout>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

using namespace Pellarvine;
using namespace NS;

namespace {

using Solver = detail::ConstraintSolver;
using Relation = Solver::Relation;

constexpr double spacing = 6.0;
constexpr double wanted = 50.0;

struct Span
{
    Solver::Variable origin;
    Solver::Variable extent;
};

// Views one beside the other, each with a size of its own that it would like to keep, which fill a
// container; or in a grid, where those of a column are as wide as its first one.
class System
{
public:
    System(int count, bool isGrid)
        : m_container(m_solver.addVariable())
        , m_size(*m_solver.add({ { { m_container } }, -wanted * count }, Relation::equal)
                          .constraint)
    {
        const int columns = isGrid ? int(std::sqrt(count)) : count;
        for (int i = 0; i < count; ++i) {
            const Span view { m_solver.addVariable(), m_solver.addVariable() };
            const double weight = 1.0 + 1.0 / (2.0 + i);
            m_solver.addTarget({ { { view.extent } }, -wanted }, { 750.0, weight },
                               { 250.0, weight });
            if (i >= columns) {
                equal({ { view.origin }, { m_views[i % columns].origin, -1.0 } }, 0.0);
                equal({ { view.extent }, { m_views[i % columns].extent, -1.0 } }, 0.0);
            } else if (i == 0) {
                equal({ { view.origin } }, -spacing);
            } else {
                const Span &last = m_views.back();
                equal({ { view.origin }, { last.origin, -1.0 }, { last.extent, -1.0 } }, -spacing);
            }
            m_views.push_back(view);
        }
        const Span &last = m_views[columns - 1];
        equal({ { last.origin }, { last.extent }, { m_container, -1.0 } }, spacing);
    }

    void resize(double length)
    {
        m_solver.setConstant(m_size, -length);
        solve();
    }

    void solve()
    {
        m_solver.solve();
        benchmark::DoNotOptimize(m_solver.value(m_views.back().extent));
    }

private:
    void equal(std::vector<Solver::Term> terms, double constant)
    {
        m_solver.add({ std::move(terms), constant }, Relation::equal);
    }

    Solver m_solver;
    Solver::Variable m_container;
    Solver::Constraint m_size;
    std::vector<Span> m_views;
};

template <bool isGrid>
void solve(benchmark::State &state)
{
    for (auto _ : state) {
        System system(int(state.range(0)), isGrid);
        system.solve();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <bool isGrid>
void resolve(benchmark::State &state)
{
    System system(int(state.range(0)), isGrid);
    double length = wanted * double(state.range(0));
    for (auto _ : state) {
        length =
                length > 60.0 * double(state.range(0)) ? 40.0 * double(state.range(0)) : length + 7;
        system.resize(length);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

constexpr int rows = 10;
constexpr int columns = 10;

class Cell : public QWidget
{
public:
    using QWidget::QWidget;
    QSize sizeHint() const override { return { 40, 20 }; }
    QSize minimumSizeHint() const override { return { 10, 10 }; }
};

void arrangeInGrids(QWidget *panel)
{
    auto *const outer = new QGridLayout(panel);
    outer->setContentsMargins(int(spacing), int(spacing), int(spacing), int(spacing));
    outer->setSpacing(int(spacing));
    for (int row = 0; row < rows; ++row) {
        auto *const inner = new QGridLayout;
        inner->setSpacing(int(spacing));
        for (int column = 0; column < columns; ++column) {
            inner->addWidget(new Cell(panel), 0, column);
            inner->setColumnStretch(column, 1);
        }
        outer->addLayout(inner, row, 0);
        outer->setRowStretch(row, 1);
    }
}

void arrangeByConstraints(QWidget *panel)
{
    QList<std::shared_ptr<LayoutConstraint>> constraints;
    QList<QWidget *> cells(rows * columns);
    std::ranges::generate(cells, [panel] { return new Cell(panel); });
    for (int i = 0; i < cells.size(); ++i) {
        QWidget *const cell = cells[i];
        QWidget *const left = i % columns > 0 ? cells[i - 1] : nullptr;
        QWidget *const above = i >= columns ? cells[i - columns] : nullptr;
        constraints += leadingAnchor(cell).constraintEqualToAnchor(
                left ? trailingAnchor(left) : leadingAnchor(panel), spacing);
        constraints += topAnchor(cell).constraintEqualToAnchor(
                above ? bottomAnchor(above) : topAnchor(panel), spacing);
        if (i > 0) {
            constraints +=
                    widthAnchor(cell).constraintEqualToAnchor(widthAnchor(cells.constFirst()));
            constraints +=
                    heightAnchor(cell).constraintEqualToAnchor(heightAnchor(cells.constFirst()));
        }
    }
    constraints += trailingAnchor(panel).constraintEqualToAnchor(trailingAnchor(cells[columns - 1]),
                                                                 spacing);
    constraints += bottomAnchor(panel).constraintEqualToAnchor(bottomAnchor(cells.last()), spacing);
    LayoutConstraint::activateConstraints(constraints);
}

// Every step of a window that is dragged larger and smaller, without painting.
template <void (*arrange)(QWidget *)>
void resizeWindow(benchmark::State &state)
{
    QWidget window;
    auto *const panel = new QWidget(&window);
    arrange(panel);
    window.resize(1200, 800);
    window.show();
    QApplication::processEvents();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 400;
        panel->resize(600 + step, 400 + step / 2);
    }
    if (panel->findChildren<Cell *>().constLast()->geometry().bottomRight().x()
        < panel->width() - 20)
        state.SkipWithError("the cells do not fill the panel");
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(solve<false>)->Name("layout/solve-chain")->Apply(sizes);
BENCHMARK(resolve<false>)->Name("layout/resolve-chain")->Apply(sizes);
BENCHMARK(solve<true>)->Name("layout/solve-grid")->Apply(sizes);
BENCHMARK(resolve<true>)->Name("layout/resolve-grid")->Apply(sizes);
BENCHMARK(resizeWindow<&arrangeByConstraints>)
        ->Name("layout/resize-window")
        ->Unit(benchmark::kMicrosecond);
BENCHMARK(resizeWindow<&arrangeInGrids>)
        ->Name("layout/resize-window-grids")
        ->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Ten times the views; a cost that grew with the square would show as 100.
    const auto growth = [](const std::string &work) {
        return Goal { .name = "layout/" + work + "-growth",
                      .subject = "layout/" + work + "/1000",
                      .baseline = "layout/" + work + "/100",
                      .limit = 13.0 };
    };
    return runBenchmarks(argc, argv,
                         {
                                 growth("solve-chain"),
                                 growth("resolve-chain"),
                                 growth("solve-grid"),
                                 growth("resolve-grid"),
                                 { .name = "layout/resize-window",
                                   .subject = "layout/resize-window",
                                   .baseline = "layout/resize-window-grids",
                                   .limit = 1.5 },
                         });
}
