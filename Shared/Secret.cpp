// SPDX-License-Identifier: MIT
#include "Shared/Secret.h"

#include "Base/Failure.h"

#include <QStringEncoder>

namespace Pellarvine::detail {

Passphrase::Passphrase(QStringView text)
{
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const qsizetype capacity = encoder.requiredSpace(text.size()) + 1; // never a null block
    m_bytes = { static_cast<char *>(OPENSSL_malloc(std::size_t(capacity))), Wiper { capacity } };
    if (!m_bytes)
        fatalError("Error: out of memory");
    m_size = encoder.appendToBuffer(m_bytes.get(), text) - m_bytes.get();
    if (encoder.hasError())
        fatalError("Error: the passphrase is not valid text");
}

} // namespace Pellarvine::detail
