// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Shared/CryptorError.h>
#include <pellarvine/Shared/Sealing.h>

#include <QIODevice>

#include <memory>
#include <optional>

namespace Pellarvine {

/// Reads the text of a container, for whatever reads from a QIODevice:
///
///     QFile file(u"notes.xml.sealed"_s);
///     file.open(QIODevice::ReadOnly);
///     Pellarvine::OpeningDevice text(&file, passphrase);
///     if (!text.open(QIODevice::ReadOnly))
///         return text.errorString(); // a wrong passphrase, a damaged file
///     QXmlStreamReader reader(&text);
///
/// Sequential, and blocking: a read waits for a source that has nothing yet.
class PELLARVINE_EXPORT OpeningDevice : public QIODevice
{
    Q_OBJECT

public:
    /// When the tag at the container's end is checked.
    enum class Mode {
        /// In open(), before any text is given out. The source is read twice, or kept in a
        /// temporary file, sealed as it is, if it is sequential.
        verifyFirst,
        /// With the last read. All text before it may be forged or cut: discard it if a read fails.
        /// For sources without an end in sight.
        unverified,
    };

    /// `source` is open for reading, not null, stays the caller's and outlives the device. The
    /// container begins where the source stands.
    OpeningDevice(QIODevice *source, QStringView passphrase, Mode mode = Mode::verifyFirst,
                  QObject *parent = nullptr);
    ~OpeningDevice() override;

    /// How open() and the reads after it are followed; set it before open(). Progress counts the
    /// bytes of the container.
    void setTransfer(const Transfer &transfer);

    /// For reading alone, once. False for what is no genuine container, for a source that fails and
    /// for a stop; `errorString()` is a sentence for people.
    bool open(OpenMode mode) override;
    void close() override; ///< The passphrase and the keys are wiped.

    /// What is wrong with the container; nothing if the source failed, or all is well.
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
