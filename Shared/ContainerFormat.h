// SPDX-License-Identifier: MIT
// Not API: the layout of an encrypted container.
#pragma once

#include "Shared/CryptorEngine.h"
#include "Shared/HMAC.h"

#include <QByteArrayView>

#include <algorithm>

namespace Pellarvine::detail {

// offset  length
//      0       4  magic
//      4       8  encryption salt
//     12       8  HMAC salt
//     20      16  initialisation vector
//     36       N  ciphertext, N a multiple of 16 and at least 16
//   36+N      32  HMAC-SHA256 of everything before it
inline constexpr char containerMagic[] = { 0x3A, 0x2D, 0x29, 0x00 };
inline constexpr qsizetype magicLength = sizeof containerMagic;
inline constexpr qsizetype saltLength = 8;
inline constexpr qsizetype ivLength = CryptorEngine::blockLength;
inline constexpr qsizetype headerLength = magicLength + 2 * saltLength + ivLength;

/// The parts of a complete header.
struct ContainerHeader
{
    explicit ContainerHeader(QByteArrayView bytes)
        : magic(bytes.first(magicLength))
        , encryptionSalt(bytes.sliced(magicLength, saltLength))
        , hmacSalt(bytes.sliced(magicLength + saltLength, saltLength))
        , iv(bytes.sliced(magicLength + 2 * saltLength, ivLength))
    { }

    QByteArrayView magic;
    QByteArrayView encryptionSalt;
    QByteArrayView hmacSalt;
    QByteArrayView iv;
};

/// Calls `step` with one slice of `data` after another. The cipher and the tag both read each
/// slice, which is short enough to stay in the first-level cache.
template <typename Step>
void forEachSlice(QByteArrayView data, Step step)
{
    constexpr qsizetype sliceLength = 16 * 1024;
    while (!data.isEmpty()) {
        const qsizetype length = std::min(data.size(), sliceLength);
        step(data.first(length));
        data = data.sliced(length);
    }
}

} // namespace Pellarvine::detail
