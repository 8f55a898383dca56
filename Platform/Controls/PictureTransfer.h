// SPDX-License-Identifier: MIT
// Not API: pictures on the clipboard and in drags.
#pragma once

#include "Drawing/ImageDecoding.h"
#include "Drawing/NSImage.h"

#include <QString>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QMimeData)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// The file that a picture came from. Without contents it came without one.
struct PictureFile
{
    QByteArray contents;
    QString name; ///< without a folder
};

/// Whether there is a picture to take: a look at the first bytes of a file, quick enough for a
/// pointer that is passing by.
bool holdsPicture(const QMimeData *data);

struct TakenPicture
{
    NS::Image image; ///< empty if there is none
    QByteArray data; ///< of the file, or of a PNG file of image data that came without one
    PictureFile file; ///< empty for image data that came without one
    ImageFault fault = ImageFault::none;
};

/// The first of the files if it is an image, else image data. Reads the file once; `view` shows a
/// spinner if that takes long.
TakenPicture takenPicture(const QMimeData *source, QWidget *view);

/// For programs that take images, the bitmap; for those that take files, the very file that the
/// picture came from, also under its own MIME type. The file lies in a folder that exists until the
/// program ends.
PELLARVINE_INTERNAL_EXPORT std::unique_ptr<QMimeData> mimeDataForPicture(const QImage &bitmap,
                                                                         const PictureFile &file);

} // namespace Pellarvine::detail
