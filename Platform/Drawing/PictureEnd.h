// SPDX-License-Identifier: MIT
// Not API: whether a picture's file is complete.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace Pellarvine::detail {

/// Whether the file has the end of its first picture. Qt shows the first part of JPEG, GIF and BMP
/// files that were cut, without an error. True for any other `format`, of QImageReader::format():
/// Qt does not read a part of such a file.
bool hasPictureEnd(const QByteArray &format, QByteArrayView contents);

} // namespace Pellarvine::detail
