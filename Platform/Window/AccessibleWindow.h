// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/AccessiblePopups.h"

namespace Pellarvine::detail {

/// A window for screen readers: with the role of one, and without its shadow.
class AccessibleWindow : public AccessiblePopups
{
public:
    explicit AccessibleWindow(QWidget *window)
        : AccessiblePopups(window, QAccessible::Window)
    { }

    QRect rect() const override;
};

} // namespace Pellarvine::detail
