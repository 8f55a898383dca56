// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>

#include <exception>

namespace Pellarvine {

/// Thrown by `seal()` and `open()` if a device fails or the caller stops the transfer:
///
///     try {
///         Pellarvine::seal(in, out, passphrase, transfer);
///     } catch (const Pellarvine::TransferError &error) {
///         if (error.code() != Pellarvine::TransferError::cancelled)
///             label->setText(error.localizedDescription());
///     }
///
/// A container that cannot be opened is a `CryptorError`. The error holds texts only: it may
/// outlive the devices, and be passed to another thread.
class PELLARVINE_EXPORT TransferError : public std::exception
{
public:
    /// The reason why the transfer ended.
    enum Code {
        readFailed, ///< the source reports an error
        writeFailed, ///< the target reports an error, such as a full disk
        cancelled, ///< the caller has requested a stop
    };

    /// `description` is a sentence for people, usually the device's own.
    TransferError(Code code, const QString &description);
    ~TransferError() override;

    Code code() const noexcept { return m_code; } ///< the reason
    /// A sentence for people.
    QString localizedDescription() const { return m_description; }
    /// The description as UTF-8.
    const char *what() const noexcept override;

private:
    Code m_code;
    QString m_description;
    QByteArray m_utf8;
};

} // namespace Pellarvine
