// SPDX-License-Identifier: MIT
#include "Window/WindowState.h"

#include <QDataStream>
#include <QRect>
#include <QWidget>

#include <type_traits>
#include <utility>

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

struct State
{
    quint32 magic = 0;
    quint16 version = 0;
    quint16 minorVersion = 0;
    QRect frame;
    QRect normalGeometry;
    qint32 screen = 0;
    quint8 isMaximized = 0;
    quint8 isFullScreen = 0;
    qint32 screenWidth = 0; // from version 2 on
    QRect geometry; // from version 3 on
};

// Reads or writes it, which are the same steps.
template <typename Stream, typename Value>
void pass(Stream &stream, Value &state)
{
    const auto step = [&stream](auto &field) {
        if constexpr (std::is_const_v<Value>)
            stream << field;
        else
            stream >> field;
    };
    stream.setVersion(QDataStream::Qt_4_0);
    step(state.magic);
    step(state.version);
    step(state.minorVersion);
    step(state.frame);
    step(state.normalGeometry);
    step(state.screen);
    step(state.isMaximized);
    step(state.isFullScreen);
    if (state.version > 1)
        step(state.screenWidth);
    if (state.version > 2)
        step(state.geometry);
}

} // namespace

bool isWholeWindowState(const QByteArray &state)
{
    QDataStream stream(state);
    State read;
    pass(stream, read);
    if (read.magic != magicNumber || read.version < 1 || read.version > newestVersion)
        return false;
    const QRect &geometry = read.version > 2 ? read.geometry : read.normalGeometry;
    // A window that was never shown may have no normal geometry.
    return stream.status() == QDataStream::Ok && stream.atEnd() && isWindowFrame(read.frame)
           && isWindowFrame(geometry)
           && (read.normalGeometry.isNull() || isWindowFrame(read.normalGeometry));
}

QByteArray grownWindowState(const QByteArray &state, int by, int normalBy)
{
    QDataStream stream(state);
    State changed;
    pass(stream, changed);
    for (QRect *const rect : { &changed.frame, &changed.geometry })
        rect->adjust(-by, -by, by, by);
    if (!changed.normalGeometry.isNull())
        changed.normalGeometry.adjust(-normalBy, -normalBy, normalBy, normalBy);
    QByteArray result;
    QDataStream writer(&result, QIODevice::WriteOnly);
    pass(writer, std::as_const(changed));
    return result;
}

} // namespace Pellarvine::detail
