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
/// `open()` in Sealing.h reads from one device to another, and checks the tag before it writes.
///
/// `feed()` returns plaintext before the tag is checked. Do not use it, and do not show it, until
/// `finalize()` has returned. The destructor wipes keys and passphrase. One thread at a time.
class PELLARVINE_EXPORT Decryptor
{
public:
    /// Cheap: the keys are derived when the header is complete. The passphrase is used as its UTF-8
    /// bytes, without normalisation. A text with an unpaired surrogate aborts the process.
    explicit Decryptor(QStringView passphrase);
    Decryptor(Decryptor &&) noexcept;
    Decryptor &operator=(Decryptor &&) noexcept;
    ~Decryptor();

    /// Returns the plaintext that is available, possibly empty. Throws `invalidFileFormat` if a
    /// complete header does not begin with the four bytes of a container; the object then expects a
    /// new header.
    Data feed(QByteArrayView data);

    /// Checks the tag and returns the last 0 to 15 bytes. Throws `truncatedFile` if there was no
    /// complete header, and `invalidHMAC` for a wrong passphrase and for a container that was
    /// changed or shortened. Call it once, as the last function.
    Data finalize();

    /// Returns the plaintext of one complete container. Throws the exceptions of `feed` and
    /// `finalize`.
    static Data decrypt(QByteArrayView data, QStringView passphrase);

    /// Internal state of the library: the cipher, owned by this object. Null before a complete
    /// header was fed.
    detail::CryptorEngine *engine() const;
    void setEngine(std::unique_ptr<detail::CryptorEngine> engine);
    /// Internal state of the library: the computation of the tag, with the same owner.
    detail::HMAC *hmac() const;
    void setHmac(std::unique_ptr<detail::HMAC> hmac);

    /// The bytes of an incomplete header. Empty after a complete one.
    const Data &buffer() const;
    void setBuffer(Data buffer);

private:
    friend std::optional<Data> detail::finalizeIfWellFormed(Decryptor &decryptor);
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
