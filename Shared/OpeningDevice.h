// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Shared/CryptorError.h>
#include <pellarvine/Shared/Sealing.h>

#include <QIODevice>

#include <memory>
#include <optional>

namespace Pellarvine {

/// Decrypts a container while it is read, for code that reads from a QIODevice:
///
///     QFile file(u"notes.xml.sealed"_s);
///     file.open(QIODevice::ReadOnly);
///     Pellarvine::OpeningDevice text(&file, passphrase);
///     if (!text.open(QIODevice::ReadOnly))
///         return text.errorString(); // a wrong passphrase, a damaged file
///     QXmlStreamReader reader(&text);
///
/// The device is sequential and blocking: a read waits until the source has data. Use it on one
/// thread at a time, the thread of the source; it may be a worker thread.
class PELLARVINE_EXPORT OpeningDevice : public QIODevice
{
    Q_OBJECT

public:
    /// When the tag at the end of the container is checked.
    enum class Mode {
        /// In open(), before any text can be read. The source is read twice; a sequential source is
        /// kept in a temporary file, as ciphertext.
        verifyFirst,
        /// With the last read. The text before it may be forged or incomplete: discard it if a read
        /// fails. For sources without a known end.
        unverified,
    };

    /// `source` is not null, is open for reading, and outlives the device. The caller owns it. The
    /// container begins at its current position.
    OpeningDevice(QIODevice *source, QStringView passphrase, Mode mode = Mode::verifyFirst,
                  QObject *parent = nullptr);
    ~OpeningDevice() override;

    /// Sets progress and stop token for open() and the reads after it. Call it before open().
    /// Progress counts the bytes of the container.
    void setTransfer(const Transfer &transfer);

    /// Opens the device once, for reading only. Returns false if the source is not a genuine
    /// container, if it fails, and after a stop. `errorString()` is a sentence for people.
    bool open(OpenMode mode) override;
    void close() override; ///< The passphrase and the keys are wiped.

    /// The error in the container. Nothing if there is none, or if the source failed.
    std::optional<CryptorError> error() const;

    bool isSequential() const override; ///< always true
    bool atEnd() const override; ///< whether all text has been read, or a read has failed
    qint64 bytesAvailable() const override; ///< text that can be read without a wait

protected:
    qint64 readData(char *data, qint64 length) override;
    qint64 writeData(const char *data, qint64 length) override; ///< always -1

private:
    bool succeeds(const std::function<void()> &step);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
