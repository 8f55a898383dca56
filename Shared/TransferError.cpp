// SPDX-License-Identifier: MIT
#include "Shared/TransferError.h"

namespace Pellarvine {

TransferError::TransferError(Code code, const QString &description)
    : m_code(code)
    , m_description(description)
    , m_utf8(description.toUtf8())
{ }

TransferError::~TransferError() = default;

const char *TransferError::what() const noexcept
{
    return m_utf8.constData();
}

} // namespace Pellarvine
