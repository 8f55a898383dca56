// SPDX-License-Identifier: MIT
#include "LoopbackServer.h"

#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslServer>

using namespace Qt::StringLiterals;

namespace {

// The length of the request at the front of `bytes`, or -1 if it is not complete.
qsizetype requestLength(const QByteArray &bytes)
{
    const qsizetype headers = bytes.indexOf("\r\n\r\n");
    if (headers < 0)
        return -1;
    qsizetype length = headers + 4;
    const QByteArray lowered = bytes.left(headers).toLower();
    const QByteArray name = "\r\ncontent-length:";
    const qsizetype start = lowered.indexOf(name);
    if (start >= 0) {
        const qsizetype value = start + name.size();
        const qsizetype end = lowered.indexOf("\r\n", value);
        length += lowered.mid(value, end < 0 ? -1 : end - value).trimmed().toLongLong();
    }
    return bytes.size() < length ? -1 : length;
}

} // namespace

LoopbackServer::Reaction LoopbackServer::answer(const QByteArray &status, const QByteArray &headers,
                                                const QByteArray &body)
{
    return [=](QSslSocket &client, const QByteArray &) {
        client.write("HTTP/1.1 " + status + "\r\n" + headers
                     + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    };
}

LoopbackServer::LoopbackServer(Reaction reaction, const QByteArray &certificateNames)
    : m_reaction(std::move(reaction))
    , m_identity(LoopbackCertificate::make(certificateNames))
{
    auto *const server = new QSslServer;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(m_identity.certificate);
    configuration.setPrivateKey(m_identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    server->setSslConfiguration(configuration);
    server->setMaxPendingConnections(200);
    server->setListenBacklogSize(200);
    QObject::connect(server, &QTcpServer::pendingConnectionAvailable, server, [this, server] {
        while (auto *const client = qobject_cast<QSslSocket *>(server->nextPendingConnection()))
            accept(client);
    });
    server->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, server, &QObject::deleteLater);
    m_thread.start();
    QMetaObject::invokeMethod(
            server,
            [this, server] {
                if (server->listen(QHostAddress::LocalHost))
                    m_port = server->serverPort();
            },
            Qt::BlockingQueuedConnection);
}

LoopbackServer::~LoopbackServer()
{
    m_thread.quit();
    m_thread.wait();
}

QString LoopbackServer::baseUrl() const
{
    return u"https://127.0.0.1:%1/"_s.arg(m_port);
}

QList<QByteArray> LoopbackServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

void LoopbackServer::accept(QSslSocket *client)
{
    QObject::connect(client, &QAbstractSocket::disconnected, client, &QObject::deleteLater);
    QObject::connect(client, &QIODevice::readyRead, client,
                     [this, client, received = QByteArray()]() mutable {
                         received += client->readAll();
                         for (qsizetype length = requestLength(received); length >= 0;
                              length = requestLength(received)) {
                             const QByteArray request = received.left(length);
                             received.remove(0, length);
                             {
                                 const std::lock_guard lock(m_mutex);
                                 m_requests.append(request);
                             }
                             m_reaction(*client, request);
                         }
                     });
}
