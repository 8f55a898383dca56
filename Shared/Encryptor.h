// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QByteArrayView>
#include <QStringView>

#include <memory>
#include <optional>

namespace Pellarvine {

/// Writes the passphrase-encrypted container, in one call or as a stream:
///
///     Pellarvine::Encryptor encryptor(passphrase);
///     QByteArray container = encryptor.feed(title); // begins with the header, also for no bytes
///     container += encryptor.feed(body);
///     container += encryptor.finalize();
///
/// From one device to another, `seal()` in Sealing.h does it, write errors included.
///
/// All results joined, in order, are the container: a 36-byte header, AES-256-CBC ciphertext and
/// an HMAC-SHA256 tag over both. Salts and IV are fresh for each object, so no two containers are
/// alike. Two keys are derived on construction, which takes some milliseconds by design.
///
/// Nothing here throws. A service of the system that fails (random source, key derivation,
/// cipher) stops the process with a message. Keys are wiped with the object. One thread at a time.
class PELLARVINE_EXPORT Encryptor
{
public:
    /// The passphrase is used as its UTF-8 bytes, without normalisation, and not kept. An empty
    /// one is accepted; text with an unpaired surrogate stops the process.
    explicit Encryptor(QStringView passphrase);
    Encryptor(Encryptor &&) noexcept;
    Encryptor &operator=(Encryptor &&) noexcept;
    ~Encryptor();

    /// The part of the container that `data` makes available now, possibly empty. The first call
    /// gives at least the header, also for empty `data`.
    Data feed(QByteArrayView data);

    /// The rest of the container: the padded last block and the tag, 48 bytes. Call it once and
    /// nothing after it. Without any `feed` before, the header is still in `header()` and has to
    /// be put in front by the caller.
    Data finalize();

    /// The 36-byte header until the first `feed` gives it out, nothing from then on.
    const std::optional<Data> &header() const;

    /// Replaces what the next `feed` puts in front of its ciphertext. The tag covers the original.
    void setHeader(std::optional<Data> header);

    /// One complete container: 84 bytes for no `data`.
    static Data encrypt(QByteArrayView data, QStringView passphrase);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
