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
///     Pellarvine::Encryptor encryptor(u"kitchen saddle ovation drum nickel thatch");
///     QByteArray container = encryptor.feed("Notes"); // begins with the header, also for no bytes
///     container += encryptor.feed(" of a summer");
///     container += encryptor.finalize();
///
/// `seal()` in Sealing.h writes from one device to another and reports write errors.
///
/// The results, joined in order, are the container: a 36-byte header, AES-256-CBC ciphertext and an
/// HMAC-SHA256 tag over both. Salts and IV are new for each object, so no two containers are equal.
/// The constructor derives two keys, which takes some milliseconds by design.
///
/// Nothing here throws. If a service of the system fails (random source, key derivation, cipher),
/// the process is aborted with a message. The destructor wipes the keys. One thread at a time.
class PELLARVINE_EXPORT Encryptor
{
public:
    /// The passphrase is used as its UTF-8 bytes, without normalisation, and is not kept. It may be
    /// empty. A text with an unpaired surrogate aborts the process.
    explicit Encryptor(QStringView passphrase);
    Encryptor(Encryptor &&) noexcept;
    Encryptor &operator=(Encryptor &&) noexcept;
    ~Encryptor();

    /// Returns the part of the container that is complete, possibly empty. The first call returns
    /// at least the header, also for empty `data`.
    Data feed(QByteArrayView data);

    /// Returns the rest of the container: the padded last block and the tag, 48 bytes. Call it
    /// once, as the last function. Without a call of `feed` before, the caller has to write
    /// `header()` first.
    Data finalize();

    /// The 36-byte header. Empty after the first `feed`, which returns it.
    const std::optional<Data> &header() const;

    /// Replaces the header that the next `feed` writes. The tag covers the original header.
    void setHeader(std::optional<Data> header);

    /// One complete container: 84 bytes for no `data`.
    static Data encrypt(QByteArrayView data, QStringView passphrase);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
