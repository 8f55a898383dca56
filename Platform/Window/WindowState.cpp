// SPDX-License-Identifier: MIT
#include "Window/WindowState.h"

#include <QDataStream>
#include <QRect>
#include <QWidget>

namespace Pellarvine::detail {

namespace {

constexpr quint32 magicNumber = 0x1D9D0CB;
constexpr quint16 newestVersion = 3;

// Wide enough for QRect::width(), whose int overflows for what a damaged file may hold.
bool isWindowFrame(const QRect &rect)
{
    const auto isLength = [](qint64 first, qint64 last) {
        return last - first >= 0 && last - first < QWIDGETSIZE_MAX;
    };
    return isLength(rect.left(), rect.right()) && isLength(rect.top(), rect.bottom());
}

} // namespace

bool isWholeWindowState(const QByteArray &state)
{
    QDataStream stream(state);
    stream.setVersion(QDataStream::Qt_4_0);
    quint32 magic = 0;
    quint16 version = 0;
    quint16 minorVersion = 0;
    QRect frame;
    QRect geometry;
    QRect normalGeometry;
    qint32 screen = 0;
    quint8 isMaximized = 0;
    quint8 isFullScreen = 0;
    stream >> magic >> version >> minorVersion >> frame >> normalGeometry >> screen >> isMaximized
            >> isFullScreen;
    if (magic != magicNumber || version < 1 || version > newestVersion)
        return false;
    if (version > 1) {
        qint32 screenWidth = 0;
        stream >> screenWidth;
    }
    if (version > 2)
        stream >> geometry;
    else
        geometry = normalGeometry;
    // A window that was never shown may have no normal geometry.
    return stream.status() == QDataStream::Ok && stream.atEnd() && isWindowFrame(frame)
           && isWindowFrame(geometry) && (normalGeometry.isNull() || isWindowFrame(normalGeometry));
}

} // namespace Pellarvine::detail
