// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

QT_FORWARD_DECLARE_CLASS(QString)

namespace Pellarvine {

/// Goes back to a screen that a navigation controller already shows, and removes the screens above
/// it. The screen keeps its state, such as a search text or a selection.
///
///     <segue class="UnwindSegue" source="note" destination="list"
///            object="backButton" signal="clicked"/>
///
/// In a storyboard the destination is not made anew. It is the nearest screen below the source that
/// was made from that scene. Main thread only.
class PELLARVINE_EXPORT UnwindSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~UnwindSegue() override;

    /// Calls canUnwind() of each controller above the destination, the uppermost first, and stops
    /// if one returns false. Then calls prepareForUnwind() of the destination, and removes each
    /// controller above it from its parent, from the stack, and its view from the content view.
    /// Removed controllers without a QObject parent are deleted, as by a replace.
    ///
    /// The nearest navigation controller around the source that contains the destination is used.
    /// Nothing happens if none does, or if the destination is the uppermost already. A source in no
    /// navigation controller fails as in a push.
    void perform() override;

    /// The nearest screen below `source` that was made from that scene of its storyboard, or null.
    /// Storyboards call this for the destination.
    static QObject *existingDestination(NS::ViewController *source, const QString &scene);
};

} // namespace Pellarvine
