// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QHashFunctions>
#include <QString>

#include <exception>
#include <functional>

namespace Pellarvine {

/// Thrown by `Decryptor` and `open()` for bytes that are no container, a wrong passphrase or a
/// damaged container:
///
///     try {
///         label->setText(QString::fromUtf8(Pellarvine::Decryptor::decrypt(contents, passphrase)));
///     } catch (const Pellarvine::CryptorError &error) {
///         label->setText(error.localizedDescription());
///     }
class PELLARVINE_EXPORT CryptorError : public std::exception
{
public:
    /// What is wrong with the data.
    enum Code {
        invalidFileFormat, ///< the first four bytes are not those of a container
        invalidHMAC, ///< a wrong passphrase, or a damaged or shortened container
        truncatedFile, ///< there are fewer bytes than the 36 of the header
    };

    /// Implicit, so that a code can be thrown and compared directly.
    CryptorError(Code code) noexcept // NOLINT(google-explicit-constructor)
        : m_code(code)
    { }
    ~CryptorError() override;

    Code code() const noexcept { return m_code; } ///< the code that was thrown

    /// A sentence for people, in Qt's language where installTranslations() knows it.
    QString localizedDescription() const;

    /// One untranslated sentence for logs.
    const char *what() const noexcept override;

    /// The same code.
    friend bool operator==(const CryptorError &first, const CryptorError &second) noexcept
    {
        return first.m_code == second.m_code;
    }
    /// Of the code, for QHash and, below, for the standard library.
    friend size_t qHash(const CryptorError &error, size_t seed = 0) noexcept
    {
        return ::qHash(int(error.m_code), seed);
    }

private:
    Code m_code;
};

} // namespace Pellarvine

/// @cond internal
template <>
struct std::hash<Pellarvine::CryptorError>
{
    std::size_t operator()(const Pellarvine::CryptorError &error) const noexcept
    {
        return qHash(error);
    }
};
/// @endcond
