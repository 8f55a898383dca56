// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/AccessiblePopups.h"

namespace Pellarvine::detail {

/// A window for screen readers: with the role of one, and without the border, which is nothing but
/// a drawing.
class AccessibleWindow : public AccessiblePopups
{
public:
    explicit AccessibleWindow(QWidget *window)
        : AccessiblePopups(window, QAccessible::Window)
    { }

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    /// Without the window's shadow.
    QRect rect() const override;

private:
    int borderIndex() const;
};

} // namespace Pellarvine::detail
