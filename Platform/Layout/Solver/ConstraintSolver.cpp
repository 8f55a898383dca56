// SPDX-License-Identifier: MIT
#include "Layout/Solver/ConstraintSolver.h"

#include "Layout/Solver/SolverState.h"

#include <cmath>
#include <utility>

namespace Pellarvine::detail {

ConstraintSolver::ConstraintSolver()
    : d(std::make_unique<Private>())
{ }

ConstraintSolver::ConstraintSolver(const ConstraintSolver &other)
    : d(std::make_unique<Private>(*other.d))
{ }

ConstraintSolver::~ConstraintSolver() = default;

ConstraintSolver::Variable ConstraintSolver::addVariable(bool isWanted)
{
    return Variable { d->makeSymbol({ .number = d->nextNumber++, .isWanted = isWanted }) };
}

void ConstraintSolver::removeVariable(Variable variable)
{
    const int symbol = int(variable);
    if (d->definitions.isDefined(symbol)) {
        const LinearRow definition = d->definitions.definition(symbol);
        d->definitions.undefine(symbol);
        d->definitions.replace(symbol, -1, definition);
    } else {
        d->definitions.eliminate(symbol, -1, d->simplex.tableau());
    }
    d->recycle(symbol);
    d->settle();
}

void ConstraintSolver::setOrder(const std::vector<Variable> &variables)
{
    d->nextNumber = 0;
    for (const Variable variable : variables)
        d->symbols[int(variable)].number = d->nextNumber++;
}

ConstraintSolver::Addition ConstraintSolver::add(const Expression &expression, Relation relation,
                                                 Strength strength)
{
    const bool isRequired = !std::isfinite(strength.level);
    if (relation == Relation::equal && !isRequired)
        return { addTarget(expression, strength, strength), {} };

    // factor * expression + marker (- error) = 0
    Private::Record record;
    record.factor = relation == Relation::greaterThanOrEqual ? -1.0 : 1.0;
    record.constant = expression.constant;
    record.terms = Private::termsOf(expression, record.factor);
    record.isEquality = relation == Relation::equal;
    const int index = d->makeRecord(record);
    d->records[index].marker = d->makeSymbol({ .owner = index });
    if (!isRequired) {
        d->records[index].partner = d->makeSymbol({ .owner = index });
        d->records[index].partnerStrength = strength;
    }
    std::vector<Constraint> conflict = d->addReliably(index);
    d->settle();
    if (conflict.empty())
        return { Constraint { index }, {} };
    std::erase(conflict, Constraint { index });
    d->recycle(d->records[index].marker);
    d->recycleRecord(index);
    return { std::nullopt, std::move(conflict) };
}

ConstraintSolver::Constraint ConstraintSolver::addTarget(const Expression &expression,
                                                         Strength notBelow, Strength notAbove)
{
    const Constraint constraint = d->addTarget(expression, notBelow, notAbove);
    d->settle();
    return constraint;
}

void ConstraintSolver::remove(Constraint constraint)
{
    d->remove(int(constraint));
    d->settle();
}

void ConstraintSolver::setWeight(Constraint constraint, double weight)
{
    d->changeStrengths(int(constraint), [&](Strength &strength) { strength.weight = weight; });
    d->settle();
}

void ConstraintSolver::setLevel(Constraint constraint, double level)
{
    d->changeStrengths(int(constraint), [&](Strength &strength) { strength.level = level; });
    d->settle();
}

std::vector<ConstraintSolver::Constraint> ConstraintSolver::setConstant(Constraint constraint,
                                                                        double constant)
{
    const int index = int(constraint);
    const double old = d->records[index].constant;
    if (constant == old)
        return {};
    std::vector<Constraint> conflict = d->setConstant(index, constant);
    if (!conflict.empty()) {
        const bool isWorn = d->isWorn();
        d->setConstant(index, old);
        if (isWorn) {
            // A rounding error may be the reason.
            d->renew();
            conflict = d->setConstant(index, constant);
            if (!conflict.empty())
                d->setConstant(index, old);
        }
    }
    d->settle();
    return conflict;
}

double ConstraintSolver::constant(Constraint constraint) const
{
    return d->records[int(constraint)].constant;
}

void ConstraintSolver::solve()
{
    d->solve();
    if (d->changes > 0 && d->isUnreliable()) {
        d->renew();
        d->solve();
    }
    if (d->changesSinceStart > 0 && d->isUnreliable()) {
        d->startAgain();
        d->solve();
    }
}

double ConstraintSolver::value(Variable variable) const
{
    return d->values[int(variable)];
}

bool ConstraintSolver::isDetermined(Variable variable, double level) const
{
    Private scratch(*d);
    return scratch.isDetermined(int(variable), level);
}

std::vector<ConstraintSolver::Constraint> ConstraintSolver::determining(Variable variable) const
{
    std::vector<Private::Symbol> symbols;
    const LinearRow row =
            d->definitions.expand({ { { int(variable), 1.0 } }, 0.0 }, d->simplex.tableau());
    for (const auto &entry : row.entries)
        symbols.push_back(entry.symbol);
    return d->ownersOf(symbols);
}

} // namespace Pellarvine::detail
