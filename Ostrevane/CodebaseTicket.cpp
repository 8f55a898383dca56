// SPDX-License-Identifier: MIT
#include "Ostrevane/CodebaseTicket.h"

#include "Base/NSBundle.h"
#include "Network/NSURLSession.h"
#include "Ostrevane/TicketRequest.h"

#include <QCoreApplication>

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Pellarvine::CodebaseTicket)
};

struct Tracker
{
    QString baseUrl;
    QString project;
};

std::mutex trackerMutex; // guards the values of setTracker()

// Never destroyed, so that a ticket can be posted while the process exits.
Tracker &chosenTracker()
{
    static auto *const tracker = new Tracker;
    return *tracker;
}

// The values of the Info.plist, read once: a ticket may be made while the process exits.
const Tracker &saidTracker()
{
    static const auto *const tracker = [] {
        const auto text = [](const QString &key) {
            return NS::Bundle::main().objectForInfoDictionaryKey(key).toString();
        };
        return new Tracker { text(u"PellarvineTicketBaseURL"_s),
                             text(u"PellarvineTicketProject"_s) };
    }();
    return *tracker;
}

// The value of setTracker(), otherwise that of the Info.plist, otherwise that of the build.
QString setting(QString Tracker::*field, const char *built)
{
    {
        const std::lock_guard lock(trackerMutex);
        if (!(chosenTracker().*field).isEmpty())
            return chosenTracker().*field;
    }
    if (QCoreApplication::instance() && !(saidTracker().*field).isEmpty())
        return saidTracker().*field;
    return QString::fromUtf8(built);
}

void fail(const QString &reason, CodebaseTicket::Callback callback)
{
    detail::URLSession::shared().fail({ NS::URLError::badURL, reason }, std::move(callback));
}

void failWithoutTracker(CodebaseTicket::Callback callback)
{
    fail(Messages::tr("The program does not know the address of its issue tracker."),
         std::move(callback));
}

} // namespace

void CodebaseTicket::setTracker(const QString &baseUrl, const QString &project)
{
    const std::lock_guard lock(trackerMutex);
    const bool needsSlash = !baseUrl.isEmpty() && !baseUrl.endsWith(u'/');
    chosenTracker() = { needsSlash ? baseUrl + u'/' : baseUrl, project };
}

CodebaseTicket::CodebaseTicket(QString summary, QString description)
    : m_project(setting(&Tracker::project, PELLARVINE_TICKET_PROJECT))
    , m_user(u"brenhaw/tollmark"_s)
    , m_apiKey(u"7c1e90b4d25a83f6e0b9c4a7d13f58e2b6a09d47"_s)
    , m_summary(std::move(summary))
    , m_description(std::move(description))
{ }

void CodebaseTicket::post(Callback callback) const
{
    const QString baseUrl = setting(&Tracker::baseUrl, PELLARVINE_TICKET_BASE_URL);
    if (baseUrl.isEmpty())
        return failWithoutTracker(std::move(callback));
    detail::TicketRequest(*this, baseUrl).send(std::move(callback));
}

void CodebaseTicket::submit(Callback callback) const
{
    const QString baseUrl = setting(&Tracker::baseUrl, PELLARVINE_TICKET_BASE_URL);
    if (baseUrl.isEmpty())
        return failWithoutTracker(std::move(callback));
    if (!detail::TicketRequest::isValid(*this, baseUrl)) {
        return fail(Messages::tr("The address of the issue tracker is not a valid HTTPS URL."),
                    std::move(callback));
    }
    detail::TicketRequest(*this, baseUrl)
            .send(std::move(callback), detail::URLSession::Rejection::error);
}

} // namespace Pellarvine
