// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArrayView>
#include <QString>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QIODevice)

/// @file
/// Digests of bytes and of files:
///
///     using Pellarvine::HashingAlgorithm;
///     const QString name = Pellarvine::hashedHexString("abc", HashingAlgorithm::md5);
///     const std::optional<Pellarvine::Data> key =
///             Pellarvine::hashed(file, HashingAlgorithm::sha256); // nothing if reading fails

namespace Pellarvine {

/// The supported digests. MD5 and SHA-1 are for checksums and old formats; neither is secure
/// against forgery.
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

/// The digest of `data`. Any thread. Aborts the process with a message if libcrypto does not have
/// the algorithm.
PELLARVINE_EXPORT Data hashed(QByteArrayView data, HashingAlgorithm algorithm);

/// The same digest in lowercase hexadecimal: two digits a byte, no separator.
PELLARVINE_EXPORT QString hashedHexString(QByteArrayView data, HashingAlgorithm algorithm);

/// The digest of the rest of `device`, read in pieces: the memory does not depend on the size.
/// Waits for the end of a process or a socket. Returns nothing if reading fails; the reason is
/// `device.errorString()`. Call it on the thread of the device.
PELLARVINE_EXPORT std::optional<Data> hashed(QIODevice &device, HashingAlgorithm algorithm);

} // namespace Pellarvine
