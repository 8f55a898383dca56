// SPDX-License-Identifier: MIT
#include "Controls/NSImageView.h"

#include "Base/Assign.h"
#include "Base/FileContents.h"
#include "Controls/AccessibleImageView.h"
#include "Drawing/ImageDecoding.h"
#include "Drawing/NSGraphicsContext.h"
#include "View/BusyCursor.h"
#include "View/FocusRing.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QImageReader>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <utility>

namespace NS {

namespace {

constexpr int emptySide = 64;
constexpr float refusalOpacity = 0.9F;

// A look at the file's first bytes, quick enough for a pointer that is passing by.
bool isImageFile(const QUrl &url)
{
    const QString path = detail::ordinaryFilePath(url);
    if (path.isEmpty())
        return false;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

bool holdsImage(const QMimeData *data)
{
    return data && (isImageFile(data->urls().value(0)) || data->hasImage());
}

QByteArray pngFile(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

struct Taken
{
    Image image; // empty if there is none
    QByteArray data;
    bool isFile = false;
    detail::ImageFault fault = detail::ImageFault::none;
};

// Reads the file once, for the image and for who stores it.
Taken takenFrom(const QMimeData *source, QWidget *view)
{
    const QUrl url = source->urls().value(0);
    const QImage attached = source->hasImage() ? source->imageData().value<QImage>() : QImage();
    const bool isFile = isImageFile(url);
    Taken taken;
    detail::runWithBusyCursor(view, [&] {
        const detail::ImageFile file = isFile ? detail::readImageFile(url) : detail::ImageFile();
        if (!file.image.bitmap.isNull())
            taken = { Image(file.image.bitmap, file.image.size), *file.contents, true, {} };
        else if (!attached.isNull())
            taken = { Image(attached), pngFile(attached), false, {} };
        else
            taken.fault = file.image.fault;
    });
    return taken;
}

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

} // namespace

struct ImageView::Private
{
    Image image;
    ImageScaling scaling = scaleProportionallyDown;
    Qt::Alignment alignment = Qt::AlignCenter;
    bool isEditable = false;
    bool isDropTarget = false;
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
    setRefusal({});
    if (image == d->image)
        return;
    const bool isResized = image.size() != d->image.size();
    d->image = image;
    d->scaled = {};
    if (isResized)
        updateGeometry();
    update();
    Q_EMIT imageChanged(image);
}

void ImageView::clear()
{
    setImage({});
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
    const QSizeF fitting = size.scaled(room.size(), Qt::KeepAspectRatio);
    switch (d->scaling) {
    case scaleProportionallyDown:
        size = fitting.width() < size.width() ? fitting : size;
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
    const double ratio = devicePixelRatio();
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
        QApplication::clipboard()->setImage(d->image.bitmap());
}

void ImageView::cut()
{
    if (!d->isEditable || d->image.isEmpty())
        return;
    copy();
    edit({}, {});
}

void ImageView::paste()
{
    const QMimeData *const pasted = QApplication::clipboard()->mimeData();
    if (!d->isEditable || !holdsImage(pasted))
        return;
    take(pasted);
}

bool ImageView::performDragOperation(QDropEvent *event)
{
    return d->isEditable && holdsImage(event->mimeData()) && take(event->mimeData());
}

void ImageView::didTakeFile(const QByteArray &) { }

bool ImageView::take(const QMimeData *source)
{
    const QPointer<ImageView> guard(this);
    const Taken taken = takenFrom(source, this);
    if (!guard)
        return false;
    if (taken.image.isEmpty()) {
        refuseImage(detail::explanation(taken.fault));
        return false;
    }
    edit(taken.image, taken.data);
    if (guard && taken.isFile)
        didTakeFile(taken.data);
    return true;
}

void ImageView::refuseImage(const QString &reason)
{
    setRefusal(reason);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    Q_EMIT imageRefused(reason);
}

void ImageView::setRefusal(const QString &reason)
{
    if (detail::assign(d->refusal, reason))
        update();
}

void ImageView::edit(const Image &image, const QByteArray &file)
{
    const QPointer<ImageView> guard(this);
    setImage(image);
    if (guard)
        Q_EMIT imageEdited(image, file);
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
    const bool canPaste = d->isEditable && holdsImage(QApplication::clipboard()->mimeData());
    add(tr("Cu&t"), "edit-cut", QKeySequence::Cut, d->isEditable && isFilled, &ImageView::cut);
    add(tr("&Copy"), "edit-copy", QKeySequence::Copy, isFilled, &ImageView::copy);
    add(tr("&Paste"), "edit-paste", QKeySequence::Paste, canPaste, &ImageView::paste);
    add(tr("Delete"), "edit-delete", QKeySequence::Delete, d->isEditable && isFilled,
        [this] { edit({}, {}); });
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
    // Only what is copied: nobody loses the file that they drop here.
    const bool isWelcome = d->isEditable && (event->possibleActions() & Qt::CopyAction)
                           && holdsImage(event->mimeData());
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
            edit({}, {});
        return;
    case Edit::none:
        return QFrame::keyPressEvent(event);
    }
}

void ImageView::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setClipRect(contentsRect());
    const QRectF target = imageRect();
    constexpr int margin = 8;
    const QRect textRect = contentsRect().adjusted(margin, margin, -margin, -margin);
    if (!isEnabled())
        painter.setOpacity(0.5);
    if (!target.isEmpty()) {
        // Scaled once, and well: a painter takes four pixels into account however many there are.
        const QSize pixels = painter.deviceTransform().mapRect(target).size().toSize();
        const QImage &bitmap = d->image.bitmap();
        const bool isReduced = pixels.width() < bitmap.width() || pixels.height() < bitmap.height();
        if (isReduced && d->scaled.size() != pixels && !pixels.isEmpty())
            d->scaled = bitmap.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QImage &shown = isReduced && !d->scaled.isNull() ? d->scaled : bitmap;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, shown.size() != pixels);
        painter.drawImage(target, shown);
    } else if (!d->placeholderText.isEmpty() && d->refusal.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(textRect, Qt::AlignCenter | Qt::TextWordWrap, d->placeholderText);
    }
    if (!d->refusal.isEmpty()) {
        QColor veil = palette().color(QPalette::Base);
        veil.setAlphaF(refusalOpacity);
        painter.setOpacity(1);
        painter.fillRect(contentsRect(), veil);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(textRect, Qt::AlignCenter | Qt::TextWordWrap, d->refusal);
    }
    if (d->isDropTarget || (hasFocus() && d->isEditable)) {
        painter.setClipping(false);
        painter.setOpacity(1);
        detail::drawFocusRing(painter, rect(), palette().color(QPalette::Highlight));
    }
}

} // namespace NS
