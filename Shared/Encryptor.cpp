// SPDX-License-Identifier: MIT
#include "Shared/Encryptor.h"

#include "Shared/ContainerFormat.h"
#include "Shared/CryptorEngine.h"
#include "Shared/Data+Random.h"
#include "Shared/HMAC.h"
#include "Shared/KeyGen.h"
#include "Shared/Overlap.h"

#include <utility>

namespace Pellarvine {

struct Encryptor::Private
{
    detail::CryptorEngine engine;
    detail::HMAC hmac;
    std::optional<Data> header;

    Private(detail::CryptorEngine newEngine, detail::HMAC newHmac, Data newHeader)
        : engine(std::move(newEngine))
        , hmac(std::move(newHmac))
        , header(std::move(newHeader))
    { }

    static std::unique_ptr<Private> make(QStringView text)
    {
        const detail::Passphrase passphrase(text);
        const Data encryptionSalt = secureRandomData(detail::saltLength);
        const detail::KeyGen::Key cipherKey =
                detail::KeyGen::generateAES256(passphrase, encryptionSalt);
        const Data hmacSalt = secureRandomData(detail::saltLength);
        const detail::KeyGen::Key hmacKey = detail::KeyGen::generateAES256(passphrase, hmacSalt);
        const Data iv = secureRandomData(detail::ivLength);
        const Data header =
                Data(detail::containerMagic, detail::magicLength) + encryptionSalt + hmacSalt + iv;
        auto d = std::make_unique<Private>(
                detail::CryptorEngine(detail::CryptorOperation::encrypt, cipherKey, iv),
                detail::HMAC(hmacKey), header);
        d->hmac.feed(header);
        return d;
    }

    // Enciphers `data` to `ciphertext` and tags what it has written. Returns the length.
    qsizetype transform(QByteArrayView data, char *ciphertext)
    {
        if (detail::isWorthASecondThread(data.size()))
            return transformOverlapped(data, ciphertext);
        qsizetype length = 0;
        detail::forEachSlice(data, [&](QByteArrayView slice) {
            const qsizetype written = engine.update(slice, ciphertext + length);
            hmac.feed({ ciphertext + length, written });
            length += written;
        });
        return length;
    }

    // Cipher and tag are sequential. The tag is faster, so it follows the cipher on the second
    // thread.
    qsizetype transformOverlapped(QByteArrayView data, char *ciphertext)
    {
        detail::Watermark written;
        qsizetype length = 0;
        const auto encipher = [&] {
            detail::forEachSlice(data, [&](QByteArrayView slice) {
                length += engine.update(slice, ciphertext + length);
                written.raise(length);
            });
            written.finish(length);
        };
        const auto tag = [&] {
            detail::Watermark::Level level { 0, false };
            while (!level.isFinal) {
                const qsizetype tagged = level.length;
                level = written.waitAbove(tagged);
                hmac.feed({ ciphertext + tagged, level.length - tagged });
            }
        };
        detail::runOverlapped(encipher, tag);
        return length;
    }
};

Encryptor::Encryptor(QStringView passphrase)
    : d(Private::make(passphrase))
{ }

Encryptor::Encryptor(Encryptor &&) noexcept = default;
Encryptor &Encryptor::operator=(Encryptor &&) noexcept = default;
Encryptor::~Encryptor() = default;

Data Encryptor::feed(QByteArrayView data)
{
    const Data front = std::exchange(d->header, std::nullopt).value_or(Data());
    Data &output =
            d->engine.emptyBuffer(front.size() + detail::CryptorEngine::outputBound(data.size()));
    char *const end = std::copy(front.begin(), front.end(), output.data());
    output.resize(front.size() + d->transform(data, end));
    return output;
}

Data Encryptor::finalize()
{
    Data result = d->engine.finalize();
    d->hmac.feed(result);
    return result + d->hmac.finalize();
}

const std::optional<Data> &Encryptor::header() const
{
    return d->header;
}

void Encryptor::setHeader(std::optional<Data> header)
{
    d->header = std::move(header);
}

Data Encryptor::encrypt(QByteArrayView data, QStringView passphrase)
{
    Encryptor encryptor(passphrase);
    Data container = encryptor.feed(data);
    return container.append(encryptor.finalize());
}

} // namespace Pellarvine
