// SPDX-License-Identifier: MIT
// Not API: bytes that the destructor wipes. QByteArray is not suitable: it shares and
// detaches its data, which leaves copies.
#pragma once

#include "Base/Global.h"

#include <QByteArrayView>
#include <QStringView>
#include <openssl/crypto.h>

#include <array>
#include <cstddef>
#include <memory>

namespace Pellarvine::detail {

/// A fixed number of secret bytes, initially zero. A move wipes the source, and the destructor
/// wipes the bytes.
template <std::size_t length>
class SecretArray
{
public:
    SecretArray() = default;
    SecretArray(SecretArray &&other) noexcept
        : m_bytes(other.m_bytes)
    {
        other.wipe();
    }
    SecretArray &operator=(SecretArray &&other) noexcept
    {
        if (this != &other) {
            m_bytes = other.m_bytes;
            other.wipe();
        }
        return *this;
    }
    SecretArray(const SecretArray &) = delete;
    SecretArray &operator=(const SecretArray &) = delete;
    ~SecretArray() { wipe(); }

    unsigned char *data() { return m_bytes.data(); }
    const unsigned char *data() const { return m_bytes.data(); }
    static constexpr qsizetype size() { return qsizetype(length); }
    operator QByteArrayView() const { return { m_bytes.data(), size() }; }

private:
    void wipe() { OPENSSL_cleanse(m_bytes.data(), length); }

    std::array<unsigned char, length> m_bytes {};
};

/// A passphrase as its UTF-8 bytes: no terminating zero, no normalisation.
class PELLARVINE_INTERNAL_EXPORT Passphrase
{
public:
    /// Stops the process if the text is not valid UTF-16 (an unpaired surrogate), which has no
    /// UTF-8 form.
    explicit Passphrase(QStringView text);
    Passphrase(Passphrase &&) noexcept = default;
    Passphrase &operator=(Passphrase &&) noexcept = default;

    operator QByteArrayView() const { return { m_bytes.get(), m_size }; }

private:
    struct Wiper
    {
        qsizetype capacity;
        void operator()(char *bytes) const { OPENSSL_clear_free(bytes, std::size_t(capacity)); }
    };

    std::unique_ptr<char, Wiper> m_bytes;
    qsizetype m_size = 0;
};

} // namespace Pellarvine::detail
