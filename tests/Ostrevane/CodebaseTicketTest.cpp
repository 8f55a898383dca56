// SPDX-License-Identifier: MIT
#include "Ostrevane/TicketRequest.h"

#include <QMetaProperty>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <type_traits>

using namespace Qt::StringLiterals;

namespace Pellarvine {

static_assert(std::is_copy_assignable_v<CodebaseTicket>);
static_assert(std::is_nothrow_move_constructible_v<CodebaseTicket>);
static_assert(std::equality_comparable<CodebaseTicket>);

namespace {

const QString tracker = u"https://tracker.example/"_s;

struct Document
{
    QStringList elements; // in the order of their start tags
    QString summary;
    QString description;
};

Document parse(const QByteArray &bytes)
{
    Document document;
    QXmlStreamReader reader(bytes);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        document.elements.append(reader.name().toString());
        if (reader.name() == "summary"_L1)
            document.summary = reader.readElementText();
        else if (reader.name() == "description"_L1)
            document.description = reader.readElementText();
    }
    EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString()) << bytes.constData();
    return document;
}

QByteArray body(const QString &summary, const QString &description = {})
{
    return detail::TicketRequest(CodebaseTicket(summary, description), tracker).body();
}

} // namespace

TEST(CodebaseTicket, is_a_value_whose_two_texts_alone_can_be_seen_and_set)
{
    CodebaseTicket ticket(u"Crash"_s, u"On opening"_s);
    const CodebaseTicket copy = ticket;
    EXPECT_EQ(copy, ticket);
    const QMetaObject &type = CodebaseTicket::staticMetaObject;
    ASSERT_EQ(type.propertyCount(), 2);
    ASSERT_TRUE(type.property(0).writeOnGadget(&ticket, u"Hang"_s));
    ASSERT_TRUE(type.property(1).writeOnGadget(&ticket, u"On closing"_s));
    EXPECT_EQ(ticket.summary(), u"Hang"_s);
    EXPECT_EQ(ticket.description(), u"On closing"_s);
    EXPECT_EQ(copy.summary(), u"Crash"_s);
    EXPECT_EQ(copy.description(), u"On opening"_s);
    EXPECT_NE(copy, ticket);
}

TEST(CodebaseTicket, texts_come_out_of_the_document_as_they_went_in)
{
    const QStringList texts {
        u""_s,
        u"<b>&amp; \"quoted\" 'quoted' ]]> <![CDATA[ <!-- ?></summary>"_s,
        u"\tone\ntwo\r\nthree\rfour  \r"_s,
        u"\u00e9 e\u0301 \u0416 \u6f22 \u2028 \u0085 \ufeff"_s,
        u"\U0001F41E \U0001FFFE \U0010FFFF"_s, // XML allows all characters beyond the first plane
        QString(1'000'000, u'<'),
    };
    for (const QString &text : texts) {
        const Document document = parse(body(text, text));
        EXPECT_EQ(document.elements, QStringList({ u"ticket"_s, u"summary"_s, u"description"_s }));
        EXPECT_EQ(document.summary, text);
        EXPECT_EQ(document.description, text);
    }
}

TEST(CodebaseTicket, each_character_that_xml_cannot_hold_becomes_one_replacement_character)
{
    for (int code = 0; code <= 0xffff; ++code) {
        const QChar unit(static_cast<char16_t>(code));
        const bool isControl = code < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\r';
        const bool isExcluded = isControl || unit.isSurrogate() || code >= 0xfffe;
        const QString text = u"a"_s + unit + u'z';
        const QString expected = isExcluded ? u"a\ufffdz"_s : text;
        ASSERT_EQ(parse(body(text)).summary, expected) << code;
    }
    const QString low(QChar(0xdc1e));
    const QString high(QChar(0xd83d));
    EXPECT_EQ(parse(body(low + high)).summary, u"\ufffd\ufffd"_s);
    EXPECT_EQ(parse(body(high + high + low + low)).summary, u"\ufffd\U0001f41e\ufffd"_s);
}

TEST(CodebaseTicket, an_address_that_is_no_valid_https_url_stops_the_process)
{
    const QStringList addresses {
        u""_s,
        u"tracker.example/"_s,
        u"https:///"_s,
        u"https://tracker example/"_s,
        u"https://tracker.example:port/"_s,
        u"https://tracker.example/%zz/"_s,
        u"http://tracker.example/"_s, // would show the key to everybody on the way
    };
    for (const QString &address : addresses) {
        SCOPED_TRACE(qPrintable(address));
        EXPECT_EXIT(detail::TicketRequest(CodebaseTicket({}, {}), address),
                    ::testing::KilledBySignal(SIGABRT),
                    "(^|\n)Error: the ticket tracker's address is not a valid HTTPS URL\n$");
    }
}

} // namespace Pellarvine
