// SPDX-License-Identifier: MIT
#include "Shared/SealingDevice.h"

#include "Shared/DeviceTransfer.h"
#include "Shared/Encryptor.h"
#include "Shared/TransferError.h"

#include <optional>

namespace Pellarvine {

struct SealingDevice::Private
{
    QIODevice *target;
    std::optional<Encryptor> encryptor; // until the end is written
    bool hasFailed = false;
};

SealingDevice::SealingDevice(QIODevice *target, QStringView passphrase, QObject *parent)
    : QIODevice(parent)
    , d(std::make_unique<Private>(Private { target, Encryptor(passphrase) }))
{
    setErrorString(tr("The device is not open."));
}

SealingDevice::~SealingDevice() = default;

bool SealingDevice::open(OpenMode mode)
{
    const OpenMode direction = mode & ReadWrite;
    if (isOpen() || !d->encryptor || direction != WriteOnly) {
        setErrorString(tr("The device can be opened only once, and only for writing."));
        return false;
    }
    QIODevice::open(WriteOnly | Unbuffered);
    // The header is written also for an empty container.
    return put(d->encryptor->feed({}));
}

bool SealingDevice::finish()
{
    if (!isOpen())
        return false;
    const bool isWritten = !d->hasFailed && succeeds([this] {
        detail::writeAll(*d->target, d->encryptor->finalize());
        detail::flush(*d->target);
    });
    d->encryptor.reset();
    const QString error = errorString();
    QIODevice::close();
    if (!isWritten)
        setErrorString(error);
    return isWritten;
}

void SealingDevice::close()
{
    finish();
}

bool SealingDevice::isSequential() const
{
    return true;
}

qint64 SealingDevice::readData(char *, qint64)
{
    return -1;
}

qint64 SealingDevice::writeData(const char *data, qint64 length)
{
    if (d->hasFailed)
        return -1;
    return put(d->encryptor->feed({ data, length })) ? length : -1;
}

bool SealingDevice::put(QByteArrayView bytes)
{
    return succeeds([&] { detail::writeAll(*d->target, bytes); });
}

bool SealingDevice::succeeds(const std::function<void()> &step)
{
    try {
        step();
        return true;
    } catch (const TransferError &error) {
        d->hasFailed = true;
        setErrorString(error.localizedDescription());
        return false;
    }
}

} // namespace Pellarvine
