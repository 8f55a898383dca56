// SPDX-License-Identifier: MIT
#include "Shared/OpeningDevice.h"

#include "Shared/ContainerReader.h"
#include "Shared/TransferError.h"

#include <algorithm>

namespace Pellarvine {

struct OpeningDevice::Private
{
    Mode mode;
    std::optional<detail::ContainerReader> reader; // until the device is closed
    Data text;
    qsizetype readLength = 0; // of the text
    bool isOver = false;
    std::optional<CryptorError> error;

    qsizetype waiting() const { return text.size() - readLength; }

    // Text to read, unless all has been read.
    void fill()
    {
        if (waiting() > 0 || isOver)
            return;
        text = reader->read();
        readLength = 0;
        isOver = text.isEmpty();
    }
};

OpeningDevice::OpeningDevice(QIODevice *source, QStringView passphrase, Mode mode, QObject *parent)
    : QIODevice(parent)
    , d(std::make_unique<Private>())
{
    d->mode = mode;
    d->reader.emplace(*source, passphrase, mode == Mode::verifyFirst);
    setErrorString(tr("The device is not open."));
}

OpeningDevice::~OpeningDevice() = default;

void OpeningDevice::setTransfer(const Transfer &transfer)
{
    if (d->reader)
        d->reader->setTransfer(transfer);
}

bool OpeningDevice::open(OpenMode mode)
{
    const OpenMode direction = mode & ReadWrite;
    if (isOpen() || d->isOver || direction != ReadOnly) {
        setErrorString(tr("The device can be opened only once, and only for reading."));
        return false;
    }
    if (d->mode == Mode::verifyFirst && !succeeds([this] { d->reader->verify(); }))
        return false;
    return QIODevice::open(ReadOnly);
}

void OpeningDevice::close()
{
    d->reader.reset();
    d->text.clear();
    d->readLength = 0;
    d->isOver = true;
    QIODevice::close();
}

std::optional<CryptorError> OpeningDevice::error() const
{
    return d->error;
}

bool OpeningDevice::isSequential() const
{
    return true;
}

bool OpeningDevice::atEnd() const
{
    return d->isOver && bytesAvailable() == 0;
}

qint64 OpeningDevice::bytesAvailable() const
{
    return QIODevice::bytesAvailable() + d->waiting();
}

qint64 OpeningDevice::readData(char *data, qint64 length)
{
    if (!succeeds([this] { d->fill(); }))
        return -1;
    const qsizetype count = std::min<qsizetype>(length, d->waiting());
    std::copy_n(d->text.constData() + d->readLength, count, data);
    d->readLength += count;
    return count;
}

qint64 OpeningDevice::writeData(const char *, qint64)
{
    return -1;
}

// A failed step is the last one.
bool OpeningDevice::succeeds(const std::function<void()> &step)
{
    try {
        step();
        return true;
    } catch (const CryptorError &error) {
        d->error = error;
        setErrorString(error.localizedDescription());
    } catch (const TransferError &error) {
        setErrorString(error.localizedDescription());
    }
    d->isOver = true;
    return false;
}

} // namespace Pellarvine
