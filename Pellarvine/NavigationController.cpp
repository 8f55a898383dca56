// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationController.h"

#include "Base/ClassRegistry.h"
#include "Base/Failure.h"
#include "Pellarvine/NavigationBack.h"
#include "Pellarvine/NavigationFocus.h"
#include "Pellarvine/NavigationPlacement.h"
#include "Pellarvine/UnwindSegue.h"
#include "Scenes/NSResponder.h"

#include <QPointer>

#include <algorithm>
#include <exception>
#include <utility>

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isNavigationControllerRegistered =
        (NS::registerClass<NavigationController>(), true);

QWidget *firstSubview(const QWidget *view)
{
    const QObjectList &children = view->children();
    const auto first = std::find_if(children.begin(), children.end(), [](const QObject *child) {
        return child->isWidgetType() && !static_cast<const QWidget *>(child)->isWindow();
    });
    return first == children.end() ? nullptr : static_cast<QWidget *>(*first);
}

// The nearest controller after the view in the responder chain, or null.
NS::ViewController *controllerAfter(QWidget *view)
{
    for (QObject *responder = NS::nextResponder(view); responder;
         responder = NS::nextResponder(responder)) {
        if (auto *const controller = qobject_cast<NS::ViewController *>(responder))
            return controller;
    }
    return nullptr;
}

} // namespace

struct NavigationController::Private
{
    QList<NS::ViewController *> stack;
    QPointer<QWidget> contentView;
    QObject stackWatch; ///< receives destroyed() of the controllers
    QObject contentWatch; ///< receives destroyed() of the content view
    std::unique_ptr<detail::NavigationFocus> focus;
    std::unique_ptr<detail::BackInput> backInput; ///< null unless enabled
    detail::BackAction *backAction = nullptr;
};

NavigationController::NavigationController(QObject *parent)
    : NavigationController(QString(), parent)
{ }

NavigationController::NavigationController(const QString &nibName, QObject *parent)
    : NS::ViewController(nibName, parent)
    , d(std::make_unique<Private>())
{
    d->focus = std::make_unique<detail::NavigationFocus>(this);
}

NavigationController::~NavigationController() = default;

QList<NS::ViewController *> NavigationController::navigationStack() const
{
    return d->stack;
}

void NavigationController::setNavigationStack(const QList<NS::ViewController *> &stack)
{
    if (stack == d->stack)
        return;
    for (NS::ViewController *const controller : std::as_const(d->stack))
        controller->disconnect(&d->stackWatch);
    d->stack = stack;
    for (NS::ViewController *const controller : stack) {
        connect(controller, &QObject::destroyed, &d->stackWatch, [this, controller] {
            if (d->stack.removeAll(controller) > 0)
                Q_EMIT navigationStackChanged(d->stack);
        });
    }
    Q_EMIT navigationStackChanged(stack);
}

NS::ViewController *NavigationController::topViewController() const
{
    return d->stack.isEmpty() ? nullptr : d->stack.constLast();
}

int NavigationController::depth() const
{
    return int(d->stack.size());
}

bool NavigationController::canGoBack() const
{
    return detail::screens(this).size() > 1;
}

bool NavigationController::goBack()
{
    const QList<NS::ViewController *> all = detail::screens(this);
    if (all.size() < 2)
        return false;
    const QPointer<NavigationController> self = this;
    const QPointer<NS::ViewController> top = all.constLast();
    NS::ViewController *const source = top->parentViewController() == this ? top : this;
    // Called by Qt's event loop, which no exception may leave.
    try {
        UnwindSegue({}, source, all[all.size() - 2]).perform();
    } catch (const std::exception &error) {
        detail::printWarning(error);
    }
    return !self || !top || !detail::screens(this).contains(top);
}

QAction *NavigationController::backAction()
{
    if (!d->backAction)
        d->backAction = new detail::BackAction(this);
    return d->backAction;
}

bool NavigationController::isBackInputEnabled() const
{
    return d->backInput != nullptr;
}

void NavigationController::setBackInputEnabled(bool isEnabled)
{
    if (isEnabled == isBackInputEnabled())
        return;
    d->backInput = isEnabled ? std::make_unique<detail::BackInput>(this) : nullptr;
    Q_EMIT backInputEnabledChanged(isEnabled);
}

QWidget *NavigationController::contentView() const
{
    return d->contentView;
}

void NavigationController::setContentView(QWidget *view)
{
    if (view == d->contentView)
        return;
    if (d->contentView)
        d->contentView->disconnect(&d->contentWatch);
    d->contentView = view;
    if (view)
        connect(view, &QObject::destroyed, &d->contentWatch,
                [this] { Q_EMIT contentViewChanged(nullptr); });
    Q_EMIT contentViewChanged(view);
}

void NavigationController::viewDidLoad()
{
    NS::ViewController::viewDidLoad();
}

void NavigationController::viewWillAppear()
{
    NS::ViewController::viewWillAppear();
    if (!d->contentView) {
        setContentView(view());
        return;
    }
    QWidget *const subview = firstSubview(d->contentView);
    if (!subview)
        return;
    if (NS::ViewController *const controller = controllerAfter(subview))
        setNavigationStack({ controller });
}

} // namespace Pellarvine
