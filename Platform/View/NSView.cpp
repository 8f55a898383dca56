// SPDX-License-Identifier: MIT
#include "View/NSView.h"

#include "Base/MethodLookup.h"

#include <QApplication>
#include <QLayout>
#include <QMetaMethod>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSet>
#include <QWidget>

#include <algorithm>

namespace NS {

namespace {

constexpr auto translatesProperty = "translatesAutoresizingMaskIntoConstraints";

double spaceHeight(const QWidget *widget)
{
    if (!widget->isWindow())
        return widget->parentWidget()->height();
    // The primary screen for all windows, so that frames on different screens can be compared.
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    return screen.y() + screen.height();
}

// Runs the layout pass. It filters the events of the marked widgets and of their windows, to which
// Qt sends an event before it paints. It is one object, because one filter for each view is slow.
class LayoutPass : public QObject
{
public:
    static LayoutPass &shared()
    {
        static auto *const pass = new LayoutPass; // outlives the last widget
        return *pass;
    }

    bool isMarked(const QWidget *widget) const { return m_marked.contains(widget); }

    void mark(QWidget *widget, bool isMarked)
    {
        if (isMarked && m_marked.contains(widget))
            return;
        const qsizetype before = m_views.size();
        m_views.insert(widget);
        if (m_views.size() > before)
            widget->installEventFilter(this);
        if (!isMarked) {
            m_marked.remove(widget);
            return;
        }
        m_marked.insert(widget);
        watchWindow(widget);
        widget->update();
    }

    // If the method marks the widget again, that is for the next pass.
    void perform(QWidget *widget)
    {
        if (m_marked.isEmpty() || !m_marked.remove(widget))
            return;
        detail::methodWithSignature(widget, "performLayout()").invoke(widget, Qt::DirectConnection);
    }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    LayoutPass() = default;

    void watchWindow(const QWidget *widget)
    {
        QWidget *const window = widget->window();
        if (m_windows.contains(window))
            return;
        m_windows.insert(window);
        window->installEventFilter(this);
    }

    // Parents first, because they may resize their children.
    void performBelow(QWidget *widget)
    {
        perform(widget);
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a layout may add children
        const QObjectList children = widget->children();
        for (QObject *const child : children) {
            if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
                performBelow(static_cast<QWidget *>(child));
        }
    }

    QSet<const QWidget *> m_views; // the widgets that have been marked at least once
    QSet<const QWidget *> m_marked;
    QSet<const QWidget *> m_windows; // the windows whose events are filtered
};

bool LayoutPass::eventFilter(QObject *watched, QEvent *event)
{
    auto *const widget = static_cast<QWidget *>(watched);
    switch (event->type()) {
    case QEvent::Resize:
        if (m_views.contains(widget))
            mark(widget, true);
        break;
    case QEvent::UpdateRequest: // sent to the window before it paints
        if (std::any_of(m_marked.cbegin(), m_marked.cend(), [widget](const QWidget *marked) {
                return marked->isVisible() && marked->window() == widget;
            }))
            performBelow(widget);
        break;
    case QEvent::Paint: // grab() paints without an update request
        if (isMarked(widget))
            performBelow(widget);
        break;
    case QEvent::ParentChange:
    case QEvent::Show:
        if (isMarked(widget))
            watchWindow(widget);
        break;
    case QEvent::Destroy:
        m_views.remove(widget);
        m_marked.remove(widget);
        m_windows.remove(widget);
        break;
    default:
        break;
    }
    return false;
}

// Sends the move and resize events that Qt holds back while a widget is hidden.
void sendPendingEvents(QWidget *widget)
{
    if (widget->testAttribute(Qt::WA_PendingMoveEvent)) {
        widget->setAttribute(Qt::WA_PendingMoveEvent, false);
        QMoveEvent event(widget->pos(), QPoint());
        QApplication::sendEvent(widget, &event);
    }
    if (widget->testAttribute(Qt::WA_PendingResizeEvent)) {
        widget->setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent event(widget->size(), QSize());
        QApplication::sendEvent(widget, &event);
    }
}

void layoutTree(QWidget *widget)
{
    // A second round, because a descendant may need another size after it was laid out.
    for (int round = 0; round < 2; ++round) {
        sendPendingEvents(widget);
        if (widget->layout())
            widget->layout()->activate();
        LayoutPass::shared().perform(widget);
        const QObjectList children = widget->children();
        for (QObject *const child : children) {
            if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
                layoutTree(static_cast<QWidget *>(child));
        }
        if (!widget->layout() || !widget->layout()->activate())
            return;
    }
}

} // namespace

QRectF frame(const QWidget *widget)
{
    return flipped(QRectF(widget->geometry()), spaceHeight(widget));
}

void setFrame(QWidget *widget, const QRectF &frame)
{
    // The widget's own setFrame() calls this function in turn.
    static const QWidget *overriding = nullptr;
    if (widget != overriding) {
        const QMetaMethod own = detail::methodWithSignature(widget, "setFrame(QRectF)");
        if (own.isValid()) {
            const QScopedValueRollback<const QWidget *> rollback(overriding, widget);
            own.invoke(widget, Qt::DirectConnection, Q_ARG(QRectF, frame));
            return;
        }
    }
    widget->setGeometry(roundedToUnits(flipped(frame, spaceHeight(widget))));
}

QRectF bounds(const QWidget *widget)
{
    return { QPointF(), QSizeF(widget->size()) };
}

QMarginsF alignmentRectInsets(const QWidget *widget)
{
    const QVariant declared = widget->property("alignmentRectInsets");
    if (declared.metaType() == QMetaType::fromType<QMarginsF>())
        return declared.value<QMarginsF>();
    if (declared.metaType() == QMetaType::fromType<QMargins>())
        return declared.value<QMargins>();
    const QRect whole = widget->geometry();
    const QRect aligned = QWidgetItem(const_cast<QWidget *>(widget)).geometry();
    if (aligned.isNull())
        return {}; // a hidden widget
    return QMarginsF(aligned.left() - whole.left(), aligned.top() - whole.top(),
                     whole.right() - aligned.right(), whole.bottom() - aligned.bottom());
}

void addSubview(QWidget *parent, QWidget *subview)
{
    if (subview->parentWidget() == parent)
        return;
    const bool wasHiddenByCall = subview->testAttribute(Qt::WA_WState_ExplicitShowHide)
                                 && subview->testAttribute(Qt::WA_WState_Hidden);
    subview->setParent(parent);
    if (!wasHiddenByCall)
        subview->show();
}

bool translatesAutoresizingMaskIntoConstraints(const QWidget *widget)
{
    return widget->property(translatesProperty).toBool();
}

void setTranslatesAutoresizingMaskIntoConstraints(QWidget *widget, bool translates)
{
    if (translates != translatesAutoresizingMaskIntoConstraints(widget))
        widget->setProperty(translatesProperty, translates);
}

void setNeedsLayout(QWidget *widget, bool needsLayout)
{
    LayoutPass::shared().mark(widget, needsLayout);
}

bool needsLayout(const QWidget *widget)
{
    return LayoutPass::shared().isMarked(widget);
}

void layoutSubtreeIfNeeded(QWidget *widget)
{
    layoutTree(widget);
}

} // namespace NS
