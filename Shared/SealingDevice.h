// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QIODevice>

#include <functional>
#include <memory>

namespace Pellarvine {

/// Writes a container to another device, for whatever writes to a QIODevice:
///
///     QSaveFile file(u"notes.xml.sealed"_s);
///     file.open(QIODevice::WriteOnly);
///     Pellarvine::SealingDevice sealed(&file, passphrase);
///     sealed.open(QIODevice::WriteOnly);
///     QXmlStreamWriter writer(&sealed);
///     writeNotes(writer);
///     return sealed.finish() && file.commit();
///
/// Sequential. Without finish() or close() the container has no end, and nobody can open it.
class PELLARVINE_EXPORT SealingDevice : public QIODevice
{
    Q_OBJECT

public:
    /// `target` is open for writing, not null, stays the caller's and outlives the device.
    SealingDevice(QIODevice *target, QStringView passphrase, QObject *parent = nullptr);
    ~SealingDevice() override;

    bool open(OpenMode mode) override; ///< For writing alone, once; else false.

    /// Writes the container's end and closes. False if this or any write before it failed; the
    /// `errorString()` is the target's. False as well if it is not open.
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
