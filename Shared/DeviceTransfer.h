// SPDX-License-Identifier: MIT
// Not API: reading and writing any QIODevice to its end, waiting where it has to.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QIODevice)

namespace Pellarvine::detail {

/// How much is read and written at a time.
inline constexpr qsizetype transferLength = 1024 * 1024;

/// The next bytes of the device, at most `length` of them; empty at its end. Waits for a device
/// that has nothing yet, such as a process or a socket. Throws TransferError.
Data readPiece(QIODevice &device, qsizetype length = transferLength);

/// Writes all of `bytes`. Waits while a device such as a socket holds much that it has not sent.
/// Throws TransferError.
void writeAll(QIODevice &device, QByteArrayView bytes);

/// Hands what a file has in its buffer to the system, which may have no room for it. Throws
/// TransferError.
void flush(QIODevice &device);

} // namespace Pellarvine::detail
