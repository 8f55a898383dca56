// SPDX-License-Identifier: MIT
#include "Layout/LayoutEngine.h"

#include "Layout/Baseline.h"
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutHosts.h"
#include "View/NSView.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QVarLengthArray>
#include <QWidget>

#include <algorithm>
#include <utility>

using NS::LayoutConstraint;

namespace Pellarvine::detail {

namespace {

// Whether a constraint ties a width to a height, for example for a square.
bool isOfBothSizes(const LayoutConstraint &constraint)
{
    using NS::LayoutAttribute;
    const LayoutAttribute first = constraint.firstAttribute();
    const LayoutAttribute second = constraint.secondAttribute();
    return (first == LayoutAttribute::width && second == LayoutAttribute::height)
           || (first == LayoutAttribute::height && second == LayoutAttribute::width);
}

} // namespace

LayoutEngine *LayoutEngine::on(QWidget *host)
{
    LayoutHosts &hosts = LayoutHosts::all();
    if (LayoutEngine *const upper = hosts.upperEngine(host))
        return upper;
    if (LayoutEngine *const own = hosts.ownEngine(host))
        return own;
    for (QWidget *widget = host; !widget->isWindow() && widget->parentWidget();) {
        widget = widget->parentWidget();
        LayoutEngine *const upper = hosts.ownEngine(widget);
        if (upper && upper->placesBelow(host) && isReachable(host, widget)) {
            upper->takeOver(host);
            return upper;
        }
    }
    return new LayoutEngine(host);
}

LayoutEngine::LayoutEngine(QWidget *host)
    : QObject(host)
    , m_host(host)
{
    m_system.setHostInsets(NS::alignmentRectInsets(host));
    LayoutHosts::all().insert(host, this);
    if (ConstraintLayout::canServe(host))
        m_layout = new ConstraintLayout(host, this);
    host->installEventFilter(this);
}

LayoutEngine::~LayoutEngine()
{
    LayoutHosts::all().remove(m_host, this);
    for (const auto &constraint : constraints())
        constraint->setEngine(nullptr);
}

// Constraints

void LayoutEngine::add(const std::shared_ptr<LayoutConstraint> &constraint, QWidget *ancestor)
{
    acquire(constraint->firstItem(), ancestor);
    acquire(constraint->secondItem(), ancestor);
    Active active;
    active.constraint = constraint;
    active.first = constraint->firstItem().object();
    active.second = constraint->secondItem().object();
    active.ancestor = ancestor;
    active.isOfBaseline =
            isBaseline(constraint->firstAttribute()) || isBaseline(constraint->secondAttribute());
    active.isOfBothSizes = isOfBothSizes(*constraint);
    if (!addAgain(active)) {
        release(active.first, ancestor);
        release(active.second, ancestor);
        constraint->setEngine(nullptr);
        return;
    }
    active.number = m_nextNumber++;
    m_tiesOfSizes += active.isOfBothSizes ? 1 : 0;
    m_inOrder.push_back(&m_active.emplace(constraint.get(), std::move(active)).first->second);
    request();
    constraint->setEngine(this);
}

void LayoutEngine::remove(LayoutConstraint *constraint)
{
    Active active = strike(constraint);
    takeOut(active);
    release(active.first, active.ancestor);
    release(active.second, active.ancestor);
    request();
    constraint->setEngine(nullptr);
}

void LayoutEngine::updateConstant(LayoutConstraint *constraint)
{
    const Active &active = m_active.at(constraint);
    if (!active.handle)
        return;
    const auto conflict = m_system.solver().setConstant(
            *active.handle, m_system.expressionOf(*constraint, active.ancestor).constant);
    if (conflict.empty()) {
        m_hasNewConstraints = true;
        request();
        return;
    }
    warnAbout(*constraint, conflict);
    remove(constraint);
}

void LayoutEngine::updateStrength(LayoutConstraint *constraint)
{
    Active &active = m_active.at(constraint);
    takeOut(active);
    if (addAgain(active))
        request();
    else
        remove(constraint);
}

std::vector<std::shared_ptr<LayoutConstraint>> LayoutEngine::constraints() const
{
    std::vector<std::shared_ptr<LayoutConstraint>> all;
    for (const Active *const active : m_inOrder)
        all.push_back(active->constraint);
    return all;
}

void LayoutEngine::takeOut(Active &active)
{
    if (const auto handle = std::exchange(active.handle, {}))
        m_system.solver().remove(*handle);
}

// Adds a constraint that is not in the solver. If it contradicts others, warns and returns false.
// The caller then has to remove it.
bool LayoutEngine::addAgain(Active &active)
{
    return addAgain(active, m_system.expressionOf(*active.constraint, active.ancestor));
}

bool LayoutEngine::addAgain(Active &active, const Solver::Expression &expression)
{
    const Solver::Addition added = m_system.add(*active.constraint, expression);
    if (!added.constraint)
        warnAbout(*active.constraint, added.conflict);
    active.handle = added.constraint;
    m_hasNewConstraints = true;
    if (active.isOfBaseline)
        active.terms.assign(expression.terms.begin(), expression.terms.end());
    return added.constraint.has_value();
}

// Forgets the constraint, and returns what was known of it.
LayoutEngine::Active LayoutEngine::strike(LayoutConstraint *constraint)
{
    const auto place = m_active.find(constraint);
    m_inOrder.erase(std::lower_bound(
            m_inOrder.begin(), m_inOrder.end(), place->second.number,
            [](const Active *active, int number) { return active->number < number; }));
    Active active = std::move(place->second);
    m_active.erase(place);
    m_tiesOfSizes -= active.isOfBothSizes ? 1 : 0;
    return active;
}

std::vector<LayoutEngine::Active> LayoutEngine::copiesInOrder() const
{
    std::vector<Active> all;
    all.reserve(m_inOrder.size());
    for (const Active *const active : m_inOrder)
        all.push_back(*active);
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

// Gives the items the order that they would have if only the active constraints had been added.
void LayoutEngine::reorder()
{
    std::vector<LayoutItem *> order;
    QSet<const QObject *> seen;
    for (const Active *const active : m_inOrder) {
        for (const QObject *const object : { active->first, active->second }) {
            LayoutItem *const item = m_system.find(object);
            if (item && !seen.contains(object)) {
                seen.insert(object);
                order.push_back(item);
            }
        }
    }
    m_system.setOrder(order);
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
    if (std::exchange(m_isOrderStale, false))
        reorder();
    if (m_system.setHostInsets(NS::alignmentRectInsets(m_host))) {
        rebuild();
        m_isStale = false; // the rest of this function does it
    }
    for (LayoutItem *const item : m_system.items())
        refresh(*item);
    // Baselines depend on fonts, which may have changed.
    std::vector<std::shared_ptr<LayoutConstraint>> contradicting;
    for (Active *const active : m_inOrder) {
        if (active->isOfBaseline && !updateBaseline(*active))
            contradicting.push_back(active->constraint);
    }
    removeAll(contradicting);
}

// Returns false if it now contradicts others. The caller then has to remove it.
bool LayoutEngine::updateBaseline(Active &active)
{
    const Solver::Expression expression =
            m_system.expressionOf(*active.constraint, active.ancestor);
    if (!active.handle || !std::ranges::equal(expression.terms, active.terms)) {
        takeOut(active);
        return addAgain(active, expression);
    }
    const auto conflict = m_system.solver().setConstant(*active.handle, expression.constant);
    if (!conflict.empty())
        warnAbout(*active.constraint, conflict);
    return conflict.empty();
}

// Slots of one constraint may end others, or the engine.
void LayoutEngine::removeAll(const std::vector<std::shared_ptr<LayoutConstraint>> &constraints)
{
    const QPointer<LayoutEngine> self(this);
    for (const auto &constraint : constraints) {
        if (self && m_active.contains(constraint.get()))
            remove(constraint.get());
    }
}

void LayoutEngine::refresh(LayoutItem &item)
{
    if (isGiven(item)) {
        const QRect frame = item.widget ? item.widget->rect() : item.guide->frame();
        m_system.setFrame(item, frame.translated(item.view()->mapTo(m_host, QPoint())));
        return;
    }
    // The layout of a host whose constraints were taken over does not know its content.
    m_system.setIntrinsicSize(item, !LayoutHosts::all().isTakenOver(item.widget));
}

void LayoutEngine::rebuild()
{
    for (Active *const active : m_inOrder)
        takeOut(*active);
    std::vector<std::shared_ptr<LayoutConstraint>> contradicting;
    for (Active *const active : m_inOrder) {
        if (!addAgain(*active))
            contradicting.push_back(active->constraint);
    }
    request();
    removeAll(contradicting);
}

void LayoutEngine::apply()
{
    if (m_placing)
        return;
    const bool wasStale = m_isStale;
    refresh();
    warnOfNegativeSizes();
    m_system.solve(m_host->size());
    if (wasStale)
        lookForOverridden();
    if (!placeItems())
        return;

    // Qt does not enforce height-for-width on windows.
    if (m_layout && m_host->isWindow() && hasHeightForWidth()) {
        const int height = minimumHeightForWidth(m_host->width());
        if (height > m_host->height() && height <= m_host->maximumHeight())
            m_host->resize(m_host->width(), height);
    }
}

// Returns false if that has deleted the engine.
bool LayoutEngine::placeItems()
{
    // Placing a widget or a guide runs its event handlers or slots, which may change the items.
    QVarLengthArray<std::pair<QObject *, QRect>, 128> places;
    places.reserve(m_system.items().size());
    for (const LayoutItem *const item : m_system.items()) {
        if (!item->isGiven)
            places.emplace_back(item->object, m_system.place(*item));
    }
    const QPointer<LayoutEngine> self(this);
    const unsigned changes = m_system.changes();
    for (const auto &[object, place] : places) {
        if (m_system.changes() != changes && !m_system.find(object))
            continue;
        m_placing = object;
        const auto *const parent = static_cast<const QWidget *>(object->parent());
        const QPoint origin = parent == m_host ? QPoint() : parent->mapTo(m_host, QPoint());
        const QRect frame = place.translated(-origin);
        if (object->isWidgetType())
            static_cast<QWidget *>(object)->setGeometry(frame);
        else
            static_cast<NS::LayoutGuide *>(object)->setFrame(frame);
        if (!self)
            return false;
    }
    m_placing = nullptr;
    return true;
}

bool LayoutEngine::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::LayoutRequest:
    case QEvent::LayoutDirectionChange:
    case QEvent::DynamicPropertyChange:
        break;
    default:
        return false;
    }
    auto *const widget = static_cast<QWidget *>(watched);
    if (widget == m_placing && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        return false;
    const LayoutItem *const item = m_system.find(widget);
    const bool isHost = widget == m_host;
    const bool isBetween = !isHost && !item;
    switch (event->type()) {
    case QEvent::ParentChange:
        if (!isHost)
            dropStrayed();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (isHost && !m_layout && event->type() == QEvent::Resize)
            apply();
        else if (isBetween ? m_host->isAncestorOf(widget) && !m_placing : !isHost && item->isGiven)
            request();
        break;
    case QEvent::LayoutRequest:
        // If the host has a ConstraintLayout, that has handled it already.
        if (isHost && !m_layout) {
            m_isStale = true;
            apply();
        } else if (isBetween && m_host->isAncestorOf(widget)) {
            request();
        }
        break;
    case QEvent::LayoutDirectionChange:
        if (std::any_of(m_inOrder.begin(), m_inOrder.end(),
                        [&](const Active *active) { return active->ancestor == widget; }))
            rebuild();
        break;
    case QEvent::DynamicPropertyChange:
        // Constraints depend on one property of the host.
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
