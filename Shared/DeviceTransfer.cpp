// SPDX-License-Identifier: MIT
#include "Shared/DeviceTransfer.h"

#include "Shared/TransferError.h"

#include <QBuffer>
#include <QByteArrayView>
#include <QCoreApplication>
#include <QFileDevice>
#include <QIODevice>
#include <QProcess>

namespace Pellarvine::detail {

namespace {

// Qt's own translations contain this text.
constexpr auto closedByTheOtherSide = "The remote host closed the connection";
constexpr qint64 longestBacklog = 4 * transferLength;

struct TransferErrorMessages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::TransferError)
};

// The device's error message. A device that is not open has none.
QString description(const QIODevice &device, QIODevice::OpenModeFlag direction)
{
    const bool hasNone = device.errorString() == QBuffer().errorString();
    if (!hasNone || device.openMode().testFlag(direction))
        return device.errorString();
    return direction == QIODevice::ReadOnly
                   ? TransferErrorMessages::tr("The device is not open for reading.")
                   : TransferErrorMessages::tr("The device is not open for writing.");
}

// Whether a device ended with an error. Qt returns -1 also at the end of a closed socket or
// process.
bool hasFailed(const QIODevice &device, bool isRefused)
{
    if (const auto *const process = qobject_cast<const QProcess *>(&device))
        return process->exitStatus() == QProcess::CrashExit
               || process->error() == QProcess::FailedToStart;
    // A socket that the peer has closed is at its end. This library does not load QtNetwork, so it
    // compares Qt's message.
    if (device.inherits("QAbstractSocket"))
        return device.errorString()
               != QCoreApplication::translate("QAbstractSocket", closedByTheOtherSide);
    return isRefused && !device.inherits("QLocalSocket");
}

} // namespace

Data readPiece(QIODevice &device, qsizetype length)
{
    Data piece(length, Qt::Uninitialized);
    for (;;) {
        const qint64 count = device.read(piece.data(), length);
        if (count > 0) {
            piece.truncate(count);
            return piece;
        }
        const bool isRefused = count < 0;
        if (device.isSequential() && !isRefused
            && (device.waitForReadyRead(-1) || device.bytesAvailable() > 0))
            continue;
        if (hasFailed(device, isRefused))
            throw TransferError(TransferError::readFailed,
                                description(device, QIODevice::ReadOnly));
        return {};
    }
}

void writeAll(QIODevice &device, QByteArrayView bytes)
{
    const auto fail = [&] {
        throw TransferError(TransferError::writeFailed, description(device, QIODevice::WriteOnly));
    };
    while (!bytes.isEmpty()) {
        const qint64 count = device.write(bytes.data(), bytes.size());
        if (count < 0)
            fail();
        bytes = bytes.sliced(count);
        if (count == 0 && !device.isSequential())
            fail();
        const bool isStuck = count == 0 || device.bytesToWrite() > longestBacklog;
        if (device.isSequential() && isStuck && !device.waitForBytesWritten(-1))
            fail();
    }
}

void flush(QIODevice &device)
{
    auto *const file = qobject_cast<QFileDevice *>(&device);
    if (file && !file->flush())
        throw TransferError(TransferError::writeFailed, file->errorString());
}

} // namespace Pellarvine::detail
