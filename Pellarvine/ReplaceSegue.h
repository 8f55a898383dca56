// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Makes the destination the only one in the stack of the navigation controller that the source
/// lies in.
///
///     ReplaceSegue(u"done"_s, letter, list).perform(); // back to a list, and nothing below it
class PELLARVINE_EXPORT ReplaceSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~ReplaceSegue() override;

    /// Takes each controller of the stack from its parent, and its view from the content view; then
    /// the destination becomes a child, its view fills the content view, and the stack is it alone.
    /// It fails as a push does.
    ///
    /// Controllers that were children and that nobody has taken as a QObject child by the end of
    /// this are deleted, once the events that led here are done. To keep one, give it a parent when
    /// `childViewControllersChanged` or `navigationStackChanged` tells that it has left.
    void perform() override;
};

} // namespace Pellarvine
