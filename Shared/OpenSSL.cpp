// SPDX-License-Identifier: MIT
#include "Shared/OpenSSL.h"

namespace Pellarvine::detail {

namespace {

EVP_CIPHER *fetchCipher(const char *name)
{
    const ErrorQueueGuard guard;
    return EVP_CIPHER_fetch(nullptr, name, nullptr);
}

} // namespace

EVP_MD *fetchDigest(const char *name, const char *properties)
{
    const ErrorQueueGuard guard;
    return EVP_MD_fetch(nullptr, name, properties);
}

const EVP_CIPHER *aesCbc(qsizetype keyLength)
{
    switch (keyLength) {
    case 16: {
        static const EVP_CIPHER *const aes128 = fetchCipher("AES-128-CBC");
        return aes128;
    }
    case 24: {
        static const EVP_CIPHER *const aes192 = fetchCipher("AES-192-CBC");
        return aes192;
    }
    case 32: {
        static const EVP_CIPHER *const aes256 = fetchCipher("AES-256-CBC");
        return aes256;
    }
    default:
        return nullptr;
    }
}

} // namespace Pellarvine::detail
