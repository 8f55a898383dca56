// SPDX-License-Identifier: MIT
#include <pellarvine/Shared/ContainerFormat.h>
#include <pellarvine/Shared/CryptorEngine.h>
#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/DelayLine.h>
#include <pellarvine/Shared/HMAC.h>
#include <pellarvine/Shared/KeyGen.h>
#include <pellarvine/Shared/TagComparison.h>

#include <utility>

namespace Pellarvine {

struct Decryptor::Private
{
    std::unique_ptr<CryptorEngine> engine;
    std::unique_ptr<HMAC> hmac;
    detail::Passphrase passphrase;
    DelayLine delayLine { HMAC::tagLength };
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
        const KeyGen::Key cipherKey = KeyGen::generateAES256(passphrase, header.encryptionSalt);
        const KeyGen::Key hmacKey = KeyGen::generateAES256(passphrase, header.hmacSalt);
        hmac = std::make_unique<HMAC>(hmacKey);
        hmac->feed(bytes);
        engine = std::make_unique<CryptorEngine>(CryptorOperation::decrypt, cipherKey, header.iv);
    }

    Data feedBody(QByteArrayView data)
    {
        const DelayLine::Released released = delayLine.release(data);
        const qsizetype length = released.held.size() + released.passing.size();
        Data &output = engine->emptyBuffer(CryptorEngine::outputBound(length));
        char *end = output.data();
        const auto decryptSlice = [&](QByteArrayView slice) {
            hmac->feed(slice);
            end += engine->update(slice, end);
        };
        detail::forEachSlice(released.held, decryptSlice);
        detail::forEachSlice(released.passing, decryptSlice);
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

    // Only what the header lacks is collected; the rest of a chunk is read where it lies.
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
    if (!d->hasHeader())
        throw CryptorError(CryptorError::truncatedFile);
    if (!isEqualComparingAllBytes(d->hmac->finalize(), d->delayLine.buffer()))
        throw CryptorError(CryptorError::invalidHMAC);
    return d->engine->finalize();
}

Data Decryptor::decrypt(QByteArrayView data, QStringView passphrase)
{
    Decryptor decryptor(passphrase);
    Data plaintext = decryptor.feed(data);
    return plaintext.append(decryptor.finalize());
}

CryptorEngine *Decryptor::engine() const
{
    return d->engine.get();
}

void Decryptor::setEngine(std::unique_ptr<CryptorEngine> engine)
{
    d->engine = std::move(engine);
}

HMAC *Decryptor::hmac() const
{
    return d->hmac.get();
}

void Decryptor::setHmac(std::unique_ptr<HMAC> hmac)
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
