// SPDX-License-Identifier: MIT
#include "Scenes/NSViewController.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Scenes/NSNib.h"
#include "Scenes/NSStoryboard.h"
#include "Scenes/NSViewControllerPrivate.h"

#include <QDialog>
#include <QFile>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QUiLoader>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

constexpr auto controllerProperty = "_pellarvine_viewController";

void setViewController(QWidget *view, ViewController *controller)
{
    view->setProperty(controllerProperty,
                      controller ? QVariant::fromValue(QPointer<ViewController>(controller))
                                 : QVariant());
}

} // namespace

ViewController *viewController(const QWidget *view)
{
    return view ? view->property(controllerProperty).value<QPointer<ViewController>>() : nullptr;
}

/// Watches the view of a controller, and calls the controllers when it is shown and hidden.
class ViewWatch : public QObject
{
public:
    ViewWatch(ViewController *controller, ViewController::Private *d)
        : m_controller(controller)
        , m_d(d)
    { }

    // Containers are called before their children, although Qt shows the innermost widget first.
    static void appear(QWidget *view)
    {
        QList<QPointer<ViewController>> appearing;
        for (QWidget *widget = view; widget;
             widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
            if (ViewController *const controller = viewController(widget))
                appearing.prepend(controller);
        }
        for (const QPointer<ViewController> &controller : std::as_const(appearing)) {
            // A container may have hidden or removed it.
            if (controller && controller->d->view && controller->d->view->isVisible())
                watch(controller)->appear();
        }
    }

    static void disappear(QWidget *view)
    {
        QList<QPointer<ViewController>> disappearing;
        // Those that a callback has hidden in the meantime have disappeared already.
        const auto isShown = [](ViewController *controller) {
            return controller && controller->d->phase != Private::hidden;
        };
        const auto add = [&](const QWidget *widget) {
            if (ViewController *const controller = viewController(widget); isShown(controller))
                disappearing.append(controller);
        };
        add(view);
        const auto below = view->findChildren<QWidget *>(); // containers first
        for (const QWidget *const widget : below) {
            if (widget->window() == view->window())
                add(widget);
        }
        for (const QPointer<ViewController> &controller : std::as_const(disappearing)) {
            if (isShown(controller))
                watch(controller)->finishAppearing();
            if (isShown(controller))
                watch(controller)->call(&ViewController::viewWillDisappear);
        }
        for (const QPointer<ViewController> &controller : std::as_const(disappearing)) {
            if (!isShown(controller))
                continue;
            controller->d->phase = Private::hidden;
            watch(controller)->call(&ViewController::viewDidDisappear);
        }
    }

    static bool isLoading(const ViewController *controller) { return controller->d->isLoading; }

    // Deletes a view. Qt goes on with a view that it is showing or hiding, and with those in it.
    static void discard(QWidget *view)
    {
        if (!isInEvent)
            return delete view;
        view->hide();
        view->deleteLater();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != m_d->view)
            return false;
        // A dialog in a window would hide itself. The key is for the window.
        if (event->type() == QEvent::KeyPress && qobject_cast<QDialog *>(watched)
            && !m_d->view->isWindow()
            && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)) {
            event->ignore();
            return true;
        }
        // The window system hides and shows minimised windows spontaneously.
        if (event->spontaneous())
            return false;
        const QScopedValueRollback inEvent(isInEvent, true);
        if (event->type() == QEvent::Show)
            appear(m_d->view);
        else if (event->type() == QEvent::Hide && m_d->phase != Private::hidden)
            disappear(m_d->view);
        return false;
    }

private:
    using Private = ViewController::Private;

    static ViewWatch *watch(ViewController *controller) { return controller->d->watch.get(); }

    void appear()
    {
        if (m_d->phase != Private::hidden)
            return;
        m_d->phase = Private::appearing;
        QMetaObject::invokeMethod(
                this, [this] { finishAppearing(); }, Qt::QueuedConnection);
        call(&ViewController::viewWillAppear);
    }

    void finishAppearing()
    {
        if (m_d->phase != Private::appearing)
            return;
        m_d->phase = Private::shown;
        call(&ViewController::viewDidAppear);
    }

    // Called by Qt's event loop, which no exception may leave.
    void call(void (ViewController::*callback)())
    {
        try {
            (m_controller->*callback)();
        } catch (const std::exception &error) {
            detail::printWarning(error);
        }
    }

    inline static bool isInEvent = false; // of any view

    ViewController *m_controller;
    Private *m_d;
};

ViewController::ViewController(QObject *parent)
    : ViewController(QString(), parent)
{ }

ViewController::ViewController(const QString &nibName, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->nibName = nibName;
    d->watch = std::make_unique<ViewWatch>(this, d.get());
}

ViewController::~ViewController()
{
    const bool ownsView = d->view && !detail::isOwnedBy(this, d->view);
    removeFromParentViewController();
    for (ViewController *const child : std::as_const(d->children))
        child->d->parent = nullptr;
    if (d->view)
        setViewController(d->view, nullptr);
    d->watch.reset();
    disconnect(d->viewEnd); // a destructor emits no signals of its class
    if (d->view && ownsView)
        ViewWatch::discard(d->view);
}

QString ViewController::title() const
{
    return d->title;
}

void ViewController::setTitle(const QString &title)
{
    if (detail::assign(d->title, title))
        Q_EMIT titleChanged(title);
}

QString ViewController::nibName() const
{
    return d->nibName;
}

QWidget *ViewController::view()
{
    if (d->hasLoaded || d->isLoading)
        return d->view;
    d->isLoading = true;
    const QPointer<ViewController> self = this;
    const auto end = qScopeGuard([&] {
        if (self)
            d->isLoading = false;
    });
    try {
        loadView();
        if (!d->view)
            detail::fatalError("A view controller's loadView() set no view");
        if (d->storyboard)
            d->storyboard->viewDidLoad(this, d->scene);
    } catch (...) {
        setView(nullptr);
        throw;
    }
    d->hasLoaded = true;
    Q_EMIT viewChanged(d->view);
    if (self)
        viewDidLoad();
    return self ? d->view.get() : nullptr;
}

void ViewController::setView(QWidget *view)
{
    if (view == d->view)
        return;
    // The callbacks may delete the controller and both views.
    const QPointer<ViewController> self = this;
    const QPointer<QWidget> added = view;
    if (d->view && d->phase != Private::hidden)
        ViewWatch::disappear(d->view);
    if (!self) {
        if (added && !added->parentWidget())
            ViewWatch::discard(added);
        return;
    }
    if (const QPointer<QWidget> old = std::exchange(d->view, nullptr)) {
        old->removeEventFilter(d->watch.get());
        disconnect(d->viewEnd);
        setViewController(old, nullptr);
        if (!old->parentWidget() && !detail::isOwnedBy(this, old))
            ViewWatch::discard(old);
    }
    d->view = added;
    if (added) {
        d->hasLoaded = d->hasLoaded || !d->isLoading;
        setViewController(added, this);
        added->installEventFilter(d->watch.get());
        d->viewEnd = connect(added, &QObject::destroyed, this, [this] {
            d->phase = Private::hidden;
            d->view = nullptr; // Qt clears pointers to a widget later
            Q_EMIT viewChanged(nullptr);
        });
        if (added->isVisible())
            ViewWatch::appear(added);
    }
    // A view that is being loaded is reported when it is loaded.
    if (self && !(d->isLoading && d->view))
        Q_EMIT viewChanged(d->view);
}

bool ViewController::isViewLoaded() const
{
    return d->hasLoaded;
}

void ViewController::viewDidLoad() { }

void ViewController::viewWillAppear() { }

void ViewController::viewDidAppear() { }

void ViewController::viewWillDisappear() { }

void ViewController::viewDidDisappear() { }

ViewController *ViewController::parentViewController() const
{
    return d->parent;
}

QList<ViewController *> ViewController::childViewControllers() const
{
    return d->children;
}

void ViewController::addChildViewController(ViewController *child)
{
    // A receiver of the signal may delete either object, or add the child elsewhere.
    const QPointer<ViewController> self = this;
    const QPointer<ViewController> added = child;
    child->removeFromParentViewController();
    if (!self || !added || added->d->parent)
        return;
    child->setParent(this);
    child->d->parent = this;
    d->children.append(child);
    Q_EMIT childViewControllersChanged();
}

void ViewController::removeFromParentViewController()
{
    ViewController *const parent = std::exchange(d->parent, nullptr);
    if (!parent)
        return;
    parent->d->children.removeOne(this);
    setParent(nullptr);
    Q_EMIT parent->childViewControllersChanged();
}

std::shared_ptr<Storyboard> ViewController::storyboard() const
{
    return d->storyboard;
}

QString ViewController::sceneIdentifier() const
{
    return d->scene;
}

void ViewController::performSegue(const QString &identifier, QObject *sender)
{
    if (!d->storyboard)
        throw UnknownIdentifierError(u"segue"_s, identifier, u"a controller from no storyboard"_s,
                                     {});
    d->storyboard->performSegue(this, d->scene, identifier, sender);
}

bool ViewController::shouldPerformSegue(const QString &, QObject *)
{
    return true;
}

void ViewController::prepareForSegue(StoryboardSegue *, QObject *) { }

bool ViewController::canUnwind(StoryboardSegue *)
{
    return true;
}

void ViewController::prepareForUnwind(StoryboardSegue *) { }

void ViewController::loadView()
{
    if (d->nibName.isEmpty())
        return setView(new QWidget);
    setView(Nib(d->nibName).instantiate(this));
    if (!d->view || !d->title.isEmpty() || d->view->windowTitle().isEmpty())
        return;
    // Until it is set, the title follows that of the form, which can be bound or translated.
    connect(d->view, &QWidget::windowTitleChanged, this,
            [this, taken = d->view->windowTitle()](const QString &title) mutable {
                if (d->title != taken)
                    return;
                taken = title;
                setTitle(title);
            });
    setTitle(d->view->windowTitle());
}

} // namespace NS

namespace Pellarvine::detail {

bool isLoadingView(const NS::ViewController *controller)
{
    return NS::ViewWatch::isLoading(controller);
}

} // namespace Pellarvine::detail
