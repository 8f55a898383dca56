// SPDX-License-Identifier: MIT
#include "LoopbackTracker.h"

#include <QNetworkProxy>
#include <QRegularExpression>
#include <QSslConfiguration>
#include <QSslSocket>

using namespace Qt::StringLiterals;

namespace {

const QByteArray blankLine = "\r\n\r\n";

// The length of the body according to the header. 0 without a header.
qsizetype bodyLength(const QByteArray &headers)
{
    static const QRegularExpression length(u"^content-length: *([0-9]+)"_s,
                                           QRegularExpression::CaseInsensitiveOption
                                                   | QRegularExpression::MultilineOption);
    return length.match(QString::fromLatin1(headers)).captured(1).toLongLong();
}

} // namespace

LoopbackTracker::LoopbackTracker(const QString &host, QObject *parent)
    : QTcpServer(parent)
    , m_identity(LoopbackCertificate::make("DNS:" + host.toLatin1()))
{ }

bool LoopbackTracker::start()
{
    if (m_identity.certificate.isNull() || !listen(QHostAddress::LocalHost))
        return false;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({ m_identity.certificate });
    QSslConfiguration::setDefaultConfiguration(configuration);
    QNetworkProxy::setApplicationProxy(
            { QNetworkProxy::HttpProxy, serverAddress().toString(), serverPort() });
    return true;
}

void LoopbackTracker::incomingConnection(qintptr descriptor)
{
    auto *const client = new QSslSocket(this);
    client->setSocketDescriptor(descriptor);
    QSslConfiguration configuration = client->sslConfiguration();
    configuration.setLocalCertificate(m_identity.certificate);
    configuration.setPrivateKey(m_identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    client->setSslConfiguration(configuration);
    connect(client, &QAbstractSocket::disconnected, client, &QObject::deleteLater);
    connect(client, &QIODevice::readyRead, this, [this, client] {
        if (client->isEncrypted())
            readEncrypted(client);
        else if (client->mode() == QSslSocket::UnencryptedMode)
            readPlain(client);
    });
}

// The request to a proxy, which names the host. The client then speaks TLS with that host.
void LoopbackTracker::readPlain(QSslSocket *client)
{
    if (!client->peek(client->bytesAvailable()).endsWith(blankLine))
        return;
    if (!client->readAll().startsWith("CONNECT "))
        return client->abort();
    client->write("HTTP/1.1 200 Connection established\r\n\r\n");
    client->startServerEncryption();
}

void LoopbackTracker::readEncrypted(QSslSocket *client)
{
    const QByteArray bytes = client->peek(client->bytesAvailable());
    const qsizetype end = bytes.indexOf(blankLine);
    const qsizetype start = end + blankLine.size();
    if (end < 0 || bytes.size() < start + bodyLength(bytes.left(end)))
        return;
    client->readAll();
    Q_EMIT received(bytes.left(end), bytes.mid(start));
    if (!m_answer.isEmpty())
        client->write("HTTP/1.1 " + m_answer
                      + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    client->disconnectFromHost();
}
