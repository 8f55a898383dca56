// SPDX-License-Identifier: MIT
#include "Pellarvine/NSView+AutoLayout.h"
#include "Pellarvine/NSViewController+Storyboard.h"
#include "Scenes/NSStoryboard.h"
#include "View/NSView.h"

#include <QPointer>

#include <memory>

namespace NS {

ViewController *instantiateViewControllerWithIdentifier(const ViewController *receiver,
                                                        const QString &identifier,
                                                        QWidget *pinInsideSubview)
{
    const std::shared_ptr<Storyboard> storyboard = receiver->storyboard();
    if (!storyboard)
        return nullptr;
    std::unique_ptr<QObject> made(storyboard->instantiateControllerWithIdentifier(identifier));
    auto *const controller = qobject_cast<ViewController *>(made.get());
    if (!controller)
        return nullptr;
    const QPointer<QWidget> view = controller->view();
    setTranslatesAutoresizingMaskIntoConstraints(view, false);
    addSubview(pinInsideSubview, view);
    // A callback may have taken it away.
    if (view && view->parentWidget() == pinInsideSubview)
        pinWidthAndHeight(view, pinInsideSubview);
    static_cast<void>(made.release());
    return controller;
}

} // namespace NS
