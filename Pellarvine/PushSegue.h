// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Pushes the destination onto the stack of the nearest navigation controller around the source:
///
///     PushSegue(u"open"_s, list, letter).perform(); // the letter covers the list
///
/// The navigation controller owns the destination afterwards. Main thread only.
class PELLARVINE_EXPORT PushSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~PushSegue() override;

    /// Adds the destination as a child of the navigation controller, fills the content view with
    /// its view, above the others, and appends it to the stack, even if the stack contains it
    /// already. Does nothing if the destination is not a view controller. Refuses a destination
    /// that is or contains the navigation controller, and a source whose view is being loaded or
    /// that is being removed, with a warning. Throws the exceptions of loading the destination's
    /// view; nothing has changed then. Stops the process if the source is in no navigation
    /// controller for another reason, or if there is no content view.
    ///
    /// Callbacks may navigate. A controller that viewWillAppear() of the destination pushes lies
    /// above the destination. A destination that goes back there is not shown.
    void perform() override;
};

} // namespace Pellarvine
