// SPDX-License-Identifier: MIT
#include "Layout/LayoutSystem.h"

#include "Base/Assign.h"
#include "Layout/AnchorExpression.h"
#include "Layout/LayoutLevel.h"
#include "View/NSView.h"

#include <QLayout>

#include <algorithm>
#include <cmath>
#include <utility>

using NS::LayoutAttribute;
using NS::LayoutConstraint;
using NS::LayoutRelation;

namespace Pellarvine::detail {

namespace {

// The length of a host before its first layout pass. A large one is fast, because it compresses no
// widget while constraints are added.
constexpr double roomyLength = 16384.0;

// The distance by which exerciseAmbiguity() moves a widget.
constexpr double exerciseDistance = 24.0;

// Numerical errors below this must not change a size by a whole unit.
constexpr double tolerance = 1e-4;

int roundedUp(double length)
{
    return int(std::ceil(length - tolerance));
}

int roundedDown(double length)
{
    return std::min(int(std::floor(length + tolerance)), QLAYOUTSIZE_MAX);
}

int depthOf(const LayoutItem &item)
{
    int depth = item.guide ? 1 : 0;
    for (const QWidget *view = item.view(); view && !view->isWindow(); view = view->parentWidget())
        ++depth;
    return depth;
}

// Of items with the same priority, the one constrained last gives way first.
double weightOf(int number)
{
    return 1.0 + 1.0 / (2.0 + number);
}

double across(const QMarginsF &insets)
{
    return insets.left() + insets.right();
}

double along(const QMarginsF &insets)
{
    return insets.top() + insets.bottom();
}

ConstraintSolver::Relation relationOf(LayoutRelation relation)
{
    switch (relation) {
    case LayoutRelation::lessThanOrEqual:
        return ConstraintSolver::Relation::lessThanOrEqual;
    case LayoutRelation::equal:
        break;
    case LayoutRelation::greaterThanOrEqual:
        return ConstraintSolver::Relation::greaterThanOrEqual;
    }
    return ConstraintSolver::Relation::equal;
}

// Restores the heights that depend on widths, so that no question depends on the one before.
class KeptHeights
{
public:
    KeptHeights(ConstraintSolver &solver, const std::vector<LayoutItem *> &items)
        : m_solver(solver)
    {
        for (const LayoutItem *const item : items) {
            if (item->hasHeightForWidth)
                m_heights.emplace_back(&item->y, item->y.target(solver));
        }
    }

    ~KeptHeights()
    {
        for (const auto &[axis, height] : m_heights)
            axis->setTarget(m_solver, height);
    }

    Q_DISABLE_COPY_MOVE(KeptHeights)

private:
    ConstraintSolver &m_solver;
    std::vector<std::pair<const LayoutAxis *, double>> m_heights;
};

} // namespace

LayoutItem::LayoutItem(NS::ConstraintItem item, int number, ConstraintSolver &solver)
    : object(item.object())
    , widget(item.widget())
    , guide(item.guide())
    , x(solver, weightOf(number))
    , y(solver, weightOf(number))
{ }

LayoutSystem::HostAxis::HostAxis(Solver &solver)
    : m_extent(solver.addVariable())
    , m_suggestion(solver.addTarget({ { { m_extent } }, -roomyLength }, { LayoutLevel::container },
                                    { LayoutLevel::container }))
    , m_level(LayoutLevel::container)
{ }

// Changes the length while the priority is the lower one, so that fewer items change on the way.
void LayoutSystem::HostAxis::suggest(Solver &solver, double level, double length)
{
    if (level < m_level)
        solver.setLevel(m_suggestion, level);
    solver.setConstant(m_suggestion, -length);
    if (level > m_level)
        solver.setLevel(m_suggestion, level);
    m_level = level;
}

// Items

LayoutItem *LayoutSystem::find(const QObject *object) const
{
    const auto place = m_items.find(object);
    return place == m_items.end() ? nullptr : place->second.get();
}

LayoutItem &LayoutSystem::add(NS::ConstraintItem item)
{
    auto &added = m_items[item.object()];
    added = std::make_unique<LayoutItem>(item, int(m_order.size()), m_solver);
    const auto place = std::upper_bound(
            m_order.begin(), m_order.end(), depthOf(*added),
            [](int depth, const LayoutItem *other) { return depth < depthOf(*other); });
    m_order.insert(place, added.get());
    ++m_changes;
    return *added;
}

void LayoutSystem::setOrder(const std::vector<LayoutItem *> &items)
{
    std::vector<Solver::Variable> variables { m_width.extent(), m_height.extent() };
    int number = 0;
    for (LayoutItem *const item : items) {
        for (LayoutAxis *const axis : { &item->x, &item->y }) {
            axis->setWeight(m_solver, weightOf(number));
            variables.push_back(axis->origin());
            variables.push_back(axis->extent());
        }
        ++number;
    }
    m_solver.setOrder(variables);
}

void LayoutSystem::remove(LayoutItem &item)
{
    item.x.removeFrom(m_solver);
    item.y.removeFrom(m_solver);
    std::erase(m_order, &item);
    m_items.erase(item.object);
    ++m_changes;
}

void LayoutSystem::setFrame(LayoutItem &item, const QRectF &frame)
{
    item.isGiven = true;
    item.hasHeightForWidth = false;
    if (item.widget)
        item.insets = NS::alignmentRectInsets(item.widget);
    const QRectF rect = frame.marginsRemoved(item.insets);
    const auto give = [&](LayoutAxis &axis, double origin, double extent) {
        axis.setPlace(m_solver, origin);
        IntrinsicLength intrinsic;
        intrinsic.target = extent;
        intrinsic.notBelow = intrinsic.notAbove = LayoutLevel::container;
        axis.setIntrinsicLength(m_solver, intrinsic);
    };
    give(item.x, rect.x(), rect.width());
    give(item.y, rect.y(), rect.height());
}

void LayoutSystem::setIntrinsicSize(LayoutItem &item, bool hasHints)
{
    item.isGiven = false;
    item.x.setPlace(m_solver, {});
    item.y.setPlace(m_solver, {});
    const QWidget *const widget = item.widget;
    if (!widget) {
        item.x.setIntrinsicLength(m_solver, intrinsicLength({}));
        item.y.setIntrinsicLength(m_solver, intrinsicLength({}));
        return;
    }
    item.insets = NS::alignmentRectInsets(widget);
    item.hasHeightForWidth = widget->sizePolicy().hasHeightForWidth()
                             || (widget->layout() && widget->layout()->hasHeightForWidth());
    auto [width, height] = sizeHints(widget);
    width.insets = across(item.insets);
    height.insets = along(item.insets);
    if (item.hasHeightForWidth) {
        item.minimumHeight = std::max(0.0, height.minimumHint);
        // An estimate until the width is known. Less would cut off text.
        if (height.hint >= 0.0)
            height.minimumHint = height.hint;
    }
    if (!hasHints)
        width.hint = width.minimumHint = height.hint = height.minimumHint = -1.0;
    item.x.setIntrinsicLength(m_solver, intrinsicLength(width));
    item.y.setIntrinsicLength(m_solver, intrinsicLength(height));
}

// Constraints

bool LayoutSystem::setHostInsets(const QMarginsF &insets)
{
    return assign(m_hostInsets, insets);
}

LayoutSystem::Solver::Addition LayoutSystem::add(const LayoutConstraint &constraint,
                                                 const Solver::Expression &expression)
{
    const bool isRequired = constraint.priority() >= NS::LayoutPriority::required;
    return m_solver.add(expression, relationOf(constraint.relation()),
                        isRequired ? Solver::required : Solver::Strength { constraint.priority() });
}

LayoutSystem::Solver::Expression LayoutSystem::expressionOf(const LayoutConstraint &constraint,
                                                            const QWidget *ancestor) const
{
    std::optional<AnchorAxis> mirroring;
    if (ancestor->layoutDirection() == Qt::RightToLeft)
        mirroring = xAxisOf(ancestor);
    return anchorExpression(anchorOf(constraint.firstItem(), constraint.firstAttribute()),
                            constraint.multiplier(),
                            anchorOf(constraint.secondItem(), constraint.secondAttribute()),
                            constraint.constant(), mirroring);
}

// Without insets. That of the host for a widget without constraints.
AnchorAxis LayoutSystem::xAxisOf(const QWidget *widget) const
{
    const LayoutItem *const item = find(widget);
    return item ? AnchorAxis { item->x.origin(), item->x.extent() }
                : AnchorAxis { {}, m_width.extent() };
}

Anchor LayoutSystem::anchorOf(NS::ConstraintItem item, LayoutAttribute attribute) const
{
    Anchor anchor;
    anchor.attribute = attribute;
    if (const LayoutItem *const known = find(item.object())) {
        anchor.x = { known->x.origin(), known->x.extent() };
        anchor.y = { known->y.origin(), known->y.extent() };
    } else {
        anchor.x = { {}, m_width.extent(), m_hostInsets.left(), m_hostInsets.right() };
        anchor.y = { {}, m_height.extent(), m_hostInsets.top(), m_hostInsets.bottom() };
    }
    if (isBaseline(attribute))
        anchor.baseline = baselineOf(item.widget(), attribute);
    return anchor;
}

// Solutions

void LayoutSystem::solve(const QSize &hostSize)
{
    m_width.suggest(m_solver, LayoutLevel::container, hostSize.width());
    m_height.suggest(m_solver, LayoutLevel::container, hostSize.height());
    solveWidthsFirst();
}

// Heights that depend on widths are measured after the widths are solved.
void LayoutSystem::solveWidthsFirst()
{
    m_solver.solve();
    bool hasChanged = false;
    for (const LayoutItem *const item : m_order) {
        if (!item->hasHeightForWidth)
            continue;
        const int width =
                std::max(0, qRound(m_solver.value(item->x.extent()) + across(item->insets)));
        const double height = item->widget->heightForWidth(width) - along(item->insets);
        hasChanged = item->y.setTarget(m_solver, std::max(0.0, height)) || hasChanged;
    }
    if (hasChanged)
        m_solver.solve();
}

QRect LayoutSystem::place(const LayoutItem &item) const
{
    const QRectF rect(m_solver.value(item.x.origin()), m_solver.value(item.y.origin()),
                      m_solver.value(item.x.extent()), m_solver.value(item.y.extent()));
    return NS::roundedToUnits(rect.marginsAdded(item.insets));
}

bool LayoutSystem::isWhereGiven(const LayoutItem &item) const
{
    return item.x.isWhereGiven(m_solver) && item.y.isWhereGiven(m_solver);
}

bool LayoutSystem::isHostOfSize(const QSize &size) const
{
    return std::abs(m_solver.value(m_width.extent()) - size.width()) < 1.0
           && std::abs(m_solver.value(m_height.extent()) - size.height()) < 1.0;
}

// Requires sizes of at least 0, for a moment. A host that is merely too small allows that.
std::vector<LayoutSystem::NegativeSize> LayoutSystem::negativeSizes()
{
    std::vector<NegativeSize> negative;
    std::vector<Solver::Constraint> limits;
    const auto look = [&](Solver::Variable extent, Qt::Orientation orientation) {
        if (m_solver.value(extent) > -tolerance)
            return;
        const Solver::Addition limit =
                m_solver.add({ { { extent } }, 0.0 }, Solver::Relation::greaterThanOrEqual);
        if (limit.constraint)
            limits.push_back(*limit.constraint);
        else
            negative.push_back({ orientation, limit.conflict });
    };
    look(m_width.extent(), Qt::Horizontal);
    look(m_height.extent(), Qt::Vertical);
    for (const LayoutItem *const item : m_order) {
        look(item->x.extent(), Qt::Horizontal);
        look(item->y.extent(), Qt::Vertical);
    }
    // In reverse order each is the last one, which no other was solved for.
    for (auto limit = limits.crbegin(); limit != limits.crend(); ++limit)
        m_solver.remove(*limit);
    return negative;
}

bool LayoutSystem::isDetermined(const LayoutItem &item) const
{
    return openVariables(item).empty();
}

// The default length of 0 does not determine a variable.
std::vector<LayoutSystem::Solver::Variable>
LayoutSystem::openVariables(const LayoutItem &item) const
{
    std::vector<Solver::Variable> open { item.x.origin(), item.x.extent(), item.y.origin(),
                                         item.y.extent() };
    std::erase_if(open, [&](Solver::Variable variable) {
        return m_solver.isDetermined(variable, LayoutLevel::unwanted);
    });
    return open;
}

// Increases a variable if possible, so that no size becomes negative, else decreases it.
void LayoutSystem::moveElsewhere(const LayoutItem &item)
{
    struct Target
    {
        Solver::Variable variable;
        double value;
        Solver::Constraint constraint;
    };
    std::vector<Target> targets;
    for (const Solver::Variable variable : openVariables(item)) {
        const double value = m_solver.value(variable);
        const Solver::Expression expression { { { variable } }, -(value + exerciseDistance) };
        const Solver::Strength strength { LayoutLevel::elsewhere };
        targets.push_back({ variable, value, m_solver.addTarget(expression, strength, strength) });
    }
    solveWidthsFirst();
    for (const Target &target : targets) {
        if (m_solver.value(target.variable) < target.value + 1.0)
            m_solver.setConstant(target.constraint, exerciseDistance - target.value);
    }
    solveWidthsFirst();
    for (const Target &target : targets)
        m_solver.remove(target.constraint);
}

std::vector<LayoutSystem::Solver::Constraint>
LayoutSystem::determining(const LayoutItem &item, Qt::Orientation orientation) const
{
    const LayoutAxis &axis = orientation == Qt::Horizontal ? item.x : item.y;
    std::vector<Solver::Constraint> all = m_solver.determining(axis.origin());
    for (const Solver::Constraint constraint : m_solver.determining(axis.extent())) {
        if (std::find(all.begin(), all.end(), constraint) == all.end())
            all.push_back(constraint);
    }
    return all;
}

QSize LayoutSystem::hostSize(int (*rounded)(double)) const
{
    return { rounded(m_solver.value(m_width.extent())),
             rounded(m_solver.value(m_height.extent())) };
}

QSize LayoutSystem::smallestSize()
{
    const KeptHeights keptHeights(m_solver, m_order);
    m_width.suggest(m_solver, LayoutLevel::shrinking, 0.0);
    m_height.suggest(m_solver, LayoutLevel::shrinking, 0.0);
    for (const LayoutItem *const item : m_order) {
        if (item->hasHeightForWidth)
            item->y.setTarget(m_solver, item->minimumHeight);
    }
    m_solver.solve();
    return hostSize(roundedUp);
}

QSize LayoutSystem::preferredSize()
{
    const KeptHeights keptHeights(m_solver, m_order);
    m_width.suggest(m_solver, NS::LayoutPriority::fittingSizeCompression, 0.0);
    m_height.suggest(m_solver, NS::LayoutPriority::fittingSizeCompression, 0.0);
    solveWidthsFirst();
    return hostSize(roundedUp);
}

QSize LayoutSystem::largestSize()
{
    const KeptHeights keptHeights(m_solver, m_order);
    m_width.suggest(m_solver, LayoutLevel::growing, QLAYOUTSIZE_MAX);
    m_height.suggest(m_solver, LayoutLevel::growing, QLAYOUTSIZE_MAX);
    solveWidthsFirst();
    return hostSize(roundedDown);
}

int LayoutSystem::fittingHeight(int width, double level)
{
    const KeptHeights keptHeights(m_solver, m_order);
    m_width.suggest(m_solver, LayoutLevel::container, width);
    m_height.suggest(m_solver, level, 0.0);
    solveWidthsFirst();
    return roundedUp(m_solver.value(m_height.extent()));
}

bool LayoutSystem::hasHeightForWidth() const
{
    return std::any_of(m_order.begin(), m_order.end(),
                       [](const LayoutItem *item) { return item->hasHeightForWidth; });
}

} // namespace Pellarvine::detail
