// SPDX-License-Identifier: MIT
#include "Shared/ContainerReader.h"

#include "Shared/DeviceTransfer.h"
#include "Shared/TransferError.h"

#include <QCoreApplication>
#include <QTemporaryFile>

namespace Pellarvine::detail {

namespace {

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::TransferError)
};

} // namespace

ContainerReader::ContainerReader(QIODevice &source, QStringView passphrase, bool verifiesFirst)
    : m_source(&source)
    , m_decryptor(passphrase)
{
    if (verifiesFirst)
        m_verifier.emplace(passphrase);
    if (!source.isSequential())
        m_totalLength = (verifiesFirst ? 2 : 1) * (source.size() - source.pos());
}

ContainerReader::~ContainerReader() = default;

void ContainerReader::verify()
{
    const qint64 start = m_source->pos();
    if (m_source->isSequential()) {
        m_spool = std::make_unique<QTemporaryFile>();
        if (!m_spool->open())
            throw TransferError(TransferError::writeFailed, m_spool->errorString());
    }
    for (Data piece = nextPiece(); !piece.isEmpty(); piece = nextPiece()) {
        m_verifier->feed(piece);
        if (m_spool)
            writeAll(*m_spool, piece);
    }
    if (m_spool)
        flush(*m_spool);
    m_verifier->finalize();
    m_verifier.reset();
    if (m_spool)
        m_source = m_spool.get();
    if (!m_source->seek(m_spool ? 0 : start))
        throw TransferError(TransferError::readFailed, m_source->errorString());
}

Data ContainerReader::read()
{
    while (!m_isOver) {
        const Data piece = nextPiece();
        m_isOver = piece.isEmpty();
        // Detects a file that was changed between the two readings.
        Data text = m_isOver ? m_decryptor.finalize() : m_decryptor.feed(piece);
        if (!text.isEmpty())
            return text;
    }
    return {};
}

Data ContainerReader::nextPiece()
{
    throwIfStopped(m_transfer);
    Data piece = readPiece(*m_source);
    m_doneLength += piece.size();
    if (m_transfer.progress && !piece.isEmpty())
        m_transfer.progress(m_doneLength, m_totalLength);
    return piece;
}

void throwIfStopped(const Transfer &transfer)
{
    if (transfer.stop.stop_requested())
        throw TransferError(TransferError::cancelled, Messages::tr("The transfer was cancelled."));
}

} // namespace Pellarvine::detail
