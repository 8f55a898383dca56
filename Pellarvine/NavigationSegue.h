// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>

namespace Pellarvine {

class NavigationController;

/// The base of the segues that change a `NavigationController`: `PushSegue`, `ReplaceSegue`,
/// `UnwindSegue` and `ModalSegue`. A subclass overrides perform():
///
///     class CloseSegue : public Pellarvine::NavigationSegue // back to the first screen
///     {
///         Q_OBJECT
///     public:
///         using NavigationSegue::NavigationSegue;
///         void perform() override
///         {
///             auto *const navigation = findNavigationController();
///             while (navigation->goBack()) { }
///         }
///     };
///
/// Main thread only.
class PELLARVINE_EXPORT NavigationSegue : public NS::StoryboardSegue
{
    Q_OBJECT

public:
    using NS::StoryboardSegue::StoryboardSegue;
    ~NavigationSegue() override;

    /// The source, if it is a navigation controller, or else its nearest parent that is one. Stops
    /// the process with "Could not find navigation controller" if there is none.
    NavigationController *findNavigationController() const;
};

} // namespace Pellarvine
