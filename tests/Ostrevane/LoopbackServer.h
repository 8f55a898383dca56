// SPDX-License-Identifier: MIT
#pragma once

#include "LoopbackCertificate.h"

#include <QByteArray>
#include <QList>
#include <QSslSocket>
#include <QString>
#include <QThread>

#include <functional>
#include <mutex>

/// An HTTPS server on 127.0.0.1, with a certificate and a thread of its own: a test may block.
class LoopbackServer
{
public:
    /// Called with each complete request, on the server's thread.
    using Reaction = std::function<void(QSslSocket &client, const QByteArray &request)>;

    /// Answers with a status such as "201 Created", more headers and a body.
    static Reaction answer(const QByteArray &status, const QByteArray &headers = {},
                           const QByteArray &body = "<ticket/>");

    explicit LoopbackServer(Reaction reaction = answer("201 Created"),
                            const QByteArray &certificateNames = "IP:127.0.0.1");
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    /// "https://127.0.0.1:PORT/"
    QString baseUrl() const;
    const QSslCertificate &certificate() const { return m_identity.certificate; }

    /// Every request so far as it was received, headers and body.
    QList<QByteArray> requests() const;

private:
    void accept(QSslSocket *client);

    Reaction m_reaction;
    LoopbackCertificate m_identity;
    QThread m_thread;
    quint16 m_port = 0;
    mutable std::mutex m_mutex; // guards the requests
    QList<QByteArray> m_requests;
};
