// SPDX-License-Identifier: MIT
#include "Network/NSURLSession.h"

#include "Base/Failure.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

using NS::URLError;

namespace {

constexpr int idleLimit = 60'000; // milliseconds
constexpr int redirectionLimit = 20;

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::detail::URLSession)
};

void call(const URLSession::CompletionHandler &handler, const std::optional<URLError> &error)
{
    if (!handler)
        return;
    try {
        handler(error);
    } catch (...) {
        fatalError("Error: a completion handler threw an exception");
    }
}

// A body that cannot be read again. Otherwise Qt would repeat a request if the server closes the
// connection without an answer. QBuffer does not help: Qt reads its bytes without calling an
// override.
class SingleUseBody : public QIODevice
{
public:
    SingleUseBody(QByteArray bytes, std::function<void()> onRead)
        : m_bytes(std::move(bytes))
        , m_onRead(std::move(onRead))
    {
        open(ReadOnly | Unbuffered);
    }

    qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return false; }

protected:
    qint64 readData(char *data, qint64 limit) override
    {
        const qint64 length = std::min(limit, qint64(m_bytes.size()) - m_position);
        std::copy_n(m_bytes.cbegin() + m_position, length, data);
        m_position += length;
        m_onRead();
        return length;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    std::function<void()> m_onRead;
    qint64 m_position = 0;
};

// True if a complete answer was received, with any status.
bool isAnswered(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    switch (reply.error()) {
    case QNetworkReply::NoError:
        return true;
    case QNetworkReply::ContentReSendError:
        // Qt reads the body again before it asks whether to follow the redirection.
        return status == 307 || status == 308;
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return status == 407; // of the server; a proxy's answer comes without its status
    default:
        // The errors with greater numbers stand for HTTP statuses.
        return status >= 400 && reply.error() > QNetworkReply::UnknownProxyError;
    }
}

bool isSameOrigin(const QUrl &first, const QUrl &second)
{
    constexpr int port = 443;
    return first.scheme() == second.scheme() && first.host() == second.host()
           && first.port(port) == second.port(port);
}

URLError describe(const QNetworkReply &reply, bool isUntrusted)
{
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
        return { URLError::cannotConnectToHost, reply.errorString() };
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return { URLError::networkConnectionLost,
                 Messages::tr("The server closed the connection before its answer was complete.") };
    case QNetworkReply::HostNotFoundError:
        return { URLError::cannotFindHost, reply.errorString() };
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // how Qt ends an idle transfer
        return { URLError::timedOut, Messages::tr("The server did not answer in time.") };
    case QNetworkReply::SslHandshakeFailedError:
        return { isUntrusted ? URLError::serverCertificateUntrusted
                             : URLError::secureConnectionFailed,
                 reply.errorString() };
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return { URLError::notConnectedToInternet, reply.errorString() };
    case QNetworkReply::ProtocolFailure:
        return { URLError::badServerResponse, reply.errorString() };
    default:
        return { URLError::unknown, reply.errorString() };
    }
}

URLError cancellation()
{
    return { URLError::cancelled, QCoreApplication::instance()
                                          ? Messages::tr("The program is ending.")
                                          : Messages::tr("There is no application object.") };
}

// Set when exit() was called. Parts of Qt may be destroyed from then on.
std::atomic_bool isExiting = false;

} // namespace

/// A task of the session.
struct URLSession::Task
{
    QNetworkRequest request;
    std::function<QByteArray()> makeBody;
    CompletionHandler handler;
    std::optional<URLError> error; // if set, nothing is sent
    Rejection rejection = Rejection::success;
};

/// The thread and its tasks.
class URLSession::Worker final : public QThread
{
public:
    // Called after the thread has ended. The lock shows that to the thread sanitizer, which does
    // not know QThread::wait().
    ~Worker() override { const std::lock_guard lock(m_mutex); }

    // Returns false and leaves the task unchanged if the thread has finished all tasks and is about
    // to end.
    bool add(Task &task);

    // Answers all remaining tasks. Called by the thread itself.
    void cancelAll();

protected:
    void run() override;

private:
    struct Transfer
    {
        Task task;
        QByteArray body;
        bool isBodyWanted = true;
        int redirections = 0;
        bool isUntrusted = false;
    };

    struct Answer
    {
        CompletionHandler handler;
        std::optional<URLError> error;
    };

    void startIncoming();
    void answer(Task &task, std::optional<URLError> error);
    void callHandlers();
    void send(Transfer transfer);
    static std::optional<URLError> rejection(const QNetworkReply &reply, Rejection rejection);
    void finish(QNetworkReply *reply);
    void rest();
    void redirect(Transfer transfer, const QNetworkReply &reply, const QUrl &target);

    std::mutex m_mutex; // guards the next three members
    std::unique_ptr<QNetworkAccessManager> m_manager;
    std::deque<Task> m_incoming;
    bool m_hasEnded = false;

    // Used by this thread only.
    std::unordered_map<QNetworkReply *, Transfer> m_transfers;
    std::deque<Answer> m_answers;
};

// Runs first when the thread calls exit() or, as the main thread, leaves main(): thread-locals are
// destroyed before the handlers of exit() and static objects, including those of Qt and the TLS
// library. A transfer must not outlive those.
struct URLSession::ExitGuard
{
    bool isOfMainThread = false;
    Worker *worker = nullptr; // the worker of this thread, or null

    ~ExitGuard()
    {
        if (!isOfMainThread && !worker)
            return;
        isExiting = true;
        if (worker)
            worker->cancelAll();
        else
            shared().stop();
    }

    static thread_local ExitGuard own;
    static const bool isInstalled;
};

thread_local URLSession::ExitGuard URLSession::ExitGuard::own;
// The thread that loads the library is assumed to be the main thread.
const bool URLSession::ExitGuard::isInstalled = (own.isOfMainThread = true);

bool URLSession::Worker::add(Task &task)
{
    const std::lock_guard lock(m_mutex);
    if (m_hasEnded)
        return false;
    m_incoming.push_back(std::move(task));
    if (m_manager)
        QMetaObject::invokeMethod(
                m_manager.get(), [this] { startIncoming(); }, Qt::QueuedConnection);
    return true;
}

void URLSession::Worker::run()
{
    ExitGuard::own.worker = this;
    // Without an application object, Qt delivers no events.
    if (QCoreApplication::instance() && !isExiting && !isInterruptionRequested()) {
        {
            const std::lock_guard lock(m_mutex);
            m_manager = std::make_unique<QNetworkAccessManager>();
        }
        startIncoming();
        while (!isInterruptionRequested()) {
            exec();
            callHandlers();
        }
    }
    cancelAll();
    ExitGuard::own.worker = nullptr;
}

void URLSession::Worker::startIncoming()
{
    std::deque<Task> tasks;
    {
        const std::lock_guard lock(m_mutex);
        tasks.swap(m_incoming);
    }
    for (Task &task : tasks) {
        if (task.error) {
            answer(task, task.error);
            continue;
        }
        Transfer transfer;
        transfer.body = task.makeBody();
        transfer.task = std::move(task);
        send(std::move(transfer));
    }
}

// Ends exec() before the handler is called. If the handler calls exit(), Qt deletes the event
// dispatcher of this thread, which must not be running.
void URLSession::Worker::answer(Task &task, std::optional<URLError> error)
{
    m_answers.push_back({ std::move(task.handler), std::move(error) });
    quit();
}

// Removes each answer before its handler is called: a handler may call exit(), which calls this
// function again.
void URLSession::Worker::callHandlers()
{
    while (!m_answers.empty()) {
        const Answer answer = std::move(m_answers.front());
        m_answers.pop_front();
        call(answer.handler, answer.error);
    }
}

void URLSession::Worker::send(Transfer transfer)
{
    if (isInterruptionRequested()) {
        const std::lock_guard lock(m_mutex);
        m_incoming.push_back(std::move(transfer.task)); // to be cancelled
        return;
    }
    QNetworkRequest &request = transfer.task.request;
    const int limit = request.transferTimeout() == 0 ? idleLimit : request.transferTimeout();
    QNetworkRequest sent = request;
    sent.setTransferTimeout(0); // Qt's own timeout ignores progress behind a proxy
    sent.setRawHeader("Accept-Encoding", "identity"); // the body is not read
    for (const auto attribute :
         { QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
           QNetworkRequest::AuthenticationReuseAttribute })
        sent.setAttribute(attribute, QNetworkRequest::Manual);
    sent.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                      QNetworkRequest::ManualRedirectPolicy);
    sent.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    QSslConfiguration tls = sent.sslConfiguration();
    tls.setPeerVerifyMode(QSslSocket::VerifyPeer);
    sent.setSslConfiguration(tls);

    QNetworkReply *reply = nullptr;
    auto *const idle = new QTimer;
    idle->setSingleShot(true);
    idle->setInterval(std::chrono::milliseconds(limit));
    if (transfer.isBodyWanted) {
        auto *const body = new SingleUseBody(transfer.body, [idle] { idle->start(); });
        reply = m_manager->post(sent, body);
        body->setParent(reply);
    } else {
        reply = m_manager->get(sent);
    }
    idle->setParent(reply);
    QObject::connect(idle, &QTimer::timeout, reply, &QNetworkReply::abort);
    reply->setReadBufferSize(64 * 1024);
    QObject::connect(reply, &QNetworkReply::readyRead, idle, [reply, idle] {
        reply->skip(reply->bytesAvailable());
        idle->start();
    });
    idle->start();
    m_transfers.emplace(reply, std::move(transfer));
    QObject::connect(reply, &QNetworkReply::sslErrors, reply,
                     [this, reply] { m_transfers[reply].isUntrusted = true; });
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] { finish(reply); });
}

// The error for a complete answer that rejects the request.
std::optional<URLError> URLSession::Worker::rejection(const QNetworkReply &reply,
                                                      Rejection rejection)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (rejection == Rejection::success || status < 400)
        return std::nullopt;
    return URLError { URLError::resourceUnavailable,
                      Messages::tr("The server rejected it with status %1.").arg(status) };
}

void URLSession::Worker::finish(QNetworkReply *reply)
{
    auto node = m_transfers.extract(reply);
    if (!node)
        return;
    reply->deleteLater();
    QMetaObject::invokeMethod(
            m_manager.get(), [this] { rest(); }, Qt::QueuedConnection);
    Transfer &transfer = node.mapped();
    if (!isAnswered(*reply))
        return answer(transfer.task, describe(*reply, transfer.isUntrusted));
    const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (target.isEmpty())
        return answer(transfer.task, rejection(*reply, transfer.task.rejection));
    redirect(std::move(transfer), *reply, reply->url().resolved(target));
}

// Closes idle connections, which the server might close before the next request, and ends Qt's
// thread for them.
void URLSession::Worker::rest()
{
    if (m_transfers.empty())
        m_manager->clearConnectionCache();
}

// Qt's own redirection would send the credentials to any address, and repeat a body when a
// connection breaks.
void URLSession::Worker::redirect(Transfer transfer, const QNetworkReply &reply, const QUrl &target)
{
    if (!isSameOrigin(reply.url(), target))
        return answer(transfer.task,
                      URLError { URLError::badServerResponse,
                                 Messages::tr("The server redirects to another server.") });
    if (++transfer.redirections > redirectionLimit)
        return answer(transfer.task,
                      URLError { URLError::httpTooManyRedirects,
                                 Messages::tr("The server redirects too many times.") });
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    transfer.isBodyWanted = transfer.isBodyWanted && (status == 307 || status == 308);
    QNetworkRequest &request = transfer.task.request;
    if (!transfer.isBodyWanted)
        request.setRawHeader("Content-Type", {});
    request.setUrl(target);
    send(std::move(transfer));
}

// Removes each task before its handler is called, as callHandlers() does.
void URLSession::Worker::cancelAll()
{
    callHandlers();
    for (;;) {
        std::unique_ptr<QNetworkAccessManager> manager;
        Task task;
        {
            const std::lock_guard lock(m_mutex);
            manager.swap(m_manager);
            for (auto &[reply, transfer] : m_transfers)
                m_incoming.push_back(std::move(transfer.task));
            m_transfers.clear();
            m_hasEnded = m_incoming.empty();
            if (m_hasEnded)
                return;
            task = std::move(m_incoming.front());
            m_incoming.pop_front();
        }
        manager.reset();
        call(task.handler, cancellation());
    }
}

URLSession &URLSession::shared()
{
    static URLSession *const session = new URLSession;
    return *session;
}

void URLSession::post(const QNetworkRequest &request, std::function<QByteArray()> makeBody,
                      CompletionHandler handler, Rejection rejection)
{
    add({ request, std::move(makeBody), std::move(handler), std::nullopt, rejection });
}

void URLSession::fail(const URLError &error, CompletionHandler handler)
{
    add({ {}, {}, std::move(handler), error, {} });
}

void URLSession::add(Task task)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_worker && m_worker->add(task))
            return;
        m_worker = std::shared_ptr<Worker>(new Worker, [](Worker *worker) {
            // A handler has called exit() on this thread. The thread ends with the process.
            if (QThread::currentThread() == worker)
                return;
            worker->requestInterruption();
            worker->quit();
            worker->wait();
            delete worker;
        });
        m_worker->setObjectName(u"NSURLSession"_s);
        m_worker->add(task);
        m_worker->start();
        qAddPostRoutine([] { shared().stop(); });
    }
    if (isExiting)
        stop(); // the exit handlers have run already
}

void URLSession::stop()
{
    std::shared_ptr<Worker> worker; // destroyed after the lock; the deleter waits for the thread
    const std::lock_guard lock(m_mutex);
    worker.swap(m_worker);
}

} // namespace Pellarvine::detail
