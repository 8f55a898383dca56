// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/NavigationSegue.h>

QT_FORWARD_DECLARE_CLASS(QString)

namespace Pellarvine {

/// Goes back to a screen that a navigation controller already shows, and takes away all that lies
/// above it. What the screen holds, a search text or a selection, is as it was.
///
///     <segue class="UnwindSegue" source="note" destination="list"
///            object="backButton" signal="clicked"/>
///
/// In a storyboard the destination is not made anew: it is the nearest screen below the source that
/// was made from that scene.
class PELLARVINE_EXPORT UnwindSegue : public NavigationSegue
{
    Q_OBJECT

public:
    using NavigationSegue::NavigationSegue;
    ~UnwindSegue() override;

    /// Asks canUnwind() of each controller above the destination, the uppermost first, and does
    /// nothing if one says false. Then calls the destination's prepareForUnwind(), and takes each
    /// controller above it from its parent, from the stack, and its view from the content view.
    /// Those that nobody has taken as a QObject child by the end of this are deleted, as by a
    /// replace.
    ///
    /// The stack is that of the nearest navigation controller around the source that has the
    /// destination. Nothing is done if none has it, or if it is the top already. A source outside
    /// every navigation controller stops the process.
    void perform() override;

    /// The nearest screen below `source` that was made from that scene of its storyboard; null if
    /// there is none. Storyboards ask this for the destination.
    static QObject *existingDestination(NS::ViewController *source, const QString &scene);
};

} // namespace Pellarvine
