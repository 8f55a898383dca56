// SPDX-License-Identifier: MIT
// Compares the solver with that of kiwi (https://github.com/nucleic/kiwi): the same views, solved
// from nothing and after a change of the container's length.
#include "Goals.h"
#include "Views.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <kiwi/kiwi.h>
#include <string>
#include <utility>
#include <vector>

namespace {

// Kiwi minimizes the sum of all errors, each times its strength. A length that can be suggested is
// optional there. The container's is so much stronger than the others that their errors together do
// not outweigh it.
class KiwiSolver
{
public:
    using Variable = kiwi::Variable;
    using Terms = std::vector<kiwi::Term>;

    static Variable addVariable() { return {}; }

    void equal(Terms terms, double constant)
    {
        m_solver.addConstraint({ { std::move(terms), constant }, kiwi::OP_EQ });
    }

    void prefer(const Variable &variable, double length, double weight)
    {
        const kiwi::Expression error(kiwi::Term(variable), -length);
        m_solver.addConstraint(
                { error, kiwi::OP_GE, kiwi::strength::create(0.0, 1.0, 0.0, weight) });
        m_solver.addConstraint(
                { error, kiwi::OP_LE, kiwi::strength::create(0.0, 0.0, 1.0, weight) });
    }

    void addLength(const Variable &variable, double length)
    {
        m_length = variable;
        m_solver.addEditVariable(variable, kiwi::strength::strong);
        setLength(length);
    }
    void setLength(double length) { m_solver.suggestValue(m_length, length); }

    void solve() { m_solver.updateVariables(); }
    static double value(const Variable &variable) { return variable.value(); }

private:
    kiwi::Solver m_solver;
    Variable m_length;
};

// Whether both solvers place the views alike, from nothing and after each change.
bool solversAgree(int count, bool isGrid)
{
    Views<OwnSolver> views(count, isGrid);
    Views<KiwiSolver> others(count, isGrid);
    views.solve();
    others.solve();
    for (const double length : { 0.0, 40.0, 60.0, 70.0, 45.0 }) {
        if (length > 0.0) {
            views.resize(length * count);
            others.resize(length * count);
        }
        const std::vector<double> places = views.places();
        const std::vector<double> otherPlaces = others.places();
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (std::abs(places[i] - otherPlaces[i]) > 1e-6 * count) {
                std::fprintf(stderr, "error: view %zu of %d in a %s, length %g: %g, with kiwi %g\n",
                             i / 2, count, isGrid ? "grid" : "chain", length * count, places[i],
                             otherPlaces[i]);
                return false;
            }
        }
    }
    return true;
}

// A chain of 1000 views takes kiwi ten seconds.
void counts(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(10)->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(solveViews<OwnSolver, false>)->Name("kiwi/solve-chain")->Apply(counts);
BENCHMARK(solveViews<KiwiSolver, false>)->Name("kiwi/solve-chain-kiwi")->Apply(counts);
BENCHMARK(resizeViews<OwnSolver, false>)->Name("kiwi/resolve-chain")->Apply(counts);
BENCHMARK(resizeViews<KiwiSolver, false>)->Name("kiwi/resolve-chain-kiwi")->Apply(counts);
BENCHMARK(solveViews<OwnSolver, true>)->Name("kiwi/solve-grid")->Apply(counts);
BENCHMARK(solveViews<KiwiSolver, true>)->Name("kiwi/solve-grid-kiwi")->Apply(counts);
BENCHMARK(resizeViews<OwnSolver, true>)->Name("kiwi/resolve-grid")->Apply(counts);
BENCHMARK(resizeViews<KiwiSolver, true>)->Name("kiwi/resolve-grid-kiwi")->Apply(counts);

} // namespace

int main(int argc, char **argv)
{
    for (const int count : { 10, 100, 300 }) {
        if (!solversAgree(count, false) || !solversAgree(count, true))
            return 1;
    }
    std::vector<Goal> goals;
    for (const std::string work :
         { "solve-chain", "resolve-chain", "solve-grid", "resolve-grid" }) {
        for (const std::string count : { "10", "100", "300" }) {
            goals.push_back({ .name = "kiwi/" + work + "/" + count,
                              .subject = "kiwi/" + work + "/" + count,
                              .baseline = "kiwi/" + work + "-kiwi/" + count,
                              .limit = 1.2 });
        }
    }
    return runBenchmarks(argc, argv, goals);
}
