// SPDX-License-Identifier: MIT
#include "Controls/NSImageView.h"

#include "Base/Assign.h"
#include "Controls/AccessibleImageView.h"
#include "Controls/PictureTransfer.h"
#include "Drawing/ImageDecoding.h"
#include "Drawing/Shades.h"
#include "View/BusyCursor.h"
#include "View/FocusRing.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace NS {

namespace {

constexpr int emptySide = 64;
constexpr float refusalOpacity = 0.9F;

// The keys that belong to the view while it has the focus, before any menu of the program.
enum class Edit {
    none,
    cut,
    copy,
    paste,
    remove
};

Edit editFor(const QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cut))
        return Edit::cut;
    if (event->matches(QKeySequence::Copy))
        return Edit::copy;
    if (event->matches(QKeySequence::Paste))
        return Edit::paste;
    if (event->matches(QKeySequence::Delete) || event->key() == Qt::Key_Backspace)
        return Edit::remove;
    return Edit::none;
}

QRect textRect(const QWidget &view)
{
    constexpr int margin = 8;
    return view.contentsRect().adjusted(margin, margin, -margin, -margin);
}

bool fits(const QString &text, const QRect &room, const QWidget &view)
{
    return room.contains(
            view.fontMetrics().boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, text));
}

} // namespace

struct ImageView::Private
{
    Image image;
    detail::PictureFile file; // that the image came from
    ImageScaling scaling = scaleProportionallyDown;
    Qt::Alignment alignment = Qt::AlignCenter;
    bool isEditable = false;
    bool isDropTarget = false;
    QPoint pressed; // where the mouse was
    QString placeholderText;
    QString refusal; // why the last picture is not shown
    QImage scaled; // the bitmap in the pixels that it was last drawn with
};

ImageView::ImageView(QWidget *parent)
    : QFrame(parent)
    , d(std::make_unique<Private>())
{
    detail::makeAccessible<ImageView, detail::AccessibleImageView>();
}

ImageView::~ImageView() = default;

const Image &ImageView::image() const
{
    return d->image;
}

void ImageView::setImage(const Image &image)
{
    if (image.isEmpty())
        clear();
    else if (image == d->image)
        setRefusal({});
    else
        setImageFile(image, {}, {});
}

void ImageView::setImageFile(const Image &image, const QByteArray &contents, const QString &name)
{
    setRefusal({});
    const QPointer<ImageView> guard(this);
    const bool isOtherFile = contents != d->file.contents;
    d->file = { contents, name };
    if (image != d->image) {
        const bool isResized = image.size() != d->image.size();
        d->image = image;
        d->scaled = {};
        if (isResized)
            updateGeometry();
        update();
        Q_EMIT imageChanged(image);
    }
    if (guard && isOtherFile && d->file.contents == contents)
        Q_EMIT imageDataChanged(contents);
}

void ImageView::rememberFile(const Image &image, const QByteArray &contents, const QString &name)
{
    if (image == d->image)
        setImageFile(image, contents, name);
}

void ImageView::clear()
{
    setImageFile({}, {}, {});
}

QByteArray ImageView::imageData() const
{
    return d->file.contents;
}

bool ImageView::setImageData(const QByteArray &contents)
{
    if (contents.isEmpty()) {
        clear();
        return true;
    }
    const detail::DecodedImage decoded = detail::decodedImage(contents);
    if (decoded.bitmap.isNull())
        return false;
    setImageFile(Image(decoded.bitmap, decoded.size), contents, {});
    return true;
}

// Writes the property. Another picture must not stay if this one cannot be shown.
void ImageView::showImageData(const QByteArray &contents)
{
    if (contents == d->file.contents)
        return;
    const detail::DecodedImage decoded = detail::decodedImage(contents);
    const QPointer<ImageView> guard(this);
    setImageFile(Image(decoded.bitmap, decoded.size), contents, {});
    if (guard && !contents.isEmpty() && decoded.bitmap.isNull())
        refuseImage(detail::explanation(decoded.fault));
}

ImageView::ImageScaling ImageView::imageScaling() const
{
    return d->scaling;
}

void ImageView::setImageScaling(ImageScaling scaling)
{
    if (!detail::assign(d->scaling, scaling))
        return;
    update();
    Q_EMIT imageScalingChanged(scaling);
}

Qt::Alignment ImageView::imageAlignment() const
{
    return d->alignment;
}

void ImageView::setImageAlignment(Qt::Alignment alignment)
{
    if (!detail::assign(d->alignment, alignment))
        return;
    update();
    Q_EMIT imageAlignmentChanged(alignment);
}

bool ImageView::isEditable() const
{
    return d->isEditable;
}

void ImageView::setEditable(bool isEditable)
{
    if (!detail::assign(d->isEditable, isEditable))
        return;
    setAcceptDrops(isEditable);
    setFocusPolicy(isEditable ? Qt::StrongFocus : Qt::NoFocus);
    update();
    Q_EMIT editableChanged(isEditable);
}

QString ImageView::placeholderText() const
{
    return d->placeholderText;
}

void ImageView::setPlaceholderText(const QString &text)
{
    if (!detail::assign(d->placeholderText, text))
        return;
    update();
    Q_EMIT placeholderTextChanged(text);
}

QString ImageView::refusal() const
{
    return d->refusal;
}

QRectF ImageView::imageRect() const
{
    const QRectF room = contentsRect();
    QSizeF size = d->image.size();
    if (d->image.isEmpty() || size.isEmpty() || room.isEmpty())
        return {};
    const double ratio = devicePixelRatio();
    // A long thin image keeps a pixel, to be seen.
    const QSizeF fitting =
            size.scaled(room.size(), Qt::KeepAspectRatio).expandedTo(QSizeF(1, 1) / ratio);
    switch (d->scaling) {
    case scaleProportionallyDown:
        size = fitting.width() < size.width() || fitting.height() < size.height() ? fitting : size;
        break;
    case scaleAxesIndependently:
        return room;
    case scaleNone:
        break;
    case scaleProportionallyUpOrDown:
        size = fitting;
        break;
    }
    const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), d->alignment);
    const auto offset = [](double free, bool isAtStart, bool isAtEnd) {
        return isAtStart ? 0 : isAtEnd ? free : free / 2;
    };
    const QPointF origin(offset(room.width() - size.width(), alignment & Qt::AlignLeft,
                                alignment & Qt::AlignRight),
                         offset(room.height() - size.height(), alignment & Qt::AlignTop,
                                alignment & Qt::AlignBottom));
    // On whole pixels, so that an image in its own size stays sharp.
    const QPointF snapped(std::round(origin.x() * ratio) / ratio,
                          std::round(origin.y() * ratio) / ratio);
    return { room.topLeft() + snapped, size };
}

QSize ImageView::sizeHint() const
{
    const QSize size = d->image.isEmpty() ? QSize(emptySide, emptySide)
                                          : QSize(int(std::ceil(d->image.size().width())),
                                                  int(std::ceil(d->image.size().height())));
    return size.grownBy(contentsMargins());
}

QSize ImageView::minimumSizeHint() const
{
    return QSize(1, 1).grownBy(contentsMargins());
}

void ImageView::copy()
{
    if (!d->image.isEmpty())
        QApplication::clipboard()->setMimeData(
                detail::mimeDataForPicture(d->image.bitmap(), d->file).release());
}

void ImageView::cut()
{
    if (!d->isEditable || d->image.isEmpty())
        return;
    copy();
    edit({});
}

void ImageView::paste()
{
    const QMimeData *const pasted = QApplication::clipboard()->mimeData();
    if (!d->isEditable || !detail::holdsPicture(pasted))
        return;
    take(pasted);
}

bool ImageView::performDragOperation(QDropEvent *event)
{
    return d->isEditable && detail::holdsPicture(event->mimeData()) && take(event->mimeData());
}

void ImageView::didTakeFile(const QByteArray &) { }

bool ImageView::take(const QMimeData *source)
{
    const QPointer<ImageView> guard(this);
    const detail::TakenPicture taken = detail::takenPicture(source, this);
    if (!guard)
        return false;
    if (taken.image.isEmpty()) {
        refuseImage(detail::explanation(taken.fault));
        return false;
    }
    edit(taken);
    if (guard && !taken.file.contents.isEmpty())
        didTakeFile(taken.file.contents);
    return true;
}

void ImageView::refuseImage(const QString &reason)
{
    setRefusal(reason);
    if (isVisible() && !fits(reason, textRect(*this), *this))
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), reason, this);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    Q_EMIT imageRefused(reason);
}

void ImageView::setRefusal(const QString &reason)
{
    if (detail::assign(d->refusal, reason))
        update();
}

void ImageView::edit(const detail::TakenPicture &taken)
{
    const QPointer<ImageView> guard(this);
    setImageFile(taken.image, taken.data, taken.file.name);
    if (guard)
        Q_EMIT imageEdited(taken.image, taken.data);
}

QMenu *ImageView::createStandardContextMenu()
{
    auto *const menu = new QMenu(this);
    const auto add = [&](const QString &text, const char *icon, QKeySequence::StandardKey key,
                         bool isEnabled, auto &&perform) {
        QAction *const action = menu->addAction(QIcon::fromTheme(QLatin1StringView(icon)), text);
        action->setShortcut(key);
        action->setEnabled(isEnabled);
        connect(action, &QAction::triggered, this, perform);
    };
    const bool isFilled = !d->image.isEmpty();
    const bool canPaste =
            d->isEditable && detail::holdsPicture(QApplication::clipboard()->mimeData());
    add(tr("Cu&t"), "edit-cut", QKeySequence::Cut, d->isEditable && isFilled, &ImageView::cut);
    add(tr("&Copy"), "edit-copy", QKeySequence::Copy, isFilled, &ImageView::copy);
    add(tr("&Paste"), "edit-paste", QKeySequence::Paste, canPaste, &ImageView::paste);
    add(tr("Delete"), "edit-delete", QKeySequence::Delete, d->isEditable && isFilled,
        [this] { edit({}); });
    return menu;
}

bool ImageView::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
        setRefusal({});
        break;
    default:
        break;
    }
    if (event->type() == QEvent::ShortcutOverride && d->isEditable
        && editFor(static_cast<QKeyEvent *>(event)) != Edit::none)
        event->accept();
    return QFrame::event(event);
}

void ImageView::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::EnabledChange)
        update();
}

void ImageView::contextMenuEvent(QContextMenuEvent *event)
{
    if (!d->isEditable)
        return QFrame::contextMenuEvent(event);
    QMenu *const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void ImageView::dragEnterEvent(QDragEnterEvent *event)
{
    // Only copies: a move would delete the user's file.
    const bool isWelcome = d->isEditable && event->source() != this && !detail::isBusy(this)
                           && (event->possibleActions() & Qt::CopyAction)
                           && detail::holdsPicture(event->mimeData());
    if (!isWelcome)
        return event->ignore(); // the pointer says so
    event->setDropAction(Qt::CopyAction);
    event->accept();
    d->isDropTarget = true;
    update();
}

void ImageView::dragLeaveEvent(QDragLeaveEvent *)
{
    d->isDropTarget = false;
    update();
}

void ImageView::dropEvent(QDropEvent *event)
{
    d->isDropTarget = false;
    update();
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(performDragOperation(event));
}

void ImageView::focusInEvent(QFocusEvent *event)
{
    QFrame::focusInEvent(event);
    update();
}

void ImageView::focusOutEvent(QFocusEvent *event)
{
    QFrame::focusOutEvent(event);
    update();
}

void ImageView::keyPressEvent(QKeyEvent *event)
{
    switch (d->isEditable ? editFor(event) : Edit::none) {
    case Edit::cut:
        return cut();
    case Edit::copy:
        return copy();
    case Edit::paste:
        return paste();
    case Edit::remove:
        if (!d->image.isEmpty())
            edit({});
        return;
    case Edit::none:
        return QFrame::keyPressEvent(event);
    }
}

void ImageView::mousePressEvent(QMouseEvent *event)
{
    d->pressed = event->position().toPoint();
    // A press that may start a drag is not passed on to the parent.
    if (event->button() != Qt::LeftButton || !d->isEditable || d->image.isEmpty())
        QFrame::mousePressEvent(event);
}

void ImageView::mouseMoveEvent(QMouseEvent *event)
{
    const int distance = (event->position().toPoint() - d->pressed).manhattanLength();
    if (!(event->buttons() & Qt::LeftButton) || !d->isEditable || d->image.isEmpty()
        || distance < QApplication::startDragDistance())
        return QFrame::mouseMoveEvent(event);
    const QImage &bitmap = d->image.bitmap();
    auto *const drag = new QDrag(this);
    drag->setMimeData(detail::mimeDataForPicture(bitmap, d->file).release());
    const QSize size =
            bitmap.size()
                    .scaled(QSize(emptySide, emptySide) * devicePixelRatio(), Qt::KeepAspectRatio)
                    .expandedTo({ 1, 1 });
    QPixmap picture = QPixmap::fromImage(
            bitmap.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(devicePixelRatio());
    drag->setPixmap(picture);
    drag->exec(Qt::CopyAction);
}

// The placeholder text, or in a well without one what a user can do there, if that fits.
QString ImageView::hint(const QRect &room) const
{
    if (!d->placeholderText.isEmpty() || !d->isEditable)
        return d->placeholderText;
    const QString text = detail::wellHint();
    return fits(text, room, *this) ? text : QString();
}

void ImageView::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setClipRect(contentsRect());
    const QRectF target = imageRect();
    const QRect room = textRect(*this);
    if (!isEnabled())
        painter.setOpacity(0.5);
    if (!target.isEmpty()) {
        // Scaled once for a size, and well: a painter takes four pixels into account however many
        // there are.
        const QSize pixels = painter.deviceTransform().mapRect(target).size().toSize();
        const QImage &bitmap = d->image.bitmap();
        const bool isReduced = pixels.width() < bitmap.width() || pixels.height() < bitmap.height();
        const bool isScaled = pixels != bitmap.size() && !pixels.isEmpty()
                              && (isReduced || QRectF(contentsRect()).contains(target));
        if (isScaled && d->scaled.size() != pixels)
            d->scaled = bitmap.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QImage &shown = isScaled ? d->scaled : bitmap;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, shown.size() != pixels);
        painter.drawImage(target, shown);
    } else {
        if (d->isEditable)
            detail::drawWell(painter, contentsRect(), detail::edgeColor(palette()));
        painter.setPen(palette().color(QPalette::PlaceholderText));
        if (d->refusal.isEmpty() && !detail::isBusy(this))
            painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, hint(room));
    }
    if (!d->refusal.isEmpty()) {
        QColor veil = palette().color(QPalette::Base);
        veil.setAlphaF(refusalOpacity);
        painter.setOpacity(1);
        painter.fillRect(contentsRect(), veil);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, d->refusal);
    }
    if (d->isDropTarget || (hasFocus() && d->isEditable)) {
        painter.setClipping(false);
        painter.setOpacity(1);
        detail::drawFocusRing(painter, rect(), palette().color(QPalette::Highlight));
    }
}

} // namespace NS
