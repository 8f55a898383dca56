// SPDX-License-Identifier: MIT
#include "Pellarvine/PopoverMessage.h"

#include "Controls/NSTextField.h"
#include "Drawing/Shades.h"
#include "Layout/NSLayoutAnchor.h"
#include "Scenes/NSViewController.h"
#include "Shared/MarkupParser.h"
#include "View/NSView.h"
#include "Window/NSPopover.h"

#include <QPalette>
#include <QWidget>

namespace Pellarvine {

namespace {

constexpr double textWidth = 250.0;
constexpr double margin = 10.0;

} // namespace

void PopoverMessage::showMessage(const QString &message, QWidget *view)
{
    showPopover(view, [&](NS::TextField *field) { field->setStringValue(message); });
}

void PopoverMessage::showMarkupMessage(const QString &message, QWidget *view)
{
    MarkupParser parser;
    // Black cannot be read on a dark bubble.
    const QPalette palette = view->palette();
    if (detail::isDark(palette))
        parser.setColor(NS::Color(palette.color(QPalette::WindowText)));
    showAttributedMessage(parser.parse(message), view);
}

void PopoverMessage::showAttributedMessage(const NS::AttributedString &message, QWidget *view)
{
    showPopover(view, [&](NS::TextField *field) { field->setAttributedStringValue(message); });
}

void PopoverMessage::showPopover(QWidget *view,
                                 const std::function<void(NS::TextField *)> &configure)
{
    auto *const field = new NS::TextField;
    field->setDrawsBackground(false);
    field->setEditable(false);
    field->setBezeled(false);
    field->setSelectable(false);
    NS::setTranslatesAutoresizingMaskIntoConstraints(field, false);
    field->setPreferredMaxLayoutWidth(textWidth);
    field->setWraps(true);
    configure(field);

    auto *const container = new QWidget;
    NS::addSubview(container, field);
    using namespace NS;
    LayoutConstraint::activateConstraints({
            widthAnchor(field).constraintEqualToConstant(textWidth),
            leadingAnchor(field).constraintEqualToAnchor(leadingAnchor(container), margin),
            trailingAnchor(field).constraintEqualToAnchor(trailingAnchor(container), -margin),
            topAnchor(field).constraintEqualToAnchor(topAnchor(container), margin),
            bottomAnchor(field).constraintEqualToAnchor(bottomAnchor(container), -margin),
    });
    container->resize(container->sizeHint());
    layoutSubtreeIfNeeded(container);

    auto *const controller = new ViewController;
    controller->setView(container);
    // It deletes itself once it has closed.
    auto *const popover = new Popover;
    popover->setDeletesOnClose(true);
    popover->setContentViewController(controller);
    popover->setBehavior(Popover::Behavior::transient);
    popover->showRelativeToRect({}, view, RectEdge::maxY);
}

} // namespace Pellarvine
