// SPDX-License-Identifier: MIT
#include "Base/XmlReader.h"

#include <QStringConverter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

XmlReader::XmlReader(const QByteArray &contents)
{
    QStringDecoder decode(
            QStringConverter::encodingForData(contents).value_or(QStringConverter::Utf8));
    m_text = decode(contents);
    m_lineEnd = m_text.indexOf(u'\n');
    addData(m_text);
    if (decode.hasError())
        raiseError(u"It is not text in UTF-8."_s);
}

QXmlStreamReader::TokenType XmlReader::readNext()
{
    m_tokenStart = qsizetype(characterOffset());
    QXmlStreamReader::readNext();
    if (isDTD() && text().contains(u'[')) {
        m_place = placeAt(m_text.indexOf(u"<!DOCTYPE"_s, m_tokenStart));
        raiseError(u"a document type declaration with contents is not allowed"_s);
    }
    return tokenType();
}

void XmlReader::refuseText()
{
    if (!isCharacters() || isWhitespace())
        return;
    m_place = placeAt(textStart());
    raiseError(u"there is text between the elements"_s);
}

// The offset behind the white space at the beginning of the token. The offset of the reader is no
// help: it has read the "<" of the next tag, too.
qsizetype XmlReader::textStart() const
{
    qsizetype start = m_tokenStart;
    while (start < m_text.size() && m_text[start].isSpace())
        ++start;
    return start;
}

bool XmlReader::readChild()
{
    while (true) {
        readNext();
        refuseText();
        if (isStartElement()) {
            noteTag();
            return true;
        }
        if (isEndElement() || isEndDocument() || hasError())
            return false;
    }
}

// The reader reports the end of a tag; a tag contains no "<".
void XmlReader::noteTag()
{
    const qsizetype end = std::min(qsizetype(characterOffset()), m_text.size());
    m_tagStart = end > 0 ? m_text.lastIndexOf(u'<', end - 1) : -1;
    m_place = placeAt(m_tagStart);
}

void XmlReader::omit(qsizetype begin, qsizetype end)
{
    m_kept += QStringView(m_text).sliced(m_omitted, begin - m_omitted);
    m_omitted = end;
}

void XmlReader::omitWhitespace()
{
    if (isWhitespace())
        omit(m_tokenStart, textStart());
}

QByteArray XmlReader::remainder() const
{
    QString all = m_kept;
    all += QStringView(m_text).sliced(m_omitted);
    return all.toUtf8();
}

XmlPlace XmlReader::placeAt(qsizetype offset)
{
    while (m_lineEnd >= 0 && m_lineEnd < offset) {
        ++m_line;
        m_lineStart = m_lineEnd + 1;
        m_lineEnd = m_text.indexOf(u'\n', m_lineStart);
    }
    return { m_line, int(std::max(offset, m_lineStart) - m_lineStart) + 1 };
}

XmlPlace XmlReader::place() const
{
    // The reader has no place for errors that are raised here.
    return hasError() && error() != CustomError ? position() : m_place;
}

} // namespace Pellarvine::detail
