// SPDX-License-Identifier: MIT
#include "Ostrevane/CodebaseTicket.h"

#include "Ostrevane/TicketRequest.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine {

CodebaseTicket::CodebaseTicket(QString summary, QString description)
    : m_project(QString::fromUtf8(PELLARVINE_TICKET_PROJECT))
    , m_user(u"brenhaw/tollmark"_s)
    , m_apiKey(u"7c1e90b4d25a83f6e0b9c4a7d13f58e2b6a09d47"_s)
    , m_summary(std::move(summary))
    , m_description(std::move(description))
{ }

void CodebaseTicket::post(Callback callback) const
{
    detail::TicketRequest(*this, QString::fromUtf8(PELLARVINE_TICKET_BASE_URL))
            .send(std::move(callback));
}

} // namespace Pellarvine
