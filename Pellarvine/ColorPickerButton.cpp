// SPDX-License-Identifier: MIT
#include "Pellarvine/ColorPickerButton.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Drawing/ColorExchange.h"
#include "Pellarvine/ColorPickerButtonCell.h"
#include "View/AccessibleButton.h"
#include "View/FocusRing.h"
#include "View/NSView.h"
#include "Window/NSPopover.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

constexpr int preferredWidth = 48;
constexpr int smallestWidth = 24;

class AccessibleColorPickerButton : public detail::AccessibleButton
{
public:
    explicit AccessibleColorPickerButton(ColorPickerButton *button)
        : AccessibleButton(button, QAccessible::ButtonDropDown, ColorPickerButton::tr("Colour"))
    { }

    QString text(QAccessible::Text text) const override
    {
        const QColor color = static_cast<ColorPickerButton *>(widget())->color();
        if (text == QAccessible::Value)
            return detail::hexText(color, color.alpha() < 255);
        QString given = AccessibleButton::text(text);
        if (text != QAccessible::Description)
            return given;
        // Text values do not reach screen readers on every platform, descriptions do.
        const QString described = detail::colorDescription(color);
        return given.isEmpty() ? described : given + u", "_s + described;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = AccessibleButton::state();
        state.hasPopup = true;
        state.pressed = button()->isDown();
        return state;
    }
};

// The popover of any button that shows the panel's content.
QPointer<NS::Popover> shownPopover;

// The panel that the view controller has found.
NS::ColorPanel *panelOf(const ColorPickerViewController *controller)
{
    if (!controller->colorPanel())
        detail::fatalError("The color picker has no color panel");
    return controller->colorPanel();
}

} // namespace

struct ColorPickerButton::Private
{
    ColorPickerViewController *viewController = nullptr;
    QColor color = QColor(Qt::green);
    QColor defaultColor;
    QPoint pressed; // where the mouse was
    bool isDropTarget = false;
};

ColorPickerButton::ColorPickerButton(QWidget *parent)
    : Button(parent)
    , d(std::make_unique<Private>())
{
    detail::makeAccessible<ColorPickerButton, AccessibleColorPickerButton>();
    d->viewController = new ColorPickerViewController(this);
    setCell(new ColorPickerButtonCell);
    setAcceptDrops(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, &ColorPickerButton::buttonPressed);
}

// Deletes the popovers first: they must not call a partly destroyed button.
ColorPickerButton::~ColorPickerButton()
{
    qDeleteAll(findChildren<NS::Popover *>(Qt::FindDirectChildrenOnly));
}

QColor ColorPickerButton::color() const
{
    return d->color;
}

void ColorPickerButton::setColor(const QColor &color)
{
    const QColor rgb = color.isValid() ? color.toRgb() : QColor(Qt::black);
    if (!detail::assign(d->color, rgb))
        return;
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
    Q_EMIT colorChanged(d->color);
}

QColor ColorPickerButton::defaultColor() const
{
    return d->defaultColor;
}

void ColorPickerButton::setDefaultColor(const QColor &color)
{
    if (detail::assign(d->defaultColor, color))
        Q_EMIT defaultColorChanged(color);
}

void ColorPickerButton::resetColor()
{
    if (d->defaultColor.isValid())
        setColor(d->defaultColor);
}

ColorPickerViewController *ColorPickerButton::viewController() const
{
    return d->viewController;
}

void ColorPickerButton::buttonPressed()
{
    d->viewController->view(); // which loads it
    NS::ColorPanel *const panel = panelOf(d->viewController);
    // The panel's colour is one button's at a time.
    if (shownPopover)
        shownPopover->close();
    panel->setDefaultColor(d->defaultColor);
    panel->setColor(d->color);
    NS::addObserver(panel, this, u"color"_s, NS::KeyValueObservingOptions::newValue);
    if (!parentWidget())
        return;

    auto *const popover = new NS::Popover(this);
    connect(popover, &NS::Popover::didClose, this, &ColorPickerButton::popoverDidClose);
    popover->setBehavior(NS::Popover::Behavior::transient);
    popover->setOpener(this);
    popover->setDeletesOnClose(true);
    popover->setContentViewController(d->viewController);
    popover->showRelativeToRect(NS::frame(this), parentWidget(), NS::RectEdge::maxX);
    // The click that has just closed one opens none, and there will be no close to end this.
    if (!popover->isShown()) {
        delete popover;
        return popoverDidClose();
    }
    shownPopover = popover;
}

void ColorPickerButton::popoverDidClose()
{
    NS::ColorPanel *const panel = panelOf(d->viewController);
    NS::removeObserver(panel, this, u"color"_s);
    panel->setDefaultColor({});
    if (!panel->contentView()->isVisible())
        panel->reclaimContentView();
}

void ColorPickerButton::observeValue(const QString &, QObject *, const NS::KeyValueChange *)
{
    setColor(panelOf(d->viewController)->color());
}

QSize ColorPickerButton::sizeHint() const
{
    return { preferredWidth, Button::sizeHint().height() };
}

QSize ColorPickerButton::minimumSizeHint() const
{
    return { smallestWidth, Button::minimumSizeHint().height() };
}

void ColorPickerButton::copy()
{
    QApplication::clipboard()->setMimeData(detail::mimeDataForColor(d->color));
}

void ColorPickerButton::paste()
{
    if (const auto color = detail::colorInMimeData(QApplication::clipboard()->mimeData()))
        setColor(*color);
}

bool ColorPickerButton::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Paste))
            event->accept();
    }
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           detail::colorDescription(d->color), this);
        return true;
    }
    return Button::event(event);
}

void ColorPickerButton::contextMenuEvent(QContextMenuEvent *event)
{
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *const copying = menu->addAction(QIcon::fromTheme(u"edit-copy"_s), tr("&Copy Colour"),
                                             this, &ColorPickerButton::copy);
    copying->setShortcut(QKeySequence::Copy);
    QAction *const pasting = menu->addAction(QIcon::fromTheme(u"edit-paste"_s), tr("&Paste Colour"),
                                             this, &ColorPickerButton::paste);
    pasting->setShortcut(QKeySequence::Paste);
    pasting->setEnabled(detail::colorInMimeData(QApplication::clipboard()->mimeData()).has_value());
    if (d->defaultColor.isValid()) {
        menu->addSeparator();
        menu->addAction(tr("&Default Colour"), this, &ColorPickerButton::resetColor)
                ->setEnabled(d->color != d->defaultColor.toRgb());
    }
    menu->popup(event->globalPos());
}

void ColorPickerButton::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() == this || !detail::colorInMimeData(event->mimeData()))
        return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    d->isDropTarget = true;
    update();
}

void ColorPickerButton::dragLeaveEvent(QDragLeaveEvent *)
{
    d->isDropTarget = false;
    update();
}

void ColorPickerButton::dropEvent(QDropEvent *event)
{
    d->isDropTarget = false;
    update();
    const auto color = detail::colorInMimeData(event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(color.has_value());
    if (color)
        setColor(*color);
}

void ColorPickerButton::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        return copy();
    if (event->matches(QKeySequence::Paste))
        return paste();
    Button::keyPressEvent(event);
}

void ColorPickerButton::mousePressEvent(QMouseEvent *event)
{
    d->pressed = event->position().toPoint();
    Button::mousePressEvent(event);
}

void ColorPickerButton::mouseMoveEvent(QMouseEvent *event)
{
    const int distance = (event->position().toPoint() - d->pressed).manhattanLength();
    if (!isDown() || !(event->buttons() & Qt::LeftButton)
        || distance < QApplication::startDragDistance())
        return Button::mouseMoveEvent(event);
    setDown(false); // it has become a drag, and is no click any more
    auto *const drag = new QDrag(this);
    drag->setMimeData(detail::mimeDataForColor(d->color));
    drag->setPixmap(detail::dragPixmap(d->color, devicePixelRatio()));
    drag->exec(Qt::CopyAction);
}

void ColorPickerButton::paintEvent(QPaintEvent *event)
{
    Button::paintEvent(event);
    if (!d->isDropTarget)
        return;
    QPainter painter(this);
    detail::drawFocusRing(painter, rect(), palette().color(QPalette::Highlight));
}

} // namespace Pellarvine
