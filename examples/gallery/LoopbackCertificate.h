// SPDX-License-Identifier: MIT
#pragma once

#include <QSslCertificate>
#include <QSslKey>

/// A self-signed certificate for a server on this machine.
struct LoopbackCertificate
{
    QSslCertificate certificate;
    QSslKey key;

    /// Makes a certificate for `names`, such as "IP:127.0.0.1,DNS:localhost", that is valid for a
    /// day. Certificate and key are null if the TLS library fails.
    static LoopbackCertificate make(const QByteArray &names);
};
