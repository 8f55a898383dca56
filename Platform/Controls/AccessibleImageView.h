// SPDX-License-Identifier: MIT
// Not API: the accessibility interface of picture views.
#pragma once

#include "Controls/NSImageView.h"
#include "View/AccessibleControl.h"

namespace Pellarvine::detail {

/// The hint of an empty view that is editable.
inline QString wellHint()
{
    return NS::ImageView::tr("Drop or paste a picture here");
}

class AccessibleImageView : public detail::AccessibleControl, public QAccessibleImageInterface
{
public:
    explicit AccessibleImageView(NS::ImageView *view)
        : AccessibleControl(view, QAccessible::Graphic, NS::ImageView::tr("Image"))
    { }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ImageInterface)
            return static_cast<QAccessibleImageInterface *>(this);
        return AccessibleControl::interface_cast(type);
    }
    QString text(QAccessible::Text text) const override
    {
        QString given = AccessibleControl::text(text);
        if (text != QAccessible::Description)
            return given;
        if (QString refusal = view()->refusal(); !refusal.isEmpty())
            return refusal;
        if (!given.isEmpty() || !view()->image().isEmpty())
            return given;
        QString placeholder = view()->placeholderText();
        return placeholder.isEmpty() && view()->isEditable() ? wellHint() : placeholder;
    }
    QString imageDescription() const override { return text(QAccessible::Name); }
    QSize imageSize() const override { return view()->imageRect().size().toSize(); }
    QPoint imagePosition() const override
    {
        return view()->mapToGlobal(view()->imageRect().topLeft().toPoint());
    }

private:
    NS::ImageView *view() const { return static_cast<NS::ImageView *>(widget()); }
};

} // namespace Pellarvine::detail
