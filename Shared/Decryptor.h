// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Shared/CryptorError.h>

#include <QByteArrayView>
#include <QStringView>

#include <memory>
#include <optional>

namespace Pellarvine {

class Decryptor;

/// @cond internal
namespace detail {
class CryptorEngine;
class HMAC;
std::optional<Data> finalizeIfWellFormed(Decryptor &decryptor);
} // namespace detail
/// @endcond

/// Reads the passphrase-encrypted container that `Encryptor` writes, in one call or as a stream of
/// chunks of any size:
///
///     Pellarvine::Decryptor decryptor(passphrase);
///     QByteArray text = decryptor.feed(front);
///     text += decryptor.feed(rest);
///     text += decryptor.finalize(); // throws unless all of it is genuine
///
/// From one device to another, `open()` in Sealing.h does it, and checks before it writes.
///
/// Plaintext is handed out before the tag behind it has been seen. Trust none of it, and keep it
/// from its reader, until `finalize()` has returned. Keys and passphrase are wiped with the object.
/// One thread at a time.
class PELLARVINE_EXPORT Decryptor
{
public:
    /// Cheap: keys are derived when the header is complete. The passphrase is used as its UTF-8
    /// bytes, without normalisation; text with an unpaired surrogate stops the process.
    explicit Decryptor(QStringView passphrase);
    Decryptor(Decryptor &&) noexcept;
    Decryptor &operator=(Decryptor &&) noexcept;
    ~Decryptor();

    /// The plaintext that is available now, possibly empty. Throws `invalidFileFormat` when the
    /// header's last byte has come and its first four bytes are not a container's; the object then
    /// starts on a header afresh.
    Data feed(QByteArrayView data);

    /// Checks the tag and returns the last 0 to 15 bytes. Throws `truncatedFile` if no header was
    /// accepted, `invalidHMAC` for a wrong passphrase and for a container that was changed, or cut
    /// behind its header. Call it once and nothing after it.
    Data finalize();

    /// The plaintext of one complete container. Throws what `feed` and `finalize` throw.
    static Data decrypt(QByteArrayView data, QStringView passphrase);

    /// The reader's state, for code inside the library: the cipher, null until a header is
    /// accepted, and owned by this object.
    detail::CryptorEngine *engine() const;
    void setEngine(std::unique_ptr<detail::CryptorEngine> engine);
    /// Likewise what checks the tag.
    detail::HMAC *hmac() const;
    void setHmac(std::unique_ptr<detail::HMAC> hmac);

    /// What has come of an incomplete header; empty afterwards.
    const Data &buffer() const;
    void setBuffer(Data buffer);

private:
    friend std::optional<Data> detail::finalizeIfWellFormed(Decryptor &decryptor);
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
