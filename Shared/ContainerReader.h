// SPDX-License-Identifier: MIT
// Not API: a container's text, from any device.
#pragma once

#include "Shared/Decryptor.h"
#include "Shared/Sealing.h"

#include <memory>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QTemporaryFile)

namespace Pellarvine::detail {

/// Reads the container in the rest of a device. Its functions throw CryptorError and TransferError.
class ContainerReader
{
public:
    /// With `verifiesFirst`, verify() is called before read(). The device outlives the reader.
    ContainerReader(QIODevice &source, QStringView passphrase, bool verifiesFirst);
    ~ContainerReader();

    void setTransfer(const Transfer &transfer) { m_transfer = transfer; }

    /// Reads the whole container and checks its tag. The container of a sequential source is kept
    /// in a temporary file.
    void verify();

    /// The next piece of text. Empty at the end, after the tag was checked.
    Data read();

private:
    Data nextPiece();

    QIODevice *m_source;
    Transfer m_transfer;
    std::optional<Decryptor> m_verifier; // until verify()
    Decryptor m_decryptor;
    std::unique_ptr<QTemporaryFile> m_spool;
    qint64 m_doneLength = 0;
    qint64 m_totalLength = -1; // unknown
    bool m_isOver = false;
};

/// Throws TransferError if the caller has asked for a stop.
void throwIfStopped(const Transfer &transfer);

} // namespace Pellarvine::detail
