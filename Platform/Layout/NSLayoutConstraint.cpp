// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutConstraint.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Layout/ConstraintLayout.h"
#include "Layout/LayoutEngine.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;
using Pellarvine::detail::LayoutEngine;
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

QString nameOf(const QWidget *widget, LayoutAttribute attribute)
{
    QString name = u"(destroyed)"_s;
    if (widget) {
        name = widget->objectName();
        if (name.isEmpty())
            name = QString::fromLatin1(widget->metaObject()->className());
    }
    return name + u'.' + nameOf(attribute);
}

// Constraints do not reach across windows.
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
    QPointer<QWidget> first;
    QPointer<QWidget> second;
    LayoutAttribute firstAttribute = LayoutAttribute::notAnAttribute;
    LayoutAttribute secondAttribute = LayoutAttribute::notAnAttribute;
    LayoutRelation relation = LayoutRelation::equal;
    double multiplier = 1.0;
    double constant = 0.0;
    double priority = LayoutPriority::required;
    detail::LayoutEngine *engine = nullptr; // keeps an active constraint

    QWidget *host() const
    {
        if (!first)
            return nullptr;
        if (secondAttribute != LayoutAttribute::notAnAttribute && second != first)
            return second ? commonAncestor(first, second) : nullptr;
        const bool canParent = !first->isWindow() && first->parentWidget()
                               && detail::ConstraintLayout::canServe(first->parentWidget());
        return canParent ? first->parentWidget() : first.data();
    }
};

LayoutConstraint::LayoutConstraint()
    : d(std::make_unique<Private>())
{ }

LayoutConstraint::~LayoutConstraint() = default;

std::shared_ptr<LayoutConstraint> LayoutConstraint::make(QWidget *first,
                                                         LayoutAttribute firstAttribute,
                                                         LayoutRelation relation, QWidget *second,
                                                         LayoutAttribute secondAttribute,
                                                         double multiplier, double constant)
{
    std::shared_ptr<LayoutConstraint> made(new LayoutConstraint);
    made->d->first = first;
    made->d->firstAttribute = firstAttribute;
    made->d->relation = relation;
    made->d->second = second;
    made->d->secondAttribute = secondAttribute;
    made->d->multiplier = multiplier;
    made->d->constant = constant;
    return made;
}

QWidget *LayoutConstraint::firstItem() const
{
    return d->first;
}

QWidget *LayoutConstraint::secondItem() const
{
    return d->second;
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
    priority = std::clamp(priority, 1.0, LayoutPriority::required);
    if (!detail::assign(d->priority, priority))
        return;
    if (d->engine)
        d->engine->updateStrength(this);
    Q_EMIT priorityChanged(priority);
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
    text += nameOf(d->first, d->firstAttribute);
    text += d->relation == LayoutRelation::equal             ? " == "_L1
            : d->relation == LayoutRelation::lessThanOrEqual ? " <= "_L1
                                                             : " >= "_L1;
    if (d->secondAttribute == LayoutAttribute::notAnAttribute)
        return text + QString::number(d->constant);
    if (d->multiplier != 1.0)
        text += QString::number(d->multiplier) + u" * "_s;
    text += nameOf(d->second, d->secondAttribute);
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

void LayoutConstraint::activateConstraints(
        const QList<std::shared_ptr<LayoutConstraint>> &constraints)
{
    for (const auto &constraint : constraints) {
        if (constraint->isActive() || constraint->d->host())
            continue;
        detail::printWarning(u"Warning: no view holds both ends of the constraint %1"_s
                                     .arg(constraint->description())
                                     .toStdString());
        return;
    }
    for (const auto &constraint : constraints) {
        if (constraint->isActive())
            continue;
        QWidget *const host = constraint->d->host();
        detail::LayoutEngine::on(host)->add(constraint, host);
    }
}

void LayoutConstraint::deactivateConstraints(
        const QList<std::shared_ptr<LayoutConstraint>> &constraints)
{
    for (const auto &constraint : constraints) {
        if (constraint->d->engine)
            constraint->d->engine->remove(constraint.get());
    }
}

} // namespace NS
