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

/// A bug report for an issue tracker. One call sends it:
///
///     Pellarvine::CodebaseTicket ticket(tr("Crash on opening"), report->toPlainText());
///     ticket.post([window](const std::optional<NS::URLError> &error) {
///         QMetaObject::invokeMethod(window, [=] { window->showWhetherSent(!error); });
///     });
///
/// The address and the project of the tracker are those of `setTracker`. Without a call of it, they
/// are the keys PellarvineTicketBaseURL and PellarvineTicketProject of the program's Info.plist. If
/// these are missing, they are the CMake variables PELLARVINE_TICKET_BASE_URL and
/// PELLARVINE_TICKET_PROJECT of the library's build. The account is built in.
///
/// A plain value. `post` copies the texts, so the ticket may be destroyed after the call.
class PELLARVINE_EXPORT CodebaseTicket
{
    Q_GADGET
    Q_PROPERTY(QString summary READ summary WRITE setSummary)
    Q_PROPERTY(QString description READ description WRITE setDescription)

public:
    /// Called by `post` when the transfer has ended, with an error or with nothing.
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
    /// running event loop, after the QCoreApplication is made.
    ///
    /// `callback` is called exactly once, on a background thread that all tickets share. Use
    /// QMetaObject::invokeMethod() for user interface, and do not block. It may be empty. An
    /// exception from it aborts the process. If the QCoreApplication is destroyed or the process
    /// exits first, the ticket is cancelled: `callback` is called with `NS::URLError::cancelled`
    /// before the destructor or exit() returns. Do not post again then.
    ///
    /// An error means that the transfer has failed. Any complete answer is a success, even if it
    /// rejects the ticket (401, 500).
    ///
    /// - Characters that XML 1.0 does not allow, and unpaired surrogates, arrive as U+FFFD.
    /// - The server's certificate has to be trusted by the application's default
    ///   QSslConfiguration: by the system's certificates, unless the program has added to them.
    ///   QNetworkProxy's application proxy is used.
    /// - A transfer fails after 60 seconds in which no byte has moved.
    /// - A redirection within the same scheme, host and port is followed, as GET without the ticket
    ///   for 301, 302 and 303. Any other is an error, so no other server gets the account.
    /// - A ticket is not sent a second time automatically. After an error it may have arrived: the
    ///   answer can be lost.
    ///
    /// Without an address nothing is sent, and the error is `NS::URLError::badURL`. An address that
    /// is not a valid HTTPS URL aborts the process with "Error: the ticket tracker's address is not
    /// a valid HTTPS URL". No message and no text of an error contains the key of the account.
    void post(Callback callback) const;

    /// As post(), for tickets that must not get lost. An answer that rejects the ticket (a status
    /// of 400 or more) is the error `NS::URLError::resourceUnavailable`. An invalid address is the
    /// error `NS::URLError::badURL`, and does not abort the process.
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
