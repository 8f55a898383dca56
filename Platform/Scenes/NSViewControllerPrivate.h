// SPDX-License-Identifier: MIT
// Not API: what a view controller and the storyboard that makes it share.
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
        appearing, ///< viewWillAppear() has been called, viewDidAppear() has yet to be
        shown,
    };

    QString title;
    QString nibName;
    QPointer<QWidget> view;
    QMetaObject::Connection viewEnd; ///< hears of the view's end
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

/// Whether the controller's view() is running: loadView(), viewDidLoad() or what lies between.
PELLARVINE_PRIVATE_EXPORT bool isLoadingView(const NS::ViewController *controller);

} // namespace Pellarvine::detail
