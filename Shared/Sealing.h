// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QStringView>

#include <functional>
#include <stop_token>

QT_FORWARD_DECLARE_CLASS(QIODevice)

/// @file
/// Seals and opens whole containers from one device to another. Files, sockets and processes are
/// all devices:
///
///     QFile in(u"diary.txt"_s);
///     QSaveFile out(u"diary.txt.sealed"_s);
///     if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly))
///         return false;
///     Pellarvine::seal(in, out, passphrase); // throws TransferError
///     return out.commit();
///
/// Both devices are open. They are used on the calling thread only, which may be a worker thread.
/// The functions take a few MiB of memory for any size. After an exception the target contains a
/// part of the result: discard it.
namespace Pellarvine {

/// Progress and cancellation of a transfer.
struct Transfer
{
    /// Called after each piece with the number of bytes done and the total, which is -1 if the
    /// source does not know it. If the source is read twice, its bytes count twice.
    std::function<void(qint64 done, qint64 total)> progress;

    /// Checked before each piece. A stop ends the transfer with `TransferError::cancelled`. It does
    /// not interrupt a device that waits.
    std::stop_token stop;
};

/// Writes one container with the rest of `in`, which may be empty. Throws `TransferError`.
PELLARVINE_EXPORT void seal(QIODevice &in, QIODevice &out, QStringView passphrase,
                            const Transfer &transfer = {});

/// Writes the text of the container in the rest of `in`. The tag is checked before anything is
/// written: `in` is read twice; a sequential one is kept in a temporary file, as ciphertext. Throws
/// `CryptorError` and `TransferError`.
PELLARVINE_EXPORT void open(QIODevice &in, QIODevice &out, QStringView passphrase,
                            const Transfer &transfer = {});

} // namespace Pellarvine
