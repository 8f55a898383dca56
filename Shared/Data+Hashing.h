// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArrayView>
#include <QString>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QIODevice)

/// @file
/// Digests of bytes and of files.

namespace Pellarvine {

/// The digests on offer. MD5 and SHA-1 are there for checksums and old formats; neither withstands
/// a forger.
enum class HashingAlgorithm {
    md5, ///< RFC 1321, 16 bytes
    sha1, ///< FIPS 180-4, 20 bytes
    sha224, ///< FIPS 180-4, 28 bytes
    sha256, ///< FIPS 180-4, 32 bytes
    sha384, ///< FIPS 180-4, 48 bytes
    sha512, ///< FIPS 180-4, 64 bytes
};

/// The length in bytes of the digests that `algorithm` gives.
PELLARVINE_EXPORT qsizetype digestLength(HashingAlgorithm algorithm);

/// The digest of `data`; cannot fail. A process in which libcrypto has no such digest at all is
/// stopped with a message.
PELLARVINE_EXPORT Data hashed(QByteArrayView data, HashingAlgorithm algorithm);

/// The same digest in lowercase hexadecimal: two digits a byte, no separator.
PELLARVINE_EXPORT QString hashedHexString(QByteArrayView data, HashingAlgorithm algorithm);

/// The digest of everything that `device` still has to give, read in pieces, so that a file of any
/// size takes the same memory. Waits for the end of a process or a socket. Nothing if reading
/// fails; `device.errorString()` then says why.
PELLARVINE_EXPORT std::optional<Data> hashed(QIODevice &device, HashingAlgorithm algorithm);

} // namespace Pellarvine
