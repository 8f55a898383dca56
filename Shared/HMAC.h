// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Shared/OpenSSL.h"

#include <QByteArrayView>

namespace Pellarvine::detail {

/// An HMAC-SHA256 tag (RFC 2104) over a stream: keyed once, fed any number of times, finalised
/// once. libcrypto wipes the key with the context.
class PELLARVINE_INTERNAL_EXPORT HMAC
{
public:
    static constexpr qsizetype tagLength = 32;

    /// The key may have any length, also 0. HMAC does not distinguish a key of up to 64 bytes from
    /// the same key with zero bytes appended.
    explicit HMAC(QByteArrayView key);

    void feed(QByteArrayView data);

    /// The 32-byte tag.
    Data finalize();

private:
    MacContext m_context;
};

} // namespace Pellarvine::detail
