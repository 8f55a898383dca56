// SPDX-License-Identifier: MIT
// Not API: what a ticket is sent as.
#pragma once

#include "Network/NSURLSession.h"
#include "Ostrevane/CodebaseTicket.h"

#include <QNetworkRequest>

namespace Pellarvine::detail {

/// The HTTP request that files a ticket with the tracker at `baseUrl`, which ends in a slash.
/// Aborts the process if `isValid` is false.
class PELLARVINE_INTERNAL_EXPORT TicketRequest
{
public:
    TicketRequest(const CodebaseTicket &ticket, const QString &baseUrl);

    /// Whether the address and the ticket's project make an HTTPS URL.
    static bool isValid(const CodebaseTicket &ticket, const QString &baseUrl);

    const QNetworkRequest &head() const { return m_head; }
    QByteArray body() const; ///< computed in each call

    void send(CodebaseTicket::Callback callback,
              URLSession::Rejection rejection = URLSession::Rejection::success) const;

private:
    QNetworkRequest m_head;
    QString m_summary;
    QString m_description;
};

} // namespace Pellarvine::detail
