// SPDX-License-Identifier: MIT
#include "Shared/HMAC.h"

#include "Base/Failure.h"

#include <openssl/core_names.h>
#include <openssl/params.h>

namespace Pellarvine::detail {

namespace {

// A context with a digest and without a key. Copying it is cheaper than a new one, which looks up
// SHA-256 by name.
MacContext makePrototype()
{
    MacContext context;
    if (EVP_MAC *const mac = EVP_MAC_fetch(nullptr, "HMAC", nullptr)) {
        context.reset(EVP_MAC_CTX_new(mac));
        EVP_MAC_free(mac);
    }
    char digest[] = "SHA2-256";
    const OSSL_PARAM parameters[] = {
        OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, digest, 0),
        OSSL_PARAM_construct_end(),
    };
    if (!context || EVP_MAC_CTX_set_params(context.get(), parameters) != 1)
        fatalError("Error: could not create HMAC");
    return context;
}

} // namespace

HMAC::HMAC(QByteArrayView key)
{
    const ErrorQueueGuard guard;
    // Never destroyed, for objects that are made after main().
    static const EVP_MAC_CTX *const prototype = makePrototype().release();
    m_context.reset(EVP_MAC_CTX_dup(prototype));
    // A null key pointer means "keep the old key", also with length 0.
    const char *const bytes = key.isEmpty() ? "" : key.data();
    if (!m_context
        || EVP_MAC_init(m_context.get(), reinterpret_cast<const unsigned char *>(bytes),
                        std::size_t(key.size()), nullptr)
                   != 1)
        fatalError("Error: could not create HMAC");
}

void HMAC::feed(QByteArrayView data)
{
    if (data.isEmpty())
        return;
    if (EVP_MAC_update(m_context.get(), reinterpret_cast<const unsigned char *>(data.data()),
                       std::size_t(data.size()))
        != 1)
        fatalError("Error: HMAC update failed");
}

Data HMAC::finalize()
{
    const ErrorQueueGuard guard;
    Data tag(tagLength, Qt::Uninitialized);
    std::size_t length = 0;
    if (EVP_MAC_final(m_context.get(), reinterpret_cast<unsigned char *>(tag.data()), &length,
                      std::size_t(tag.size()))
                != 1
        || length != std::size_t(tagLength))
        fatalError("Error: HMAC finalize failed");
    return tag;
}

} // namespace Pellarvine::detail
