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
/// A plain value, which is never thrown. It may be passed to another thread.
struct URLError
{
    /// The numbers are those of the framework, for logs and bug reports.
    enum Code {
        unknown = -1, ///< any other reason
        cancelled = -999, ///< the program is ending, or has no QCoreApplication
        badURL = -1000, ///< no address is set, or it is not a valid HTTPS URL
        timedOut = -1001, ///< no byte was transferred for 60 seconds
        cannotFindHost = -1003, ///< the host name has no address
        cannotConnectToHost = -1004, ///< refused, or not reachable through the proxy
        networkConnectionLost = -1005, ///< the server closed the connection too early
        httpTooManyRedirects = -1007, ///< the server redirects too often
        resourceUnavailable = -1008, ///< a status of 400 or more, from `submit` only
        notConnectedToInternet = -1009, ///< the machine has no network
        badServerResponse = -1011, ///< not HTTP, or a redirection that is not followed
        secureConnectionFailed = -1200, ///< TLS could not be established
        serverCertificateUntrusted = -1202, ///< an unknown issuer, a wrong name, or expired
    };

    Code code = unknown; ///< the reason
    QString localizedDescription; ///< a sentence for people, translated by Qt's translations

    bool operator==(const URLError &) const = default;
};

} // namespace NS
