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

/// A QNetworkAccessManager on its own thread. Handlers run on that thread, one at a time and each
/// exactly once: with the result of the transfer, or with `URLError::cancelled` if the
/// QCoreApplication is destroyed or the process exits first. The caller needs no event loop.
/// Without a QCoreApplication Qt transfers nothing, and every transfer is cancelled.
class PELLARVINE_INTERNAL_EXPORT URLSession
{
public:
    using CompletionHandler = std::function<void(const std::optional<NS::URLError> &)>;

    /// The only session. It is never destroyed, so it can be used while the process exits.
    static URLSession &shared();
    URLSession(const URLSession &) = delete;
    URLSession &operator=(const URLSession &) = delete;

    /// The meaning of an answer with a status of 400 or more.
    enum class Rejection {
        success,
        error
    };

    /// Sends a POST request and returns at once. Any thread. `handler` may be empty; an exception
    /// from it stops the process.
    ///
    /// `makeBody` is called once, on the session's thread.
    ///
    /// A transfer fails after 60 seconds without a byte. A redirection is followed within the same
    /// scheme, host and port. The body is sent at most once for each address. The body of the
    /// answer is dropped as it arrives. Cookies are neither sent nor stored. The certificate of the
    /// server is always verified.
    void post(const QNetworkRequest &request, std::function<QByteArray()> makeBody,
              CompletionHandler handler, Rejection rejection = Rejection::success);

    /// Calls `handler` with `error`, in the same way as `post`, and sends nothing.
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
