// SPDX-License-Identifier: MIT
// Not API: reading and writing any QIODevice to its end, waiting where it has to.
#pragma once

#include "Base/Global.h"

QT_FORWARD_DECLARE_CLASS(QIODevice)

namespace Pellarvine::detail {

/// The length in bytes of a read or write.
inline constexpr qsizetype transferLength = 1024 * 1024;

/// The next bytes of the device, at most `length` of them; empty at its end. Waits for a device
/// that has nothing yet, such as a process or a socket. Throws TransferError.
Data readPiece(QIODevice &device, qsizetype length = transferLength);

/// Writes all of `bytes`. Waits while a device such as a socket holds much that it has not sent.
/// Throws TransferError.
void writeAll(QIODevice &device, QByteArrayView bytes);

/// Flushes the buffer of a file. Throws TransferError, for example if the disk is full.
void flush(QIODevice &device);

} // namespace Pellarvine::detail
