// SPDX-License-Identifier: MIT
#include "View/NSView.h"

#include "Base/MethodLookup.h"
#include "View/Companion.h"

#include <QApplication>
#include <QLayout>
#include <QMetaMethod>
#include <QMoveEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace NS {

namespace {

constexpr auto translatesProperty = "translatesAutoresizingMaskIntoConstraints";

double spaceHeight(const QWidget *widget)
{
    if (!widget->isWindow())
        return widget->parentWidget()->height();
    // Whichever screen the window is on: one space for all, so that frames can be compared and set.
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    return screen.y() + screen.height();
}

// Watches one widget that takes part in the layout pass, and that widget's window, where Qt
// announces that it is about to paint.
class LayoutMark : public QObject
{
public:
    explicit LayoutMark(QWidget *widget)
        : QObject(widget)
        , m_widget(widget)
        , m_entry(widget, this)
    {
        widget->installEventFilter(this);
    }

    bool isSet() const { return m_isSet; }

    void set(bool isSet)
    {
        m_isSet = isSet;
        if (!isSet)
            return;
        watchWindow();
        m_widget->update();
    }

    // A mark that the method sets is for the next pass.
    void perform()
    {
        if (!std::exchange(m_isSet, false))
            return;
        detail::methodWithSignature(m_widget, "performLayout()")
                .invoke(m_widget, Qt::DirectConnection);
    }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchWindow()
    {
        QWidget *const window = m_widget->window();
        if (window == m_window)
            return;
        if (m_window && m_window != m_widget)
            m_window->removeEventFilter(this);
        m_window = window;
        m_window->installEventFilter(this);
    }

    QWidget *m_widget;
    QPointer<QWidget> m_window;
    bool m_isSet = false;
    detail::CompanionEntry<LayoutMark> m_entry;
};

// Parents first, since they may resize what they contain.
void performMarked(QWidget *widget)
{
    if (auto *const mark = detail::companionOf<LayoutMark>(widget))
        mark->perform();
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a layout may add children
    const QObjectList children = widget->children();
    for (QObject *const child : children) {
        if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
            performMarked(static_cast<QWidget *>(child));
    }
}

bool LayoutMark::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
        if (watched == m_widget)
            set(true);
        break;
    case QEvent::UpdateRequest: // of the window: what follows is painting
        if (m_isSet && m_widget->isVisible())
            performMarked(m_widget->window());
        break;
    case QEvent::Paint: // without an update request before it, as by grab()
        if (watched == m_widget && m_isSet)
            performMarked(m_widget);
        break;
    case QEvent::ParentChange:
    case QEvent::Show:
        if (watched == m_widget && m_isSet)
            watchWindow();
        break;
    default:
        break;
    }
    return false;
}

// Qt holds move and resize events of hidden widgets back until they are shown.
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
    // A second round where what is below asks for another size once it has been laid out.
    for (int round = 0; round < 2; ++round) {
        sendPendingEvents(widget);
        if (widget->layout())
            widget->layout()->activate();
        if (auto *const mark = detail::companionOf<LayoutMark>(widget))
            mark->perform();
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
    // The widget's own setFrame() calls this function for what it does not do itself.
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
    auto *mark = detail::companionOf<LayoutMark>(widget);
    if (!mark)
        mark = new LayoutMark(widget);
    mark->set(needsLayout);
}

bool needsLayout(const QWidget *widget)
{
    const auto *const mark = detail::companionOf<LayoutMark>(widget);
    return mark && mark->isSet();
}

void layoutSubtreeIfNeeded(QWidget *widget)
{
    layoutTree(widget);
}

} // namespace NS
