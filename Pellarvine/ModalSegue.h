// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

namespace Pellarvine {

/// Shows nothing by itself: the source presents the destination in its prepareForSegue(), in a
/// dialog or a popover, and takes it as a QObject child.
///
///     void ListController::prepareForSegue(NS::StoryboardSegue *segue, QObject *)
///     {
///         if (segue->identifier() == "settings"_L1)
///             present(segue->destinationController());
///     }
class PELLARVINE_EXPORT ModalSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~ModalSegue() override;

    /// Does nothing, not even what NS::StoryboardSegue does.
    void perform() override;
};

} // namespace Pellarvine
