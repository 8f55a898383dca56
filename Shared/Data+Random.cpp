// SPDX-License-Identifier: MIT
#include "Base/Failure.h"
#include "Shared/Data+Random.h"
#include "Shared/OpenSSL.h"

#include <openssl/rand.h>

#include <string>

namespace Pellarvine {

Data secureRandomData(qsizetype length)
{
    Data data(std::max<qsizetype>(length, 0), '\0');
    const detail::ErrorQueueGuard guard;
    const int status = RAND_bytes_ex(nullptr, reinterpret_cast<unsigned char *>(data.data()),
                                     std::size_t(data.size()), 0);
    if (status != 1)
        detail::fatalError("Error: could not generate secure random data: "
                           + std::to_string(status));
    return data;
}

} // namespace Pellarvine
