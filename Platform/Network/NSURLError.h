// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>

namespace NS {

/// The reason of a failed transfer.
///
///     ticket.post([](const std::optional<NS::URLError> &error) {
///         if (error && error->code == NS::URLError::timedOut)
///             qWarning() << error->localizedDescription;
///     });
///
/// A plain value, never thrown.
struct URLError
{
    /// Numbered as the framework numbers them, for logs and bug reports.
    enum Code {
        unknown = -1, ///< none of those below
        cancelled = -999, ///< the program is ending, or has no QCoreApplication
        badURL = -1000, ///< no address to send to has been set
        timedOut = -1001, ///< no byte moved for too long
        cannotFindHost = -1003, ///< the name has no address
        cannotConnectToHost = -1004, ///< refused, or not reachable through the proxy
        networkConnectionLost = -1005, ///< the server hung up before its answer was complete
        httpTooManyRedirects = -1007, ///< the server sends the request round and round
        resourceUnavailable = -1008, ///< a status of 400 or more, for those who asked to hear of it
        notConnectedToInternet = -1009, ///< the machine has no network, or has lost it
        badServerResponse = -1011, ///< no HTTP, or a redirection that is not followed
        secureConnectionFailed = -1200, ///< TLS could not be agreed on
        serverCertificateUntrusted = -1202, ///< unknown issuer, wrong name, out of date
    };

    Code code = unknown; ///< the reason
    QString localizedDescription; ///< a sentence for people, in Qt's language where it has one

    bool operator==(const URLError &) const = default;
};

} // namespace NS
