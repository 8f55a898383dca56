// SPDX-License-Identifier: MIT
#pragma once

#include "LoopbackCertificate.h"

#include <QTcpServer>

QT_FORWARD_DECLARE_CLASS(QSslSocket)

/// An HTTPS server on this machine in place of an issue tracker. It is the program's proxy, and
/// answers the requests to all hosts itself.
class LoopbackTracker : public QTcpServer
{
    Q_OBJECT

public:
    /// `host` is the name in the certificate.
    explicit LoopbackTracker(const QString &host, QObject *parent = nullptr);

    /// Starts to listen, and makes this program use it as its proxy and trust its certificate. A
    /// later tracker replaces it. False if one of these fails.
    bool start();

    /// The status of the answers, such as "201 Created". If it is empty, the connection is closed
    /// without an answer.
    void setAnswer(const QByteArray &status) { m_answer = status; }

Q_SIGNALS:
    /// Emitted for each request, with its headers and its body. The blank line between them is left
    /// out.
    void received(const QByteArray &headers, const QByteArray &body);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    void readPlain(QSslSocket *client);
    void readEncrypted(QSslSocket *client);

    LoopbackCertificate m_identity;
    QByteArray m_answer = "201 Created";
};
