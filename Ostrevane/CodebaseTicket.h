// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSURLError.h>

#include <QMetaType>
#include <QString>

#include <functional>
#include <optional>

namespace Pellarvine {

namespace detail {
class TicketRequest; // not API
}

/// A bug report that one call sends to the issue tracker:
///
///     Pellarvine::CodebaseTicket ticket(tr("Crash on opening"), report->toPlainText());
///     ticket.post([window](const std::optional<NS::URLError> &error) {
///         QMetaObject::invokeMethod(window, [=] { window->showWhetherSent(!error); });
///     });
///
/// The address of the tracker and the project are those of `setTracker`, else those in the
/// program's Info.plist (the keys PellarvineTicketBaseURL and PellarvineTicketProject), else those
/// of the CMake variables PELLARVINE_TICKET_BASE_URL and PELLARVINE_TICKET_PROJECT at build time.
/// The account is built in.
///
/// A plain value. `post` copies what it sends.
class PELLARVINE_EXPORT CodebaseTicket
{
    Q_GADGET
    Q_PROPERTY(QString summary READ summary WRITE setSummary)
    Q_PROPERTY(QString description READ description WRITE setDescription)

public:
    /// Called by `post` at the end: with nothing, or with the reason of the failure.
    using Callback = std::function<void(const std::optional<NS::URLError> &error)>;

    /// Sets the address of the tracker, an HTTPS URL (a missing slash at its end is added), and the
    /// project, as it is spelt in the tracker's addresses. Call it before the first ticket is made.
    /// Empty texts restore the values of the Info.plist or the build. Any thread.
    static void setTracker(const QString &baseUrl, const QString &project);

    /// Both texts may be empty.
    CodebaseTicket(QString summary, QString description);

    /// The title.
    const QString &summary() const { return m_summary; }
    void setSummary(const QString &summary) { m_summary = summary; }

    /// The body.
    const QString &description() const { return m_description; }
    void setDescription(const QString &description) { m_description = description; }

    /// Sends the ticket in the background and returns at once. Any thread, with or without a
    /// running event loop. Needs a QCoreApplication.
    ///
    /// `callback` is called exactly once, on a background thread that all tickets share. Use
    /// QMetaObject::invokeMethod() for user interface, and do not block. It may be empty. It must
    /// not throw: an exception stops the process. If the QCoreApplication is destroyed or the
    /// process exits first, the ticket is cancelled, and `callback` is called with
    /// `NS::URLError::cancelled` before that ends; do not post again then.
    ///
    /// An error is a failed transfer. Any complete answer is a success, also one that rejects the
    /// ticket (401, 500).
    ///
    /// - Characters that XML 1.0 cannot hold, unpaired surrogates among them, arrive as U+FFFD.
    /// - The server's certificate has to be trusted by the application's default
    ///   QSslConfiguration: by the system's certificates, unless the program has added to them.
    ///   QNetworkProxy's application proxy is used.
    /// - A transfer fails after 60 seconds in which no byte has moved.
    /// - A redirection within the same scheme, host and port is followed, as GET without the ticket
    ///   for 301, 302 and 303. Any other is an error, so that the account is shown to nobody else.
    /// - Nothing is sent a second time unasked: an error may mean that the ticket has arrived all
    ///   the same and only the answer was lost.
    ///
    /// Without an address nothing is sent, and the error is `NS::URLError::badURL`. An address that
    /// is not a valid HTTPS URL stops the process with "Error: the ticket tracker's address is not
    /// a valid HTTPS URL". No message and no text of an error contains the key of the account.
    void post(Callback callback) const;

    /// As post(), but an answer that rejects the ticket (a status of 400 or more) is the error
    /// `NS::URLError::resourceUnavailable`, and an invalid address the error
    /// `NS::URLError::badURL`: for tickets that must not get lost.
    void submit(Callback callback) const;

    friend bool operator==(const CodebaseTicket &, const CodebaseTicket &) = default;

private:
    friend class detail::TicketRequest;

    // Fixed: a ticket is always filed by the same account.
    QString m_project;
    QString m_user;
    QString m_apiKey;
    QString m_summary;
    QString m_description;
};

} // namespace Pellarvine
