// SPDX-License-Identifier: MIT
// Not API: the one URL session that the library's own requests go through.
#pragma once

#include "Base/Global.h"
#include "Network/NSURLError.h"

#include <QByteArray>
#include <QNetworkRequest>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace Pellarvine::detail {

/// A QNetworkAccessManager on a thread of its own. Its handlers run on that thread, one after the
/// other, each exactly once: with the outcome of its transfer, or with `URLError::cancelled` when
/// the QCoreApplication goes or the process exits before there is one. The caller needs no event
/// loop. Without a QCoreApplication Qt moves no bytes, and every transfer is cancelled.
class PELLARVINE_INTERNAL_EXPORT URLSession
{
public:
    using CompletionHandler = std::function<void(const std::optional<NS::URLError> &)>;

    /// Never destroyed, so that it can be used while the process exits.
    static URLSession &shared();
    URLSession(const URLSession &) = delete;
    URLSession &operator=(const URLSession &) = delete;

    /// What an answer with a status of 400 or more is.
    enum class Rejection {
        success,
        error
    };

    /// Sends a POST request and returns at once; any thread. `handler` may be empty; one that
    /// throws stops the process.
    ///
    /// `makeBody` is called once, on the session's thread.
    ///
    /// What the request does not say is decided here: it fails after 60 seconds in which no byte
    /// moved; a redirection is followed within the same scheme, host and port
    /// only; the body is sent at most once for each address; the answer's body is dropped as it
    /// arrives; cookies are neither sent nor stored. The server's certificate is always verified.
    void post(const QNetworkRequest &request, std::function<QByteArray()> makeBody,
              CompletionHandler handler, Rejection rejection = Rejection::success);

    /// Sends nothing: calls `handler` with `error`, as `post` does with the outcome of a transfer.
    void fail(const NS::URLError &error, CompletionHandler handler);

private:
    class Worker;
    struct ExitGuard;
    struct Task;

    URLSession() = default;
    ~URLSession() = default;
    void add(Task task);
    void stop();

    std::mutex m_mutex;
    std::shared_ptr<Worker> m_worker;
};

} // namespace Pellarvine::detail
