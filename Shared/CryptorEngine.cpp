// SPDX-License-Identifier: MIT
#include "Shared/CryptorEngine.h"

#include "Base/Failure.h"

#include <algorithm>

namespace Pellarvine::detail {

namespace {

// libcrypto takes lengths as int and silently keeps the low bits of larger ones.
constexpr qsizetype longestUpdate = qsizetype(1) << 30;
constexpr qsizetype longestIdleBuffer = 64 * 1024;
// The first chunk of a container gives less output than an equal later one, because of header and
// tag. New memory costs more than decrypting into it.
constexpr qsizetype spareLength = 128;

} // namespace

CryptorEngine::CryptorEngine(CryptorOperation operation, QByteArrayView key, QByteArrayView iv)
    : m_context(EVP_CIPHER_CTX_new())
{
    const ErrorQueueGuard guard;
    const EVP_CIPHER *const cipher = aesCbc(key.size());
    const int direction = operation == CryptorOperation::encrypt ? 1 : 0;
    if (!m_context || !cipher || iv.size() < blockLength
        || EVP_CipherInit_ex2(
                   m_context.get(), cipher, reinterpret_cast<const unsigned char *>(key.data()),
                   reinterpret_cast<const unsigned char *>(iv.data()), direction, nullptr)
                   != 1)
        fatalError("Could not create cryptor");
}

Data CryptorEngine::feed(QByteArrayView data)
{
    Data &buffer = emptyBuffer(outputBound(data.size()));
    buffer.resize(update(data, buffer.data()));
    return buffer;
}

Data CryptorEngine::finalize()
{
    if (const std::optional<Data> last = finalizeIfWellFormed())
        return *last;
    fatalError("Cryptor finalize failed");
}

std::optional<Data> CryptorEngine::finalizeIfWellFormed()
{
    const ErrorQueueGuard guard;
    Data &buffer = emptyBuffer(outputBound(0));
    int written = 0;
    // libcrypto would finalise a second time without complaint.
    if (m_isFinalized
        || EVP_CipherFinal_ex(m_context.get(), reinterpret_cast<unsigned char *>(buffer.data()),
                              &written)
                   != 1)
        return std::nullopt;
    m_isFinalized = true;
    buffer.resize(written);
    return buffer;
}

qsizetype CryptorEngine::update(QByteArrayView data, char *output)
{
    if (m_isFinalized)
        fatalError("Cryptor update failed");
    qsizetype total = 0;
    while (!data.isEmpty()) {
        const QByteArrayView piece = data.first(std::min(data.size(), longestUpdate));
        int written = 0;
        if (EVP_CipherUpdate(m_context.get(), reinterpret_cast<unsigned char *>(output + total),
                             &written, reinterpret_cast<const unsigned char *>(piece.data()),
                             int(piece.size()))
            != 1)
            fatalError("Cryptor update failed");
        total += written;
        data = data.sliced(piece.size());
    }
    return total;
}

Data &CryptorEngine::emptyBuffer(qsizetype length)
{
    // Resizing a shared buffer would copy contents that are overwritten anyway. A short result also
    // does not keep the memory of a long one.
    const qsizetype capacity = m_buffer.capacity();
    const bool fits = capacity >= length && capacity <= std::max(2 * length, longestIdleBuffer);
    if (!fits || !m_buffer.isDetached())
        m_buffer = Data(length + spareLength, Qt::Uninitialized);
    m_buffer.resize(length);
    return m_buffer;
}

} // namespace Pellarvine::detail
