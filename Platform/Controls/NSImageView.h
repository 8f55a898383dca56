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

/// Shows a picture, and lets the user exchange it where it is editable:
///
///     auto *const portrait = new NS::ImageView(form);
///     portrait->setAccessibleName(tr("Portrait"));
///     portrait->setEditable(true); // takes drops, paste, delete
///     portrait->setPlaceholderText(tr("Drop a picture here"));
///     connect(portrait, &NS::ImageView::imageEdited, form, &Form::storePortrait);
///
/// Its frame is QFrame's: none unless `frameStyle` is set. In style sheets it is a QFrame:
/// `background`, `border`, `padding` and, for its texts, `color` apply. Lengths are in
/// device-independent pixels; a bitmap of more pixels than its size in points uses them where the
/// screen has them. Of animated formats the first frame is shown. Formats are those of Qt's image
/// plugins: Debian's qt6-image-formats-plugins adds WebP and TIFF, kimageformat6-plugins AVIF and
/// HEIF. Pictures from files that have more pixels than a large screen keep their size and are
/// decoded to fewer pixels; colours are those of sRGB, to which a file's colour profile is
/// converted. Files above 512 MB, and pictures that would take more memory than that, are refused:
/// the view says so until the user does something, and imageRefused() tells the program. Screen
/// readers see a graphic, named by `accessibleName`.
class PELLARVINE_EXPORT ImageView : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(NS::Image image READ image WRITE setImage RESET clear NOTIFY imageChanged USER true)
    Q_PROPERTY(ImageScaling imageScaling READ imageScaling WRITE setImageScaling NOTIFY
                       imageScalingChanged)
    Q_PROPERTY(Qt::Alignment imageAlignment READ imageAlignment WRITE setImageAlignment NOTIFY
                       imageAlignmentChanged)
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY editableChanged)
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText NOTIFY
                       placeholderTextChanged)

public:
    /// How large the image is drawn. imageAlignment() says where, if that is not the whole view.
    enum ImageScaling {
        scaleProportionallyDown, ///< in its own size, or smaller where that does not fit
        scaleAxesIndependently, ///< over the whole view, without keeping its proportions
        scaleNone, ///< in its own size, cut off where that does not fit
        scaleProportionallyUpOrDown, ///< as large as fits
    };
    Q_ENUM(ImageScaling)

    explicit ImageView(QWidget *parent = nullptr);
    ~ImageView() override;

    /// Default: empty.
    const Image &image() const;

    /// The file that the image came from, byte for byte: what the user dropped or pasted, or what
    /// setImageData() was given. Empty for an image that came without one. Copying and dragging out
    /// give away that very file, beside the image.
    QByteArray imageData() const;
    /// Shows the picture that `contents` is a file of, which is decoded as a dropped one is.
    /// Whether it could be; if not, nothing changes.
    bool setImageData(const QByteArray &contents);

    /// Default: scaleProportionallyDown.
    ImageScaling imageScaling() const;
    void setImageScaling(ImageScaling scaling);

    /// Where an image lies that does not fill the view. Default: Qt::AlignCenter. Left and right
    /// change places in a right-to-left program, unless Qt::AlignAbsolute is set.
    Qt::Alignment imageAlignment() const;
    void setImageAlignment(Qt::Alignment alignment);

    /// Whether the user may drop an image file or image data onto the view, and focus it to cut,
    /// copy, paste and delete, and drag the image out. Default: false. Setting it chooses the focus
    /// policy.
    bool isEditable() const;
    void setEditable(bool isEditable);

    /// Shown in an empty view. Default: empty. An empty view that is editable has a dashed outline,
    /// and says that a picture can be dropped there if there is no placeholder text.
    QString placeholderText() const;
    void setPlaceholderText(const QString &text);

    /// Where the image is drawn; empty if there is none.
    QRectF imageRect() const;

    /// Why the picture that the user last dropped or pasted is not shown; empty from when the user
    /// or the program does anything else with the view.
    QString refusal() const;

    /// What an editable view offers at a right click, for the caller to show and delete.
    virtual QMenu *createStandardContextMenu();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setImage(const NS::Image &image);
    /// Removes the image.
    void clear();

    /// @{
    /// To and from the clipboard, as the user's doing: all but copy() work in an editable view
    /// only.
    void cut();
    void copy();
    void paste();
    /// @}

Q_SIGNALS:
    void imageChanged(const NS::Image &image);
    /// After imageChanged(), if it was the user who dropped, pasted, cut or deleted. `data` is what
    /// to store: the contents of the file that was dropped or pasted, byte for byte; a PNG file of
    /// an image that came without one; empty when the image was removed.
    void imageEdited(const NS::Image &image, const QByteArray &data);
    /// A picture that the user has dropped or pasted is not shown, for the translated `reason`: it
    /// is damaged or too large.
    void imageRefused(const QString &reason);
    void imageScalingChanged(NS::ImageView::ImageScaling scaling);
    void imageAlignmentChanged(Qt::Alignment alignment);
    void editableChanged(bool isEditable);
    void placeholderTextChanged(const QString &text);

protected:
    /// Shows what was dropped and says whether there was something to show: the first of the files
    /// if it is an image, else image data. Other files, and what is not on this machine, are not.
    virtual bool performDragOperation(QDropEvent *event);

    /// Called after imageEdited() if the image came from a file that was dropped or pasted, with
    /// the contents of that file. Does nothing here.
    virtual void didTakeFile(const QByteArray &contents);

    /// Has imageData() give `contents`, a file with that name, if `image` is what the view shows.
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
    void setRefusal(const QString &reason);
    void edit(const Pellarvine::detail::TakenPicture &taken);
    bool take(const QMimeData *source);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
