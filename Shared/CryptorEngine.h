// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Shared/OpenSSL.h"

#include <QByteArrayView>

#include <optional>

namespace Pellarvine::detail {

enum class CryptorOperation {
    encrypt,
    decrypt,
};

/// AES in CBC mode with PKCS#7 padding (NIST SP 800-38A, RFC 5652), fed in chunks of any size. It
/// keeps back at most one block between calls; all outputs joined are the transform of all inputs
/// joined. A cipher that fails stops the process with "Could not create cryptor",
/// "Cryptor update failed" or "Cryptor finalize failed". libcrypto wipes the key with the context.
class PELLARVINE_INTERNAL_EXPORT CryptorEngine
{
public:
    static constexpr qsizetype blockLength = 16;

    /// The key's length chooses the cipher: 32 bytes for AES-256, which is what a container uses;
    /// 24 and 16 work as well. The first 16 bytes of `iv` are read.
    CryptorEngine(CryptorOperation operation, QByteArrayView key, QByteArrayView iv);

    /// The output that `data` makes available now, possibly empty. Results of earlier calls never
    /// change.
    Data feed(QByteArrayView data);

    /// The last output: encrypting, the padded block; decrypting, the last 0 to 15 bytes. Call it
    /// once. Bad padding is one of the failures that stop the process, so check a tag first.
    Data finalize();

    /// As `finalize`, but returns nothing if the padding is bad.
    std::optional<Data> finalizeIfWellFormed();

    /// The greatest length of the output of `update` for `inputLength` bytes. When it decrypts,
    /// libcrypto can return one block more than its input.
    static constexpr qsizetype outputBound(qsizetype inputLength)
    {
        return inputLength + blockLength;
    }

    /// As `feed`, into `output`, which has outputBound(data.size()) bytes of room and overlaps
    /// `data` nowhere. Returns the number of bytes written.
    qsizetype update(QByteArrayView data, char *output);

    /// Returns the engine's output buffer, empty, with room for `length` bytes. Its memory is
    /// reused if the caller no longer holds the result of the last call.
    Data &emptyBuffer(qsizetype length);

private:
    CipherContext m_context;
    Data m_buffer;
    bool m_isFinalized = false;
};

} // namespace Pellarvine::detail
