// SPDX-License-Identifier: MIT
#pragma once

#include "LoopbackCertificate.h"

#include <QTcpServer>

QT_FORWARD_DECLARE_CLASS(QSslSocket)

/// Stands in for an issue tracker: an HTTPS server on this machine that the program's own requests
/// are led to, whatever host they are meant for. It is a proxy that keeps what it is asked to pass
/// on.
class LoopbackTracker : public QTcpServer
{
    Q_OBJECT

public:
    /// `host` is the name in the certificate.
    explicit LoopbackTracker(const QString &host, QObject *parent = nullptr);

    /// Starts listening, and makes this program use it as its proxy and trust its certificate. The
    /// next tracker takes over from this one. False if one of these cannot be had.
    bool start();

    /// The status that requests are answered with ("201 Created"); if empty, the tracker hangs up.
    void setAnswer(const QByteArray &status) { m_answer = status; }

Q_SIGNALS:
    /// A request has come: its headers and its body, without the blank line between.
    void received(const QByteArray &headers, const QByteArray &body);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    void readPlain(QSslSocket *client);
    void readEncrypted(QSslSocket *client);

    LoopbackCertificate m_identity;
    QByteArray m_answer = "201 Created";
};
