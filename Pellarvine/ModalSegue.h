// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Leaves presenting to the source: its prepareForSegue() shows the destination, in a dialog or a
/// popover for example, and takes it as a QObject child.
///
///     void ListController::prepareForSegue(NS::StoryboardSegue *segue, QObject *)
///     {
///         if (segue->identifier() == "settings"_L1)
///             present(segue->destinationController());
///     }
///
/// A storyboard deletes the destination if it has no QObject parent after the segue. Main thread
/// only.
class PELLARVINE_EXPORT ModalSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~ModalSegue() override;

    /// Does nothing. In particular, it does not open a window.
    void perform() override;
};

} // namespace Pellarvine
