// SPDX-License-Identifier: MIT
#include "Base/Failure.h"
#include "Shared/Data+Hashing.h"
#include "Shared/DeviceTransfer.h"
#include "Shared/OpenSSL.h"
#include "Shared/TransferError.h"

#include <QIODevice>

#include <array>
#include <string>

namespace Pellarvine {

namespace {

constexpr qsizetype pieceLength = 256 * 1024;

struct Algorithm
{
    const char *name;
    qsizetype digestLength;
    // No FIPS module has MD5. Without this property it is found even if FIPS is the default of the
    // process. The other digests follow the default.
    const char *properties = nullptr;
};

constexpr std::array<Algorithm, 6> algorithms { {
        { "MD5", 16, "-fips" },
        { "SHA1", 20 },
        { "SHA2-224", 28 },
        { "SHA2-256", 32 },
        { "SHA2-384", 48 },
        { "SHA2-512", 64 },
} };

const Algorithm &properties(HashingAlgorithm algorithm)
{
    return algorithms.at(std::size_t(algorithm));
}

const EVP_MD *digest(HashingAlgorithm algorithm)
{
    static const auto digests = [] {
        std::array<const EVP_MD *, algorithms.size()> fetched {};
        for (std::size_t i = 0; i < fetched.size(); ++i)
            fetched[i] = detail::fetchDigest(algorithms[i].name, algorithms[i].properties);
        return fetched;
    }();
    const EVP_MD *const found = digests.at(std::size_t(algorithm));
    if (!found)
        detail::fatalError(std::string("Error: no digest ") + properties(algorithm).name);
    return found;
}

// A digest of several pieces. The only error of these calls of libcrypto is lack of memory.
class Hasher
{
public:
    explicit Hasher(HashingAlgorithm algorithm)
        : m_context(EVP_MD_CTX_new())
        , m_length(digestLength(algorithm))
    {
        if (!m_context || EVP_DigestInit_ex2(m_context.get(), digest(algorithm), nullptr) != 1)
            detail::fatalError("Error: could not create digest");
    }

    void feed(QByteArrayView data)
    {
        if (EVP_DigestUpdate(m_context.get(), data.data(), std::size_t(data.size())) != 1)
            detail::fatalError("Error: digest update failed");
    }

    Data finalize()
    {
        Data result(m_length, Qt::Uninitialized);
        if (EVP_DigestFinal_ex(m_context.get(), reinterpret_cast<unsigned char *>(result.data()),
                               nullptr)
            != 1)
            detail::fatalError("Error: digest finalize failed");
        return result;
    }

private:
    detail::DigestContext m_context;
    qsizetype m_length;
};

} // namespace

qsizetype digestLength(HashingAlgorithm algorithm)
{
    return properties(algorithm).digestLength;
}

Data hashed(QByteArrayView data, HashingAlgorithm algorithm)
{
    const detail::ErrorQueueGuard guard;
    Hasher hasher(algorithm);
    hasher.feed(data);
    return hasher.finalize();
}

QString hashedHexString(QByteArrayView data, HashingAlgorithm algorithm)
{
    return QString::fromLatin1(hashed(data, algorithm).toHex());
}

std::optional<Data> hashed(QIODevice &device, HashingAlgorithm algorithm)
{
    const detail::ErrorQueueGuard guard;
    Hasher hasher(algorithm);
    try {
        for (Data piece = detail::readPiece(device, pieceLength); !piece.isEmpty();
             piece = detail::readPiece(device, pieceLength))
            hasher.feed(piece);
        return hasher.finalize();
    } catch (const TransferError &) {
        return std::nullopt;
    }
}

} // namespace Pellarvine
