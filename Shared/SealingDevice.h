// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QIODevice>

#include <functional>
#include <memory>

namespace Pellarvine {

/// Encrypts the bytes that are written to it into a container on another device, for code that
/// writes to a QIODevice:
///
///     QSaveFile file(u"notes.xml.sealed"_s);
///     file.open(QIODevice::WriteOnly);
///     Pellarvine::SealingDevice sealed(&file, passphrase);
///     sealed.open(QIODevice::WriteOnly);
///     QXmlStreamWriter writer(&sealed);
///     writeNotes(writer);
///     return sealed.finish() && file.commit();
///
/// The device is sequential. Call finish() or close(): without them the container has no end and
/// cannot be opened. Use it on one thread at a time, the thread of the target; it may be a worker
/// thread.
class PELLARVINE_EXPORT SealingDevice : public QIODevice
{
    Q_OBJECT

public:
    /// `target` is not null, is open for writing, and outlives the device. The caller owns it.
    SealingDevice(QIODevice *target, QStringView passphrase, QObject *parent = nullptr);
    ~SealingDevice() override;

    /// Opens the device once, for writing only. Otherwise it returns false.
    bool open(OpenMode mode) override;

    /// Writes the end of the container and closes. Returns false if the device is not open, or if
    /// this or an earlier write failed; `errorString()` is that of the target.
    bool finish();
    void close() override; ///< As finish().

    bool isSequential() const override; ///< always true

protected:
    qint64 readData(char *data, qint64 length) override; ///< always -1
    qint64 writeData(const char *data, qint64 length) override;

private:
    bool put(QByteArrayView bytes);
    bool succeeds(const std::function<void()> &step);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
