// SPDX-License-Identifier: MIT
#include "Shared/Decryptor.h"

#include "Base/Failure.h"
#include "Shared/ContainerFormat.h"
#include "Shared/CryptorEngine.h"
#include "Shared/DecryptorEnd.h"
#include "Shared/DelayLine.h"
#include "Shared/HMAC.h"
#include "Shared/KeyGen.h"
#include "Shared/Overlap.h"
#include "Shared/TagComparison.h"

#include <optional>
#include <utility>

namespace Pellarvine {

struct Decryptor::Private
{
    std::unique_ptr<detail::CryptorEngine> engine;
    std::unique_ptr<detail::HMAC> hmac;
    std::optional<detail::Passphrase> passphrase; // until the header is read
    detail::DelayLine delayLine { detail::HMAC::tagLength };
    Data buffer;

    explicit Private(QStringView text)
        : passphrase(text)
    { }

    bool hasHeader() const { return engine && hmac; }

    void readHeader(QByteArrayView bytes)
    {
        const detail::ContainerHeader header(bytes);
        if (header.magic != QByteArrayView(detail::containerMagic, detail::magicLength))
            throw CryptorError(CryptorError::invalidFileFormat);
        if (!passphrase)
            detail::fatalError("Error: a decryptor reads one container");
        const detail::KeyGen::Key cipherKey =
                detail::KeyGen::generateAES256(*passphrase, header.encryptionSalt);
        const detail::KeyGen::Key hmacKey =
                detail::KeyGen::generateAES256(*passphrase, header.hmacSalt);
        passphrase.reset();
        hmac = std::make_unique<detail::HMAC>(hmacKey);
        hmac->feed(bytes);
        engine = std::make_unique<detail::CryptorEngine>(detail::CryptorOperation::decrypt,
                                                         cipherKey, header.iv);
    }

    // After the last feed().
    void verify()
    {
        if (!hasHeader())
            throw CryptorError(CryptorError::truncatedFile);
        if (!detail::isEqualComparingAllBytes(hmac->finalize(), delayLine.buffer()))
            throw CryptorError(CryptorError::invalidHMAC);
    }

    Data feedBody(QByteArrayView data)
    {
        const detail::DelayLine::Released released = delayLine.release(data);
        const qsizetype length = released.held.size() + released.passing.size();
        Data &output = engine->emptyBuffer(detail::CryptorEngine::outputBound(length));
        char *end = output.data();
        const auto tag = [&](QByteArrayView bytes) {
            hmac->feed(bytes);
        };
        const auto decipher = [&](QByteArrayView bytes) {
            end += engine->update(bytes, end);
        };
        const auto both = [&](QByteArrayView slice) {
            tag(slice);
            decipher(slice);
        };
        both(released.held);
        // Both only read the ciphertext. The tag takes longer, so it runs on this thread.
        if (detail::isWorthASecondThread(released.passing.size()))
            detail::runOverlapped([&] { tag(released.passing); },
                                  [&] { decipher(released.passing); });
        else
            detail::forEachSlice(released.passing, both);
        output.resize(end - output.constData());
        return output;
    }
};

Decryptor::Decryptor(QStringView passphrase)
    : d(std::make_unique<Private>(passphrase))
{ }

Decryptor::Decryptor(Decryptor &&) noexcept = default;
Decryptor &Decryptor::operator=(Decryptor &&) noexcept = default;
Decryptor::~Decryptor() = default;

Data Decryptor::feed(QByteArrayView data)
{
    if (d->hasHeader())
        return d->feedBody(data);

    // Copies only the missing bytes of the header; the rest of the chunk is not copied.
    const qsizetype missing = std::max<qsizetype>(detail::headerLength - d->buffer.size(), 0);
    if (data.size() < missing) {
        d->buffer.append(data);
        return {};
    }
    d->buffer.append(data.first(missing));
    const Data collected = std::exchange(d->buffer, {});
    d->readHeader(QByteArrayView(collected).first(detail::headerLength));
    const QByteArrayView behindHeader = QByteArrayView(collected).sliced(detail::headerLength);
    if (behindHeader.isEmpty())
        return d->feedBody(data.sliced(missing));
    return d->feedBody(behindHeader.toByteArray().append(data.sliced(missing)));
}

Data Decryptor::finalize()
{
    d->verify();
    return d->engine->finalize();
}

std::optional<Data> detail::finalizeIfWellFormed(Decryptor &decryptor)
{
    decryptor.d->verify();
    return decryptor.d->engine->finalizeIfWellFormed();
}

Data Decryptor::decrypt(QByteArrayView data, QStringView passphrase)
{
    Decryptor decryptor(passphrase);
    Data plaintext = decryptor.feed(data);
    return plaintext.append(decryptor.finalize());
}

detail::CryptorEngine *Decryptor::engine() const
{
    return d->engine.get();
}

void Decryptor::setEngine(std::unique_ptr<detail::CryptorEngine> engine)
{
    d->engine = std::move(engine);
}

detail::HMAC *Decryptor::hmac() const
{
    return d->hmac.get();
}

void Decryptor::setHmac(std::unique_ptr<detail::HMAC> hmac)
{
    d->hmac = std::move(hmac);
}

const Data &Decryptor::buffer() const
{
    return d->buffer;
}

void Decryptor::setBuffer(Data buffer)
{
    d->buffer = std::move(buffer);
}

} // namespace Pellarvine
