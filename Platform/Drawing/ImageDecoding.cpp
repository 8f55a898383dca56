// SPDX-License-Identifier: MIT
#include "Drawing/ImageDecoding.h"

#include <QBuffer>
#include <QImageReader>

namespace Pellarvine::detail {

QImage decodedImage(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read();
}

} // namespace Pellarvine::detail
