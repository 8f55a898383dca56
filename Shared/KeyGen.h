// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Shared/Secret.h"

#include <QByteArrayView>

namespace Pellarvine::detail {

/// Turns a passphrase and a salt into a key.
struct KeyGen
{
    using Key = SecretArray<32>;

    static constexpr int rounds = 10000;

    /// PBKDF2 (RFC 8018) with HMAC-SHA1 and 10000 rounds over the passphrase's UTF-8 bytes, and a
    /// salt of any length; slow by design. Failure stops the process with
    /// "Error: Secure key generation failed! (" and the status.
    PELLARVINE_INTERNAL_EXPORT static Key generateAES256(QByteArrayView passphrase,
                                                         QByteArrayView salt);
};

} // namespace Pellarvine::detail
