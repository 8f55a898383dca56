// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QHashFunctions>
#include <QString>

#include <exception>
#include <functional>

namespace Pellarvine {

/// What `Decryptor` throws: the one exception of the library for bad input data.
class PELLARVINE_EXPORT CryptorError : public std::exception
{
public:
    /// What is wrong with the data.
    enum Code {
        invalidFileFormat, ///< the first four bytes are not a container's
        invalidHMAC, ///< a wrong passphrase, or a damaged or shortened container
        truncatedFile, ///< the 36-byte header never came
    };

    /// Implicit, so that a code can be thrown and compared as what it is.
    CryptorError(Code code) noexcept // NOLINT(google-explicit-constructor)
        : m_code(code)
    { }
    ~CryptorError() override;

    Code code() const noexcept { return m_code; } ///< as it was made

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
