// SPDX-License-Identifier: MIT
// Arbitrary bytes in arbitrary chunks through Decryptor. The first byte of the input chooses the
// chunks, and whether the header is read as well; the rest is the container.
#include "Shared/CryptorEngine.h"
#include "Shared/HMAC.h"

#include <pellarvine/Shared/Decryptor.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <variant>

using namespace Qt::StringLiterals;
using namespace Pellarvine;
using namespace Pellarvine::detail;

namespace {

using Outcome = std::variant<Data, CryptorError::Code>;

template <typename NextLength>
Outcome read(Decryptor decryptor, QByteArrayView container, NextLength nextLength)
{
    Data plaintext;
    try {
        while (!container.isEmpty()) {
            const qsizetype length = std::min(nextLength(), container.size());
            plaintext += decryptor.feed(container.first(length));
            container = container.sliced(length);
        }
        return plaintext += decryptor.finalize();
    } catch (const CryptorError &error) {
        return error.code();
    }
}

// Deriving keys takes milliseconds, so most inputs go to a reader that is past its header.
Decryptor makeStreaming()
{
    static const Data key(32, 'k');
    Decryptor decryptor(u""_s);
    decryptor.setEngine(
            std::make_unique<CryptorEngine>(CryptorOperation::decrypt, key, Data(16, 'i')));
    decryptor.setHmac(std::make_unique<HMAC>(key));
    return decryptor;
}

void compare(Decryptor (*make)(), QByteArrayView container, unsigned seed)
{
    std::minstd_rand random(seed + 1);
    const Outcome chunked = read(make(), container, [&] { return qsizetype(random() % 70); });
    const Outcome whole = read(make(), container, [&] { return container.size(); });
    if (chunked != whole)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArrayView container(data + 1, qsizetype(size) - 1);
    compare(&makeStreaming, container, data[0]);
    if (data[0] < 16)
        compare([] { return Decryptor(u"fuzz"_s); }, container, data[0]);
    // Enough of it in one feed for the cipher and the tag to take a thread each.
    if (data[0] >= 248 && !container.isEmpty())
        compare(&makeStreaming, container.toByteArray().repeated(1 + 262144 / container.size()),
                data[0]);
    return 0;
}
