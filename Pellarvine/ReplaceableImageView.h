// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/ReplaceableImageViewDelegate.h>
#include <pellarvine/Platform/NSImageView.h>

#include <QObject>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine {

/// An image view whose picture the user exchanges, by a double click that lets them choose a file,
/// or by dropping or pasting a file. A program gets the file's bytes, so that it can keep the
/// picture as it was supplied rather than encode it anew:
///
///     auto *const logo = new Pellarvine::ReplaceableImageView(form);
///     logo->setAccessibleName(tr("Logo"));
///     logo->setPlaceholderText(tr("Drop a logo here, or double-click to choose one"));
///     connect(logo, &NS::ImageView::imageEdited, invoice,
///             [invoice](const NS::Image &, const QByteArray &data) { invoice->setLogo(data); });
///
/// `imageEdited` tells everything that the user does: `data` is the file, a PNG file of a picture
/// that was pasted or dropped without one, or empty when the user cut or deleted the picture. The
/// delegate is told of files alone: a program that keeps what the delegate gets must forget it
/// when `imageEdited` carries other data.
///
/// Return and Space choose a file as the double click does, and so does the context menu. The view
/// is editable from the start; one that is made not to be takes no drops, but still lets choose.
///
/// Files are read on a thread of their own: while a large one is, the pointer is busy, the view
/// shows a spinner and the window goes on painting. Directories, pipes, devices and what is not on
/// this machine are no files. A chosen file that is no picture, or that cannot be read, is passed
/// over in silence; a picture that is too large is refused as NS::ImageView does it. A file that is
/// dropped and cannot be read is shown or not as NS::ImageView has it, and prints a warning. Main
/// thread only.
class PELLARVINE_EXPORT ReplaceableImageView : public NS::ImageView
{
    Q_OBJECT
    Q_PROPERTY(QObject *delegate READ delegate WRITE setDelegate NOTIFY delegateChanged)

public:
    explicit ReplaceableImageView(QWidget *parent = nullptr);
    ~ReplaceableImageView() override;

    /// Not owned, and null once it is destroyed. See ReplaceableImageViewDelegate for what makes an
    /// object one.
    QObject *delegate() const;
    void setDelegate(QObject *delegate);

    QMenu *createStandardContextMenu() override;

public Q_SLOTS:
    /// Lets the user choose an image file, in a sheet on the window; returns at once. A chosen
    /// image is shown, through the value binding if the view has one, and handed to the delegate.
    /// Does nothing while the window is not shown.
    void selectImage();

Q_SIGNALS:
    void delegateChanged(QObject *delegate);

protected:
    /// After NS::ImageView's, if that took the drop: hands the first file to the delegate, and no
    /// other, whether it is an image or not.
    bool performDragOperation(QDropEvent *event) override;
    /// Hands the file to the delegate.
    void didTakeFile(const QByteArray &contents) override;

    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void loadImage(const QUrl &url);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
