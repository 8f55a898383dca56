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
    unreadable, ///< the file is no picture, or cannot be read
    damaged, ///< a picture that is incomplete or wrong
    tooLarge
};

struct DecodedImage
{
    /// Null if there is a fault.
    QImage bitmap;
    /// The size in pixels of the picture. The bitmap may have fewer.
    QSizeF size;
    ImageFault fault = ImageFault::none;
};

/// The first frame of the picture, in the orientation of its camera and in sRGB. The bitmap has at
/// most as many pixels as a large screen. A picture that takes more memory than that of any camera
/// is too large. Any thread.
PELLARVINE_PRIVATE_EXPORT DecodedImage decodedImage(const QByteArray &bytes);

struct ImageFile
{
    DecodedImage image;
    /// Nothing if the file cannot be read or is too large.
    std::optional<QByteArray> contents;
};

/// Reads an ordinary local file once, and decodes it. Any thread.
PELLARVINE_PRIVATE_EXPORT ImageFile readImageFile(const QUrl &url);

/// A message for the user; empty without a fault.
PELLARVINE_PRIVATE_EXPORT QString explanation(ImageFault fault);

} // namespace Pellarvine::detail
