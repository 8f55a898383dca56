// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Puts the destination on top of the stack of the navigation controller that the source lies in.
///
///     PushSegue(u"open"_s, list, letter).perform(); // the letter covers the list
class PELLARVINE_EXPORT PushSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~PushSegue() override;

    /// The destination becomes the navigation controller's child, its view fills the content view,
    /// above what is there, and it is appended to the stack, even if the stack has it already.
    /// Nothing is done for a destination that is no view controller. A destination that is or
    /// contains the navigation controller is refused with a warning. A source outside every
    /// navigation controller, and an absent content view, stop the process.
    void perform() override;
};

} // namespace Pellarvine
