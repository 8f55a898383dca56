// SPDX-License-Identifier: MIT
#include "Inbox.h"
#include "LoopbackServer.h"
#include "Network/NSURLSession.h"
#include "Ostrevane/TicketRequest.h"

#include <QFile>
#include <QLoggingCategory>
#include <QNetworkProxy>
#include <QScopeGuard>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;
using ::testing::Not;

namespace Pellarvine {

namespace {

// The default account, joined and encoded by the base64 command.
constexpr auto authorization =
        "YnJlbmhhdy90b2xsbWFyazo3YzFlOTBiNGQyNWE4M2Y2ZTBiOWM0YTdkMTNmNThlMmI2"
        "YTA5ZDQ3";
constexpr auto apiKey = "7c1e90b4d25a83f6e0b9c4a7d13f58e2b6a09d47";

void trust(const QSslCertificate &certificate)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({ certificate });
    QSslConfiguration::setDefaultConfiguration(configuration);
}

LoopbackServer::Reaction saying(const QByteArray &bytes)
{
    return [bytes](QSslSocket &client, const QByteArray &) {
        client.write(bytes);
        client.disconnectFromHost();
    };
}

std::optional<NS::URLError::Code> codeOf(const std::optional<NS::URLError> &error)
{
    return error ? std::optional(error->code) : std::nullopt;
}

QString addressOfPort(quint16 port)
{
    return u"https://127.0.0.1:%1/"_s.arg(port);
}

QString addressThatRefuses()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return addressOfPort(server.serverPort());
}

// The name is too long for DNS, so the lookup fails without a name server.
QString addressWithoutHost()
{
    const QString label(60, u'x');
    return u"https://%1.%1.%1.%1.%1.invalid/"_s.arg(label);
}

} // namespace

class TicketTransfer : public ::testing::Test
{
public:
    TicketTransfer()
    {
        // Ignores the proxy of the machine, which could not reach the test's server.
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    }
    ~TicketTransfer() override
    {
        QSslConfiguration::setDefaultConfiguration(m_configuration);
        QNetworkProxy::setApplicationProxy(QNetworkProxy::DefaultProxy);
    }

    // Posts one ticket to that address. Returns the error.
    std::optional<NS::URLError> post(const QString &baseUrl,
                                     const CodebaseTicket &ticket = { u"Crash"_s, u"Twice"_s })
    {
        const Inbox inbox;
        detail::TicketRequest(ticket, baseUrl).send(inbox.callback());
        const QList<Inbox::Call> calls = inbox.waitFor(1);
        EXPECT_EQ(calls.size(), 1);
        return calls.isEmpty() ? NS::URLError() : calls.constFirst().error;
    }

private:
    QSslConfiguration m_configuration = QSslConfiguration::defaultConfiguration();
};

TEST_F(TicketTransfer, the_server_receives_one_post_with_each_header_once)
{
    const LoopbackServer server;
    trust(server.certificate());
    const CodebaseTicket ticket(u"<b> & \"]]>\" \U0001F41E"_s, u"Line one\nLine two"_s);
    EXPECT_EQ(post(server.baseUrl(), ticket), std::nullopt);

    ASSERT_EQ(server.requests().size(), 1);
    const QByteArray request = server.requests().constFirst();
    const qsizetype headerLength = request.indexOf("\r\n\r\n");
    QByteArrayList lines = request.left(headerLength).split('\n');
    EXPECT_EQ(lines.takeFirst().trimmed(), "POST /pellarvine-sample-project/tickets HTTP/1.1");
    QMultiMap<QByteArray, QByteArray> headers;
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    const QByteArray body = request.mid(headerLength + 4);
    EXPECT_EQ(headers.values("host"),
              QByteArrayList { server.baseUrl().mid(8).chopped(1).toUtf8() });
    EXPECT_EQ(headers.values("accept"), QByteArrayList { "application/xml" });
    EXPECT_EQ(headers.values("content-type"), QByteArrayList { "application/xml" });
    EXPECT_EQ(headers.values("content-length"), QByteArrayList { QByteArray::number(body.size()) });
    EXPECT_EQ(headers.values("authorization"),
              QByteArrayList { QByteArray("Basic ") + authorization });
    EXPECT_EQ(headers.values("accept-encoding"), QByteArrayList { "identity" });
    EXPECT_EQ(headers.values("user-agent").value(0).split('/').size(), 2);
    EXPECT_FALSE(headers.contains("cookie"));
    EXPECT_EQ(headers.size(), headers.uniqueKeys().size());
    EXPECT_EQ(body, QString::fromUtf8(
                            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ticket><summary>&lt;b&gt; "
                            "&amp; &quot;]]&gt;&quot; \U0001F41E</summary><description>Line one\n"
                            "Line two</description></ticket>\n")
                            .toUtf8());
}

TEST_F(TicketTransfer, is_an_error_without_a_tracker)
{
    const Inbox inbox;
    CodebaseTicket(u"Crash"_s, u"Twice"_s).post(inbox.callback());
    const QList<Inbox::Call> calls = inbox.waitFor(1);
    ASSERT_EQ(calls.size(), 1);
    ASSERT_TRUE(calls[0].error);
    EXPECT_EQ(calls[0].error->code, NS::URLError::badURL);
    EXPECT_NE(calls[0].thread, QThread::currentThread());
}

TEST_F(TicketTransfer, goes_to_the_tracker_that_the_program_has_set)
{
    const auto reset = qScopeGuard([] { CodebaseTicket::setTracker({}, {}); });
    {
        const LoopbackServer server;
        trust(server.certificate());
        CodebaseTicket::setTracker(server.baseUrl(), u"mail"_s);
        const Inbox inbox;
        CodebaseTicket(u"Crash"_s, u"Twice"_s).post(inbox.callback());
        EXPECT_EQ(inbox.waitFor(1).value(0).error, std::nullopt);
        ASSERT_EQ(server.requests().size(), 1);
        EXPECT_TRUE(server.requests()[0].startsWith("POST /mail/tickets HTTP/1.1"));
    }
    CodebaseTicket::setTracker(u"https://api.tracker.example/"_s, u"mail"_s);
    // The address must not be looked up: the proxy gets the host's name.
    QTcpServer proxy;
    ASSERT_TRUE(proxy.listen(QHostAddress::LocalHost));
    QNetworkProxy::setApplicationProxy(
            { QNetworkProxy::HttpProxy, u"127.0.0.1"_s, proxy.serverPort() });
    const Inbox inbox;
    CodebaseTicket(u"Crash"_s, u"Twice"_s).post(inbox.callback());
    ASSERT_TRUE(proxy.waitForNewConnection(30'000));
    QTcpSocket *const client = proxy.nextPendingConnection();
    ASSERT_TRUE(client->waitForReadyRead(30'000));
    EXPECT_EQ(client->readLine(), "CONNECT api.tracker.example:443 HTTP/1.1\r\n");
    EXPECT_THAT(client->readAll().toStdString(), Not(HasSubstr(authorization)));
    client->write("HTTP/1.1 407 Proxy Authentication Required\r\n"
                  "Proxy-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n\r\n");
    ASSERT_TRUE(client->waitForBytesWritten(30'000));
    EXPECT_EQ(codeOf(inbox.waitFor(1).value(0).error), NS::URLError::cannotConnectToHost);
}

TEST_F(TicketTransfer, a_complete_answer_is_no_error_whatever_it_says)
{
    const QList<QPair<QByteArray, QByteArray>> answers {
        { "200 OK", {} },
        { "201 Created", {} },
        { "304 Not Modified", {} },
        { "302 Found", {} }, // without a Location header
        { "400 Bad Request", {} },
        { "401 Unauthorized", {} },
        { "401 Unauthorized", "WWW-Authenticate: Basic realm=\"tracker\"\r\n" },
        { "401 Unauthorized", "WWW-Authenticate: NTLM\r\n" },
        { "401 Unauthorized", "WWW-Authenticate: NTLM\r\nWWW-Authenticate: Basic realm=\"x\"\r\n" },
        { "401 Unauthorized", "WWW-Authenticate: Negotiate\r\nWWW-Authenticate: NTLM\r\n" },
        { "403 Forbidden", {} },
        { "200 OK", "Content-Encoding: gzip\r\n" }, // the body is not compressed
        { "404 Not Found", {} },
        { "407 Proxy Authentication Required", {} },
        { "422 Unprocessable Entity", {} },
        { "500 Internal Server Error", {} },
        { "503 Service Unavailable", {} },
    };
    for (const auto &[status, headers] : answers) {
        SCOPED_TRACE((status + ' ' + headers).constData());
        const LoopbackServer server(LoopbackServer::answer(status, headers));
        trust(server.certificate());
        EXPECT_EQ(post(server.baseUrl()), std::nullopt);
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST_F(TicketTransfer, a_server_that_hangs_up_is_an_error_and_sees_the_ticket_once)
{
    const QByteArrayList answers {
        "",
        "HTTP/1.1 20",
        "HTTP/1.1 201 Created\r\nContent-Le",
        "HTTP/1.1 201 Created\r\nContent-Length: 10\r\n\r\n<tick",
        "HTTP/1.1 500 Internal Server Error\r\nContent-Length: 10\r\n\r\n<tick",
        ("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\n"
         "Content-Length: 10\r\n\r\n<tick"),
        "HTTP/1.1 201 Created\r\nTransfer-Encoding: chunked\r\n\r\n9\r\n<tick",
        "this is not HTTP\r\n\r\n",
    };
    for (const QByteArray &answer : answers) {
        SCOPED_TRACE(answer.constData());
        const LoopbackServer server(saying(answer));
        trust(server.certificate());
        EXPECT_EQ(codeOf(post(server.baseUrl())), NS::URLError::networkConnectionLost);
        EXPECT_EQ(server.requests().size(), 1);
    }
}

TEST_F(TicketTransfer, a_server_that_cannot_be_reached_is_an_error)
{
    const auto refused = post(addressThatRefuses());
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->code, NS::URLError::cannotConnectToHost);
    EXPECT_FALSE(refused->localizedDescription.isEmpty());

    EXPECT_EQ(codeOf(post(addressWithoutHost())), NS::URLError::cannotFindHost);
}

TEST_F(TicketTransfer, a_server_that_falls_silent_is_an_error_in_the_end)
{
    const LoopbackServer server([](QSslSocket &, const QByteArray &) {});
    trust(server.certificate());
    const detail::TicketRequest ticket(CodebaseTicket(u"Crash"_s, u"Twice"_s), server.baseUrl());
    QNetworkRequest head = ticket.head();
    head.setTransferTimeout(300);
    const Inbox inbox;
    Pellarvine::detail::URLSession::shared().post(
            head, [&] { return ticket.body(); }, inbox.callback());
    EXPECT_EQ(codeOf(inbox.waitFor(1).value(0).error), NS::URLError::timedOut);
}

// A proxy that passes on 64 KiB each 20 ms to the server, and the server's answer at once.
class SlowProxy
{
public:
    SlowProxy()
    {
        auto *const server = new QTcpServer;
        QObject::connect(server, &QTcpServer::newConnection, server, [server] {
            QTcpSocket *const client = server->nextPendingConnection();
            client->setReadBufferSize(64 * 1024);
            auto *const target = new QTcpSocket(client);
            auto *const pace = new QTimer(client);
            QObject::connect(client, &QTcpSocket::readyRead, client, [=] {
                if (target->isOpen() || !client->peek(64 * 1024).contains("\r\n\r\n"))
                    return;
                const QList<QByteArray> line = client->readLine().split(' ');
                while (client->readLine() != "\r\n") { }
                target->connectToHost(QHostAddress::LocalHost,
                                      line.value(1).split(':').value(1).toUShort());
            });
            QObject::connect(target, &QTcpSocket::connected, client, [=] {
                client->write("HTTP/1.1 200 Connection established\r\n\r\n");
                pace->start(20);
            });
            QObject::connect(pace, &QTimer::timeout, client,
                             [=] { target->write(client->read(64 * 1024)); });
            QObject::connect(target, &QTcpSocket::readyRead, client,
                             [=] { client->write(target->readAll()); });
        });
        server->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, server, &QObject::deleteLater);
        m_thread.start();
        QMetaObject::invokeMethod(
                server,
                [this, server] {
                    EXPECT_TRUE(server->listen(QHostAddress::LocalHost));
                    m_port = server->serverPort();
                },
                Qt::BlockingQueuedConnection);
    }
    ~SlowProxy()
    {
        m_thread.quit();
        m_thread.wait();
    }

    QNetworkProxy proxy() const { return { QNetworkProxy::HttpProxy, u"127.0.0.1"_s, m_port }; }

private:
    QThread m_thread;
    quint16 m_port = 0;
};

TEST_F(TicketTransfer, behind_a_slow_proxy_takes_as_long_as_it_has_to)
{
    const LoopbackServer server;
    trust(server.certificate());
    const SlowProxy proxy;
    QNetworkProxy::setApplicationProxy(proxy.proxy());
    const CodebaseTicket ticket(u"Crash"_s, QString(6'000'000, u'x')); // about 2 s
    const detail::TicketRequest request(ticket, server.baseUrl());
    QNetworkRequest head = request.head();
    head.setTransferTimeout(500);
    const Inbox inbox;
    detail::URLSession::shared().post(
            head, [&] { return request.body(); }, inbox.callback());
    EXPECT_EQ(inbox.waitFor(1).value(0).error, std::nullopt);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(TicketTransfer, the_answer_is_not_kept)
{
#ifdef PELLARVINE_SANITIZED
    GTEST_SKIP() << "The sanitizer keeps freed memory for a while";
#endif
    constexpr qint64 length = qint64(400) << 20;
    const LoopbackServer server([](QSslSocket &client, const QByteArray &) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(length)
                     + "\r\n\r\n");
        const QByteArray piece(1 << 20, 'x');
        for (qint64 sent = 0; sent < length; sent += piece.size()) {
            client.write(piece);
            while (client.bytesToWrite() > 0 || client.encryptedBytesToWrite() > 0) {
                if (!client.waitForBytesWritten(30'000))
                    return;
            }
        }
    });
    trust(server.certificate());
    const auto residentKiB = [] {
        QFile status(u"/proc/self/status"_s);
        EXPECT_TRUE(status.open(QIODevice::ReadOnly));
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').value(1).toLongLong();
        }
        return 0LL;
    };
    const qint64 before = residentKiB();
    EXPECT_EQ(post(server.baseUrl()), std::nullopt);
    EXPECT_LT(residentKiB() - before, 100 * 1024);
}

TEST_F(TicketTransfer, a_server_without_a_trusted_certificate_gets_no_key)
{
    for (const QByteArray name : { "IP:127.0.0.1", "DNS:tracker.example" }) {
        // VerifyNone is the default of a program that has switched verification off.
        for (const auto mode : { QSslSocket::AutoVerifyPeer, QSslSocket::VerifyNone }) {
            const LoopbackServer server(LoopbackServer::answer("201 Created"), name);
            const bool isUnknown = name.startsWith("IP");
            trust(isUnknown ? LoopbackCertificate::make(name).certificate : server.certificate());
            QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
            configuration.setPeerVerifyMode(mode);
            QSslConfiguration::setDefaultConfiguration(configuration);
            EXPECT_EQ(codeOf(post(server.baseUrl())), NS::URLError::serverCertificateUntrusted);
            EXPECT_TRUE(server.requests().isEmpty());
        }
    }
}

TEST_F(TicketTransfer, a_redirection_is_followed_on_the_same_server_only)
{
    const LoopbackServer other;
    for (const QByteArray status : { "301", "302", "303", "307", "308" }) {
        SCOPED_TRACE(status.constData());
        const LoopbackServer same([status](QSslSocket &client, const QByteArray &request) {
            const bool isMoved = request.contains(" /moved ");
            const auto answer =
                    isMoved ? LoopbackServer::answer("500 Internal Server Error")
                            : LoopbackServer::answer(status + " Moved", "Location: /moved\r\n");
            answer(client, request);
        });
        trust(same.certificate());
        EXPECT_EQ(post(same.baseUrl()), std::nullopt);
        ASSERT_EQ(same.requests().size(), 2);
        const QByteArray second = same.requests().constLast();
        const bool keepsBody = status == "307" || status == "308";
        EXPECT_TRUE(second.startsWith(keepsBody ? "POST /moved " : "GET /moved "));
        EXPECT_EQ(second.endsWith("</ticket>\n"), keepsBody);
        // Qt 6.8 writes the names of headers in lower case.
        EXPECT_EQ(second.toLower().contains("\ncontent-type:"), keepsBody);

        const LoopbackServer leaving(LoopbackServer::answer(
                status + " Moved", "Location: " + other.baseUrl().toUtf8() + "\r\n"));
        trust(leaving.certificate());
        EXPECT_EQ(codeOf(post(leaving.baseUrl())), NS::URLError::badServerResponse);
    }
    EXPECT_TRUE(other.requests().isEmpty());

    const LoopbackServer circle(LoopbackServer::answer("307 Moved", "Location: /moved\r\n"));
    trust(circle.certificate());
    EXPECT_EQ(codeOf(post(circle.baseUrl())), NS::URLError::httpTooManyRedirects);
    EXPECT_EQ(circle.requests().size(), 21);
}

TEST_F(TicketTransfer, fifty_tickets_at_once_all_arrive_and_report_on_one_background_thread)
{
    constexpr int count = 50;
    const LoopbackServer server;
    trust(server.certificate());
    const Inbox inbox;
    for (int number = 0; number < count; ++number)
        detail::TicketRequest({ u"Number %1."_s.arg(number), {} }, server.baseUrl())
                .send(inbox.callback());
    const QList<Inbox::Call> calls = inbox.waitFor(count);
    ASSERT_EQ(calls.size(), count);
    for (const Inbox::Call &call : calls) {
        EXPECT_EQ(call.error, std::nullopt);
        EXPECT_EQ(call.thread, calls.constFirst().thread);
        EXPECT_NE(call.thread, QThread::currentThread());
    }
    const QList<QByteArray> requests = server.requests();
    EXPECT_EQ(requests.size(), count);
    for (int number = 0; number < count; ++number) {
        const QByteArray summary = "<summary>Number " + QByteArray::number(number) + ".</summary>";
        EXPECT_EQ(std::ranges::count_if(requests,
                                        [&](auto &bytes) { return bytes.contains(summary); }),
                  1)
                << number;
    }
}

TEST_F(TicketTransfer, posting_returns_while_the_transfer_is_under_way)
{
    QTcpServer silent; // accepts connections and never answers
    silent.listen(QHostAddress::LocalHost);
    const Inbox inbox;
    const auto post = [&] {
        detail::TicketRequest({ u"Crash"_s, u"Twice"_s }, addressOfPort(silent.serverPort()))
                .send(inbox.callback());
    };
    for (int i = 0; i < 50; ++i)
        post();
    EXPECT_TRUE(inbox.waitFor(0).isEmpty());
}

TEST_F(TicketTransfer, a_callback_may_post_again_or_be_empty_but_must_not_throw)
{
    const LoopbackServer server;
    trust(server.certificate());
    const Inbox inbox;
    const detail::TicketRequest ticket(CodebaseTicket(u"Crash"_s, u"Twice"_s), server.baseUrl());
    ticket.send({});
    ticket.send([&](const auto &) { ticket.send(inbox.callback()); });
    ASSERT_EQ(inbox.waitFor(1).size(), 1);
    EXPECT_EQ(inbox.waitFor(1)[0].error, std::nullopt);
    EXPECT_EQ(server.requests().size(), 3);

    EXPECT_EXIT(
            {
                detail::TicketRequest({ {}, {} }, addressThatRefuses()).send([](const auto &) {
                    throw std::runtime_error("a fault of the program's");
                });
                QThread::sleep(30);
            },
            ::testing::KilledBySignal(SIGABRT),
            "(^|\n)Error: a completion handler threw an exception\n");
}

TEST_F(TicketTransfer, the_key_is_in_no_output_log_or_error)
{
    static QByteArray log;
    static std::mutex logMutex;
    log.clear();
    QLoggingCategory::setFilterRules(u"*=true"_s);
    const QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
                const std::lock_guard lock(logMutex);
                log += text.toUtf8() + '\n';
            });
    const auto restore = qScopeGuard([previous] {
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules({});
    });
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const LoopbackServer good;
    const LoopbackServer hangingUp(saying(""));
    const LoopbackServer echoing([](QSslSocket &client, const QByteArray &request) {
        saying("HTTP/1.1 999 " + request.simplified()
               + "\r\nContent-Length: 10\r\n\r\n<tick")(client, {});
    });
    const LoopbackServer stranger;
    QByteArray errors;
    for (const LoopbackServer *const server : { &good, &hangingUp, &echoing, &stranger }) {
        if (server != &stranger)
            trust(server->certificate());
        if (const auto error = post(server->baseUrl()))
            errors += error->localizedDescription.toUtf8() + '\n';
    }
    for (const QString &address : { addressThatRefuses(), addressWithoutHost() })
        errors += post(address).value_or(NS::URLError()).localizedDescription.toUtf8() + '\n';
    const std::string output =
            ::testing::internal::GetCapturedStdout() + ::testing::internal::GetCapturedStderr();
    const std::lock_guard lock(logMutex);
    EXPECT_EQ(errors.count('\n'), 5) << errors.constData();
    for (const char *const secret : { apiKey, authorization })
        EXPECT_THAT(output + errors.toStdString() + log.toStdString(), Not(HasSubstr(secret)));
}

} // namespace Pellarvine
