// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSImage.h>

#include <QFrame>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QDropEvent)
QT_FORWARD_DECLARE_CLASS(QMenu)
QT_FORWARD_DECLARE_CLASS(QMimeData)

namespace Pellarvine::detail {
struct TakenPicture;
}

namespace NS {

/// Shows a picture. If it is editable, the user can replace the picture:
///
///     auto *const portrait = new NS::ImageView(form);
///     portrait->setAccessibleName(tr("Portrait"));
///     portrait->setEditable(true); // takes drops, paste, delete
///     portrait->setPlaceholderText(tr("Drop a picture here"));
///     connect(portrait, &NS::ImageView::imageEdited, form, &Form::storePortrait);
///
/// It reads the formats of Qt's image plugins: Debian's qt6-image-formats-plugins adds WebP and
/// TIFF, kimageformat6-plugins AVIF and HEIF. It shows the first frame of an animation, converts
/// colour profiles to sRGB, and decodes pictures that are larger than a screen to fewer pixels.
/// Pictures that need more than 512 MB are refused: see imageRefused(). Lengths are in
/// device-independent pixels. In style sheets it is a QFrame: `background`, `border`, `padding` and
/// `color` apply. Screen readers find a graphic, named by `accessibleName`. Main thread only.
class PELLARVINE_EXPORT ImageView : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(NS::Image image READ image WRITE setImage RESET clear NOTIFY imageChanged USER true)
    Q_PROPERTY(QByteArray imageData READ imageData WRITE showImageData NOTIFY imageDataChanged
                       DESIGNABLE false)
    Q_PROPERTY(ImageScaling imageScaling READ imageScaling WRITE setImageScaling NOTIFY
                       imageScalingChanged)
    Q_PROPERTY(Qt::Alignment imageAlignment READ imageAlignment WRITE setImageAlignment NOTIFY
                       imageAlignmentChanged)
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY editableChanged)
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText NOTIFY
                       placeholderTextChanged)

public:
    /// The size of the image in the view.
    enum ImageScaling {
        scaleProportionallyDown, ///< in its own size, or smaller where that does not fit
        scaleAxesIndependently, ///< over the whole view, without keeping its proportions
        scaleNone, ///< in its own size, cut off where that does not fit
        scaleProportionallyUpOrDown, ///< as large as fits
    };
    Q_ENUM(ImageScaling)

    explicit ImageView(QWidget *parent = nullptr);
    ~ImageView() override;

    const Image &image() const; ///< default: empty
    /// The bytes of the image's file: a PNG file if the user has dropped or pasted an image without
    /// a file, empty if the program has set one. Other programs get this file, beside the image,
    /// when the user copies or drags it. The property can be bound to bytes of a model. A file
    /// that is written to it and cannot be shown is kept, and refused: see imageRefused().
    QByteArray imageData() const;
    /// Decodes a file in this thread and shows it; removes the image if `contents` is empty.
    /// Returns false, and changes nothing, on failure.
    bool setImageData(const QByteArray &contents);
    ImageScaling imageScaling() const; ///< default: scaleProportionallyDown
    void setImageScaling(ImageScaling scaling);
    /// The place of an image that does not fill the view. Default: Qt::AlignCenter. In a
    /// right-to-left layout, left and right are swapped unless Qt::AlignAbsolute is set.
    Qt::Alignment imageAlignment() const;
    void setImageAlignment(Qt::Alignment alignment);
    /// Whether the user can drop a picture onto the view, drag it out, and cut, copy, paste and
    /// delete it. Default: false. The setter also sets the focus policy.
    bool isEditable() const;
    void setEditable(bool isEditable);
    /// The text of an empty view. Default: empty. An empty view that is editable has a dashed
    /// outline and, without a placeholder text, a hint that a picture can be dropped there.
    QString placeholderText() const;
    void setPlaceholderText(const QString &text);

    QRectF imageRect() const; ///< of the image in the view; empty if there is none
    QString refusal() const; ///< the reason of the last imageRefused(), while the view shows it
    virtual QMenu *createStandardContextMenu(); ///< of an editable view; the caller owns it

    /// The image's size. Set a maximum size if a large picture must leave room for other widgets.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setImage(const NS::Image &image);
    void clear(); ///< removes the image
    void cut(); ///< as by the user: emits imageEdited(), and does nothing unless editable
    void copy(); ///< to the clipboard, also if the view is not editable
    void paste(); ///< as by the user: emits imageEdited(), and does nothing unless editable

Q_SIGNALS:
    void imageChanged(const NS::Image &image);
    void imageDataChanged(const QByteArray &contents);
    /// The user has dropped, pasted, cut or deleted; emitted after imageChanged(). Store `data`:
    /// the file's bytes; a PNG file if the image came without a file; empty if it was removed.
    void imageEdited(const NS::Image &image, const QByteArray &data);
    /// A picture is damaged, incomplete or too large, and is not shown. The view shows the
    /// translated `reason` until it is used again.
    void imageRefused(const QString &reason);
    void imageScalingChanged(NS::ImageView::ImageScaling scaling);
    void imageAlignmentChanged(Qt::Alignment alignment);
    void editableChanged(bool isEditable);
    void placeholderTextChanged(const QString &text);

protected:
    /// Shows the first of the dropped files if it is a local image, else the dropped image data.
    /// Returns false if there is neither.
    virtual bool performDragOperation(QDropEvent *event);
    /// Called after imageEdited() for a dropped or pasted file. Does nothing here.
    virtual void didTakeFile(const QByteArray &contents);
    /// Sets the image, imageData() and its file name.
    void setImageFile(const Image &image, const QByteArray &contents, const QString &name);
    /// The same, if the view shows `image` already.
    void rememberFile(const NS::Image &image, const QByteArray &contents, const QString &name);
    /// Shows the reason in the view and emits imageRefused().
    void refuseImage(const QString &reason);
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString hint(const QRect &room) const;
    void showImageData(const QByteArray &contents);
    void setRefusal(const QString &reason);
    void edit(const Pellarvine::detail::TakenPicture &taken);
    bool take(const QMimeData *source);
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
