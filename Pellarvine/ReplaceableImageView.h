// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/ReplaceableImageViewDelegate.h>
#include <pellarvine/Platform/NSImageView.h>

#include <QObject>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine {

/// An image view whose picture the user can replace: a double click, Return or Space chooses a
/// file, and files can be dropped and pasted. The program gets the bytes of the file, so that it
/// can store the picture without encoding it again:
///
///     auto *const logo = new Pellarvine::ReplaceableImageView(form);
///     logo->setAccessibleName(tr("Logo"));
///     logo->setPlaceholderText(tr("Drop a logo here, or double-click to choose one"));
///     connect(logo, &NS::ImageView::imageEdited, invoice,
///             [invoice](const NS::Image &, const QByteArray &data) { invoice->setLogo(data); });
///
/// `imageEdited` reports every edit: `data` is the file, a PNG file of a picture that came without
/// a file, or empty if the user has removed the picture. The delegate is called for files only: a
/// program that stores the bytes that the delegate gets must also clear them when the user pastes
/// or removes a picture.
///
/// The view is editable by default. If it is not, it takes no drops, but a file can be chosen.
///
/// Files are read and decoded on another thread. If that takes long, the view shows a spinner and
/// accepts no drags. Only ordinary local files are read. A chosen file that cannot be read, or is
/// not a picture, is ignored. A picture that is damaged, incomplete or too large is refused, see
/// NS::ImageView. A dropped file that cannot be read prints a warning. Main thread only.
class PELLARVINE_EXPORT ReplaceableImageView : public NS::ImageView
{
    Q_OBJECT
    Q_PROPERTY(QObject *delegate READ delegate WRITE setDelegate NOTIFY delegateChanged)

public:
    explicit ReplaceableImageView(QWidget *parent = nullptr);
    ~ReplaceableImageView() override;

    /// Default: null. The view does not own it; null after it has been deleted. Any object can be a
    /// delegate, see ReplaceableImageViewDelegate.
    QObject *delegate() const;
    void setDelegate(QObject *delegate);

    QMenu *createStandardContextMenu() override;

public Q_SLOTS:
    /// Opens a file dialog on the window and returns at once. The chosen image is shown, through
    /// the value binding if there is one, and its file is passed to the delegate. Does nothing
    /// while the window is hidden.
    void selectImage();

Q_SIGNALS:
    void delegateChanged(QObject *delegate);

protected:
    /// Calls NS::ImageView's function. If that accepts the drop, passes the first file, image or
    /// not, to the delegate.
    bool performDragOperation(QDropEvent *event) override;
    /// Passes the file to the delegate.
    void didTakeFile(const QByteArray &contents) override;

    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void loadImage(const QUrl &url);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
