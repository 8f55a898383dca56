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

/// A bug report that is filed with the issue tracker by one call:
///
///     Pellarvine::CodebaseTicket ticket(tr("Crash on opening"), report->toPlainText());
///     ticket.post([window](const std::optional<NS::URLError> &error) {
///         QMetaObject::invokeMethod(window, [=] { window->showWhetherSent(!error); });
///     });
///
/// The tracker's address and the project come from `setTracker`, else from the program's Info.plist
/// (the keys PellarvineTicketBaseURL and PellarvineTicketProject), else from the CMake variables
/// PELLARVINE_TICKET_BASE_URL and PELLARVINE_TICKET_PROJECT that the library was built with. The
/// account is built in.
///
/// A plain value: copies are independent, and `post` takes a copy of what it sends.
class PELLARVINE_EXPORT CodebaseTicket
{
    Q_GADGET
    Q_PROPERTY(QString summary READ summary WRITE setSummary)
    Q_PROPERTY(QString description READ description WRITE setDescription)

public:
    /// What `post` calls when it is done: with nothing, or with why the transfer failed.
    using Callback = std::function<void(const std::optional<NS::URLError> &error)>;

    /// Sets the tracker's address, an HTTPS URL, to which a missing slash is added at the end, and
    /// the project, as the tracker's addresses spell it. Call it before the first ticket is made. Empty texts stand for
    /// what the Info.plist or the build says. Any thread.
    static void setTracker(const QString &baseUrl, const QString &project);

    /// Any text will do, the empty one too.
    CodebaseTicket(QString summary, QString description);

    /// The title.
    const QString &summary() const { return m_summary; }
    void setSummary(const QString &summary) { m_summary = summary; }

    /// The body.
    const QString &description() const { return m_description; }
    void setDescription(const QString &description) { m_description = description; }

    /// Sends the ticket and returns at once, before anything has been sent; from any thread, with
    /// or without a running event loop. Needs a QCoreApplication.
    ///
    /// `callback` is called exactly once, on a background thread that all tickets share, and never
    /// on the main one: pass on to the main thread what touches the user interface, and do not wait
    /// for it. It may be empty, and it must not throw: that stops the process. When the
    /// QCoreApplication goes or the process exits first, the ticket is given up and the callback is
    /// called with `NS::URLError::cancelled` before either has ended; do not post again then.
    ///
    /// An error is a failed transfer and nothing else. Any complete answer counts as success, also
    /// one that rejects the ticket (401, 500).
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
    /// Without a tracker's address nothing is sent, and the error is `NS::URLError::badURL`. An
    /// address that is no valid HTTPS URL stops the process with "Error: the ticket
    /// tracker's address is not a valid HTTPS URL". No message and no error's text holds the
    /// account's key.
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
