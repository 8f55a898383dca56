// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Failure.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QPointer>
#include <QWidget>

#include <utility>

namespace NS {

struct ViewController::Private
{
    QString title;
    QPointer<QWidget> view;
    bool hasLoaded = false;
    ViewController *parent = nullptr;
    QList<ViewController *> children;
};

ViewController::ViewController(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{ }

ViewController::~ViewController()
{
    removeFromParentViewController();
    for (ViewController *const child : std::as_const(d->children))
        child->d->parent = nullptr;
    delete d->view;
}

QString ViewController::title() const
{
    return d->title;
}

void ViewController::setTitle(const QString &title)
{
    if (title == d->title)
        return;
    d->title = title;
    Q_EMIT titleChanged(title);
}

QWidget *ViewController::view()
{
    if (!std::exchange(d->hasLoaded, true)) {
        loadView();
        if (!d->view)
            Pellarvine::fatalError("A view controller's loadView() set no view");
        viewDidLoad();
    }
    return d->view;
}

void ViewController::setView(QWidget *view)
{
    if (view == d->view)
        return;
    if (d->view && !d->view->parentWidget())
        delete d->view;
    d->view = view;
    d->hasLoaded = d->hasLoaded || view;
    Q_EMIT viewChanged(view);
}

bool ViewController::isViewLoaded() const
{
    return d->hasLoaded;
}

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
    child->removeFromParentViewController();
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

void ViewController::loadView()
{
    setView(new QWidget);
}

void ViewController::viewDidLoad() { }

} // namespace NS
