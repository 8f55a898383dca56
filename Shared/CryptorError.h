// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QHashFunctions>
#include <QString>

#include <exception>
#include <functional>

namespace Pellarvine {

/// Thrown by `Decryptor` and `open()` for bytes that are not a container, for a wrong passphrase
/// and for a damaged container:
///
///     try {
///         label->setText(QString::fromUtf8(Pellarvine::Decryptor::decrypt(contents, passphrase)));
///     } catch (const Pellarvine::CryptorError &error) {
///         label->setText(error.localizedDescription());
///     }
///
/// A plain value: it may be copied and passed to another thread.
class PELLARVINE_EXPORT CryptorError : public std::exception
{
public:
    /// The kind of failure.
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

    Code code() const noexcept { return m_code; } ///< the kind of failure

    /// A sentence for people, in Qt's language where installTranslations() knows it.
    QString localizedDescription() const;

    /// One untranslated sentence for logs.
    const char *what() const noexcept override;

    /// Whether the codes are equal.
    friend bool operator==(const CryptorError &first, const CryptorError &second) noexcept
    {
        return first.m_code == second.m_code;
    }
    /// The hash of the code, for QHash. std::hash is specialised, too.
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
