// SPDX-License-Identifier: MIT
#include "Shared/CryptorError.h"

namespace Pellarvine {

CryptorError::~CryptorError() = default;

const char *CryptorError::what() const noexcept
{
    switch (m_code) {
    case invalidFileFormat:
        return "not an encrypted container";
    case invalidHMAC:
        return "wrong passphrase or damaged container";
    case truncatedFile:
        return "the container ends within its header";
    }
    return "unknown container error";
}

} // namespace Pellarvine
