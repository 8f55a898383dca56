// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QStringView>

#include <functional>
#include <stop_token>

QT_FORWARD_DECLARE_CLASS(QIODevice)

/// @file
/// Whole containers from one device to another, files, sockets and processes alike:
///
///     QFile in(u"diary.txt"_s);
///     QSaveFile out(u"diary.txt.sealed"_s);
///     if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly))
///         return false;
///     Pellarvine::seal(in, out, passphrase); // throws TransferError
///     return out.commit();
///
/// Both devices are open, and are used on the calling thread alone, which may be a worker thread.
/// Memory stays at a few MiB. After an exception the target holds a part of the result: discard it.
namespace Pellarvine {

/// How the caller follows a transfer.
struct Transfer
{
    /// Called after each piece with the bytes done and the bytes there are in all; -1 in all where
    /// the source cannot tell. A transfer that reads its source twice counts it twice.
    std::function<void(qint64 done, qint64 total)> progress;

    /// Asked before each piece. A stop ends the transfer with `TransferError::cancelled`. It does
    /// not wake a device that waits.
    std::stop_token stop;
};

/// Writes one container with everything that `in` still has to give. An empty source gives a
/// container too. Throws `TransferError`.
PELLARVINE_EXPORT void seal(QIODevice &in, QIODevice &out, QStringView passphrase,
                            const Transfer &transfer = {});

/// Writes the text of the container that `in` still has to give. Nothing is written before all of
/// the container is known to be genuine: `in` is read twice, or kept in a temporary file, sealed as
/// it is, if it is sequential. Throws `CryptorError` and `TransferError`.
PELLARVINE_EXPORT void open(QIODevice &in, QIODevice &out, QStringView passphrase,
                            const Transfer &transfer = {});

} // namespace Pellarvine
