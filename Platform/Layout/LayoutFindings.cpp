// SPDX-License-Identifier: MIT
#include "Layout/LayoutFindings.h"

#include "Layout/AnchorExpression.h"
#include "Layout/IntrinsicLength.h"
#include "Layout/LayoutEngine.h"
#include "Layout/LayoutHosts.h"
#include "View/NSView.h"

#include <QWidget>

#include <algorithm>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;
using NS::ConstraintItem;
using NS::LayoutAttribute;
using NS::LayoutConstraint;
using NS::LayoutRelation;

namespace Pellarvine::detail {

namespace {

// Rounding to whole units moves an edge by half a unit at most, and changes a size by one.
constexpr double roundingOfSize = 1.0;

QRectF alignedRect(ConstraintItem item, const QWidget *in)
{
    const QPoint origin = item.view() == in ? QPoint() : item.view()->mapTo(in, QPoint());
    if (const NS::LayoutGuide *const guide = item.guide())
        return guide->frame().translated(origin);
    const QWidget *const widget = item.widget();
    return QRectF(QRect(origin, widget->size())).marginsRemoved(NS::alignmentRectInsets(widget));
}

bool isShownBelow(ConstraintItem item, const QWidget *view)
{
    return item.view() == view
           || (view->isAncestorOf(item.view()) && item.view()->isVisibleTo(view));
}

// The nearest common ancestor, whose layout direction decides where leading is.
const QWidget *ancestorOf(const LayoutConstraint &constraint)
{
    const ConstraintItem first = constraint.firstItem();
    const QWidget *ancestor = first.view();
    const QWidget *const second = constraint.secondItem().view();
    if (!second)
        return first.guide() || ancestor->isWindow() ? ancestor : ancestor->parentWidget();
    while (!ancestor->isAncestorOf(second))
        ancestor = ancestor->parentWidget();
    return ancestor;
}

// Engines of ancestors may keep constraints of widgets in the view.
std::vector<std::shared_ptr<LayoutConstraint>> constraintsShownBelow(const QWidget *view)
{
    std::vector<std::shared_ptr<LayoutConstraint>> shown;
    QList<QWidget *> hosts = view->window()->findChildren<QWidget *>();
    hosts.prepend(view->window());
    for (const QWidget *const host : std::as_const(hosts)) {
        const LayoutEngine *const engine = LayoutHosts::all().ownEngine(host);
        if (!engine)
            continue;
        for (const auto &constraint : engine->constraints()) {
            const ConstraintItem second = constraint->secondItem();
            if (isShownBelow(constraint->firstItem(), view)
                && (!second || isShownBelow(second, view)))
                shown.push_back(constraint);
        }
    }
    return shown;
}

// Evaluates a constraint with the current frames of its items in place of a solution.
class Measurement
{
public:
    explicit Measurement(const LayoutConstraint &constraint)
        : m_ancestor(ancestorOf(constraint))
    {
        std::optional<AnchorAxis> mirroring;
        if (m_ancestor->layoutDirection() == Qt::RightToLeft)
            mirroring = xAxis(QRectF(m_ancestor->rect()));
        const ConstraintSolver::Expression expression =
                anchorExpression(anchor(constraint.firstItem(), constraint.firstAttribute()),
                                 constraint.multiplier(),
                                 anchor(constraint.secondItem(), constraint.secondAttribute()),
                                 constraint.constant(), mirroring);
        m_excess = expression.constant;
        for (const ConstraintSolver::Term &term : expression.terms)
            m_excess += term.coefficient * m_values[static_cast<std::size_t>(term.variable)];
    }

    /// By how much the first side is larger than the second.
    double excess() const { return m_excess; }

private:
    ConstraintSolver::Variable variable(double value)
    {
        m_values.push_back(value);
        return static_cast<ConstraintSolver::Variable>(m_values.size() - 1);
    }
    AnchorAxis xAxis(const QRectF &rect) { return { variable(rect.x()), variable(rect.width()) }; }
    AnchorAxis yAxis(const QRectF &rect) { return { variable(rect.y()), variable(rect.height()) }; }
    Anchor anchor(ConstraintItem item, LayoutAttribute attribute)
    {
        Anchor made;
        if (attribute == LayoutAttribute::notAnAttribute)
            return made;
        const QRectF rect = alignedRect(item, m_ancestor);
        made.attribute = attribute;
        made.x = xAxis(rect);
        made.y = yAxis(rect);
        if (isBaseline(attribute))
            made.baseline = baselineOf(item.widget(), attribute);
        return made;
    }

    const QWidget *m_ancestor;
    std::vector<double> m_values;
    double m_excess = 0.0;
};

double baselineY(const QWidget *widget, LayoutAttribute attribute, const QRectF &rect)
{
    const Baseline baseline = baselineOf(widget, attribute);
    return rect.y() + baseline.fraction * rect.height() + baseline.offset;
}

// From the edge or centre that the attribute names to where it should be. A size is measured at the
// right or at the lower edge.
QLineF lineOf(ConstraintItem item, LayoutAttribute attribute, const QRectF &rect, double excess,
              bool isMirrored)
{
    const auto horizontal = [&](double x, double length) {
        return QLineF(x, rect.center().y(), x + length, rect.center().y());
    };
    const auto vertical = [&](double y) {
        return QLineF(rect.center().x(), y, rect.center().x(), y - excess);
    };
    switch (attribute) {
    case LayoutAttribute::notAnAttribute:
        break;
    case LayoutAttribute::left:
        return horizontal(rect.left(), -excess);
    case LayoutAttribute::leading:
        return isMirrored ? horizontal(rect.right(), excess) : horizontal(rect.left(), -excess);
    case LayoutAttribute::trailing:
        return isMirrored ? horizontal(rect.left(), excess) : horizontal(rect.right(), -excess);
    case LayoutAttribute::right:
    case LayoutAttribute::width:
        return horizontal(rect.right(), -excess);
    case LayoutAttribute::centerX:
        return horizontal(rect.center().x(), -excess);
    case LayoutAttribute::top:
        return vertical(rect.top());
    case LayoutAttribute::bottom:
    case LayoutAttribute::height:
        return vertical(rect.bottom());
    case LayoutAttribute::centerY:
        return vertical(rect.center().y());
    case LayoutAttribute::firstBaseline:
    case LayoutAttribute::lastBaseline:
        return vertical(baselineY(item.widget(), attribute, rect));
    }
    return {};
}

QString numberText(double number)
{
    return QString::number(std::round(number * 10.0) / 10.0);
}

void findViolation(const LayoutConstraint &constraint, const QWidget *view,
                   LayoutFindings &findings)
{
    const double excess = excessOf(constraint);
    if (excess == 0.0)
        return;
    const ConstraintItem first = constraint.firstItem();
    const bool isMirrored = ancestorOf(constraint)->layoutDirection() == Qt::RightToLeft;
    findings.violations.push_back(
            { lineOf(first, constraint.firstAttribute(), alignedRect(first, view), excess,
                     isMirrored),
              u"%1 @ %2: %3 off"_s.arg(constraint.description(), numberText(constraint.priority()),
                                       numberText(std::abs(excess))) });
}

// Violations of its size hints and limits. A widget may be larger than its hint if its size policy
// lets it grow.
void findViolation(QWidget *widget, Qt::Orientation orientation, const QRectF &rect,
                   LayoutFindings &findings)
{
    const bool isHorizontal = orientation == Qt::Horizontal;
    const QMarginsF insets = NS::alignmentRectInsets(widget);
    const SizeHints both = sizeHints(widget);
    LengthHints hints = isHorizontal ? both.width : both.height;
    hints.insets = isHorizontal ? insets.left() + insets.right() : insets.top() + insets.bottom();
    // A text that can wrap needs its minimum width alone, and the height at the current width.
    if (widget->hasHeightForWidth())
        hints.hint = isHorizontal ? hints.minimumHint : widget->heightForWidth(widget->width());
    const IntrinsicLength intrinsic = intrinsicLength(hints);
    const double length = isHorizontal ? rect.width() : rect.height();
    double wanted = length;
    if (intrinsic.notAbove >= NS::LayoutPriority::defaultHigh)
        wanted = std::min(wanted, intrinsic.target);
    if (intrinsic.notBelow >= NS::LayoutPriority::defaultHigh)
        wanted = std::max(wanted, intrinsic.target);
    wanted = std::min(wanted, intrinsic.upper.value_or(wanted));
    wanted = std::max(wanted, intrinsic.lower.value_or(wanted));
    if (std::abs(wanted - length) <= roundingOfSize)
        return;
    const LayoutAttribute attribute =
            isHorizontal ? LayoutAttribute::width : LayoutAttribute::height;
    findings.violations.push_back(
            { lineOf(widget, attribute, rect, length - wanted, false),
              u"%1 %2, asks for %3"_s.arg(isHorizontal ? "width"_L1 : "height"_L1,
                                          numberText(length), numberText(wanted)) });
}

} // namespace

double excessOf(const LayoutConstraint &constraint)
{
    const double excess = Measurement(constraint).excess();
    const double tolerance = roundingOfSize * (1.0 + std::abs(constraint.multiplier()));
    const bool isTooLarge =
            excess > tolerance && constraint.relation() != LayoutRelation::greaterThanOrEqual;
    const bool isTooSmall =
            excess < -tolerance && constraint.relation() != LayoutRelation::lessThanOrEqual;
    return isTooLarge || isTooSmall ? excess : 0.0;
}

LayoutFindings layoutFindings(const QWidget *view)
{
    LayoutFindings findings;
    std::set<std::pair<const QObject *, LayoutAttribute>> seen;
    for (const auto &constraint : constraintsShownBelow(view)) {
        findViolation(*constraint, view, findings);
        const std::pair<ConstraintItem, LayoutAttribute> items[] = {
            { constraint->firstItem(), constraint->firstAttribute() },
            { constraint->secondItem(), constraint->secondAttribute() },
        };
        for (const auto &[item, attribute] : items) {
            if (!item)
                continue;
            const QRectF rect = alignedRect(item, view);
            QWidget *const widget = item.widget();
            if (isBaseline(attribute) && seen.emplace(widget, attribute).second) {
                const double y = baselineY(widget, attribute, rect);
                findings.baselines.emplace_back(rect.left(), y, rect.right(), y);
            }
            if (!seen.emplace(item.object(), LayoutAttribute::notAnAttribute).second)
                continue;
            if (!widget) {
                findings.guides.push_back(rect);
                continue;
            }
            findings.frames.push_back(rect);
            // The size hint of a host follows from its constraints.
            if (LayoutHosts::all().ownEngine(widget))
                continue;
            findViolation(widget, Qt::Horizontal, rect, findings);
            findViolation(widget, Qt::Vertical, rect, findings);
        }
    }
    return findings;
}

} // namespace Pellarvine::detail
