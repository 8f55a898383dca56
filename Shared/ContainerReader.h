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

    /// Reads all of the container and checks its tag. A sequential source's is kept in a temporary
    /// file.
    void verify();

    /// The next text; empty once all has been read and the tag is right.
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
