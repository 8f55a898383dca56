// SPDX-License-Identifier: MIT
#include "Layout/LayoutEngine.h"

#include "Base/Failure.h"
#include "View/NSView.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontMetricsF>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using NS::LayoutAttribute;
using NS::LayoutConstraint;
using NS::LayoutRelation;

namespace Pellarvine::detail {

namespace {

// Levels of what is wanted without the user's saying so, among the priorities 1...1000.
constexpr double containerLevel = 999.5; // the host's size, and frames that are given
constexpr double explicitLevel = 990.0; // QWidget's own minimum and maximum size
constexpr double minimumHintLevel = 900.0;
constexpr double shrinkingLevel = 760.0; // to find the smallest size: above resistance
constexpr double growingLevel = 740.0; // to find the largest size: below resistance
constexpr double expandingLevel = 100.0;
constexpr double unwantedLevel = 0.5; // a length that nobody asks for is 0

// Rounding must not make a container a unit larger than it has to be.
int roundedUp(double length)
{
    return int(std::ceil(length - 1e-4));
}

int lengthOf(const QSize &size, Qt::Orientation orientation)
{
    return orientation == Qt::Horizontal ? size.width() : size.height();
}

bool isManagedBy(const QLayout *layout, const QWidget *widget)
{
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *const item = layout->itemAt(i);
        if (item->widget() == widget || (item->layout() && isManagedBy(item->layout(), widget)))
            return true;
    }
    return false;
}

int depthOf(const QWidget *widget)
{
    int depth = 0;
    for (; widget && !widget->isWindow(); widget = widget->parentWidget())
        ++depth;
    return depth;
}

bool followsDirection(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::leading || attribute == LayoutAttribute::trailing;
}

bool isBaseline(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::firstBaseline
           || attribute == LayoutAttribute::lastBaseline;
}

// top + fraction * height + offset
struct Baseline
{
    double fraction;
    double offset;
};

Baseline baselineOf(const QWidget *widget, bool isFirst)
{
    const QVariant declared = widget->property(isFirst ? "firstBaselineOffsetFromTop"
                                                       : "lastBaselineOffsetFromBottom");
    if (declared.isValid())
        return { isFirst ? 0.0 : 1.0, isFirst ? declared.toDouble() : -declared.toDouble() };

    const QFontMetricsF metrics(widget->font());
    if (const auto *const label = qobject_cast<const QLabel *>(widget)) {
        const QMargins margins = label->contentsMargins();
        const double above = margins.top() + label->margin() + metrics.ascent();
        const double below = margins.bottom() + label->margin() + metrics.descent();
        const bool isAtTop = label->alignment() & Qt::AlignTop;
        const bool isAtBottom = label->alignment() & Qt::AlignBottom;
        if (label->wordWrap() ? isFirst : isAtTop)
            return { 0.0, above };
        if (label->wordWrap() ? !isFirst : isAtBottom)
            return { 1.0, -below };
    }
    return { 0.5, (metrics.ascent() - metrics.descent()) / 2.0 };
}

QHash<const QWidget *, LayoutEngine *> &engines()
{
    static QHash<const QWidget *, LayoutEngine *> all;
    return all;
}

// Hosts whose constraints another engine, above, has taken over.
QHash<const QWidget *, LayoutEngine *> &takenOver()
{
    static QHash<const QWidget *, LayoutEngine *> all;
    return all;
}

// Reports the engine's answers to Qt. It holds no items: the engine places the widgets.
class ConstraintLayout : public QLayout
{
public:
    ConstraintLayout(QWidget *host, LayoutEngine *engine)
        : QLayout(host)
        , m_engine(engine)
    {
        engine->setParent(this);
    }

    void addItem(QLayoutItem *item) override { delete item; }
    QLayoutItem *itemAt(int) const override { return nullptr; }
    QLayoutItem *takeAt(int) override { return nullptr; }
    int count() const override { return 0; }
    bool isEmpty() const override { return false; }

    void invalidate() override
    {
        m_engine->invalidate();
        QLayout::invalidate();
    }
    void setGeometry(const QRect &rect) override
    {
        QLayout::setGeometry(rect);
        m_engine->apply();
    }
    QSize minimumSize() const override { return m_engine->minimumSize(); }
    QSize sizeHint() const override { return m_engine->sizeHint(); }
    QSize maximumSize() const override { return m_engine->maximumSize(); }
    bool hasHeightForWidth() const override { return m_engine->hasHeightForWidth(); }
    int heightForWidth(int width) const override { return m_engine->heightForWidth(width); }
    int minimumHeightForWidth(int width) const override
    {
        return m_engine->minimumHeightForWidth(width);
    }
    Qt::Orientations expandingDirections() const override
    {
        return m_engine->expandingDirections();
    }

private:
    LayoutEngine *m_engine;
};

} // namespace

LayoutEngine *LayoutEngine::on(QWidget *host)
{
    if (LayoutEngine *const upper = takenOver().value(host))
        return upper;
    if (LayoutEngine *const own = engines().value(host))
        return own;
    for (QWidget *widget = host; !widget->isWindow() && widget->parentWidget();) {
        widget = widget->parentWidget();
        LayoutEngine *const upper = engines().value(widget);
        if (upper && upper->placesBelow(host) && isReachable(host, widget)) {
            upper->replace(host);
            return upper;
        }
    }
    return new LayoutEngine(host);
}

bool LayoutEngine::canReport(const QWidget *host)
{
    return !host->layout() || dynamic_cast<const ConstraintLayout *>(host->layout());
}

LayoutEngine::LayoutEngine(QWidget *host)
    : QObject(host)
    , m_host(host)
    , m_width(m_solver.addVariable())
    , m_height(m_solver.addVariable())
    , m_hostInsets(NS::alignmentRectInsets(host))
    , m_isRightToLeft(host->layoutDirection() == Qt::RightToLeft)
{
    m_hostWidth =
            m_solver.addTarget({ { { m_width } }, 0.0 }, { containerLevel }, { containerLevel });
    m_hostHeight =
            m_solver.addTarget({ { { m_height } }, 0.0 }, { containerLevel }, { containerLevel });
    engines().insert(host, this);
    if (canReport(host))
        m_layout = new ConstraintLayout(host, this);
    host->installEventFilter(this);
}

LayoutEngine::~LayoutEngine()
{
    engines().remove(m_host);
    takenOver().removeIf([&](auto entry) { return entry.value() == this; });
    for (const Active &active : inOrder()) {
        active.constraint->setEngine(nullptr);
    }
}

void LayoutEngine::add(const std::shared_ptr<LayoutConstraint> &constraint, QWidget *ancestor)
{
    acquire(constraint->firstItem(), ancestor);
    acquire(constraint->secondItem(), ancestor);
    const Solver::Addition added = addToSolver(*constraint);
    if (!added.constraint) {
        warnAbout(*constraint, added.conflict);
        release(constraint->firstItem(), ancestor);
        release(constraint->secondItem(), ancestor);
        constraint->setEngine(nullptr);
        return;
    }
    m_active.insert_or_assign(constraint.get(), Active { constraint, constraint->firstItem(),
                                                         constraint->secondItem(), ancestor,
                                                         *added.constraint, m_nextNumber++ });
    request();
    constraint->setEngine(this);
}

void LayoutEngine::remove(LayoutConstraint *constraint)
{
    const auto place = m_active.find(constraint);
    const Active active = std::move(place->second);
    m_active.erase(place);
    m_solver.remove(active.handle);
    release(active.first, active.ancestor);
    release(active.second, active.ancestor);
    request();
    constraint->setEngine(nullptr);
}

void LayoutEngine::updateConstant(LayoutConstraint *constraint)
{
    const auto conflict = m_solver.setConstant(m_active.at(constraint).handle,
                                               expressionOf(*constraint).constant);
    if (!conflict.empty()) {
        warnAbout(*constraint, conflict);
        remove(constraint);
    }
    request();
}

void LayoutEngine::updateStrength(LayoutConstraint *constraint)
{
    Active &active = m_active.at(constraint);
    m_solver.remove(active.handle);
    const Solver::Addition added = addToSolver(*constraint);
    if (added.constraint) {
        active.handle = *added.constraint;
        request();
        return;
    }
    warnAbout(*constraint, added.conflict);
    // Something for remove() to remove.
    active.handle = m_solver.addTarget({}, { unwantedLevel }, { unwantedLevel });
    remove(constraint);
}

// Items

LayoutEngine::Wish LayoutEngine::wishOf(const QWidget *widget, Qt::Orientation orientation,
                                        double insets, double heightForWidth, bool canHint)
{
    const QSizePolicy::Policy policy = orientation == Qt::Horizontal
                                               ? widget->sizePolicy().horizontalPolicy()
                                               : widget->sizePolicy().verticalPolicy();
    const bool isIgnored = policy & QSizePolicy::IgnoreFlag;
    double hint = lengthOf(widget->sizeHint(), orientation);
    double minimumHint = lengthOf(widget->minimumSizeHint(), orientation);
    if (heightForWidth >= 0.0)
        hint = minimumHint = heightForWidth; // less would cut the text off
    hint = std::max(hint, minimumHint);
    const int minimum = lengthOf(widget->minimumSize(), orientation);
    const int maximum = lengthOf(widget->maximumSize(), orientation);
    const bool hasHint = canHint && hint >= 0.0 && !isIgnored;

    Wish wish;
    wish.notBelow = wish.notAbove = unwantedLevel;
    wish.lowerLevel = minimumHintLevel;
    if (minimum > 0) {
        wish.lower = minimum;
        wish.lowerLevel = explicitLevel;
    } else if (hasHint) {
        wish.lower = policy & QSizePolicy::ShrinkFlag ? std::max(0.0, minimumHint) : hint;
    }
    if (maximum < QWIDGETSIZE_MAX)
        wish.upper = maximum;
    if (hasHint) {
        wish.target = std::max(hint, double(minimum));
        wish.notBelow = NS::LayoutPriority::defaultHigh;
        wish.notAbove = !(policy & QSizePolicy::GrowFlag)  ? NS::LayoutPriority::defaultHigh
                        : policy & QSizePolicy::ExpandFlag ? expandingLevel
                                                           : NS::LayoutPriority::defaultLow;
        // One constraint less where the limit is the target.
        if (wish.upper >= 0.0 && wish.upper <= wish.target) {
            wish.target = std::exchange(wish.upper, -1.0);
            wish.notAbove = explicitLevel;
        }
        if (wish.lower >= wish.target) {
            wish.lower = -1.0;
            wish.notBelow = wish.lowerLevel;
        }
    }
    for (double *const length : { &wish.target, &wish.lower, &wish.upper }) {
        if (*length > 0.0)
            *length = std::max(0.0, *length - insets);
    }
    return wish;
}

void LayoutEngine::setWish(Item &item, Axis &axis, const Wish &wish)
{
    // Distinct weights decide between equals: the item constrained last gives way first.
    const double weight = 1.0 + 1.0 / (2.0 + item.number);
    const Solver::Term extent { axis.extent };
    const bool isSameTarget = axis.target && axis.wish.notBelow == wish.notBelow
                              && axis.wish.notAbove == wish.notAbove;
    if (isSameTarget) {
        m_solver.setConstant(*axis.target, -wish.target);
    } else {
        if (axis.target)
            m_solver.remove(*axis.target);
        axis.target = m_solver.addTarget({ { extent }, -wish.target }, { wish.notBelow, weight },
                                         { wish.notAbove, weight });
    }
    const auto setLimit = [&](std::optional<Solver::Constraint> &limit, double length,
                              Solver::Relation relation, double level, bool isSameLevel) {
        if (limit && (length < 0.0 || !isSameLevel)) {
            m_solver.remove(*limit);
            limit.reset();
        }
        if (limit)
            m_solver.setConstant(*limit, -length);
        else if (length >= 0.0)
            limit = m_solver.add({ { extent }, -length }, relation, { level, weight }).constraint;
    };
    setLimit(axis.lower, wish.lower, Solver::Relation::greaterThanOrEqual, wish.lowerLevel,
             axis.wish.lowerLevel == wish.lowerLevel);
    setLimit(axis.upper, wish.upper, Solver::Relation::lessThanOrEqual, explicitLevel, true);
    axis.wish = wish;
}

void LayoutEngine::setPlace(Axis &axis, std::optional<double> origin)
{
    if (axis.place && origin) {
        m_solver.setConstant(*axis.place, -*origin);
    } else if (axis.place) {
        m_solver.remove(*axis.place);
        axis.place.reset();
    } else if (origin) {
        axis.place = m_solver.addTarget({ { { axis.origin } }, -*origin }, { containerLevel },
                                        { containerLevel });
    }
}

void LayoutEngine::acquire(QWidget *widget, const QWidget *ancestor)
{
    if (!widget || widget == m_host)
        return;
    for (QWidget *between = widget->parentWidget(); between != m_host;
         between = between->parentWidget()) {
        LayoutEngine *const lower = engines().value(between);
        if (lower && lower->m_items.contains(widget) && isReachable(between, m_host))
            takeOver(lower);
    }
    std::unique_ptr<Item> &item = m_items[widget];
    const bool isNew = !item;
    if (isNew) {
        item = std::make_unique<Item>();
        item->widget = widget;
        item->number = m_nextNumber++;
        for (Axis *const axis : { &item->x, &item->y }) {
            axis->origin = m_solver.addVariable();
            axis->extent = m_solver.addVariable();
        }
    }
    ++item->uses;
    item->placings += widget != ancestor ? 1 : 0;
    if (!isNew)
        return;
    refresh(*item);
    const int depth = depthOf(widget);
    const auto place = std::upper_bound(
            m_order.begin(), m_order.end(), depth,
            [](int wanted, const Item *other) { return wanted < depthOf(other->widget); });
    m_order.insert(place, item.get());
    watch(widget);
    item->ending =
            connect(widget, &QObject::destroyed, this, [this, widget] { drop({ widget }, false); });
}

void LayoutEngine::release(QWidget *widget, const QWidget *ancestor)
{
    const auto place = m_items.find(widget);
    if (place == m_items.end())
        return;
    place->second->placings -= widget != ancestor ? 1 : 0;
    if (--place->second->uses > 0)
        return;
    Item &item = *place->second;
    for (Axis *const axis : { &item.x, &item.y }) {
        for (const auto &constraint : { axis->target, axis->lower, axis->upper, axis->place }) {
            if (constraint)
                m_solver.remove(*constraint);
        }
        m_solver.removeVariable(axis->origin);
        m_solver.removeVariable(axis->extent);
    }
    disconnect(item.ending);
    widget->removeEventFilter(this);
    std::erase(m_order, &item);
    m_items.erase(place);
}

// Ends all constraints of these widgets, which are gone or have left the host. Those that lie as a
// whole where the widgets are now go on there.
void LayoutEngine::drop(const QSet<QWidget *> &widgets, bool areAlive)
{
    QList<std::shared_ptr<LayoutConstraint>> moved;
    for (const Active &active : inOrder()) {
        const bool isFirst = widgets.contains(active.first);
        const bool isSecond = !active.second || widgets.contains(active.second);
        if (!isFirst && !widgets.contains(active.second))
            continue;
        if (areAlive && isFirst && isSecond)
            moved.append(active.constraint);
        m_solver.remove(active.handle);
        m_active.erase(active.constraint.get());
        release(active.first, active.ancestor);
        release(active.second, active.ancestor);
        active.constraint->setEngine(nullptr);
    }
    request();
    LayoutConstraint::activateConstraints(moved);
}

void LayoutEngine::dropStrayed()
{
    QSet<QWidget *> strayed;
    for (const Item *const item : m_order) {
        if (!m_host->isAncestorOf(item->widget))
            strayed.insert(item->widget);
    }
    if (strayed.isEmpty())
        return;
    takenOver().removeIf([&](auto entry) {
        return entry.value() == this && !m_host->isAncestorOf(entry.key());
    });
    drop(strayed, true);
}

// The widget and what lies between it and the host, since that may move or leave too.
void LayoutEngine::watch(QWidget *widget)
{
    for (; widget && widget != m_host; widget = widget->parentWidget())
        widget->installEventFilter(this);
}

bool LayoutEngine::isGiven(const Item &item) const
{
    const QWidget *const widget = item.widget;
    if (item.placings == 0 || NS::translatesAutoresizingMaskIntoConstraints(widget)
        || !isReachable(widget, widget->parentWidget()))
        return true;
    for (const QWidget *between = widget->parentWidget(); between != m_host;
         between = between->parentWidget()) {
        const LayoutEngine *const lower = engines().value(between);
        if (lower && lower->m_items.contains(const_cast<QWidget *>(widget)))
            return true;
    }
    return false;
}

// Whether no Qt layout of another kind decides where the widgets on that way are.
bool LayoutEngine::isReachable(const QWidget *from, const QWidget *ancestor)
{
    for (; from != ancestor; from = from->parentWidget()) {
        const QWidget *const parent = from->parentWidget();
        if (!canReport(parent) && isManagedBy(parent->layout(), from))
            return false;
    }
    return true;
}

bool LayoutEngine::placesBelow(const QWidget *widget) const
{
    return std::any_of(m_order.begin(), m_order.end(),
                       [&](const Item *item) { return widget->isAncestorOf(item->widget); });
}

// From now on constraints whose common ancestor is that widget come here.
void LayoutEngine::replace(QWidget *host)
{
    takenOver().insert(host, this);
    connect(host, &QObject::destroyed, this, [host] { takenOver().remove(host); });
}

// The lower engine stays behind without constraints.
void LayoutEngine::takeOver(LayoutEngine *lower)
{
    for (LayoutEngine *&upper : takenOver()) {
        if (upper == lower)
            upper = this;
    }
    replace(lower->m_host);
    const std::vector<Active> moving = lower->inOrder();
    for (const Active &active : moving) {
        lower->m_solver.remove(active.handle);
        lower->m_active.erase(active.constraint.get());
        lower->release(active.first, active.ancestor);
        lower->release(active.second, active.ancestor);
    }
    lower->request();
    for (const Active &active : moving)
        add(active.constraint, active.ancestor);
}

QRectF LayoutEngine::givenRect(const QWidget *widget) const
{
    return QRectF(widget->mapTo(m_host, QPoint()), QSizeF(widget->size()));
}

// Constraints

LayoutEngine::Solver::Expression
LayoutEngine::expressionOf(const LayoutConstraint &constraint) const
{
    const bool isMirrored = m_isRightToLeft
                            && (followsDirection(constraint.firstAttribute())
                                || followsDirection(constraint.secondAttribute()));
    Solver::Expression expression { {}, -constraint.constant() };
    addEdge(expression, constraint.firstItem(), constraint.firstAttribute(), 1.0, isMirrored);
    if (constraint.secondAttribute() != LayoutAttribute::notAnAttribute) {
        addEdge(expression, constraint.secondItem(), constraint.secondAttribute(),
                -constraint.multiplier(), isMirrored);
    }
    return expression;
}

void LayoutEngine::addEdge(Solver::Expression &expression, QWidget *widget,
                           LayoutAttribute attribute, double factor, bool isMirrored) const
{
    const auto found = m_items.find(widget);
    const Item *const item = found == m_items.end() ? nullptr : found->second.get();
    const auto addPlace = [&](const Axis *axis, Solver::Variable hostExtent, double hostStart,
                              double hostEnd, double fraction, double sign) {
        if (axis)
            expression.terms.push_back({ axis->origin, sign });
        else
            expression.constant += sign * (hostStart - fraction * (hostStart + hostEnd));
        if (fraction != 0.0)
            expression.terms.push_back({ axis ? axis->extent : hostExtent, sign * fraction });
    };
    const auto addExtent = [&](const Axis *axis, Solver::Variable hostExtent, double hostInsets) {
        expression.terms.push_back({ axis ? axis->extent : hostExtent, factor });
        if (!axis)
            expression.constant -= factor * hostInsets;
    };
    const auto addX = [&](double fraction) {
        // Mirrored, places count from the right.
        if (isMirrored)
            expression.terms.push_back({ m_width, factor });
        addPlace(item ? &item->x : nullptr, m_width, m_hostInsets.left(), m_hostInsets.right(),
                 fraction, isMirrored ? -factor : factor);
    };
    const auto addY = [&](double fraction, double offset) {
        addPlace(item ? &item->y : nullptr, m_height, m_hostInsets.top(), m_hostInsets.bottom(),
                 fraction, factor);
        expression.constant += factor * offset;
    };
    switch (attribute) {
    case LayoutAttribute::notAnAttribute:
        return;
    case LayoutAttribute::left:
        return addX(0.0);
    case LayoutAttribute::right:
        return addX(1.0);
    case LayoutAttribute::leading:
        return addX(isMirrored ? 1.0 : 0.0);
    case LayoutAttribute::trailing:
        return addX(isMirrored ? 0.0 : 1.0);
    case LayoutAttribute::centerX:
        return addX(0.5);
    case LayoutAttribute::top:
        return addY(0.0, 0.0);
    case LayoutAttribute::bottom:
        return addY(1.0, 0.0);
    case LayoutAttribute::centerY:
        return addY(0.5, 0.0);
    case LayoutAttribute::firstBaseline:
    case LayoutAttribute::lastBaseline: {
        const auto [fraction, offset] =
                baselineOf(widget, attribute == LayoutAttribute::firstBaseline);
        return addY(fraction, offset);
    }
    case LayoutAttribute::width:
        return addExtent(item ? &item->x : nullptr, m_width,
                         m_hostInsets.left() + m_hostInsets.right());
    case LayoutAttribute::height:
        return addExtent(item ? &item->y : nullptr, m_height,
                         m_hostInsets.top() + m_hostInsets.bottom());
    }
}

LayoutEngine::Solver::Addition LayoutEngine::addToSolver(const LayoutConstraint &constraint)
{
    const Solver::Relation relation = constraint.relation() == LayoutRelation::equal
                                              ? Solver::Relation::equal
                                      : constraint.relation() == LayoutRelation::lessThanOrEqual
                                              ? Solver::Relation::lessThanOrEqual
                                              : Solver::Relation::greaterThanOrEqual;
    const bool isRequired = constraint.priority() >= NS::LayoutPriority::required;
    return m_solver.add(expressionOf(constraint), relation,
                        isRequired ? Solver::required : Solver::Strength { constraint.priority() });
}

void LayoutEngine::warnAbout(const LayoutConstraint &constraint,
                             const std::vector<Solver::Constraint> &conflict) const
{
    QStringList others;
    for (const Active &active : inOrder()) {
        const bool isNamed =
                std::find(conflict.begin(), conflict.end(), active.handle) != conflict.end();
        if (isNamed && active.constraint.get() != &constraint)
            others.append(active.constraint->description());
    }
    const QString text = u"Warning: dropped the constraint %1, which contradicts %2"_s.arg(
            constraint.description(), others.isEmpty() ? u"itself"_s : others.join(u", "_s));
    printWarning(text.toStdString());
}

std::vector<LayoutEngine::Active> LayoutEngine::inOrder() const
{
    std::vector<Active> all;
    all.reserve(m_active.size());
    for (const auto &[constraint, active] : m_active)
        all.push_back(active);
    std::sort(all.begin(), all.end(),
              [](const Active &one, const Active &other) { return one.number < other.number; });
    return all;
}

// Passes

void LayoutEngine::request()
{
    invalidate();
    m_host->updateGeometry();
    if (m_layout)
        m_layout->update();
    else
        QCoreApplication::postEvent(m_host, new QEvent(QEvent::LayoutRequest));
}

void LayoutEngine::invalidate()
{
    m_isStale = true;
    m_minimumSize.reset();
    m_sizeHint.reset();
    m_maximumSize.reset();
    m_heights.clear();
    m_minimumHeights.clear();
}

void LayoutEngine::refresh()
{
    if (!std::exchange(m_isStale, false))
        return;
    refreshHostInsets();
    for (Item *const item : m_order)
        refresh(*item);
    // Fonts may have changed.
    for (const Active &active : inOrder()) {
        if (!isBaseline(active.constraint->firstAttribute())
            && !isBaseline(active.constraint->secondAttribute()))
            continue;
        m_solver.remove(active.handle);
        const Solver::Addition added = addToSolver(*active.constraint);
        Active &kept = m_active.at(active.constraint.get());
        kept.handle = added.constraint
                              ? *added.constraint
                              : m_solver.addTarget({}, { unwantedLevel }, { unwantedLevel });
        if (!added.constraint) {
            warnAbout(*active.constraint, added.conflict);
            remove(active.constraint.get());
        }
    }
}

void LayoutEngine::refresh(Item &item)
{
    item.isGiven = isGiven(item);
    item.insets = NS::alignmentRectInsets(item.widget);
    if (item.isGiven) {
        item.hasHeightForWidth = false;
        const QRectF rect = givenRect(item.widget).marginsRemoved(item.insets);
        const auto give = [&](Axis &axis, double origin, double extent) {
            setPlace(axis, origin);
            Wish wish;
            wish.target = extent;
            wish.notBelow = wish.notAbove = containerLevel;
            setWish(item, axis, wish);
        };
        give(item.x, rect.x(), rect.width());
        give(item.y, rect.y(), rect.height());
        return;
    }
    const double across = item.insets.left() + item.insets.right();
    const double along = item.insets.top() + item.insets.bottom();
    item.hasHeightForWidth =
            item.widget->sizePolicy().hasHeightForWidth()
            || (item.widget->layout() && item.widget->layout()->hasHeightForWidth());
    double height = -1.0;
    if (item.hasHeightForWidth) {
        // A guess until the width is known.
        height = item.widget->sizeHint().height();
        item.minimumHeight = std::max(0, item.widget->minimumSizeHint().height());
    }
    setPlace(item.x, {});
    setPlace(item.y, {});
    // Without constraints of its own any more, its layout does not know what it contains.
    const bool isTakenOver = takenOver().contains(item.widget);
    setWish(item, item.x, wishOf(item.widget, Qt::Horizontal, across, -1.0, !isTakenOver));
    setWish(item, item.y, wishOf(item.widget, Qt::Vertical, along, height, !isTakenOver));
}

void LayoutEngine::refreshHostInsets()
{
    const QMarginsF insets = NS::alignmentRectInsets(m_host);
    if (insets == m_hostInsets)
        return;
    m_hostInsets = insets;
    rebuild();
    m_isStale = false; // of what follows here
}

void LayoutEngine::rebuild()
{
    for (const Active &active : inOrder())
        m_solver.remove(active.handle);
    std::vector<Active> contradicting;
    for (const Active &active : inOrder()) {
        const Solver::Addition added = addToSolver(*active.constraint);
        m_active.at(active.constraint.get()).handle =
                added.constraint ? *added.constraint
                                 : m_solver.addTarget({}, { unwantedLevel }, { unwantedLevel });
        if (!added.constraint) {
            warnAbout(*active.constraint, added.conflict);
            contradicting.push_back(active);
        }
    }
    for (const Active &active : contradicting)
        remove(active.constraint.get());
    request();
}

// Heights that follow widths are measured once the widths are settled.
void LayoutEngine::solveWidthsFirst(Solver &solver)
{
    solver.solve();
    bool hasChanged = false;
    for (const Item *const item : m_order) {
        if (!item->hasHeightForWidth)
            continue;
        const double across = item->insets.left() + item->insets.right();
        const double along = item->insets.top() + item->insets.bottom();
        const int width = std::max(0, qRound(solver.value(item->x.extent) + across));
        const double height = std::max(0.0, item->widget->heightForWidth(width) - along);
        hasChanged = hasChanged || solver.constant(*item->y.target) != -height;
        solver.setConstant(*item->y.target, -height);
    }
    if (hasChanged)
        solver.solve();
}

void LayoutEngine::apply()
{
    if (m_isApplying)
        return;
    refresh();
    m_solver.setConstant(m_hostWidth, -m_host->width());
    m_solver.setConstant(m_hostHeight, -m_host->height());
    solveWidthsFirst(m_solver);

    // Placing a widget runs its code, which may change the items.
    std::vector<std::pair<QPointer<QWidget>, QRect>> places;
    for (const Item *const item : m_order) {
        if (item->isGiven)
            continue;
        const QRectF rect(m_solver.value(item->x.origin), m_solver.value(item->y.origin),
                          m_solver.value(item->x.extent), m_solver.value(item->y.extent));
        places.emplace_back(item->widget, NS::roundedToUnits(rect.marginsAdded(item->insets)));
    }
    const QPointer<LayoutEngine> self(this);
    const QPointer<QWidget> host(m_host);
    m_isApplying = true;
    for (const auto &[widget, place] : places) {
        if (!widget || !host || !host->isAncestorOf(widget))
            continue;
        const QWidget *const parent = widget->parentWidget();
        const QPoint origin = parent == host ? QPoint() : parent->mapTo(host.data(), QPoint());
        widget->setGeometry(place.translated(-origin));
    }
    if (!self)
        return;
    m_isApplying = false;

    // Qt does not hold windows to a height that follows their width.
    if (m_layout && m_host->isWindow() && hasHeightForWidth()) {
        const int height = minimumHeightForWidth(m_host->width());
        if (height > m_host->height() && height <= m_host->maximumHeight())
            m_host->resize(m_host->width(), height);
    }
}

QSize LayoutEngine::fittingSize(double level, Fitting fitting)
{
    refresh();
    Solver solver(m_solver);
    solver.remove(m_hostWidth);
    solver.remove(m_hostHeight);
    solver.addTarget({ { { m_width } }, 0.0 }, { level }, { level });
    solver.addTarget({ { { m_height } }, 0.0 }, { level }, { level });
    if (fitting == Fitting::smallest) {
        for (const Item *const item : m_order) {
            if (item->hasHeightForWidth)
                solver.setConstant(*item->y.target, -item->minimumHeight);
        }
        solver.solve();
    } else {
        solveWidthsFirst(solver);
    }
    // Qt adds the host's margins, which constraints count in.
    const QMargins margins = m_host->contentsMargins();
    const QSize size(roundedUp(solver.value(m_width)) - margins.left() - margins.right(),
                     roundedUp(solver.value(m_height)) - margins.top() - margins.bottom());
    return size.expandedTo({ 0, 0 });
}

int LayoutEngine::fittingHeight(int width, double level)
{
    refresh();
    const QMargins margins = m_host->contentsMargins();
    Solver solver(m_solver);
    solver.setConstant(m_hostWidth, -(width + margins.left() + margins.right()));
    solver.remove(m_hostHeight);
    solver.addTarget({ { { m_height } }, 0.0 }, { level }, { level });
    solveWidthsFirst(solver);
    return std::max(0, roundedUp(solver.value(m_height)) - margins.top() - margins.bottom());
}

QSize LayoutEngine::minimumSize()
{
    if (!m_minimumSize)
        m_minimumSize = fittingSize(shrinkingLevel, Fitting::smallest);
    return *m_minimumSize;
}

QSize LayoutEngine::sizeHint()
{
    if (!m_sizeHint) {
        m_sizeHint = fittingSize(NS::LayoutPriority::fittingSizeCompression, Fitting::preferred)
                             .expandedTo(minimumSize());
    }
    return *m_sizeHint;
}

QSize LayoutEngine::maximumSize()
{
    if (m_maximumSize)
        return *m_maximumSize;
    refresh();
    constexpr double unlimited = QLAYOUTSIZE_MAX;
    Solver solver(m_solver);
    solver.remove(m_hostWidth);
    solver.remove(m_hostHeight);
    solver.addTarget({ { { m_width } }, -unlimited }, { growingLevel }, { growingLevel });
    solver.addTarget({ { { m_height } }, -unlimited }, { growingLevel }, { growingLevel });
    solveWidthsFirst(solver);
    const QMargins margins = m_host->contentsMargins();
    const auto limit = [](double length, int ownMargins) {
        const int whole = int(std::floor(length + 1e-4));
        return whole >= QLAYOUTSIZE_MAX ? QLAYOUTSIZE_MAX : whole - ownMargins;
    };
    const QSize size(limit(solver.value(m_width), margins.left() + margins.right()),
                     limit(solver.value(m_height), margins.top() + margins.bottom()));
    m_maximumSize = size.expandedTo(minimumSize());
    return *m_maximumSize;
}

bool LayoutEngine::hasHeightForWidth()
{
    refresh();
    return std::any_of(m_order.begin(), m_order.end(),
                       [](const Item *item) { return item->hasHeightForWidth; });
}

int LayoutEngine::heightForWidth(int width)
{
    const auto known = m_heights.constFind(width);
    if (known != m_heights.constEnd())
        return *known;
    const int height = fittingHeight(width, NS::LayoutPriority::fittingSizeCompression);
    m_heights.insert(width, height);
    return height;
}

int LayoutEngine::minimumHeightForWidth(int width)
{
    const auto known = m_minimumHeights.constFind(width);
    if (known != m_minimumHeights.constEnd())
        return *known;
    const int height = fittingHeight(width, shrinkingLevel);
    m_minimumHeights.insert(width, height);
    return height;
}

Qt::Orientations LayoutEngine::expandingDirections() const
{
    Qt::Orientations directions;
    for (const Item *const item : m_order)
        directions |= item->widget->sizePolicy().expandingDirections();
    return directions;
}

bool LayoutEngine::eventFilter(QObject *watched, QEvent *event)
{
    auto *const widget = static_cast<QWidget *>(watched);
    const auto found = m_items.find(widget);
    const bool isHost = widget == m_host;
    const bool isBetween = !isHost && found == m_items.end();
    switch (event->type()) {
    case QEvent::ParentChange:
        if (!isHost)
            dropStrayed();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (isHost && !m_layout && event->type() == QEvent::Resize)
            apply();
        else if (isBetween ? m_host->isAncestorOf(widget) && !m_isApplying
                           : !isHost && found->second->isGiven)
            request();
        break;
    case QEvent::LayoutRequest:
        // The host's own layout, of whatever kind, has handled it already.
        if (isHost && !m_layout) {
            m_isStale = true;
            apply();
        } else if (isBetween && m_host->isAncestorOf(widget)) {
            request();
        }
        break;
    case QEvent::LayoutDirectionChange:
        if (isHost && (m_host->layoutDirection() == Qt::RightToLeft) != m_isRightToLeft) {
            m_isRightToLeft = !m_isRightToLeft;
            rebuild();
        }
        break;
    case QEvent::DynamicPropertyChange:
        // Of the host, what constraints know is how far inside it lies what is aligned.
        if (isHost ? static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName()
                             == "alignmentRectInsets"
                   : !isBetween)
            request();
        break;
    default:
        break;
    }
    return false;
}

} // namespace Pellarvine::detail
