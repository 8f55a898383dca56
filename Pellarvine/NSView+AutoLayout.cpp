// SPDX-License-Identifier: MIT
#include "Base/MethodLookup.h"
#include "Layout/NSLayoutAnchor.h"
#include "Pellarvine/NSView+AutoLayout.h"
#include "View/NSView.h"

#include <QMetaMethod>
#include <QPointer>
#include <QWidget>

namespace NS {

namespace {

using Pin = void (*)(QWidget *, QWidget *);
using PinWithBorder = void (*)(QWidget *, QWidget *, double);

// The program hears that the subview is shown, and may take it away: false then.
bool prepare(const QPointer<QWidget> &receiver, const QPointer<QWidget> &subview)
{
    setTranslatesAutoresizingMaskIntoConstraints(subview, false);
    addSubview(receiver, subview);
    return receiver && subview && subview->parentWidget() == receiver;
}

void add(QWidget *receiver, QWidget *subview, const char *signature, Pin pin)
{
    if (!prepare(receiver, subview))
        return;
    const QMetaMethod own = detail::methodWithSignature(receiver, signature);
    if (own.isValid())
        own.invoke(receiver, Qt::DirectConnection, Q_ARG(QWidget *, subview));
    else
        pin(receiver, subview);
}

void add(QWidget *receiver, QWidget *subview, double border, const char *signature,
         PinWithBorder pin)
{
    if (!prepare(receiver, subview))
        return;
    const QMetaMethod own = detail::methodWithSignature(receiver, signature);
    if (own.isValid()) {
        own.invoke(receiver, Qt::DirectConnection, Q_ARG(QWidget *, subview),
                   Q_ARG(double, border));
    } else {
        pin(receiver, subview, border);
    }
}

} // namespace

void pinWidthAndHeight(QWidget *receiver, QWidget *view)
{
    LayoutConstraint::activateConstraints({
            leadingAnchor(receiver).constraintEqualToAnchor(leadingAnchor(view)),
            trailingAnchor(receiver).constraintEqualToAnchor(trailingAnchor(view)),
            topAnchor(receiver).constraintEqualToAnchor(topAnchor(view)),
            bottomAnchor(receiver).constraintEqualToAnchor(bottomAnchor(view)),
    });
}

void pinWidthAndHeight(QWidget *receiver, QWidget *view, double border)
{
    LayoutConstraint::activateConstraints({
            leadingAnchor(receiver).constraintEqualToAnchor(leadingAnchor(view), -border),
            trailingAnchor(receiver).constraintEqualToAnchor(trailingAnchor(view), border),
            topAnchor(receiver).constraintEqualToAnchor(topAnchor(view), -border),
            bottomAnchor(receiver).constraintEqualToAnchor(bottomAnchor(view), border),
    });
}

void pinCenter(QWidget *receiver, QWidget *view)
{
    LayoutConstraint::activateConstraints({
            centerXAnchor(receiver).constraintEqualToAnchor(centerXAnchor(view)),
            centerYAnchor(receiver).constraintEqualToAnchor(centerYAnchor(view)),
    });
}

void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view)
{
    pinCenterAndConstrainInside(receiver, view, 0.0);
}

void pinCenterAndConstrainInside(QWidget *receiver, QWidget *view, double border)
{
    LayoutConstraint::activateConstraints({
            centerXAnchor(receiver).constraintEqualToAnchor(centerXAnchor(view)),
            centerYAnchor(receiver).constraintEqualToAnchor(centerYAnchor(view)),
            leadingAnchor(receiver).constraintLessThanOrEqualToAnchor(leadingAnchor(view), border),
            trailingAnchor(receiver).constraintGreaterThanOrEqualToAnchor(trailingAnchor(view),
                                                                          -border),
            topAnchor(receiver).constraintLessThanOrEqualToAnchor(topAnchor(view), border),
            bottomAnchor(receiver).constraintGreaterThanOrEqualToAnchor(bottomAnchor(view),
                                                                        -border),
    });
}

void addAndPin(QWidget *receiver, QWidget *subview)
{
    add(receiver, subview, "pinWidthAndHeight(QWidget*)", &pinWidthAndHeight);
}

void addAndPin(QWidget *receiver, QWidget *subview, double border)
{
    add(receiver, subview, border, "pinWidthAndHeight(QWidget*,double)", &pinWidthAndHeight);
}

void addAndCenter(QWidget *receiver, QWidget *subview)
{
    add(receiver, subview, "pinCenter(QWidget*)", &pinCenter);
}

void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview)
{
    add(receiver, subview, "pinCenterAndConstrainInside(QWidget*)", &pinCenterAndConstrainInside);
}

void addCenteredAndConstrainedToBounds(QWidget *receiver, QWidget *subview, double border)
{
    add(receiver, subview, border, "pinCenterAndConstrainInside(QWidget*,double)",
        &pinCenterAndConstrainInside);
}

} // namespace NS
