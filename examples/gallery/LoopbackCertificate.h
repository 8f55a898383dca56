// SPDX-License-Identifier: MIT
#pragma once

#include <QSslCertificate>
#include <QSslKey>

/// A certificate that lives as long as the program that makes it, for a server on this machine.
struct LoopbackCertificate
{
    QSslCertificate certificate;
    QSslKey key;

    /// Signs itself for `names`, "IP:127.0.0.1,DNS:localhost", and for a day. Both parts are null
    /// if the TLS library refuses.
    static LoopbackCertificate make(const QByteArray &names);
};
