// SPDX-License-Identifier: MIT
#include "Pellarvine/Window.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Layout/NSLayoutAnchor.h"
#include "View/NSView.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/TitleBarItems.h"
#include "Window/TitleBarView.h"

#include <QAbstractButton>
#include <QLayout>
#include <QPointer>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

using NS::LayoutAttribute;
using NS::LayoutConstraint;
using NS::TitlebarAccessoryViewController;
using NS::WindowButton;

namespace Pellarvine {

namespace {

double finiteOr0(double number)
{
    return std::isfinite(number) ? number : 0.0;
}

double accessoriesHeight(const NS::Window *window)
{
    double height = 0.0;
    for (TitlebarAccessoryViewController *const controller :
         window->titlebarAccessoryViewControllers()) {
        if (const QWidget *const view = controller->view())
            height += view->height();
    }
    return height;
}

// The parent is the only one who would delete it.
void deleteIfUnowned(QWidget *view)
{
    if (view && !view->parent())
        delete view;
}

} // namespace

struct Window::Private
{
    bool centerTrafficLightButtons = true;
    bool hidesTitle = false;
    double trafficLightHorizontalMargin = 0.0;
    double trafficLightVerticalMargin = 0.0;
    double trafficLightGap = 6.0;
    QPointer<QWidget> innerTitleBarView;
    QPointer<QWidget> toolbarView;
    bool keepsTitleBarViewClear = false;
    bool isAwake = false;
    double titleBarHeight = 0.0;

    double trafficLightSpan = 0.0;
    double trafficLightHeight = 0.0;
    std::optional<double> defaultTitleBarHeight;
    QPointer<TitlebarAccessoryViewController> dummyTitleBarAccessoryViewController;

    // The height that the content's minimum added to the frame at the last setTitleBarHeight().
    double frameExcess = 0.0;
    double excessiveHeight = -1.0; // of the frame with it

    QList<std::shared_ptr<LayoutConstraint>> viewBottoms; // to the title bar's lower edge
    double roomBelowViews = 0.0; // as the constraints have it

    double standardHeight()
    {
        if (!defaultTitleBarHeight) {
            const QRectF frame(0, 0, 800, 600);
            defaultTitleBarHeight =
                    frame.height() - contentRectForFrameRect(frame, titled).height();
        }
        return *defaultTitleBarHeight;
    }

    // The height of the part of the title bar that buttons and views share: the standard bar and
    // the window's own accessory. The program's accessories lie below it.
    double bandHeight(const Window *window, const QWidget *titleBar) const
    {
        const double whole = NS::frame(titleBar).height();
        const auto accessories = window->titlebarAccessoryViewControllers();
        for (TitlebarAccessoryViewController *const controller : accessories) {
            const QWidget *const view = controller->view();
            const bool isOwn = controller == dummyTitleBarAccessoryViewController
                               && controller == accessories.constFirst();
            if (!isOwn && view && view->parentWidget() == titleBar)
                return std::min(whole, double(view->y()));
        }
        return whole;
    }
};

Window::Window(QWidget *parent)
    : NS::Window(parent)
    , d(std::make_unique<Private>())
{ }

Window::Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent)
    : NS::Window(contentRect, styleMask, parent)
    , d(std::make_unique<Private>())
{ }

Window::~Window()
{
    deleteIfUnowned(d->innerTitleBarView);
    deleteIfUnowned(d->toolbarView);
}

// Properties

bool Window::centerTrafficLightButtons() const
{
    return d->centerTrafficLightButtons;
}

void Window::setCenterTrafficLightButtons(bool areCentered)
{
    if (!detail::assign(d->centerTrafficLightButtons, areCentered))
        return;
    setNeedsLayout();
    Q_EMIT centerTrafficLightButtonsChanged(areCentered);
}

bool Window::hidesTitle() const
{
    return d->hidesTitle;
}

void Window::setHidesTitle(bool hidesTitle)
{
    const bool isChange = detail::assign(d->hidesTitle, hidesTitle);
    setTitleVisibility(hidesTitle ? titleHidden : titleVisible);
    if (isChange)
        Q_EMIT hidesTitleChanged(hidesTitle);
}

double Window::trafficLightHorizontalMargin() const
{
    return d->trafficLightHorizontalMargin;
}

void Window::setTrafficLightHorizontalMargin(double margin)
{
    margin = finiteOr0(margin);
    if (!detail::assign(d->trafficLightHorizontalMargin, margin))
        return;
    setNeedsLayout();
    Q_EMIT trafficLightHorizontalMarginChanged(margin);
}

double Window::trafficLightVerticalMargin() const
{
    return d->trafficLightVerticalMargin;
}

void Window::setTrafficLightVerticalMargin(double margin)
{
    margin = finiteOr0(margin);
    if (!detail::assign(d->trafficLightVerticalMargin, margin))
        return;
    setNeedsLayout();
    Q_EMIT trafficLightVerticalMarginChanged(margin);
}

double Window::trafficLightGap() const
{
    return d->trafficLightGap;
}

void Window::setTrafficLightGap(double gap)
{
    gap = finiteOr0(gap);
    if (!detail::assign(d->trafficLightGap, gap))
        return;
    setNeedsLayout();
    Q_EMIT trafficLightGapChanged(gap);
}

QWidget *Window::innerTitleBarView() const
{
    return d->innerTitleBarView;
}

void Window::setInnerTitleBarView(QWidget *view)
{
    if (view == d->innerTitleBarView)
        return;
    deleteIfUnowned(d->innerTitleBarView);
    d->innerTitleBarView = view;
    Q_EMIT innerTitleBarViewChanged(view);
}

QWidget *Window::toolbarView() const
{
    return d->toolbarView;
}

void Window::setToolbarView(QWidget *view)
{
    if (view == d->toolbarView)
        return;
    deleteIfUnowned(d->toolbarView);
    d->toolbarView = view;
    Q_EMIT toolbarViewChanged(view);
}

bool Window::keepsTitleBarViewClear() const
{
    return d->keepsTitleBarViewClear;
}

void Window::setKeepsTitleBarViewClear(bool keeps)
{
    if (detail::assign(d->keepsTitleBarViewClear, keeps))
        Q_EMIT keepsTitleBarViewClearChanged(keeps);
}

QWidget *Window::titleBarView() const
{
    const QAbstractButton *const closeButton = standardWindowButton(WindowButton::close);
    return closeButton ? closeButton->parentWidget() : nullptr;
}

NS::TextField *Window::titleBarTextField() const
{
    const QWidget *const titleBar = titleBarView();
    return titleBar ? titleBar->findChild<NS::TextField *>(QString(), Qt::FindDirectChildrenOnly)
                    : nullptr;
}

// Growing the title bar

double Window::titleBarHeight() const
{
    return d->titleBarHeight;
}

void Window::setTitleBarHeight(double height)
{
    const double old = d->titleBarHeight;
    const double standard = d->standardHeight();
    const double highest = std::max(standard, double(screen()->availableSize().height()));
    const double h = std::clamp(finiteOr0(height), standard, highest);
    d->titleBarHeight = h;
    const QRectF before = frame();
    const double accessoriesBefore = accessoriesHeight(this);
    const double excess = before.height() == d->excessiveHeight ? d->frameExcess : 0.0;

    if (TitlebarAccessoryViewController *const previous = d->dummyTitleBarAccessoryViewController) {
        removeTitlebarAccessoryViewControllerAtIndex(0); // taken to be it
        if (!previous->parent())
            delete previous;
    }
    auto *const view = new QWidget;
    view->setFixedWidth(10);
    view->resize(10, qRound(h - standard));
    auto *const controller = new TitlebarAccessoryViewController;
    d->dummyTitleBarAccessoryViewController = controller;
    controller->setView(view);
    controller->setFullScreenMinHeight(h);
    addTitlebarAccessoryViewController(controller);

    if (!isMaximized() && !isFullScreen()) {
        // From the value stored before, which at first is 0 and not the standard height: that is
        // meant.
        const double difference = old - h;
        // The change of the accessory, without the limits of the window's height.
        const double growth =
                styleMask() & titled ? accessoriesHeight(this) - accessoriesBefore : 0.0;
        const double chosen = before.height() - excess + growth + difference;
        const bool hasPlace = testAttribute(Qt::WA_Moved);
        const bool hasSize = testAttribute(Qt::WA_Resized);
        NS::Window::setFrame(
                QRectF(before.x(), before.y() + before.height() - chosen, before.width(), chosen),
                false);
        // Its upper edge stays, or is for the desktop to choose, as its size is for the content.
        setAttribute(Qt::WA_Moved, hasPlace);
        setAttribute(Qt::WA_Resized, hasSize);
        d->excessiveHeight = frame().height();
        d->frameExcess = d->excessiveHeight - chosen;
    }
    if (h != old)
        Q_EMIT titleBarHeightChanged(h);
}

// Set-up after loading

void Window::awakeFromNib()
{
    NS::Window::awakeFromNib();
    d->isAwake = true;
    const QAbstractButton *closeButton = standardWindowButton(WindowButton::close);
    if (!closeButton)
        return detail::printWarning("Warning: Window can't resolve close button!");
    const QWidget *const parent = closeButton->parentWidget();
    if (!parent)
        detail::fatalError("The window's close button is in no view");

    const QRectF closeFrame = NS::frame(closeButton);
    if (d->trafficLightHorizontalMargin == 0.0) {
        // The close button may stand anywhere in a layout of the desktop's.
        setTrafficLightHorizontalMargin(followsDesktopButtonLayout()
                                                ? detail::TitleBarView::standardButtonPlace.x()
                                                : closeFrame.left());
    }
    if (d->trafficLightVerticalMargin == 0.0) {
        const double top = closeFrame.y() + closeFrame.height(); // y grows upwards
        setTrafficLightVerticalMargin(NS::frame(parent).height() - top);
    }
    d->trafficLightSpan = closeFrame.width() * 3.0 + d->trafficLightGap + d->trafficLightGap;
    d->trafficLightHeight = closeFrame.height();
    setTitleVisibility(d->hidesTitle ? titleHidden : titleVisible);

    QWidget *const titleBar = titleBarView();
    if (!titleBar)
        return detail::printWarning("Warning: Window can't resolve title bar view!");
    const double horizontalMargin = d->trafficLightHorizontalMargin;
    const double verticalMargin = d->trafficLightVerticalMargin;
    const double buttonHeight = d->trafficLightHeight;

    const auto adopt = [titleBar](QWidget *view) {
        NS::setTranslatesAutoresizingMaskIntoConstraints(view, false);
        view->setParent(nullptr);
        NS::addSubview(titleBar, view);
    };
    d->viewBottoms.clear();
    d->roomBelowViews = 0.0;
    if (QWidget *const inner = d->innerTitleBarView) {
        adopt(inner);
        if (d->keepsTitleBarViewClear) {
            // The buttons stand on a side of their own whichever way text runs.
            const auto *const bar = qobject_cast<const detail::TitleBarView *>(titleBar);
            const detail::ButtonLayout buttons =
                    bar ? bar->items()->buttonLayout() : detail::ButtonLayout();
            const auto inset = [&](const auto &side) {
                return side.isEmpty() ? horizontalMargin
                                      : horizontalMargin + d->trafficLightSpan + horizontalMargin;
            };
            LayoutConstraint::activateConstraints({
                    NS::leftAnchor(inner).constraintEqualToAnchor(NS::leftAnchor(titleBar),
                                                                  inset(buttons.left)),
                    NS::rightAnchor(inner).constraintEqualToAnchor(NS::rightAnchor(titleBar),
                                                                   -inset(buttons.right)),
            });
        } else {
            LayoutConstraint::activateConstraints({
                    NS::leadingAnchor(inner).constraintEqualToAnchor(NS::leadingAnchor(titleBar),
                                                                     2.0 * horizontalMargin),
                    // Not negated: it reaches beyond the title bar by as much as it starts inside.
                    NS::trailingAnchor(inner).constraintEqualToAnchor(NS::trailingAnchor(titleBar),
                                                                      2.0 * horizontalMargin),
            });
        }
        LayoutConstraint::activateConstraints({
                NS::topAnchor(inner).constraintEqualToAnchor(NS::topAnchor(titleBar),
                                                             verticalMargin),
        });
        const bool isCentered = d->centerTrafficLightButtons;
        const std::shared_ptr<LayoutConstraint> bottom = LayoutConstraint::make(
                inner, LayoutAttribute::bottom, NS::LayoutRelation::equal, titleBar,
                isCentered ? LayoutAttribute::bottom : LayoutAttribute::top, 1.0,
                isCentered ? -verticalMargin : verticalMargin + buttonHeight);
        bottom->setActive(true);
        if (isCentered)
            d->viewBottoms.append(bottom);
    }
    if (QWidget *const toolbar = d->toolbarView) {
        adopt(toolbar);
        const std::shared_ptr<LayoutConstraint> bottom =
                NS::bottomAnchor(toolbar).constraintEqualToAnchor(NS::bottomAnchor(titleBar),
                                                                  -verticalMargin);
        d->viewBottoms.append(bottom);
        LayoutConstraint::activateConstraints({
                NS::leadingAnchor(toolbar).constraintEqualToAnchor(NS::leadingAnchor(titleBar),
                                                                   horizontalMargin),
                NS::trailingAnchor(toolbar).constraintEqualToAnchor(NS::trailingAnchor(titleBar),
                                                                    -horizontalMargin),
                NS::topAnchor(toolbar).constraintEqualToAnchor(NS::topAnchor(titleBar),
                                                               2.0 * verticalMargin + buttonHeight),
                bottom,
        });
    }
}

// The layout pass

double Window::verticalPlace(const QWidget *item) const
{
    const QWidget *const parent = item->parentWidget();
    if (!parent)
        detail::fatalError("An item of the window's title bar is in no view");
    const double room = NS::frame(parent).height();
    const double height = NS::frame(item).height();
    return d->centerTrafficLightButtons ? room - d->bandHeight(this, parent) * 0.5 - height * 0.5
                                        : room - height - d->trafficLightVerticalMargin;
}

void Window::layoutIfNeeded()
{
    // A missing button leaves its place empty.
    const auto *const bar = qobject_cast<const detail::TitleBarView *>(titleBarView());
    const detail::ButtonLayout buttons =
            bar ? bar->items()->buttonLayout() : detail::ButtonLayout();
    for (const WindowButton kind :
         { WindowButton::close, WindowButton::miniaturize, WindowButton::zoom }) {
        if (QAbstractButton *const button = standardWindowButton(kind)) {
            const QRectF frame = NS::frame(button);
            const double y = verticalPlace(button);
            const double x = buttons.place(kind, NS::frame(button->parentWidget()).width(),
                                           d->trafficLightHorizontalMargin, frame.width(),
                                           d->trafficLightGap);
            NS::setFrame(button, QRectF(x, y, frame.width(), frame.height()));
        }
    }
    if (const QWidget *const titleBar = titleBarView()) {
        const double below = NS::frame(titleBar).height() - d->bandHeight(this, titleBar);
        const double grown = below - std::exchange(d->roomBelowViews, below);
        for (const auto &bottom : std::as_const(d->viewBottoms))
            bottom->setConstant(bottom->constant() - grown);
        if (grown != 0.0 && titleBar->layout())
            titleBar->layout()->activate(); // or the views would follow after the next painting
    }
    for (QWidget *const item :
         { static_cast<QWidget *>(standardWindowButton(WindowButton::documentIcon)),
           static_cast<QWidget *>(standardWindowButton(WindowButton::documentVersions)),
           static_cast<QWidget *>(titleBarTextField()) }) {
        if (!item)
            continue;
        const QRectF frame = NS::frame(item);
        NS::setFrame(item, QRectF(frame.x(), verticalPlace(item), frame.width(), frame.height()));
    }
}

void Window::setNeedsLayout()
{
    NS::setNeedsLayout(this);
}

void Window::windowDidResize(QResizeEvent *) { }

void Window::showEvent(QShowEvent *event)
{
    if (!d->isAwake) {
        constexpr QPoint standard = detail::TitleBarView::standardButtonPlace;
        if (d->trafficLightHorizontalMargin == 0.0)
            setTrafficLightHorizontalMargin(standard.x());
        if (d->trafficLightVerticalMargin == 0.0)
            setTrafficLightVerticalMargin(standard.y());
    }
    NS::Window::showEvent(event);
}

// Overridden for subclasses to find

void Window::setFrame(const QRectF &frame, bool display)
{
    NS::Window::setFrame(frame, display);
}

void Window::setFrame(const QRectF &frame, bool display, bool animate)
{
    NS::Window::setFrame(frame, display, animate);
}

bool Window::restoreState(const QByteArray &state)
{
    return NS::Window::restoreState(state);
}

void Window::orderFront()
{
    NS::Window::orderFront();
}

} // namespace Pellarvine
