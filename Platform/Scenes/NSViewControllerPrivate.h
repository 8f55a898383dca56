// SPDX-License-Identifier: MIT
// Not API: data that view controllers share with storyboards and navigation controllers.
#pragma once

#include "Base/Global.h"
#include "Scenes/NSViewController.h"

#include <QPointer>

#include <memory>

namespace NS {

class ViewWatch;

struct ViewController::Private
{
    enum Phase {
        hidden,
        appearing, ///< between viewWillAppear() and viewDidAppear()
        shown,
    };

    QString title;
    QString nibName;
    QPointer<QWidget> view;
    QMetaObject::Connection viewEnd; ///< to the destroyed() signal of the view
    bool isLoading = false;
    bool hasLoaded = false;
    Phase phase = hidden;
    std::unique_ptr<ViewWatch> watch;
    ViewController *parent = nullptr;
    QList<ViewController *> children;
    std::shared_ptr<Storyboard> storyboard;
    QString scene; ///< of the storyboard
};

} // namespace NS

namespace Pellarvine::detail {

/// Whether `widget` owns the controller as a QObject. The controller does not delete it then.
inline bool isOwnedBy(const QObject *controller, const QWidget *widget)
{
    const QObject *owner = controller->parent();
    while (owner && owner != widget)
        owner = owner->parent();
    return owner;
}

/// Whether the controller's view() is running loadView() or viewDidLoad().
PELLARVINE_PRIVATE_EXPORT bool isLoadingView(const NS::ViewController *controller);

} // namespace Pellarvine::detail
