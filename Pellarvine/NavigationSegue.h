// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>

namespace Pellarvine {

class NavigationController;

/// The base of the segues that change a `NavigationController`: `PushSegue`, `ReplaceSegue` and
/// `ModalSegue`. A class of one's own overrides perform():
///
///     void RaiseSegue::perform()
///     {
///         NavigationController *const navigation = findNavigationController();
///         …
///     }
class PELLARVINE_EXPORT NavigationSegue : public NS::StoryboardSegue
{
    Q_OBJECT

public:
    using NS::StoryboardSegue::StoryboardSegue;
    ~NavigationSegue() override;

    /// The source, if that is a navigation controller, or the nearest of its parents that is. Stops
    /// the process with "Could not find navigation controller" if there is none.
    NavigationController *findNavigationController() const;
};

} // namespace Pellarvine
