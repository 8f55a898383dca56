// SPDX-License-Identifier: MIT
#include "Shared/KeyGen.h"

#include "Base/Failure.h"
#include "Shared/OpenSSL.h"

#include <algorithm>
#include <string>

namespace Pellarvine::detail {

namespace {

constexpr qsizetype blockLength = 64; // SHA-1's block
constexpr qsizetype hashLength = 20; // SHA-1's digest
using Block = SecretArray<blockLength>;
using Hash = SecretArray<hashLength>;

void check(int status)
{
    if (status != 1)
        fatalError("Error: Secure key generation failed! (" + std::to_string(status) + ")");
}

DigestContext newContext()
{
    DigestContext context(EVP_MD_CTX_new());
    check(context ? 1 : 0);
    return context;
}

// HMAC-SHA1 with one key. The padded key is hashed once and the state is copied for each message,
// which makes the 10000 rounds a third faster.
class KeyedHash
{
public:
    explicit KeyedHash(QByteArrayView key)
        : m_inner(newContext())
        , m_outer(newContext())
        , m_running(newContext())
    {
        static const EVP_MD *const sha1 = fetchDigest("SHA1");
        check(sha1 ? 1 : 0);
        Block padded;
        if (key.size() > blockLength) {
            check(EVP_Digest(key.data(), std::size_t(key.size()), padded.data(), nullptr, sha1,
                             nullptr));
        } else {
            std::copy(key.begin(), key.end(), padded.data());
        }
        start(m_inner.get(), sha1, padded, 0x36);
        start(m_outer.get(), sha1, padded, 0x5c);
    }

    void begin() { check(EVP_MD_CTX_copy_ex(m_running.get(), m_inner.get())); }
    void feed(QByteArrayView data)
    {
        check(EVP_DigestUpdate(m_running.get(), data.data(), std::size_t(data.size())));
    }
    void finish(Hash &hash)
    {
        check(EVP_DigestFinal_ex(m_running.get(), hash.data(), nullptr));
        check(EVP_MD_CTX_copy_ex(m_running.get(), m_outer.get()));
        feed(hash);
        check(EVP_DigestFinal_ex(m_running.get(), hash.data(), nullptr));
    }

private:
    static void start(EVP_MD_CTX *context, const EVP_MD *digest, const Block &key,
                      unsigned char padding)
    {
        Block block;
        std::transform(key.data(), key.data() + blockLength, block.data(),
                       [=](unsigned char byte) { return byte ^ padding; });
        check(EVP_DigestInit_ex2(context, digest, nullptr));
        check(EVP_DigestUpdate(context, block.data(), std::size_t(blockLength)));
    }

    DigestContext m_inner;
    DigestContext m_outer;
    DigestContext m_running;
};

} // namespace

KeyGen::Key KeyGen::generateAES256(QByteArrayView passphrase, QByteArrayView salt)
{
    const ErrorQueueGuard guard;
    KeyedHash keyedHash(passphrase);
    Key key;
    Hash hash;
    Hash sum;
    char blockNumber = 0;
    for (qsizetype filled = 0; filled < Key::size(); filled += hashLength) {
        ++blockNumber;
        const char bigEndianNumber[] = { 0, 0, 0, blockNumber };
        keyedHash.begin();
        keyedHash.feed(salt);
        keyedHash.feed({ bigEndianNumber, sizeof bigEndianNumber });
        keyedHash.finish(hash);
        std::copy_n(hash.data(), hashLength, sum.data());
        for (int round = 1; round < rounds; ++round) {
            keyedHash.begin();
            keyedHash.feed(hash);
            keyedHash.finish(hash);
            for (qsizetype i = 0; i < hashLength; ++i)
                sum.data()[i] ^= hash.data()[i];
        }
        std::copy_n(sum.data(), std::min(hashLength, Key::size() - filled), key.data() + filled);
    }
    return key;
}

} // namespace Pellarvine::detail
