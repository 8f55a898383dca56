// SPDX-License-Identifier: MIT
// Not API: work that may take long, off the main thread.
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArray>

#include <functional>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QImage)
QT_FORWARD_DECLARE_CLASS(QUrl)

namespace NS::detail {

/// Runs `work` on a thread of its own and returns when it is done. If that takes longer than a
/// moment, the pointer turns busy and windows go on painting; what the user does meanwhile waits,
/// but timers and posted events run, so that anything may have been destroyed on return. Main
/// thread only; `work` must not throw.
PELLARVINE_INTERNAL_EXPORT void runWithBusyCursor(const std::function<void()> &work);

/// The path of a local file that is an ordinary one, following links; else empty. Only those can be
/// read to their end: a pipe would wait for a writer, a device may have no end.
QString ordinaryFilePath(const QUrl &url);

/// The whole file, byte for byte; nothing if it is no ordinary local file, cannot be read to its
/// end, or does not fit in memory. Any thread.
std::optional<QByteArray> contentsOfFile(const QUrl &url);

/// The first frame of the picture, upright as its camera was held; null if the bytes are none.
/// Any thread.
QImage decodedImage(const QByteArray &bytes);

} // namespace NS::detail
