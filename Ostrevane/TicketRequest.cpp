// SPDX-License-Identifier: MIT
#include "Ostrevane/TicketRequest.h"

#include "Base/Failure.h"
#include "Ostrevane/App.h"

#include <QCoreApplication>
#include <QUrl>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cctype>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

QUrl ticketsUrl(const QString &baseUrl, const QString &project)
{
    return QUrl(baseUrl + project + "/tickets"_L1, QUrl::StrictMode);
}

// The Char production of XML 1.0, for one UTF-16 unit that is not part of a pair.
bool isXmlCharacter(char16_t unit)
{
    if (unit < u' ')
        return unit == u'\t' || unit == u'\n' || unit == u'\r';
    return !QChar::isSurrogate(unit) && unit < 0xfffe;
}

QString representable(const QString &text)
{
    QString result = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
                text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            ++i;
        else if (!isXmlCharacter(text[i].unicode()))
            result[i] = QChar::ReplacementCharacter;
    }
    return result;
}

void writeElement(QXmlStreamWriter &writer, const QString &name, const QString &text)
{
    writer.writeStartElement(name);
    // XML readers turn a single carriage return into a line feed; the writer does not escape it.
    const QStringList parts = representable(text).split(u'\r');
    writer.writeCharacters(parts.constFirst());
    for (qsizetype i = 1; i < parts.size(); ++i) {
        writer.writeEntityReference(u"#13"_s);
        writer.writeCharacters(parts[i]);
    }
    writer.writeEndElement();
}

QByteArray document(const QString &summary, const QString &description)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.writeStartDocument();
    writer.writeStartElement(u"ticket"_s);
    writeElement(writer, u"summary"_s, summary);
    writeElement(writer, u"description"_s, description);
    writer.writeEndDocument();
    return bytes;
}

// A product token of HTTP (RFC 9110): "Mail-Client/2.1".
QByteArray token(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    std::replace_if(
            bytes.begin(), bytes.end(),
            [](char byte) {
                return !std::isalnum(static_cast<unsigned char>(byte)) && byte != '.';
            },
            '-');
    return bytes;
}

QByteArray userAgent()
{
    if (!QCoreApplication::instance())
        return "Pellarvine"; // nothing is sent
    // Computed once, because a ticket may be posted while the process exits.
    static const auto *const agent = [] {
        const QByteArray name = token(App::name());
        return new QByteArray((name.isEmpty() ? "Pellarvine" : name) + '/' + token(App::version()));
    }();
    return *agent;
}

} // namespace

TicketRequest::TicketRequest(const CodebaseTicket &ticket, const QString &baseUrl)
    : m_head(ticketsUrl(baseUrl, ticket.m_project))
    , m_summary(ticket.m_summary)
    , m_description(ticket.m_description)
{
    if (!isValid(ticket, baseUrl))
        fatalError("Error: the ticket tracker's address is not a valid HTTPS URL");
    const QByteArray account = (ticket.m_user + u':' + ticket.m_apiKey).toUtf8();
    m_head.setRawHeader("Accept", "application/xml");
    m_head.setRawHeader("Content-Type", "application/xml");
    m_head.setRawHeader("Authorization", "Basic " + account.toBase64());
    m_head.setRawHeader("User-Agent", userAgent());
}

bool TicketRequest::isValid(const CodebaseTicket &ticket, const QString &baseUrl)
{
    const QUrl url = ticketsUrl(baseUrl, ticket.m_project);
    return url.isValid() && url.scheme() == "https"_L1 && !url.host().isEmpty();
}

QByteArray TicketRequest::body() const
{
    return document(m_summary, m_description);
}

void TicketRequest::send(CodebaseTicket::Callback callback, URLSession::Rejection rejection) const
{
    URLSession::shared().post(
            m_head, [*this] { return body(); }, std::move(callback), rejection);
}

} // namespace Pellarvine::detail
