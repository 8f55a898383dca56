// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutConstraint.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Layout/Baseline.h"
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutEngine.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using Pellarvine::detail::printWarning;

namespace NS {

namespace {

QLatin1StringView nameOf(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::notAnAttribute:
        break;
    case LayoutAttribute::left:
        return "left"_L1;
    case LayoutAttribute::right:
        return "right"_L1;
    case LayoutAttribute::top:
        return "top"_L1;
    case LayoutAttribute::bottom:
        return "bottom"_L1;
    case LayoutAttribute::leading:
        return "leading"_L1;
    case LayoutAttribute::trailing:
        return "trailing"_L1;
    case LayoutAttribute::width:
        return "width"_L1;
    case LayoutAttribute::height:
        return "height"_L1;
    case LayoutAttribute::centerX:
        return "centerX"_L1;
    case LayoutAttribute::centerY:
        return "centerY"_L1;
    case LayoutAttribute::firstBaseline:
        return "firstBaseline"_L1;
    case LayoutAttribute::lastBaseline:
        return "lastBaseline"_L1;
    }
    return {};
}

// An object name, or else the class and the place in the parent: "form/QLabel[2]".
QString nameOf(const QWidget *widget)
{
    if (!widget->objectName().isEmpty())
        return widget->objectName();
    QString name = QString::fromLatin1(widget->metaObject()->className());
    const QWidget *const parent = widget->parentWidget();
    if (widget->isWindow() || !parent)
        return name;
    int place = 0;
    for (const QObject *const sibling : parent->children()) {
        if (sibling->isWidgetType() && sibling->metaObject() == widget->metaObject())
            ++place;
        if (sibling == widget)
            break;
    }
    return u"%1/%2[%3]"_s.arg(nameOf(parent), name).arg(place);
}

// "form/gap", or else "form/LayoutGuide[2]".
QString nameOf(const LayoutGuide *guide)
{
    QString name = guide->objectName();
    if (name.isEmpty()) {
        const auto guides = guide->owningView()->findChildren<const LayoutGuide *>(
                QString(), Qt::FindDirectChildrenOnly);
        name = u"LayoutGuide[%1]"_s.arg(guides.indexOf(guide) + 1);
    }
    return nameOf(guide->owningView()) + u'/' + name;
}

QString nameOf(ConstraintItem item, LayoutAttribute attribute)
{
    const QString name = item.widget()  ? nameOf(item.widget())
                         : item.guide() ? nameOf(item.guide())
                                        : u"(destroyed)"_s;
    return name + u'.' + nameOf(attribute);
}

enum class Kind {
    none,
    horizontalPlace,
    verticalPlace,
    size,
};

Kind kindOf(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::notAnAttribute:
        break;
    case LayoutAttribute::left:
    case LayoutAttribute::right:
    case LayoutAttribute::leading:
    case LayoutAttribute::trailing:
    case LayoutAttribute::centerX:
        return Kind::horizontalPlace;
    case LayoutAttribute::top:
    case LayoutAttribute::bottom:
    case LayoutAttribute::centerY:
    case LayoutAttribute::firstBaseline:
    case LayoutAttribute::lastBaseline:
        return Kind::verticalPlace;
    case LayoutAttribute::width:
    case LayoutAttribute::height:
        return Kind::size;
    }
    return Kind::none;
}

bool isBaselineOfGuide(ConstraintItem item, LayoutAttribute attribute)
{
    return detail::isBaseline(attribute) && item.guide();
}

// Why the constraint is invalid; empty if it is valid.
QString refusal(const LayoutConstraint &constraint)
{
    const Kind kind = kindOf(constraint.firstAttribute());
    const Kind other = kindOf(constraint.secondAttribute());
    if (kind == Kind::none)
        return u"it has no first attribute"_s;
    if (other != Kind::none && other != kind) {
        return kind == Kind::size || other == Kind::size
                       ? u"one attribute is a size and the other a place"_s
                       : u"one attribute is horizontal and the other vertical"_s;
    }
    if (isBaselineOfGuide(constraint.firstItem(), constraint.firstAttribute())
        || isBaselineOfGuide(constraint.secondItem(), constraint.secondAttribute()))
        return u"a layout guide has no baseline"_s;
    if (!std::isfinite(constraint.multiplier()))
        return u"its multiplier is not a finite number"_s;
    if (!std::isfinite(constraint.constant()))
        return u"its constant is not a finite number"_s;
    return {};
}

void warn(const QString &text)
{
    printWarning((u"Warning: "_s + text).toStdString());
}

// Null for widgets of different windows.
QWidget *commonAncestor(QWidget *one, QWidget *other)
{
    for (QWidget *candidate = one; candidate; candidate = candidate->parentWidget()) {
        if (candidate == other || candidate->isAncestorOf(other))
            return candidate;
        if (candidate->isWindow())
            break;
    }
    return nullptr;
}

} // namespace

struct LayoutConstraint::Private
{
    QPointer<QObject> first;
    QPointer<QObject> second;
    LayoutAttribute firstAttribute = LayoutAttribute::notAnAttribute;
    LayoutAttribute secondAttribute = LayoutAttribute::notAnAttribute;
    LayoutRelation relation = LayoutRelation::equal;
    double multiplier = 1.0;
    double constant = 0.0;
    double priority = LayoutPriority::required;
    bool isRefused = false;
    detail::LayoutEngine *engine = nullptr; // null while it is inactive

    QWidget *host() const
    {
        const ConstraintItem item(first.data());
        QWidget *const view = item.view();
        if (secondAttribute != LayoutAttribute::notAnAttribute && second != first)
            return view && second ? commonAncestor(view, ConstraintItem(second.data()).view())
                                  : nullptr;
        if (item.guide() || !view)
            return view;
        const bool canParent = !view->isWindow() && view->parentWidget()
                               && detail::ConstraintLayout::canServe(view->parentWidget());
        return canParent ? view->parentWidget() : view;
    }
};

LayoutConstraint::LayoutConstraint()
    : d(std::make_unique<Private>())
{ }

LayoutConstraint::~LayoutConstraint() = default;

std::shared_ptr<LayoutConstraint>
LayoutConstraint::make(ConstraintItem first, LayoutAttribute firstAttribute,
                       LayoutRelation relation, ConstraintItem second,
                       LayoutAttribute secondAttribute, double multiplier, double constant)
{
    std::shared_ptr<LayoutConstraint> made(new LayoutConstraint);
    made->d->first = first.object();
    made->d->firstAttribute = firstAttribute;
    made->d->relation = relation;
    made->d->second = second.object();
    made->d->secondAttribute = secondAttribute;
    made->d->multiplier = multiplier;
    made->d->constant = constant;
    const QString reason = refusal(*made);
    made->d->isRefused = !reason.isEmpty();
    if (made->d->isRefused)
        warn(u"refused the constraint %1: %2"_s.arg(made->description(), reason));
    return made;
}

ConstraintItem LayoutConstraint::firstItem() const
{
    return ConstraintItem(d->first.data());
}

ConstraintItem LayoutConstraint::secondItem() const
{
    return ConstraintItem(d->second.data());
}

LayoutAttribute LayoutConstraint::firstAttribute() const
{
    return d->firstAttribute;
}

LayoutAttribute LayoutConstraint::secondAttribute() const
{
    return d->secondAttribute;
}

LayoutRelation LayoutConstraint::relation() const
{
    return d->relation;
}

double LayoutConstraint::multiplier() const
{
    return d->multiplier;
}

double LayoutConstraint::constant() const
{
    return d->constant;
}

void LayoutConstraint::setConstant(double constant)
{
    if (!std::isfinite(constant)) {
        warn(u"the constraint %1 keeps its constant: %2 is not a finite number"_s.arg(
                description(), QString::number(constant)));
        return;
    }
    if (!detail::assign(d->constant, constant))
        return;
    if (d->engine)
        d->engine->updateConstant(this);
    Q_EMIT constantChanged(constant);
}

double LayoutConstraint::priority() const
{
    return d->priority;
}

void LayoutConstraint::setPriority(double priority)
{
    if (!std::isfinite(priority)) {
        warn(u"the constraint %1 keeps its priority: %2 is not a finite number"_s.arg(
                description(), QString::number(priority)));
        return;
    }
    priority = std::clamp(priority, 1.0, LayoutPriority::required);
    if (!detail::assign(d->priority, priority))
        return;
    if (d->engine)
        d->engine->updateStrength(this);
    Q_EMIT priorityChanged(priority);
}

std::shared_ptr<LayoutConstraint> LayoutConstraint::withPriority(double priority)
{
    setPriority(priority);
    return shared_from_this();
}

bool LayoutConstraint::isActive() const
{
    return d->engine;
}

void LayoutConstraint::setActive(bool isActive)
{
    if (isActive)
        activateConstraints({ shared_from_this() });
    else
        deactivateConstraints({ shared_from_this() });
}

QString LayoutConstraint::description() const
{
    QString text;
    if (!objectName().isEmpty())
        text = u'[' + objectName() + u"] "_s;
    text += nameOf(firstItem(), d->firstAttribute);
    text += d->relation == LayoutRelation::equal             ? " == "_L1
            : d->relation == LayoutRelation::lessThanOrEqual ? " <= "_L1
                                                             : " >= "_L1;
    if (d->secondAttribute == LayoutAttribute::notAnAttribute)
        return text + QString::number(d->constant);
    if (d->multiplier != 1.0)
        text += QString::number(d->multiplier) + u" * "_s;
    text += nameOf(secondItem(), d->secondAttribute);
    if (d->constant != 0.0) {
        text += d->constant < 0.0 ? " - "_L1 : " + "_L1;
        text += QString::number(std::abs(d->constant));
    }
    return text;
}

void LayoutConstraint::setEngine(detail::LayoutEngine *engine)
{
    const bool wasActive = isActive();
    d->engine = engine;
    if (isActive() != wasActive)
        Q_EMIT activeChanged(isActive());
}

// Slots of one constraint may end others, or their widgets.
void LayoutConstraint::activateConstraints(
        const QList<std::shared_ptr<LayoutConstraint>> &constraints)
{
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the list may change meanwhile
    const QList<std::shared_ptr<LayoutConstraint>> all = constraints;
    for (const auto &constraint : all) {
        if (constraint->isActive() || constraint->d->isRefused || constraint->d->host())
            continue;
        warn(u"the items of the constraint %1 have no common ancestor"_s.arg(
                constraint->description()));
        return;
    }
    for (const auto &constraint : all) {
        if (constraint->isActive() || constraint->d->isRefused)
            continue;
        if (QWidget *const host = constraint->d->host())
            detail::LayoutEngine::on(host)->add(constraint, host);
    }
}

void LayoutConstraint::deactivateConstraints(
        const QList<std::shared_ptr<LayoutConstraint>> &constraints)
{
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the list may change meanwhile
    const QList<std::shared_ptr<LayoutConstraint>> all = constraints;
    for (const auto &constraint : all) {
        if (constraint->d->engine)
            constraint->d->engine->remove(constraint.get());
    }
}

} // namespace NS
