// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutGuide.h"

#include "Base/Assign.h"
#include "Layout/NSLayoutAnchor.h"
#include "View/NSView.h"

#include <QEvent>
#include <QStyle>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// From the aligned part of the view, where constraints count from.
QMarginsF layoutMargins(const QWidget *view)
{
    const auto metric = [view](QStyle::PixelMetric pixelMetric) {
        return view->style()->pixelMetric(pixelMetric, nullptr, view);
    };
    const QMargins ofStyle(metric(QStyle::PM_LayoutLeftMargin), metric(QStyle::PM_LayoutTopMargin),
                           metric(QStyle::PM_LayoutRightMargin),
                           metric(QStyle::PM_LayoutBottomMargin));
    return QMarginsF(ofStyle + view->contentsMargins()) - alignmentRectInsets(view);
}

class LayoutMarginsGuide : public LayoutGuide
{
public:
    explicit LayoutMarginsGuide(QWidget *view)
        : LayoutGuide(view)
        , m_left(leftAnchor(this).constraintEqualToAnchor(leftAnchor(view)))
        , m_top(topAnchor(this).constraintEqualToAnchor(topAnchor(view)))
        , m_right(rightAnchor(this).constraintEqualToAnchor(rightAnchor(view)))
        , m_bottom(bottomAnchor(this).constraintEqualToAnchor(bottomAnchor(view)))
    {
        setObjectName(u"layoutMargins"_s);
        followMargins();
        LayoutConstraint::activateConstraints({ m_left, m_top, m_right, m_bottom });
        view->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::ContentsRectChange || event->type() == QEvent::StyleChange
            || event->type() == QEvent::DynamicPropertyChange)
            followMargins();
        return false;
    }

private:
    void followMargins()
    {
        const QMarginsF margins = layoutMargins(owningView());
        m_left->setConstant(margins.left());
        m_top->setConstant(margins.top());
        m_right->setConstant(-margins.right());
        m_bottom->setConstant(-margins.bottom());
    }

    std::shared_ptr<LayoutConstraint> m_left;
    std::shared_ptr<LayoutConstraint> m_top;
    std::shared_ptr<LayoutConstraint> m_right;
    std::shared_ptr<LayoutConstraint> m_bottom;
};

} // namespace

struct LayoutGuide::Private
{
    QRect frame;
};

LayoutGuide::LayoutGuide(QWidget *owningView)
    : QObject(owningView)
    , d(std::make_unique<Private>())
{ }

LayoutGuide::~LayoutGuide() = default;

QWidget *LayoutGuide::owningView() const
{
    return static_cast<QWidget *>(parent());
}

QRect LayoutGuide::frame() const
{
    return d->frame;
}

void LayoutGuide::setFrame(const QRect &frame)
{
    if (Pellarvine::detail::assign(d->frame, frame))
        Q_EMIT frameChanged(frame);
}

LayoutGuide *layoutMarginsGuide(QWidget *view)
{
    for (QObject *const child : view->children()) {
        if (auto *const guide = dynamic_cast<LayoutMarginsGuide *>(child))
            return guide;
    }
    return new LayoutMarginsGuide(view);
}

} // namespace NS
