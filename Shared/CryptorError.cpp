// SPDX-License-Identifier: MIT
#include "Shared/CryptorError.h"

#include <QCoreApplication>

namespace Pellarvine {

namespace {

struct CryptorErrorMessages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::CryptorError)
};

} // namespace

CryptorError::~CryptorError() = default;

const char *CryptorError::what() const noexcept
{
    switch (m_code) {
    case invalidFileFormat:
        return "not an encrypted container";
    case invalidHMAC:
        return "wrong passphrase or damaged container";
    case truncatedFile:
        return "not an encrypted container, or cut short within its header";
    }
    return "unknown container error";
}

QString CryptorError::localizedDescription() const
{
    switch (m_code) {
    case invalidFileFormat:
        return CryptorErrorMessages::tr("This is not an encrypted container.");
    case invalidHMAC:
        return CryptorErrorMessages::tr("The passphrase is wrong, or the container is damaged.");
    case truncatedFile:
        return CryptorErrorMessages::tr("This is not an encrypted container, or it is cut short.");
    }
    return QString::fromLatin1(what());
}

} // namespace Pellarvine
