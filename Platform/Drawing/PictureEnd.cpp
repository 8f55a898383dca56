// SPDX-License-Identifier: MIT
#include "Drawing/PictureEnd.h"

#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace Pellarvine::detail {

namespace {

int byteAt(QByteArrayView bytes, qsizetype at)
{
    return at < bytes.size() ? uchar(bytes.at(at)) : 0;
}

template <typename Number>
qint64 numberAt(QByteArrayView bytes, qsizetype at)
{
    return qint64(qFromLittleEndian<Number>(bytes.data() + at));
}

// The marker "end of image". The lengths of segments lead past the one of a thumbnail in them.
bool hasJpegEnd(QByteArrayView bytes)
{
    constexpr int endOfImage = 0xd9;
    qsizetype at = 2;
    while (at < bytes.size()) {
        at = bytes.indexOf('\xff', at);
        if (at < 0)
            return false;
        const int marker = byteAt(bytes, at + 1);
        if (marker == endOfImage)
            return true;
        const bool isFill = marker == 0xff;
        // A byte 0xff of the data, a restart marker, or another without a segment.
        const bool isSingle = marker <= 1 || (marker >= 0xd0 && marker <= 0xd8);
        at += isFill ? 1 : 2;
        if (!isFill && !isSingle)
            at += std::max(2, byteAt(bytes, at) << 8 | byteAt(bytes, at + 1));
    }
    return false;
}

// The empty block behind the first frame.
bool hasGifEnd(QByteArrayView bytes)
{
    constexpr int extension = 0x21;
    constexpr int frame = 0x2c;
    const auto tableSize = [](int flags) {
        return (flags & 0x80) ? 3 << ((flags & 7) + 1) : 0;
    };
    qsizetype at = 13 + tableSize(byteAt(bytes, 10));
    while (at < bytes.size()) {
        const int kind = byteAt(bytes, at);
        if (kind == frame)
            at += 11 + tableSize(byteAt(bytes, at + 9));
        else if (kind == extension)
            at += 2;
        else
            return true; // QImageReader decides
        while (byteAt(bytes, at) > 0)
            at += 1 + byteAt(bytes, at);
        ++at;
        if (kind == frame)
            return at <= bytes.size();
    }
    return false;
}

// All rows. The size of a compressed picture is not known.
bool hasBmpEnd(QByteArrayView bytes)
{
    constexpr qsizetype headers = 34;
    constexpr quint32 oldHeader = 12;
    if (bytes.size() < headers)
        return false;
    const bool isOld = numberAt<quint32>(bytes, 14) == oldHeader;
    const qint64 width = isOld ? numberAt<quint16>(bytes, 18) : numberAt<qint32>(bytes, 18);
    const qint64 height =
            isOld ? numberAt<quint16>(bytes, 20) : std::abs(numberAt<qint32>(bytes, 22));
    const qint64 bits = width * numberAt<quint16>(bytes, isOld ? 24 : 28);
    const qint64 compression = isOld ? 0 : numberAt<quint32>(bytes, 30);
    constexpr qint64 bitFields = 3;
    if ((compression != 0 && compression != bitFields) || width <= 0 || height <= 0)
        return true;
    const qint64 row = (bits + 31) / 32 * 4;
    const qint64 lastRow = (bits + 7) / 8;
    const qint64 start = numberAt<quint32>(bytes, 10);
    // The product of the rows can exceed 64 bits.
    return double(bytes.size()) >= double(start + lastRow) + double(row) * double(height - 1);
}

} // namespace

bool hasPictureEnd(const QByteArray &format, QByteArrayView contents)
{
    if (format == "jpeg" || format == "jpg")
        return hasJpegEnd(contents);
    if (format == "gif")
        return hasGifEnd(contents);
    return format != "bmp" || hasBmpEnd(contents);
}

} // namespace Pellarvine::detail
