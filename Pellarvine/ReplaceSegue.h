// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Replaces the whole stack of the nearest navigation controller around the source by the
/// destination:
///
///     ReplaceSegue(u"done"_s, letter, list).perform(); // back to a list, and nothing below it
///
/// The navigation controller owns the destination afterwards. Main thread only.
class PELLARVINE_EXPORT ReplaceSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~ReplaceSegue() override;

    /// Removes each controller of the stack from its parent, and its view from the content view.
    /// Then adds the destination as a child, fills the content view with its view, and makes it the
    /// only one of the stack. Controllers that callbacks of the removed ones push are removed too.
    /// Fails as a push does.
    ///
    /// Removed children that have no QObject parent afterwards are deleted by the event loop. To
    /// keep one, give it a parent when `childViewControllersChanged` or `navigationStackChanged` is
    /// emitted.
    void perform() override;
};

} // namespace Pellarvine
