// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "View/AccessibleControl.h"

#include <QList>

namespace Pellarvine::detail {

/// A window for screen readers, with the popovers in popups of its own as its last children. Qt
/// leaves popups out of the tree, both here and in the application.
class AccessiblePopups : public AccessibleControl
{
public:
    using AccessibleControl::AccessibleControl;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;

    /// Also those that are not on the screen.
    static QList<QWidget *> popupsOf(const QWidget *window);

private:
    QList<QWidget *> shownPopups() const;
};

} // namespace Pellarvine::detail
