// SPDX-License-Identifier: MIT
// Not API: owners of libcrypto's objects, and its algorithms fetched once per process.
#pragma once

#include <QtGlobal>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <memory>

namespace Pellarvine::detail {

template <auto release>
struct Releaser
{
    template <typename Object>
    void operator()(Object *object) const
    {
        release(object);
    }
};

using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, Releaser<EVP_CIPHER_CTX_free>>;
using DigestContext = std::unique_ptr<EVP_MD_CTX, Releaser<EVP_MD_CTX_free>>;
using MacContext = std::unique_ptr<EVP_MAC_CTX, Releaser<EVP_MAC_CTX_free>>;

/// Drops what a failing call leaves in the thread's error queue, which Qt's TLS would otherwise
/// report as its own.
class ErrorQueueGuard
{
public:
    ErrorQueueGuard() { ERR_set_mark(); }
    ~ErrorQueueGuard() { ERR_pop_to_mark(); }
    Q_DISABLE_COPY_MOVE(ErrorQueueGuard)
};

/// The digest of that name, or null. A fetch costs 0.2 µs, so callers keep the result in a static.
/// It is never freed.
EVP_MD *fetchDigest(const char *name, const char *properties = nullptr);

/// AES in CBC mode for a key of 16, 24 or 32 bytes; null for other lengths.
const EVP_CIPHER *aesCbc(qsizetype keyLength);

} // namespace Pellarvine::detail
