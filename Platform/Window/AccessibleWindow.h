// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/AccessiblePopups.h"

namespace Pellarvine::detail {

/// A window for screen readers, without its shadow.
class AccessibleWindow : public AccessiblePopups
{
public:
    explicit AccessibleWindow(QWidget *window, QAccessible::Role role = QAccessible::Window)
        : AccessiblePopups(window, role)
    { }

    QRect rect() const override;

    /// Gives `window`, which has got a WindowFrame or a popup, an AccessibleWindow in place of Qt's
    /// interface for its class. An interface of the program's own stays.
    static void replaceStandard(QWidget *window);
};

} // namespace Pellarvine::detail
