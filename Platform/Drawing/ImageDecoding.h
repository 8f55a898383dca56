// SPDX-License-Identifier: MIT
// Not API: pictures from files and their bytes.
#pragma once

#include "Base/Global.h"

#include <QByteArray>
#include <QImage>
#include <QSizeF>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QUrl)

namespace Pellarvine::detail {

enum class ImageFault {
    none,
    unreadable,
    tooLarge
};

struct DecodedImage
{
    /// Null if there is a fault.
    QImage bitmap;
    /// In the picture's own pixels, of which the bitmap may have fewer.
    QSizeF size;
    ImageFault fault = ImageFault::none;
};

/// The first frame of the picture, upright as its camera was held, in sRGB. Of more pixels than a
/// large screen has, the bitmap gets as many as that. A picture that would take more memory than
/// any camera's is too large. Any thread.
PELLARVINE_PRIVATE_EXPORT DecodedImage decodedImage(const QByteArray &bytes);

struct ImageFile
{
    DecodedImage image;
    /// Nothing if the file cannot be read or is too large.
    std::optional<QByteArray> contents;
};

/// Reads an ordinary local file once, and decodes it. Any thread.
PELLARVINE_PRIVATE_EXPORT ImageFile readImageFile(const QUrl &url);

/// Why the picture is not shown, for the user; empty without a fault.
PELLARVINE_PRIVATE_EXPORT QString explanation(ImageFault fault);

} // namespace Pellarvine::detail
