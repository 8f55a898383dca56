// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutForm.h"

#include "Layout/NSLayoutAnchor.h"
#include "Layout/NSLayoutSpacing.h"
#include "Layout/NSLayoutStack.h"
#include "View/NSView.h"

#include <QLabel>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace NS {

namespace {

// The alignment that the style has for labels of forms.
Qt::Alignment styledAlignment(const QWidget *container)
{
    const int hint =
            container->style()->styleHint(QStyle::SH_FormLayoutLabelAlignment, nullptr, container);
    return (Qt::Alignment(hint) & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
}

} // namespace

QList<std::shared_ptr<LayoutConstraint>> form(QWidget *container, const QList<FormRow> &rows,
                                              double border)
{
    QList<std::shared_ptr<LayoutConstraint>> constraints;
    QList<QWidget *> fields;
    for (const auto &[label, field] : rows) {
        if (label)
            addSubview(container, label);
        addSubview(container, field);
        fields.append(field);
        if (auto *const text = qobject_cast<QLabel *>(label); text && !text->buddy()) {
            text->setBuddy(field);
            text->setAlignment(styledAlignment(container));
        }
        if (!label)
            continue;
        constraints += {
            leadingAnchor(label).constraintEqualToAnchor(leadingAnchor(container), border),
            trailingAnchor(label).constraintEqualToAnchor(
                    leadingAnchor(field), -systemSpacing(label, field, Qt::Horizontal)),
            firstBaselineAnchor(label).constraintEqualToAnchor(firstBaselineAnchor(field)),
        };
    }
    if (fields.isEmpty())
        return {};
    QWidget *const last = fields.last();
    // Without labels, fields start at the border.
    if (constraints.isEmpty())
        constraints +=
                leadingAnchor(last).constraintEqualToAnchor(leadingAnchor(container), border);
    const bool isExpanding = std::any_of(fields.begin(), fields.end(), [](const QWidget *field) {
        return field->sizePolicy().expandingDirections() & Qt::Vertical;
    });
    // A field that does not grow keeps its width, and leaves the others theirs.
    for (QWidget *const field : std::as_const(fields)) {
        const bool canGrow = field->sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag;
        constraints += LayoutConstraint::make(field, LayoutAttribute::trailing,
                                              canGrow ? LayoutRelation::equal
                                                      : LayoutRelation::lessThanOrEqual,
                                              container, LayoutAttribute::trailing, 1.0, -border);
    }
    constraints += {
        topAnchor(fields.first()).constraintEqualToAnchor(topAnchor(container), border),
        LayoutConstraint::make(last, LayoutAttribute::bottom,
                               isExpanding ? LayoutRelation::equal
                                           : LayoutRelation::lessThanOrEqual,
                               container, LayoutAttribute::bottom, 1.0, -border),
    };
    return constraints + stack(fields, Qt::Vertical, {}, LayoutAttribute::leading);
}

} // namespace NS
