// SPDX-License-Identifier: MIT
#include "Shared/TagComparison.h"

namespace Pellarvine::detail {

// Not CRYPTO_memcmp, which compares equal lengths only: a caller would return early for another
// length.
bool isEqualComparingAllBytes(QByteArrayView trusted, QByteArrayView untrusted)
{
    Q_ASSERT(!trusted.isEmpty());
    unsigned char difference = trusted.size() == untrusted.size() ? 0 : 1;
    for (qsizetype i = 0; i < untrusted.size(); ++i)
        difference |= static_cast<unsigned char>(untrusted[i] ^ trusted[i % trusted.size()]);
    return difference == 0;
}

} // namespace Pellarvine::detail
