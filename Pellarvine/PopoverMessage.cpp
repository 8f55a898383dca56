// SPDX-License-Identifier: MIT
#include "Pellarvine/PopoverMessage.h"

#include "Controls/NSTextField.h"
#include "KeyValue/WidgetAccess.h"
#include "Layout/NSLayoutAnchor.h"
#include "Scenes/NSViewController.h"
#include "Shared/Contrast.h"
#include "Shared/MarkupParser.h"
#include "View/NSView.h"
#include "Window/NSPopover.h"
#include "Window/PopoverBubble.h"
#include "Window/WindowFrame.h"

#include <QApplication>
#include <QEvent>
#include <QList>
#include <QPalette>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>

#include <utility>

namespace Pellarvine {

namespace {

constexpr double textWidth = 250.0;
constexpr double margin = 10.0;

// Deletes itself once it has closed.
class Message : public NS::Popover
{
public:
    Message()
    {
        s_all.append(this);
        setDeletesOnClose(true);
        setBehavior(Behavior::transient);
    }
    ~Message() override { s_all.removeOne(this); }

    static Message *latest() { return s_all.isEmpty() ? nullptr : s_all.constLast(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isOwnPaint =
                event->type() == QEvent::Paint && watched == contentViewController()->view();
        if (isOwnPaint && !std::exchange(m_isPainted, true))
            replaceFormer();
        return Popover::eventFilter(watched, event);
    }

private:
    // Only what covers them is on the screen now, so that nothing flickers.
    void replaceFormer()
    {
        for (Message *const message : std::as_const(s_all)) {
            if (message == this)
                return;
            if (message->positioningView() == positioningView())
                QMetaObject::invokeMethod(message, &Popover::close, Qt::QueuedConnection);
        }
    }

    static inline QList<Message *> s_all; // the latest last

    bool m_isPainted = false;
};

// Sets a field's markup in a colour that is readable in its bubble, and again after the palette has
// changed.
class MarkupInk : public QObject
{
public:
    MarkupInk(const QString &format, const QStringList &arguments, NS::TextField *field)
        : QObject(field)
        , m_format(format)
        , m_arguments(arguments)
        , m_field(field)
    {
        field->installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            m_bubble = m_field;
            while (m_bubble && !qobject_cast<detail::PopoverBubble *>(m_bubble))
                m_bubble = m_bubble->parentWidget();
            if (m_bubble)
                m_bubble->installEventFilter(this);
        }
        if (event->type() == QEvent::Show || event->type() == QEvent::PaletteChange)
            apply();
        return false;
    }

private:
    void apply()
    {
        MarkupParser parser;
        // With a style sheet, the palette of the field can differ from that of the bubble.
        const QWidget *const painted = m_bubble ? m_bubble : m_field;
        const NS::Color paper(painted->palette().color(QPalette::Window));
        const NS::Color ink(m_field->palette().color(QPalette::WindowText));
        if (contrastRatio(parser.color(), paper) < readableContrast)
            parser.setColor(readableOn(paper, ink));
        m_field->setAttributedStringValue(parser.styled(m_format, m_arguments));
    }

    QString m_format;
    QStringList m_arguments;
    NS::TextField *m_field;
    QPointer<QWidget> m_bubble;
};

// A scroll bar in the margin beside the text.
class MarginScrollBar : public QScrollBar
{
public:
    QSize sizeHint() const override { return { int(margin), QScrollBar::sizeHint().height() }; }
};

// The height that a message at the view can have, or somewhat less.
double roomFor(const QWidget *view, QWidget *content)
{
    const auto surface = detail::PopoverBubble::surfaceFor(view, content, false, true);
    const bool isInWindow = surface == detail::PopoverBubble::Surface::child;
    const int height = isInWindow ? detail::seenRect(view->window()).height()
                                  : view->screen()->availableGeometry().height();
    return height - 2 * detail::PopoverShape::margin;
}

// A scroll area takes the keyboard focus, so that its keys do not close the message.
QWidget *scrolling(QWidget *content)
{
    auto *const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBar(new MarginScrollBar);
    area->setWidget(content);
    for (QWidget *const clear : { content, area->viewport() })
        clear->setAutoFillBackground(false);
    return area;
}

// Shows why a binding refused an edit. If a window commits all edits, shows the first refusal only.
// Without a message, the edit is no longer there.
void showRefusal(QObject *control, const QString &message)
{
    static bool isShown = false;
    static QPointer<Message> latest;
    auto *const widget = static_cast<QWidget *>(control);
    if (message.isEmpty()) {
        if (latest && latest->positioningView() == widget)
            latest->close();
        return;
    }
    if (!widget->isVisible() || std::exchange(isShown, true))
        return;
    QMetaObject::invokeMethod(
            qApp, [] { isShown = false; }, Qt::QueuedConnection);
    PopoverMessage::showMessage(message, widget);
    latest = Message::latest();
}

// Runs while the library is loaded.
[[maybe_unused]] const bool isInstalled = (detail::setMessageBubble(&showRefusal), true);

} // namespace

void PopoverMessage::showMessage(const QString &message, QWidget *view)
{
    showPopover(view, [&](NS::TextField *field) { field->setStringValue(message); });
}

void PopoverMessage::showMarkupMessage(const QString &message, QWidget *view)
{
    showMarkupMessage(message, {}, view);
}

void PopoverMessage::showMarkupMessage(const QString &format, const QStringList &arguments,
                                       QWidget *view)
{
    showPopover(view, [&](NS::TextField *field) { new MarkupInk(format, arguments, field); });
}

void PopoverMessage::showAttributedMessage(const NS::AttributedString &message, QWidget *view)
{
    showPopover(view, [&](NS::TextField *field) { field->setAttributedStringValue(message); });
}

void PopoverMessage::showPopover(QWidget *view,
                                 const std::function<void(NS::TextField *)> &configure)
{
    auto *const field = new NS::TextField;
    field->setDrawsBackground(false);
    field->setEditable(false);
    field->setBezeled(false);
    field->setSelectable(false);
    NS::setTranslatesAutoresizingMaskIntoConstraints(field, false);
    field->setPreferredMaxLayoutWidth(textWidth);
    field->setWraps(true);
    configure(field);

    auto *const container = new QWidget;
    NS::addSubview(container, field);
    using namespace NS;
    LayoutConstraint::activateConstraints({
            widthAnchor(field).constraintEqualToConstant(textWidth),
            leadingAnchor(field).constraintEqualToAnchor(leadingAnchor(container), margin),
            trailingAnchor(field).constraintEqualToAnchor(trailingAnchor(container), -margin),
            topAnchor(field).constraintEqualToAnchor(topAnchor(container), margin),
            bottomAnchor(field).constraintEqualToAnchor(bottomAnchor(container), -margin),
    });
    container->resize(container->sizeHint());
    layoutSubtreeIfNeeded(container);

    const QSizeF size = container->size();
    auto *const controller = new ViewController;
    controller->setView(size.height() > roomFor(view, container) ? scrolling(container)
                                                                 : container);
    auto *const message = new Message;
    message->setContentViewController(controller);
    if (controller->view() != container)
        message->setContentSize(size);
    message->showRelativeToRect({}, view, RectEdge::maxY);
}

} // namespace Pellarvine
